// SPDX-License-Identifier: MIT
//
// The station labels, at 128 and 256 records.
//
//   Open      the view built, shown and painted
//   Sort      a header clicked: sorted and painted
//   Scroll    one page down or up, painted
//   Refresh   all rows read anew, one of them changed, painted
//   Store     one label edited, stored and painted
//   Paste     a block of all labels stored and painted

#include <benchmark/benchmark.h>

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QScrollBar>
#include <string>

#include "tests/views/gui_support.h"
#include "tests/views/labels/labels_console.h"

namespace {

using test::LabelsConsole;

// An open view with all its records painted.
class OpenLabels : public LabelsConsole {
 public:
  explicit OpenLabels(const benchmark::State& state)
      : LabelsConsole(static_cast<int>(state.range(0))) {
    Open();
    subWindow->resize(1000, 760);
    Paint();
  }

  static void Paint() { QCoreApplication::sendPostedEvents(); }
};

void BM_Open(benchmark::State& state) {
  LabelsConsole console(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    console.Open();
    OpenLabels::Paint();
    state.PauseTiming();
    delete console.subWindow;
    state.ResumeTiming();
  }
}

void BM_Sort(benchmark::State& state) {
  OpenLabels console(state);
  for (auto _ : state) {
    console.ClickHeader(test::kLabel);
    OpenLabels::Paint();
  }
  if (!console.reporter.reports.empty()) state.SkipWithError("not sorted");
}

void BM_Scroll(benchmark::State& state) {
  OpenLabels console(state);
  QScrollBar& bar = *console.Grid().verticalScrollBar();
  int step = bar.pageStep();
  for (auto _ : state) {
    bar.setValue(bar.value() + step);
    step = -step;
    OpenLabels::Paint();
  }
}

void BM_Refresh(benchmark::State& state) {
  OpenLabels console(state);
  bool turn = false;
  for (auto _ : state) {
    state.PauseTiming();
    turn = !turn;
    console.SetField(1, "Notes", turn ? "a" : "b");
    state.ResumeTiming();
    console.view->UpdateLabels();
    OpenLabels::Paint();
  }
}

void BM_Store(benchmark::State& state) {
  OpenLabels console(state);
  bool turn = false;
  for (auto _ : state) {
    turn = !turn;
    console.Grid().model()->setData(console.Grid().model()->index(4, test::kLabel),
                                    turn ? QStringLiteral("A") : QStringLiteral("B"));
    if (!console.view->StoreRow()) state.SkipWithError("not stored");
    OpenLabels::Paint();
  }
}

void BM_Paste(benchmark::State& state) {
  OpenLabels console(state);
  QString blocks[2];
  for (int i = 0; i < console.Grid().model()->rowCount(); ++i) {
    blocks[0] += QStringLiteral("A%1\tB%1\n").arg(i);
    blocks[1] += QStringLiteral("C%1\tD%1\n").arg(i);
  }
  console.Click(0, test::kLabel);
  int turn = 0;
  for (auto _ : state) {
    turn = 1 - turn;
    console.Paste(blocks[turn]);
    OpenLabels::Paint();
  }
  if (!console.reporter.reports.empty()) state.SkipWithError("not pasted");
}

BENCHMARK(BM_Open)->Arg(128)->Arg(256)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Sort)->Arg(128)->Arg(256)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Scroll)->Arg(128)->Arg(256)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Refresh)->Arg(128)->Arg(256)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Store)->Arg(128)->Arg(256)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Paste)->Arg(128)->Arg(256)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  const test::GuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
