// SPDX-License-Identifier: MIT
//
// The page of the optos at 64 stations, each turn with the painting that follows.
//
//   OpenPage         the page made, filled and painted
//   ChangeOpto       another opto with another operation: every caption, the channel list, ticks
//   ChangeLikeOpto   another opto with the same operation: ticks and channel
//   ClickOperation   another operation chosen and stored
//   ClickTarget      a target ticked or cleared and stored
//
// The database is in memory: what the disk takes is not in the figures.

#include <QCoreApplication>
#include <QPaintEvent>
#include <iterator>
#include <vector>

#include "bench/suite.h"
#include "tests/views/programming/opto_console.h"
#include "tools/stage/application.h"

namespace {

// Counts what is painted, so that a benchmark cannot measure nothing.
class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget& root) {
    for (QWidget* const widget : root.findChildren<QWidget*>()) widget->installEventFilter(this);
  }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++paints_;
    return false;
  }
  void Report(benchmark::State& state) const {
    if (paints_ == 0) state.SkipWithError("nothing was painted");
    state.counters["paints"] =
        benchmark::Counter(static_cast<double>(paints_), benchmark::Counter::kAvgIterations);
  }

 private:
  int paints_ = 0;
};

void Paint() { QCoreApplication::sendPostedEvents(); }

void OpenPage(benchmark::State& state) {
  test::OptoConsole console;
  for (auto _ : state) {
    console.Open();
    Paint();
  }
  if (console.Ticked() != std::vector<int>{3, 5}) state.SkipWithError("the page is not filled");
}

void ChangeBetween(benchmark::State& state, int firstType, int secondType) {
  test::OptoConsole console;
  console.SetField(1, "OptoType", firstType);
  console.SetField(2, "OptoType", secondType);
  console.Open();
  Paint();
  const PaintCounter counter(*console.host);
  int opto = 1;
  for (auto _ : state) {
    opto = 3 - opto;
    console.Load(opto);
    Paint();
  }
  counter.Report(state);
}

void ChangeOpto(benchmark::State& state) { ChangeBetween(state, 0, 1); }
void ChangeLikeOpto(benchmark::State& state) { ChangeBetween(state, 0, 0); }

void ClickOperation(benchmark::State& state) {
  test::OptoConsole console;
  console.Open();
  Paint();
  const PaintCounter counter(*console.host);
  int code = 0;
  for (auto _ : state) {
    code = 1 - code;
    console.Option(code).click();
    Paint();
  }
  if (console.Number(1, "OptoType") != code) state.SkipWithError("it was not stored");
  counter.Report(state);
}

void ClickTarget(benchmark::State& state) {
  test::OptoConsole console;
  console.Open();
  Paint();
  const PaintCounter counter(*console.host);
  for (auto _ : state) {
    console.Box(40).click();
    Paint();
  }
  if (std::ssize(console.edited) != state.iterations()) state.SkipWithError("it was not stored");
  counter.Report(state);
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const stage::Application application(argc, argv);
  bench::Suite suite(&argc, argv);
  const auto add = [&suite](const char* what, const bench::Suite::Function& run) {
    suite.Measure({.what = what, .run = run, .limit = bench::kViewMilliseconds});
  };
  add("optos: the page opened", OpenPage);
  add("optos: another opto, everything different", ChangeOpto);
  add("optos: another opto of the same operation", ChangeLikeOpto);
  add("optos: an operation chosen and stored", ClickOperation);
  add("optos: a target ticked and stored", ClickTarget);
  suite.Run();
  return suite.Finish();
}
