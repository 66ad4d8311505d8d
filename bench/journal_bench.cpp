// SPDX-License-Identifier: MIT
//
// The journal of what is changed.
//
//   Store   a label stored, with its line in the journal and without one
//   Open    the window of recent changes on a journal of 2 MB, shown and painted

#include <QCoreApplication>
#include <QTableView>
#include <memory>
#include <optional>
#include <string>

#include "app/journal/changes_window.h"
#include "app/journal/journal_keeper.h"
#include "bench/suite.h"
#include "stations/journal/act.h"
#include "stations/record.h"
#include "tests/support/small_database.h"
#include "tests/views/gui_support.h"
#include "tools/stage/application.h"

namespace {

void Store(benchmark::State& state, bool withJournal) {
  const test::TemporaryFolder folder;
  test::WriteFile(folder / "Tesk.mdb", "database");
  test::SmallDatabase database;
  database.AddStation(17, {{"Label", "MIC"}});
  database.GoTo(17);
  stations::Changes changes;
  std::optional<app::JournalKeeper> keeper;
  if (withJournal) {
    keeper.emplace(changes, folder / "Tesk.journal", folder / "Tesk.mdb").Begin();
    keeper->Finish();
  }
  bool turn = false;
  for (auto _ : state) {
    turn = !turn;
    stations::Record record(*database.Files().Stations());
    record.Set("Label", turn ? "CAM 4" : "CAM 5");
    if (!record.Commit({changes, stations::Origin::Operator}).ok()) {
      state.SkipWithError("not stored");
    }
  }
  if (withJournal && !keeper->IsComplete()) state.SkipWithError("not in the journal");
}

void Open(benchmark::State& state) {
  const test::TemporaryFolder folder;
  stations::Journal journal(folder / "Tesk.journal");
  bool made = journal.Read().ok();
  journal.SetBeginning("{}");
  const std::string act = stations::WriteAct(
      {.title = "Label of station 17",
       .time = "2026-11-21T18:05:12+01:00",
       .changes = {{stations::Origin::Operator, 17, {{"Label", "Sta. 017", "CAM 4"}}}}});
  for (std::size_t bytes = 0; made && bytes < (2 << 20); bytes += act.size()) {
    made = journal.AddAct(act).ok();
  }
  if (!made) state.SkipWithError("no journal");
  for (auto _ : state) {
    auto window = std::make_unique<app::ChangesWindow>(folder / "Tesk.journal");
    window->setAttribute(Qt::WA_DeleteOnClose, false);
    window->ShowAll({});
    window->show();
    QCoreApplication::sendPostedEvents();
    state.PauseTiming();
    const auto& list = test::Find<QTableView>(*window, "lstChanges");
    if (list.model()->rowCount() == 0) state.SkipWithError("nothing listed");
    window.reset();
    state.ResumeTiming();
  }
}

}  // namespace

int main(int argc, char** argv) {
  const stage::Application application(argc, argv);
  bench::Suite suite(&argc, argv);
  // What an operator's edit may cost more.
  suite.Compare(
      {.what = "journal: a label stored with its line",
       .run = [](benchmark::State& state) { Store(state, true); },
       .limit = 0.2},
      {.name = "without a journal", .run = [](benchmark::State& state) { Store(state, false); }});
  suite.Measure({.what = "recent changes: the window opened on 2 MB",
                 .run = Open,
                 .limit = bench::kViewMilliseconds});
  suite.Run();
  return suite.Finish();
}
