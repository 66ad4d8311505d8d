// SPDX-License-Identifier: MIT
//
// The input levels and the tally, each with what it paints.
//
//   OpenLevels     the dialog made, shown and painted
//   UpdateGainMap  a report that changes all 64 gains
//   MoveSlider     one step of a slider, sent
//   DragSlider     a slider through its whole range and back, 254 steps, each sent and painted
//   DragOnTheLine  the same as fast as it goes, on a line of 57600 baud that takes 256 bytes
//                  ahead; the longest step, in real time
//   OpenTally      the dialog made, shown and painted
//   UpdateTally    a report that changes all 64 lamps

#include <QElapsedTimer>
#include <QThread>
#include <algorithm>

#include "bench/suite.h"
#include "tests/views/levels/levels_console.h"
#include "tools/stage/application.h"
#include "views/tally/tally_dialog.h"

namespace {

// A line that takes bytes at its own pace and lets a sender be 256 bytes ahead.
class PacedPort : public test::FakeSerialPort {
 public:
  PacedPort() {
    (void)FakeSerialPort::Open(1);
    clock_.start();
  }

  model::Status Write(std::uint8_t byte) override {
    while (Pending() >= kAhead) QThread::usleep(100);
    idleAt_ = std::max(idleAt_, Now()) + kSecondsPerByte;
    return FakeSerialPort::Write(byte);
  }

 private:
  static constexpr double kSecondsPerByte = 10.0 / 57600;
  static constexpr double kAhead = 256;

  double Now() const { return static_cast<double>(clock_.nsecsElapsed()) / 1e9; }
  double Pending() const { return (idleAt_ - Now()) / kSecondsPerByte; }

  QElapsedTimer clock_;
  double idleAt_ = 0;
};

// Paints what is to be painted.
void Paint() { QCoreApplication::sendPostedEvents(); }

void OpenLevels(benchmark::State& state) {
  test::LevelsConsole console;
  for (auto _ : state) {
    auto* const dialog =
        new views::InputLevelDialog(console.Services(), QDateTime(), console.window.get());
    dialog->open();
    Paint();
    if (!QTest::qWaitForWindowExposed(dialog)) state.SkipWithError("no dialog");
    state.PauseTiming();
    delete dialog;
    state.ResumeTiming();
  }
}

void UpdateGainMap(benchmark::State& state) {
  test::LevelsConsole console;
  views::InputLevelDialog& dialog = console.Open();
  int turn = 0;
  for (auto _ : state) {
    for (int k = 0; k < model::kLevelCount; ++k) console.SetGain(k, (k + ++turn) % 128);
    dialog.Update_GainMap();
    Paint();
  }
  if (console.Slider(0).value() != 127 - console.Gain(0)) state.SkipWithError("nothing moved");
}

void MoveSlider(benchmark::State& state) {
  test::LevelsConsole console;
  console.Open();
  QSlider& slider = console.Slider(0);
  for (auto _ : state) {
    slider.setValue(slider.value() == 0 ? 1 : 0);
    Paint();
  }
  if (console.port.TakeWritten().empty()) state.SkipWithError("nothing was sent");
}

// Moves a slider through its range and back; the longest step, in milliseconds.
double Drag(QSlider& slider) {
  double longest = 0;
  for (int step = 0; step < 2 * 127; ++step) {
    QElapsedTimer clock;
    clock.start();
    slider.setValue(step < 127 ? step + 1 : 2 * 127 - 1 - step);
    Paint();
    longest = std::max(longest, static_cast<double>(clock.nsecsElapsed()) / 1e6);
  }
  return longest;
}

void DragSlider(benchmark::State& state) {
  test::LevelsConsole console;
  console.SetGain(0, 127);
  console.Open();
  for (auto _ : state) {
    Drag(console.Slider(0));
    state.PauseTiming();
    console.port.TakeWritten();
    state.ResumeTiming();
  }
}

double DragOnTheLine(int drags) {
  test::LevelsConsole console;
  console.SetGain(0, 127);
  PacedPort port;
  switcher::LiveCommands commands(
      {.model = console.model, .port = port, .reporter = console.reporter});
  const views::Services& plain = console.Services();
  const views::Services services{.model = plain.model,
                                 .stations = plain.stations,
                                 .changes = plain.changes,
                                 .locks = plain.locks,
                                 .knownMap = plain.knownMap,
                                 .commands = commands,
                                 .tables = plain.tables,
                                 .unsent = plain.unsent,
                                 .poll = plain.poll,
                                 .settings = plain.settings,
                                 .reporter = plain.reporter};
  console.dialog = new views::InputLevelDialog(services, QDateTime(), console.window.get());
  console.dialog->open();
  QTest::qWait(100);
  double longest = 0;
  for (int drag = 0; drag < drags; ++drag) {
    longest = std::max(longest, Drag(console.Slider(0)));
    port.TakeWritten();
    QTest::qWait(100);
  }
  return longest;
}

void OpenTally(benchmark::State& state) {
  test::LevelsConsole console;
  for (auto _ : state) {
    auto* const dialog =
        new views::TallyDialog(console.model, QDateTime::currentDateTime(), console.window.get());
    dialog->open();
    Paint();
    if (!QTest::qWaitForWindowExposed(dialog)) state.SkipWithError("no dialog");
    state.PauseTiming();
    delete dialog;
    state.ResumeTiming();
  }
}

void UpdateTally(benchmark::State& state) {
  model::SystemModel model;
  views::TallyDialog dialog(model, QDateTime());
  dialog.open();
  if (!QTest::qWaitForWindowExposed(&dialog)) state.SkipWithError("no dialog");
  for (auto _ : state) {
    for (std::int16_t& point : model.QdvTally) point = point == 0 ? 1 : 0;
    dialog.UpdateTally(QDateTime::currentDateTime());
    Paint();
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const stage::Application application(argc, argv);
  bench::Suite suite(&argc, argv);
  const auto add = [&suite](const char* what, const bench::Suite::Function& run) {
    suite.Measure({.what = what, .run = run, .limit = bench::kViewMilliseconds});
  };
  add("levels: the dialog opened", OpenLevels);
  add("levels: a report that changes all 64", UpdateGainMap);
  add("levels: one step of a slider, sent", MoveSlider);
  add("levels: a slider up and down, 254 steps, each sent", DragSlider);
  add("tally: the dialog opened", OpenTally);
  add("tally: a report that changes all 64", UpdateTally);
  suite.Run();
  suite.AllFigures().Add(
      {.what = "levels: the longest step of a drag at the pace of the line (wall)",
       .value = DragOnTheLine(suite.Quick() ? 3 : 10),
       .unit = "ms",
       .limit = bench::kViewMilliseconds});
  return suite.Finish();
}
