// SPDX-License-Identifier: MIT
//
// A preset of 256 outputs.
//
//   Compare  what the map differs from it in
//   Recall   all outputs brought back, two commands each, by a switcher that answers at once: what
//            the console itself needs for 512 commands.  On the line they take 10 s.
//   Text     the file written and read

#include <cstdint>
#include <numeric>
#include <string>
#include <vector>

#include "bench/suite.h"
#include "switcher/presets/preset_text.h"
#include "switcher/presets/recall.h"
#include "tests/support/recording_reporter.h"

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

// Each output hears one input; in the preset the next one.
class System : public switcher::RecallDisplay {
 public:
  System() {
    model.ChannelCount = kChannels;
    model.AllocateMap();
    model.LinkStatus = {1, 1, 0};
    model.XmapComplete = true;
    for (int output = 1; output <= kChannels; ++output) knownMap_.CrosspointRowChanged(output, 0);
    Set(1);
    preset = switcher::PresetOf(model, facts, outputs_, "2026-04-17 12:03:44");
    Set(0);
  }

  void Set(int distance) {
    for (int output = 1; output <= kChannels; ++output) {
      for (int input = 1; input <= kChannels; ++input) {
        model.CrosspointMap.At(output, input) = (output + distance) % kChannels + 1 == input;
      }
    }
  }

  // The number of commands that it took.
  int Recall() {
    switcher::Recall recall({.model = model,
                             .locks = locks_,
                             .knownMap = knownMap_,
                             .commands = commands_,
                             .facts = facts},
                            *this);
    std::vector<switcher::RecallRow> rows;
    for (const auto& difference : switcher::Differences(preset, model, locks_, facts)) {
      rows.push_back({difference.Output(), difference.now, difference.wanted});
    }
    recall.Go(std::move(rows));
    int commands = 0;
    while (recall.IsRunning()) {
      port_.written.clear();
      recall.Next();
      if (port_.written.size() < 9) continue;
      ++commands;
      const int input = port_.written[3] + 128 * port_.written[2] + 1;
      const int output = port_.written[5] + 128 * port_.written[4] + 1;
      model.CrosspointMap.At(output, input) = port_.written[1] == 2 ? 1 : 0;
      recall.CrosspointRowChanged(output, 0);
    }
    return commands;
  }

  std::size_t Compare() { return switcher::Differences(preset, model, locks_, facts).size(); }

  void ShowRow(std::size_t /*row*/) override {}
  void CommandSent(int /*output*/, int /*input*/, switcher::TakeAction /*action*/) override {}
  void RequestTurn() override {}
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
  System system;
  for (auto _ : state) {
    if (system.Compare() != kChannels) state.SkipWithError("not compared");
  }
}

void Recall(benchmark::State& state) {
  System system;
  for (auto _ : state) {
    state.PauseTiming();
    system.Set(0);
    state.ResumeTiming();
    if (system.Recall() != 2 * kChannels) state.SkipWithError("not recalled");
  }
}

void Text(benchmark::State& state) {
  const System system;
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
  bench::Suite suite(&argc, argv);
  suite.Measure({.what = "presets: 256 outputs compared with the map",
                 .run = Compare,
                 .limit = kHeldMilliseconds});
  suite.Measure({.what = "presets: 256 outputs recalled, without the line",
                 .run = Recall,
                 .limit = kWaitMilliseconds});
  suite.Measure(
      {.what = "presets: 256 outputs written and read", .run = Text, .limit = kHeldMilliseconds});
  suite.Run();
  return suite.Finish();
}
