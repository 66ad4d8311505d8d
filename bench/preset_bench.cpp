// SPDX-License-Identifier: MIT
//
// A preset of 256 outputs: one source each, and every crosspoint made.
//
//   Compare  what the map differs from it in
//   Ask      the window opened: what it would change, listed and painted
//   Recall   all outputs brought back by a switcher that answers at once: what the console itself
//            needs for 512 commands, and for 65,536.  On the line they take 10 s and 20 minutes.
//   Text     the file written and read

#include <QAbstractItemView>
#include <QCoreApplication>
#include <cstdint>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "bench/suite.h"
#include "switcher/presets/preset_text.h"
#include "switcher/presets/recall.h"
#include "tests/support/recording_reporter.h"
#include "tests/views/gui_support.h"
#include "tools/stage/application.h"
#include "views/presets/recall_window.h"

namespace {

constexpr int kChannels = 256;

// Takes everything, and knows what it was told last.
class EchoingPort : public switcher::SerialPort {
 public:
  void SetEvents(switcher::SerialPortEvents* /*events*/) override {}
  model::Status Open(int /*number*/) override { return {}; }
  void Close() override {}
  bool IsOpen() const override { return true; }
  int Number() const override { return 1; }
  switcher::Bytes Read() override { return {}; }
  model::Status Write(std::uint8_t byte) override {
    written.push_back(byte);
    return {};
  }
  std::size_t Unsent() const override { return 0; }
  void SetSendThreshold(int /*threshold*/) override {}

  switcher::Bytes written;
};

// Each output hears one input, and in the preset the next one; or nothing, and in the preset all.
class System : public switcher::RecallDisplay {
 public:
  explicit System(const benchmark::State& state) : isFull_(state.range(0) != 0) {
    model.ChannelCount = kChannels;
    model.AllocateMap();
    model.LinkStatus = {1, 1, 0};
    model.XmapComplete = true;
    for (int output = 1; output <= kChannels; ++output) knownMap_.CrosspointRowChanged(output, 0);
    Set(true);
    preset = switcher::PresetOf(model, facts, outputs_, "2026-04-17 12:03:44");
    Set(false);
  }

  // Makes the map that of the preset, or the other one.
  void Set(bool asInPreset) {
    for (int output = 1; output <= kChannels; ++output) {
      for (int input = 1; input <= kChannels; ++input) {
        model.CrosspointMap.At(output, input) =
            isFull_ ? asInPreset : (output + (asInPreset ? 1 : 0)) % kChannels + 1 == input;
      }
    }
  }

  // What a recall takes.
  int Commands() const { return isFull_ ? kChannels * kChannels : 2 * kChannels; }

  // The number of commands that it took.
  int Recall() {
    switcher::Recall recall(Services(), *this);
    std::vector<switcher::RecallRow> rows;
    for (const auto& difference : switcher::Differences(preset, model, locks_, facts)) {
      rows.push_back({difference.Output(), difference.now, difference.wanted});
    }
    recall.Go(std::move(rows));
    int commands = 0;
    while (std::exchange(isTurnDue_, false)) {
      port_.written.clear();
      recall.Next();
      if (port_.written.size() < 9) continue;
      ++commands;
      const int input = port_.written[3] + 128 * port_.written[4] + 1;
      const int output = port_.written[5] + 128 * port_.written[6] + 1;
      model.CrosspointMap.At(output, input) = port_.written[1] == 2 ? 1 : 0;
      recall.CrosspointRowChanged(output, 0);
    }
    return commands;
  }

  switcher::Recall::Services Services() {
    return {.model = model,
            .locks = locks_,
            .knownMap = knownMap_,
            .commands = commands_,
            .facts = facts};
  }

  std::size_t Compare() { return switcher::Differences(preset, model, locks_, facts).size(); }

  void ShowRow(std::size_t /*row*/) override {}
  void CommandSent(int /*output*/, int /*input*/, switcher::TakeAction /*action*/) override {}
  void RequestTurn() override { isTurnDue_ = true; }
  void StartAnswerTimer() override {}
  void StopAnswerTimer() override {}
  void Ended() override {}

  model::SystemModel model;
  switcher::ChannelFacts facts{
      .outputLabel = [](int output) { return "OUT " + std::to_string(output); },
      .inputLabel = [](int input) { return "IN " + std::to_string(input); },
      .isInhibited = [](int /*output*/, int /*input*/) { return false; }};
  switcher::Preset preset;

 private:
  const bool isFull_;
  bool isTurnDue_ = false;
  std::vector<int> outputs_ = [] {
    std::vector<int> all(kChannels);
    std::iota(all.begin(), all.end(), 1);
    return all;
  }();
  model::Locks locks_;
  switcher::KnownMap knownMap_{model};
  EchoingPort port_;
  test::RecordingReporter reporter_;
  switcher::LiveCommands commands_{{.model = model, .port = port_, .reporter = reporter_}};
};

void Compare(benchmark::State& state) {
  System system(state);
  for (auto _ : state) {
    if (system.Compare() != kChannels) state.SkipWithError("not compared");
  }
}

void Ask(benchmark::State& state) {
  System system(state);
  for (auto _ : state) {
    views::RecallWindow window(system.Services(), QStringLiteral("Morning"), system.preset);
    window.show();
    QCoreApplication::sendPostedEvents();
    state.PauseTiming();
    const auto* const list = test::Find<QAbstractItemView>(window, "lstRecall").model();
    if (list->rowCount() != kChannels) state.SkipWithError("not listed");
    state.ResumeTiming();
  }
}

void Recall(benchmark::State& state) {
  System system(state);
  for (auto _ : state) {
    state.PauseTiming();
    system.Set(false);
    state.ResumeTiming();
    if (system.Recall() != system.Commands()) state.SkipWithError("not recalled");
  }
}

void Text(benchmark::State& state) {
  const System system(state);
  for (auto _ : state) {
    switcher::Preset read;
    if (!switcher::ReadPreset(switcher::WritePreset(system.preset), &read) ||
        read != system.preset) {
      state.SkipWithError("not read");
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  // What a handler may hold the event loop for; what nobody feels as a wait.
  constexpr double kHeldMilliseconds = 10;
  constexpr double kWaitMilliseconds = 100;
  // Of the time that 65,536 commands take on the line, answers not counted: 9 bytes at 5760 a
  // second.
  constexpr double kHundredthOfTheLine = 1024;
  const stage::Application application(argc, argv);
  bench::Suite suite(&argc, argv);
  for (const bool isFull : {false, true}) {
    const std::string what = isFull ? "65,536 crosspoints" : "256 outputs";
    suite.Measure({.what = "presets: " + what + " compared with the map",
                   .run = Compare,
                   .size = isFull,
                   .limit = kHeldMilliseconds});
    suite.Measure({.what = "presets: " + what + " listed before a recall",
                   .run = Ask,
                   .size = isFull,
                   .limit = kWaitMilliseconds});
    suite.Measure({.what = "presets: " + what + " recalled, without the line",
                   .run = Recall,
                   .size = isFull,
                   .limit = isFull ? kHundredthOfTheLine : kWaitMilliseconds});
    suite.Measure({.what = "presets: " + what + " written and read",
                   .run = Text,
                   .size = isFull,
                   .limit = isFull ? kWaitMilliseconds : kHeldMilliseconds});
  }
  suite.Run();
  return suite.Finish();
}
