// SPDX-License-Identifier: MIT
//
// Copies of the database, at 64 and 256 channels.
//
//   Read      what holds the event loop when a copy is kept; it is written beside it
//   Choose    a copy chosen in the window: opened, looked at, compared with the database, listed
//             and painted; one that holds nearly the same, and one in which every field is another
//   Filter    the first word typed over that list, which must be sought in the values
//   Sort      that list sorted by a value

#include <QCoreApplication>
#include <QLineEdit>
#include <QTreeView>
#include <QTreeWidget>
#include <functional>
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

// The window over the copies of a system.
class OpenWindow {
 public:
  explicit OpenWindow(const benchmark::State& state) : system_(state) { window_.show(); }

  // Of the copies, in the order of the list.
  void Choose(int row) {
    auto& copies = test::Find<QTreeWidget>(window_, "lstBackups");
    copies.setCurrentItem(copies.topLevelItem(row));
    QCoreApplication::sendPostedEvents();
  }
  void Filter(const char* words) {
    test::Find<QLineEdit>(window_, "aidFilterBackup").setText(QLatin1String(words));
    QCoreApplication::sendPostedEvents();
  }
  void Sort(int column) {
    List().sortByColumn(column, Qt::AscendingOrder);
    QCoreApplication::sendPostedEvents();
  }
  int Rows() { return List().model()->rowCount(); }

 private:
  QTreeView& List() { return test::Find<QTreeView>(window_, "lstBackupDiff"); }

  KeptSystem system_;
  stations::Changes changes_;
  views::BackupWindow window_{{.copies = system_.Copies(),
                               .database = [this] { return system_.Files().Database(); },
                               .changes = changes_,
                               .elsewhere = nullptr}};
};

constexpr int kNewest = 0;  // which copy is which
constexpr int kAlmostTheSame = 1;
constexpr int kAllElse = 2;

void Choose(benchmark::State& state, int row, int differences) {
  OpenWindow window(state);
  for (auto _ : state) {
    state.PauseTiming();
    window.Choose(kNewest);
    state.ResumeTiming();
    window.Choose(row);
  }
  if (window.Rows() < differences) state.SkipWithError("not compared");
}

// `act` on the list of all that is other, of which no value has been seen but the first ones.
void ActOnAll(benchmark::State& state, const std::function<void(OpenWindow& window)>& act) {
  OpenWindow window(state);
  for (auto _ : state) {
    state.PauseTiming();
    window.Filter("");
    window.Sort(-1);
    window.Choose(kNewest);
    window.Choose(kAllElse);
    if (window.Rows() < 64) state.SkipWithError("not compared");
    state.ResumeTiming();
    act(window);
  }
}

void Filter(benchmark::State& state) {
  ActOnAll(state, [](OpenWindow& window) { window.Filter("x"); });
}

void Sort(benchmark::State& state) {
  constexpr int kBefore = 3;
  ActOnAll(state, [](OpenWindow& window) { window.Sort(kBefore); });
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
                   .run = [](benchmark::State& state) { Choose(state, kAlmostTheSame, 1); },
                   .size = channels,
                   .limit = kWaitMilliseconds});
    suite.Measure({.what = "backups: a copy with all else chosen" + size,
                   .run = [](benchmark::State& state) { Choose(state, kAllElse, 64); },
                   .size = channels,
                   .limit = kWaitMilliseconds});
    suite.Measure({.what = "backups: all that is else sought through" + size,
                   .run = Filter,
                   .size = channels,
                   .limit = kWaitMilliseconds});
    suite.Measure({.what = "backups: all that is else sorted by value" + size,
                   .run = Sort,
                   .size = channels,
                   .limit = kWaitMilliseconds});
  }
  suite.Run();
  return suite.Finish();
}
