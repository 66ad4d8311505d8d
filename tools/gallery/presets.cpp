// SPDX-License-Identifier: MIT

#include <QDateTime>
#include <QLineEdit>
#include <QTest>
#include <string>

#include "tools/gallery/drawings.h"
#include "tools/gallery/no_switcher.h"
#include "tools/gallery/pictures.h"
#include "views/presets/presets_window.h"
#include "views/presets/recall_window.h"

namespace gallery {
namespace {

constexpr int kChannels = 64;

// A map that has changed since a preset of it was stored.
class ChangedMap {
 public:
  ChangedMap() {
    model_.ChannelCount = kChannels;
    model_.AllocateMap();
    model_.LinkStatus = {1, 1, 0};
    model_.XmapComplete = true;
    for (int output = 1; output <= kChannels; ++output) {
      knownMap_.CrosspointRowChanged(output, 0);
    }
    (void)port_.Open(1);
    for (int output = 1; output <= kChannels; ++output) Make(output, output % 13 + 1);
    for (int input = 20; input < 30; ++input) Make(12, input);
    preset_ = switcher::PresetOf(model_, facts_, {2, 5, 6, 9, 12, 17, 33}, "2026-11-20 06:00:00");
    for (const int output : {2, 5, 6, 9, 12, 33}) {
      Make(output, output % 13 + 1, 0);
      Make(output, 40);
    }
    locks_.LockOutput(6, model::Locks::Against::Console);
    model_.ChannelStatus[9] = 1;
  }

  void DrawWindows() {
    views::PresetsWindow window(model_);
    window.SetPresets({});
    window.show();
    Save(window, QStringLiteral("presets-none"));
    const QDateTime day(QDate(2026, 11, 20), QTime(6, 0));
    window.SetPresets(
        {{QStringLiteral("Before recall of Morning show, 2026-11-21 05.58.12"), day.addDays(1)},
         {QStringLiteral("Evening news, studio 2"), day.addSecs(43000)},
         {QStringLiteral("Morning show"), day}},
        QStringLiteral("Morning show"));
    window.findChild<QLineEdit*>(QStringLiteral("aidPresetOutputs"))
        ->setText(QStringLiteral("1-8, 12"));
    window.Say(QStringLiteral("Morning show: 12 of 12 outputs recalled"));
    Save(window, QStringLiteral("presets"));
  }

  void DrawRecall() {
    DrawRecall(preset_, "recall");
    switcher::Preset other = preset_;
    other.channels = 128;
    other.rows.back().output.label = "VTR 7";
    DrawRecall(other, "recall-of-another-map");
    model_.XmapComplete = false;
    DrawRecall(preset_, "recall-not-now");
    model_.XmapComplete = true;
    switcher::Preset same = preset_;
    same.rows = {same.rows[5]};
    DrawRecall(same, "recall-nothing");
  }

  void DrawEnd() {
    views::RecallWindow window(Services(), QStringLiteral("Morning show"), preset_);
    window.show();
    window.Go();
    QTest::qWait(1);  // the first command
    Save(window, QStringLiteral("recall-going"));
    window.reject();
    Save(window, QStringLiteral("recall-cancelling"));
    window.CrosspointRowChanged(2, 1);
    Save(window, QStringLiteral("recall-left"));
  }

 private:
  void Make(int output, int input, int made = 1) {
    model_.CrosspointMap.At(output, input) = static_cast<std::uint8_t>(made);
  }

  views::RecallWindow::Services Services() {
    return {.model = model_,
            .locks = locks_,
            .knownMap = knownMap_,
            .commands = commands_,
            .facts = facts_};
  }

  void DrawRecall(const switcher::Preset& preset, const char* name) {
    views::RecallWindow window(Services(), QStringLiteral("Morning show"), preset);
    window.show();
    Save(window, QLatin1String(name));
  }

  model::SystemModel model_;
  model::Locks locks_;
  ::switcher::KnownMap knownMap_{model_};
  DeadLine port_;
  NoSwitcher switcher_;
  ::switcher::LiveCommands commands_{{.model = model_, .port = port_, .reporter = switcher_},
                                     &locks_};
  ::switcher::ChannelFacts facts_{
      .outputLabel = [](int output) { return "STUDIO " + std::to_string(output); },
      .inputLabel = [](int input) { return "MIC " + std::to_string(input); },
      .isInhibited = [](int output, int input) { return output == 5 && input == 6; }};
  ::switcher::Preset preset_;
};

}  // namespace

void DrawPresets() {
  ChangedMap map;
  map.DrawWindows();
  map.DrawRecall();
  map.DrawEnd();
}

}  // namespace gallery
