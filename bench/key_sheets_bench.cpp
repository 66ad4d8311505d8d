// SPDX-License-Identifier: MIT
//
// Key sheets, of a system with 64 stations and of one with 256, each button with all 64 targets.
//
//   Open    the window that asks whose
//   Page    one turn of the event loop while they are drawn: a station read and drawn

#include <QBuffer>
#include <QCoreApplication>
#include <string>

#include "bench/suite.h"
#include "tests/views/view_console.h"
#include "tools/stage/application.h"
#include "views/key_sheets/key_sheets_window.h"
#include "views/key_sheets/sheet_run.h"

namespace {

// Every station with what takes the longest to draw.
class FullStations : public test::ViewConsole {
 public:
  explicit FullStations(const benchmark::State& state)
      : ViewConsole(static_cast<int>(state.range(0))) {
    model.StationCount = static_cast<std::int16_t>(state.range(0));
    for (int station = 1; station <= model.StationCount; ++station) {
      for (int button = 1; button <= model.ButtonCount; ++button) {
        SetField(station, "B" + std::to_string(button) + " Prog", std::string(64, '1'));
      }
    }
  }
};

void Open(benchmark::State& state) {
  FullStations console(state);
  for (auto _ : state) {
    views::KeySheetsWindow window(console.Services(), {});
    window.show();
    QCoreApplication::sendPostedEvents();
    state.PauseTiming();
    window.hide();
    state.ResumeTiming();
  }
}

void Page(benchmark::State& state) {
  FullStations console(state);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  std::vector<int> stations;
  for (int station = 1; station <= console.model.StationCount; ++station) {
    stations.push_back(station);
  }
  views::SheetRun* run = nullptr;
  int drawn = 0;
  for (auto _ : state) {
    if (run == nullptr || run->DoneCount() == run->Count()) {
      state.PauseTiming();
      delete run;
      run = new views::SheetRun(console.Services(), stations,
                                views::NewPdf(buffer, QStringLiteral("Key Sheets"), QPageSize::A4));
      state.ResumeTiming();
    }
    drawn = run->DoneCount();
    while (run->DoneCount() == drawn) QCoreApplication::processEvents();
  }
  delete run;
  if (!console.reporter.reports.empty()) state.SkipWithError("not drawn");
}

}  // namespace

int main(int argc, char** argv) {
  const stage::Application application(argc, argv);
  bench::Suite suite(&argc, argv);
  for (const std::int64_t stations : {64, 256}) {
    const std::string size = ", " + std::to_string(stations) + " stations";
    suite.Measure({.what = "key sheets: the window opened" + size,
                   .run = Open,
                   .size = stations,
                   .limit = bench::kViewMilliseconds});
    suite.Measure({.what = "key sheets: one of them drawn" + size,
                   .run = Page,
                   .size = stations,
                   .limit = bench::kViewMilliseconds});
  }
  suite.Run();
  return suite.Finish();
}
