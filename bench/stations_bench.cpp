// SPDX-License-Identifier: MIT
//
// What is done to many stations at once, at 256 with 32 buttons each.
//
//   AskCopy    Copy To Stations opened with all buttons chosen: what each of 255 stations would get
//   Copy       all of that stored as one act
//   AskImport  a file of all buttons opened: read, checked, and its 8,192 differences listed
//   Import     all of that stored as one act
//   ListUses   Where Used of a station that every button points at
//
// The windows are painted into their backing store without a display; what is stored changes each
// time.

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QCoreApplication>
#include <QTreeWidget>
#include <memory>
#include <string>

#include "bench/suite.h"
#include "tests/views/gui_support.h"
#include "tests/views/view_console.h"
#include "tools/stage/application.h"
#include "views/copy_to/copy_to_window.h"
#include "views/import_file/import_window.h"
#include "views/where_used/where_used_window.h"

namespace {

constexpr int kStations = 256;
constexpr int kButtons = 32;
constexpr int kTargets = 64;

std::string ButtonField(int button, const char* suffix) {
  return "B" + std::to_string(button) + " " + suffix;
}

std::string OneTarget(int target) {
  std::string flags(kTargets, '0');
  flags[static_cast<std::size_t>(target) - 1] = '1';
  return flags;
}

// A console with records for all stations.
class ManyStations : public test::ViewConsole {
 public:
  ManyStations() : ViewConsole(kStations) { model.StationCount = kStations; }

  // Every button of a station listens to one target.
  void Program(int station, int target) {
    for (int button = 1; button <= kButtons; ++button) {
      SetField(station, ButtonField(button, "Type"), 1);
      SetField(station, ButtonField(button, "First"), target);
      SetField(station, ButtonField(button, "Prog"), OneTarget(target));
    }
  }

  static void Show(QWidget& window) {
    window.show();
    QCoreApplication::sendPostedEvents();
  }
};

// The window with all buttons of station 1, which are other ones each time.
class CopyOfAll {
 public:
  void ProgramAnew() { console_.Program(1, turn_ = turn_ % kTargets + 1); }

  void Ask() {
    window_ = std::make_unique<views::CopyToWindow>(
        console_.Services(),
        views::CopySource{.station = 1, .choice = views::CopySource::Choice::All});
    ManyStations::Show(*window_);
  }
  void TickAll() { test::Find<QAbstractButton>(*window_, "aidTickAll").click(); }
  void Copy() { test::Find<QAbstractButton>(*window_, "cmdOkCopy").click(); }
  void Close() { window_.reset(); }

  bool IsCopied() {
    return console_.reporter.reports.empty() &&
           console_.Text(kStations, "B32 Prog") == OneTarget(turn_);
  }

 private:
  ManyStations console_;
  std::unique_ptr<views::CopyToWindow> window_;
  int turn_ = 2;
};

void AskCopy(benchmark::State& state) {
  CopyOfAll copy;
  copy.ProgramAnew();
  for (auto _ : state) {
    copy.Ask();
    state.PauseTiming();
    copy.Close();
    state.ResumeTiming();
  }
}

void Copy(benchmark::State& state) {
  CopyOfAll copy;
  for (auto _ : state) {
    state.PauseTiming();
    copy.ProgramAnew();
    copy.Ask();
    copy.TickAll();
    state.ResumeTiming();
    copy.Copy();
    if (!copy.IsCopied()) {
      state.SkipWithError("not copied");
      break;
    }
  }
}

// What the export writes of a system whose buttons all listen to one target.
std::string ProgrammingFile(int target) {
  std::string file = "Station,Station Label,Button,Operation,First Target,Targets\r\n";
  for (int station = 1; station <= kStations; ++station) {
    for (int button = 1; button <= kButtons; ++button) {
      file += std::to_string(station) + ",," + std::to_string(button) + ",LISTEN,,#" +
              std::to_string(target) + "\r\n";
    }
  }
  return file;
}

// The window with a file whose every button is another one each time.
class ImportOfAll {
 public:
  ImportOfAll() {
    for (std::size_t i = 0; i < std::size(files_); ++i) {
      files_[i] = ProgrammingFile(static_cast<int>(i) + 3);
    }
  }

  void Ask() {
    turn_ = 1 - turn_;
    window_ = std::make_unique<views::ImportWindow>(
        console_.Services(), QStringLiteral("programming.csv"), files_[turn_]);
    ManyStations::Show(*window_);
  }
  int Rows() { return test::Find<QAbstractItemView>(*window_, "lstImport").model()->rowCount(); }
  void Import() { test::Find<QAbstractButton>(*window_, "cmdOkImport").click(); }
  void Close() { window_.reset(); }

  bool IsImported() {
    return console_.reporter.reports.empty() &&
           console_.Text(kStations, "B32 Prog") == OneTarget(static_cast<int>(turn_) + 3);
  }

 private:
  ManyStations console_;
  std::string files_[2];
  std::size_t turn_ = 0;
  std::unique_ptr<views::ImportWindow> window_;
};

void AskImport(benchmark::State& state) {
  ImportOfAll import;
  for (auto _ : state) {
    import.Ask();
    state.PauseTiming();
    if (import.Rows() != kStations * kButtons) state.SkipWithError("not compared");
    import.Close();
    state.ResumeTiming();
  }
}

void Import(benchmark::State& state) {
  ImportOfAll import;
  for (auto _ : state) {
    state.PauseTiming();
    import.Ask();
    state.ResumeTiming();
    import.Import();
    if (!import.IsImported()) {
      state.SkipWithError("not imported");
      break;
    }
  }
}

void ListUses(benchmark::State& state) {
  ManyStations console;
  for (int station = 1; station <= kStations; ++station) console.Program(station, 5);
  for (auto _ : state) {
    views::WhereUsedWindow window(console.Services());
    window.ShowStation(5);
    ManyStations::Show(window);
    state.PauseTiming();
    const auto* const list = test::Find<QTreeWidget>(window, "lstWhereUsed").model();
    if (list->rowCount() < kStations * kButtons) state.SkipWithError("not listed");
    state.ResumeTiming();
  }
}

}  // namespace

int main(int argc, char** argv) {
  // What nobody feels as a wait.
  constexpr double kWaitMilliseconds = 100;
  const stage::Application application(argc, argv);
  bench::Suite suite(&argc, argv);
  suite.Measure({.what = "stations: 32 buttons for 255 stations, what each gets",
                 .run = AskCopy,
                 .limit = kWaitMilliseconds});
  suite.Measure({.what = "stations: 32 buttons copied to 255 stations",
                 .run = Copy,
                 .limit = kWaitMilliseconds});
  suite.Measure({.what = "stations: a file of 8,192 buttons opened",
                 .run = AskImport,
                 .limit = kWaitMilliseconds});
  suite.Measure({.what = "stations: a file of 8,192 buttons imported",
                 .run = Import,
                 .limit = kWaitMilliseconds});
  suite.Measure({.what = "stations: 8,192 uses of a station listed",
                 .run = ListUses,
                 .limit = kWaitMilliseconds});
  suite.Run();
  return suite.Finish();
}
