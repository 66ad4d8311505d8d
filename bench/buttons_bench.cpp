// SPDX-License-Identifier: MIT
//
// The programming view with 64 stations, from the click to the pixels.
//
//   Open            the view made, shown and painted
//   ChangeStation   to the next station and back, all that is shown of it differs, and painted
//   ChangeTab       to the page that edits and back, and painted
//   SelectButton    another button selected on the page that edits, and painted
//   ToggleTarget    a target ticked or cleared, stored and painted
//   ChooseType      another operation chosen, stored and painted
//
// The view is painted as on a screen, into its window's backing store, without a display server
// behind it.

#include <QAbstractButton>
#include <QComboBox>
#include <QCoreApplication>

#include "bench/suite.h"
#include "tests/views/programming/buttons_console.h"
#include "tools/stage/application.h"

namespace {

constexpr int kButtonTab = 1;
constexpr int kEditTab = 5;
constexpr int kRelayTab = 6;

void Paint() { QCoreApplication::sendPostedEvents(); }

// Two stations of which nothing is alike.
class TwoStations : public test::ButtonsConsole {
 public:
  TwoStations() {
    constexpr int kTypes[] = {0, 1, 2, 3, 255};
    for (int n = 1; n <= 32; ++n) {
      const std::string button = "B" + std::to_string(n);
      SetField(2, button + " Type", kTypes[n % 5]);
      SetField(2, button + " First", 33 - n);
      std::string flags(64, '0');
      for (std::size_t i = 0; i < flags.size(); i += 2) flags[i] = '1';
      SetField(2, button + " Prog", flags);
    }
    SetField(2, "Relays", std::string(64, '1'));
  }

  void Click(const char* name) {
    Find<QAbstractButton>(QString::fromLatin1(name)).click();
    Paint();
  }
};

void Open(benchmark::State& state) {
  TwoStations console;
  for (auto _ : state) {
    console.Open();
    Paint();
    state.PauseTiming();
    delete console.subWindow;
    Paint();
    state.ResumeTiming();
  }
}

void ChangeStation(benchmark::State& state, int tab) {
  TwoStations console;
  console.Open();
  console.GoToTab(tab);
  Paint();
  bool forward = true;
  for (auto _ : state) {
    console.Click(forward ? "cmdNext" : "cmdPrev");
    forward = !forward;
  }
  if (console.CurrentStation() != (forward ? 1 : 2)) state.SkipWithError("did not move");
}

void ChangeTab(benchmark::State& state) {
  TwoStations console;
  console.Open();
  Paint();
  bool edit = false;
  for (auto _ : state) {
    edit = !edit;
    console.GoToTab(edit ? kEditTab : kButtonTab);
    Paint();
  }
}

void SelectButton(benchmark::State& state) {
  TwoStations console;
  console.GoToStation(2);
  console.Open();
  console.GoToTab(kEditTab);
  Paint();
  auto& selector = console.Find<QComboBox>(QStringLiteral("cmbButton"));
  for (auto _ : state) {
    selector.setCurrentIndex((selector.currentIndex() + 1) % 32);
    Paint();
  }
}

void ToggleTarget(benchmark::State& state) {
  TwoStations console;
  console.Open();
  console.GoToTab(kEditTab);
  Paint();
  for (auto _ : state) console.Click("ckStationSel_20");
}

void ChooseType(benchmark::State& state) {
  TwoStations console;
  console.Open();
  console.GoToTab(kEditTab);
  Paint();
  bool listens = false;
  for (auto _ : state) {
    listens = !listens;
    console.Click(listens ? "optButType_1" : "optButType_3");
  }
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const stage::Application application(argc, argv);
  bench::Suite suite(&argc, argv);
  const auto add = [&suite](const char* what, const bench::Suite::Function& run) {
    suite.Measure({.what = what, .run = run, .limit = bench::kViewMilliseconds});
  };
  add("programming: the view opened", Open);
  add("programming: another station, page of buttons",
      [](auto& state) { ChangeStation(state, kButtonTab); });
  add("programming: another station, page that edits",
      [](auto& state) { ChangeStation(state, kEditTab); });
  add("programming: another station, page of relays",
      [](auto& state) { ChangeStation(state, kRelayTab); });
  add("programming: another page", ChangeTab);
  add("programming: another button", SelectButton);
  add("programming: a target ticked and stored", ToggleTarget);
  add("programming: an operation chosen and stored", ChooseType);
  suite.Run();
  return suite.Finish();
}
