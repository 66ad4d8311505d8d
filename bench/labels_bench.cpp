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
//   Undo      that block taken back, or done again, and painted

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QScrollBar>
#include <string>

#include "bench/suite.h"
#include "stations/history.h"
#include "tests/views/labels/labels_console.h"
#include "tools/stage/application.h"

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

void Open(benchmark::State& state) {
  LabelsConsole console(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    console.Open();
    OpenLabels::Paint();
    state.PauseTiming();
    delete console.subWindow;
    state.ResumeTiming();
  }
}

void Sort(benchmark::State& state) {
  OpenLabels console(state);
  for (auto _ : state) {
    console.ClickHeader(test::kLabel);
    OpenLabels::Paint();
  }
  if (!console.reporter.reports.empty()) state.SkipWithError("not sorted");
}

void Scroll(benchmark::State& state) {
  OpenLabels console(state);
  QScrollBar& bar = *console.Grid().verticalScrollBar();
  int step = bar.pageStep();
  for (auto _ : state) {
    bar.setValue(bar.value() + step);
    step = -step;
    OpenLabels::Paint();
  }
}

void Refresh(benchmark::State& state) {
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

void Store(benchmark::State& state) {
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

void Paste(benchmark::State& state) {
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

void Undo(benchmark::State& state) {
  OpenLabels console(state);
  stations::History history(console.changes);
  QString block;
  for (int i = 0; i < console.Grid().model()->rowCount(); ++i) {
    block += QStringLiteral("A%1\tB%1\n").arg(i);
  }
  console.Click(0, test::kLabel);
  console.Paste(block);
  auto direction = stations::Direction::Again;
  for (auto _ : state) {
    using stations::Direction;
    direction = direction == Direction::Back ? Direction::Again : Direction::Back;
    auto outcome = stations::History::Outcome::Stale;
    const model::Status status = history.Go(
        *console.database, direction, [](const stations::Step&) { return true; }, &outcome);
    if (!status.ok() || outcome != stations::History::Outcome::Gone) {
      state.SkipWithError("not taken back");
      break;
    }
    console.view->UpdateLabels();
    OpenLabels::Paint();
  }
}

}  // namespace

int main(int argc, char** argv) {
  const stage::Application application(argc, argv);
  bench::Suite suite(&argc, argv);
  const auto add = [&suite](const std::string& what, const bench::Suite::Function& run) {
    // A system of 64 stations has 128 records; the figure of twice as many says how it grows.
    suite.Measure({.what = "labels: " + what + ", 128 records",
                   .run = run,
                   .size = 128,
                   .limit = bench::kViewMilliseconds});
    suite.Measure({.what = "labels: " + what + ", 256 records", .run = run, .size = 256});
  };
  add("the view opened", Open);
  add("sorted", Sort);
  add("a page scrolled", Scroll);
  add("all rows read anew", Refresh);
  add("a label edited and stored", Store);
  add("all labels pasted and stored", Paste);
  add("the pasted labels taken back", Undo);
  suite.Run();
  return suite.Finish();
}
