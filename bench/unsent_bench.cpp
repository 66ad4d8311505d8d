// SPDX-License-Identifier: MIT
//
// What it takes to know what is unsent, and to send just that:
//   digests   of all messages of a database anew, and of those of one edit
//   one edit  a button's operation, from OK in Send Changes until its last byte is at the switcher,
//             beside what the line takes for those bytes, with the real console on the real
//             simulator at the pace of 57600 baud
// Systems of 64 and of 256 channels.

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <chrono>
#include <optional>
#include <string>

#include "bench/figures.h"
#include "bench/suite.h"
#include "db/database_files.h"
#include "stations/record.h"
#include "switcher/unsent/unsent_messages.h"
#include "tests/end_to_end/console_process.h"
#include "tests/end_to_end/system_database.h"
#include "tests/support/simulator_process.h"
#include "tests/support/temporary_folder.h"

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr double kBytesPerSecond = 5760;
constexpr int kEditTab = 4;
constexpr double kDigestMilliseconds = 10;

// A database of so many channels and what compares it.
class Compared {
 public:
  explicit Compared(int channels) {
    model.ApplyFixedValues();
    model.ChannelCount = static_cast<std::int16_t>(channels);
    model.StationCount = model.ChannelCount;
    model.LabelCount = static_cast<std::int16_t>(test::LabelsOf(channels));
    test::CreateSystem(folder_ / "Tesk.mdb", channels, 1);
    if (!files.Open().ok()) std::abort();
  }

  model::SystemModel model;
  stations::Changes changes;

 private:
  test::TemporaryFolder folder_;

 public:
  db::DatabaseFiles files{folder_ / "Tesk.mdb", folder_ / "WorkingDb.md$"};
};

void AllDigests(benchmark::State& state) {
  Compared system(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(switcher::LoadPrints(*system.files.Database(), system.model));
  }
}

void DigestsOfOneEdit(benchmark::State& state) {
  Compared system(static_cast<int>(state.range(0)));
  switcher::UnsentMessages unsent({.model = system.model,
                                   .database = [&] { return system.files.Database(); },
                                   .changes = system.changes,
                                   .today =
                                       [] {
                                         return switcher::Day(std::chrono::year(2026),
                                                              std::chrono::November,
                                                              std::chrono::day(21));
                                       }});
  unsent.Begin({});
  const int made = unsent.Made();
  const stations::Change change{.origin = stations::Origin::Operator,
                                .station = 3,
                                .fields = {{.field = "B3 Type", .before = 0, .after = 1}}};
  int edits = 0;
  for (auto _ : state) {
    unsent.Changed({&change, 1});
    ++edits;
  }
  if (unsent.Made() != made + edits) state.SkipWithError("more than its own message was made");
}

// What one edited button took, and the line for its bytes, in seconds.
struct SentEdit {
  double seconds = 0;
  double onTheLine = 0;
};

std::optional<SentEdit> SendOneEdit(int channels) {
  const test::ConsoleFolder folder;
  const std::string line = folder / "line";
  folder.WriteSettings(line);
  test::CreateSystem(folder / "Tesk.mdb", channels, 1);
  test::SimulatorProcess simulator(
      {"--database", (folder / "Tesk.mdb").string(), "--log", "--link", line});
  test::ConsoleProcess console(folder);
  if (!console.IsUp() || !simulator.WaitForLine("rx poll keep-alive", 120s)) return std::nullopt;
  console.Set("SSActiveTabs1", "currentIndex", kEditTab);
  console.Click("ckStationSel_5");
  // In words, or where the bar has no room for them as a sign.
  const auto isUnsent = [&] {
    return console.IsShown("aidUnsent") || console.IsShown("aidUnsentSign");
  };
  if (!test::ConsoleProcess::WaitFor(isUnsent)) return std::nullopt;
  console.Trigger("aidSendChanges");
  if (!test::ConsoleProcess::WaitFor([&] { return console.IsShown("frmSendChanges"); })) {
    return std::nullopt;
  }
  const double before = simulator.Stat("rx-bytes");
  const auto start = Clock::now();
  console.Click("cmdOkSendChg");
  if (!simulator.WaitForLine("rx buttons station 1", 60s)) return std::nullopt;
  const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
  const double bytes = simulator.Stat("rx-bytes") - before;
  return SentEdit{.seconds = seconds, .onTheLine = bytes / kBytesPerSecond};
}

// The median of three consoles: a machine that looks elsewhere for a moment would spoil a single
// one.
bool AddSentEdit(int channels, bench::Figures& figures) {
  std::array<SentEdit, 3> sent;
  for (SentEdit& edit : sent) {
    const std::optional<SentEdit> measured = SendOneEdit(channels);
    if (!measured) return false;
    edit = *measured;
  }
  std::ranges::sort(sent, {}, &SentEdit::seconds);
  figures.Add({.what = "unsent: one edited button of " + std::to_string(channels) +
                       " channels, to its last byte at the switcher (wall)",
               .value = sent[1].seconds,
               .unit = "s",
               .other = bench::Other{.name = "the line", .value = sent[1].onTheLine},
               .ratioLimit = 1.05});
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  bench::Suite suite(&argc, argv);
  for (const int channels : {64, 256}) {
    const std::string size = std::to_string(channels) + " channels";
    suite.Measure({.what = "unsent: all digests of " + size,
                   .run = AllDigests,
                   .size = channels,
                   .limit = kDigestMilliseconds});
    suite.Measure({.what = "unsent: the digest of one edit of " + size,
                   .run = DigestsOfOneEdit,
                   .size = channels,
                   .limit = 0.2});
  }
  suite.Run();
  for (const int channels : {64, 256}) {
    if (channels > 64 && suite.Quick()) continue;
    if (!AddSentEdit(channels, suite.AllFigures())) {
      suite.AllFigures().AddMissing("unsent: " + std::to_string(channels) + " channels",
                                    "it did not end");
    }
  }
  return suite.Finish();
}
