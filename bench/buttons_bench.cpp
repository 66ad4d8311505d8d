// SPDX-License-Identifier: MIT
//
// The programming view with 64 stations, from the click to the pixels.
//
//   Open            the view made, shown and painted
//   ChangeStation   to the next station and back, all that is shown of it differs, and painted;
//                   by tab: a page of buttons, the selected button, the relays
//   ChangeTab       to the page that edits and back, and painted
//   SelectButton    another button selected on the page that edits, and painted
//   ToggleTarget    a target ticked or cleared, stored and painted
//   ChooseType      another operation chosen, stored and painted
//
// The view is painted as on a screen, into its window's backing store, without a display server
// behind it.

#include <benchmark/benchmark.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QCoreApplication>

#include "tests/views/gui_support.h"
#include "tests/views/programming/buttons_console.h"

namespace {

constexpr int kButtonTab = 1;
constexpr int kEditTab = 5;
constexpr int kRelayTab = 6;

void Paint() { QCoreApplication::sendPostedEvents(); }

// Two stations of which nothing is alike.
class TwoStations : public test::ButtonsConsole {
 public:
  TwoStations() {
    constexpr int kTypes[] = {0, 1, 2, 3, 255};
    for (int n = 1; n <= 32; ++n) {
      const std::string button = "B" + std::to_string(n);
      SetField(2, button + " Type", kTypes[n % 5]);
      SetField(2, button + " First", 33 - n);
      std::string flags(64, '0');
      for (std::size_t i = 0; i < flags.size(); i += 2) flags[i] = '1';
      SetField(2, button + " Prog", flags);
    }
    SetField(2, "Relays", std::string(64, '1'));
  }

  void Click(const char* name) {
    Find<QAbstractButton>(QString::fromLatin1(name)).click();
    Paint();
  }
};

void Open(benchmark::State& state) {
  TwoStations console;
  for (auto _ : state) {
    console.Open();
    Paint();
    state.PauseTiming();
    delete console.subWindow;
    Paint();
    state.ResumeTiming();
  }
}
BENCHMARK(Open)->Unit(benchmark::kMillisecond);

void ChangeStation(benchmark::State& state) {
  TwoStations console;
  console.Open();
  console.GoToTab(static_cast<int>(state.range(0)));
  Paint();
  bool forward = true;
  for (auto _ : state) {
    console.Click(forward ? "cmdNext" : "cmdPrev");
    forward = !forward;
  }
  if (console.CurrentStation() != (forward ? 1 : 2)) state.SkipWithError("did not move");
}
BENCHMARK(ChangeStation)
    ->ArgName("tab")
    ->Arg(kButtonTab)
    ->Arg(kEditTab)
    ->Arg(kRelayTab)
    ->Unit(benchmark::kMillisecond);

void ChangeTab(benchmark::State& state) {
  TwoStations console;
  console.Open();
  Paint();
  bool edit = false;
  for (auto _ : state) {
    edit = !edit;
    console.GoToTab(edit ? kEditTab : kButtonTab);
    Paint();
  }
}
BENCHMARK(ChangeTab)->Unit(benchmark::kMillisecond);

void SelectButton(benchmark::State& state) {
  TwoStations console;
  console.GoToStation(2);
  console.Open();
  console.GoToTab(kEditTab);
  Paint();
  auto& selector = console.Find<QComboBox>(QStringLiteral("cmbButton"));
  for (auto _ : state) {
    selector.setCurrentIndex((selector.currentIndex() + 1) % 32);
    Paint();
  }
}
BENCHMARK(SelectButton)->Unit(benchmark::kMillisecond);

void ToggleTarget(benchmark::State& state) {
  TwoStations console;
  console.Open();
  console.GoToTab(kEditTab);
  Paint();
  for (auto _ : state) console.Click("ckStationSel_20");
}
BENCHMARK(ToggleTarget)->Unit(benchmark::kMillisecond);

void ChooseType(benchmark::State& state) {
  TwoStations console;
  console.Open();
  console.GoToTab(kEditTab);
  Paint();
  bool listens = false;
  for (auto _ : state) {
    listens = !listens;
    console.Click(listens ? "optButType_1" : "optButType_3");
  }
}
BENCHMARK(ChooseType)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const test::GuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
