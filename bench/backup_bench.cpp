// SPDX-License-Identifier: MIT
//
// Copies of the database, at 64 and 256 channels.
//
//   Read      what holds the event loop when a copy is kept; it is written beside it
//   Choose    a copy chosen in the window: opened, looked at, compared with the database, listed
//             and painted; one that holds nearly the same, and one in which every field is another

#include <QCoreApplication>
#include <QTreeWidget>
#include <stdexcept>
#include <string>

#include "bench/suite.h"
#include "db/backups.h"
#include "db/database_files.h"
#include "tests/end_to_end/system_database.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/gui_support.h"
#include "tools/stage/application.h"
#include "views/backups/backup_window.h"

namespace {

constexpr char kOther[] = "Tesk-2026-11-20-073000-daily.mdb";
constexpr char kAlmost[] = "Tesk-2026-11-21-073000-daily.mdb";
constexpr char kSame[] = "Tesk-2026-11-22-073000-daily.mdb";

// An open database and three copies: of one everything is other, of one a label, of one nothing.
class KeptSystem {
 public:
  explicit KeptSystem(const benchmark::State& state) {
    const int channels = static_cast<int>(state.range(0));
    std::filesystem::create_directory(folder_ / "Backups");
    test::CreateSystem(folder_ / "Backups" / kOther, channels, 1);
    test::CreateSystem(folder_ / "Tesk.mdb", channels, 2);
    for (const char* const copy : {kAlmost, kSame}) {
      std::filesystem::copy_file(folder_ / "Tesk.mdb", folder_ / "Backups" / copy);
    }
    test::SetField(folder_ / "Backups" / kAlmost, 1, "Label", "another");
    if (!files_.Open().ok()) throw std::runtime_error("no database");
  }

  db::DatabaseFiles& Files() { return files_; }
  const db::Backups& Copies() const { return backups_; }

 private:
  test::TemporaryFolder folder_;
  db::DatabaseFiles files_{folder_ / "Tesk.mdb", folder_ / "WorkingDb.md$"};
  db::Backups backups_{folder_ / "Backups"};
};

void Read(benchmark::State& state) {
  KeptSystem system(state);
  std::string bytes;
  for (auto _ : state) {
    if (!system.Files().ReadWorkingCopy(&bytes).ok()) state.SkipWithError("not read");
  }
}

// Of the copies, in the order of the list.
void Choose(benchmark::State& state, int row, int differences) {
  KeptSystem system(state);
  views::BackupWindow window({.copies = system.Copies(),
                              .database = [&system] { return system.Files().Database(); },
                              .elsewhere = nullptr});
  window.show();
  auto& copies = test::Find<QTreeWidget>(window, "lstBackups");
  auto& list = test::Find<QAbstractItemView>(window, "lstBackupDiff");
  for (auto _ : state) {
    state.PauseTiming();
    copies.setCurrentItem(copies.topLevelItem(0));
    QCoreApplication::sendPostedEvents();
    state.ResumeTiming();
    copies.setCurrentItem(copies.topLevelItem(row));
    QCoreApplication::sendPostedEvents();
  }
  if (list.model()->rowCount() < differences) state.SkipWithError("not compared");
}

}  // namespace

int main(int argc, char** argv) {
  // What a handler may hold the event loop for; what nobody feels as a wait.
  constexpr double kHeldMilliseconds = 10;
  constexpr double kWaitMilliseconds = 100;
  const stage::Application application(argc, argv);
  bench::Suite suite(&argc, argv);
  for (const int channels : {64, 256}) {
    const std::string size = ", " + std::to_string(channels) + " channels";
    suite.Measure({.what = "backups: the database read for a copy" + size,
                   .run = Read,
                   .size = channels,
                   .limit = kHeldMilliseconds});
    suite.Measure({.what = "backups: a copy with another label chosen" + size,
                   .run = [](benchmark::State& state) { Choose(state, 1, 1); },
                   .size = channels,
                   .limit = kWaitMilliseconds});
    suite.Measure({.what = "backups: a copy with all else chosen" + size,
                   .run = [](benchmark::State& state) { Choose(state, 2, 64); },
                   .size = channels,
                   .limit = kWaitMilliseconds});
  }
  suite.Run();
  return suite.Finish();
}
