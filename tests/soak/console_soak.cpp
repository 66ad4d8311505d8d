// SPDX-License-Identifier: MIT
//
// console_soak [MINUTES]: the real console on a simulated switcher, an operator who never rests,
// eight panels as they should be and ten kinds of hostile peers, for MINUTES (default 3).  Ends
// with 0 when
//   - no panel was ever cut off, and in the end each knows the map that the switcher has,
//   - no crosspoint was made that no panel had asked for,
//   - the console's event loop never took longer than a second to answer (five under the
//     address sanitizer),
//   - its memory did not grow by more than 8 MB after the first third of the time,
//   - with the hostile peers gone it has as many files open as before they came,
//   - the operator never waited for a minute, and the database holds what was edited,
//   - no poll of a panel waited longer than twenty seconds for its answer (two minutes),
//   - at most two message boxes show, and the console ends as it should.

#include <QCoreApplication>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <memory>
#include <random>
#include <string>

#include "tests/end_to_end/console_process.h"
#include "tests/soak/good_panel.h"
#include "tests/soak/hostile_peers.h"
#include "tests/soak/operator.h"
#include "tests/support/free_port.h"
#include "tests/support/programs.h"
#include "tests/support/simulator_process.h"

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;
using namespace std::chrono_literals;

constexpr int kPanels = 8;
constexpr int kTakenOutputs = 8;  // good panels take on the outputs 1 to 8 only
constexpr int kChannels = 64;
// The sanitizer keeps what was freed, and the places in the program where that was done: so
// little of both that the console's own growth is seen.  Other options may overrule these.
constexpr char kSanitizerOptions[] = "quarantine_size_mb=8:malloc_context_size=2:";
// The answer to a poll stands behind what other panels are sent, 75 ms for each message, on a
// machine that is busy besides.  A panel waits 30 s before it gives the console up.
milliseconds MostHeld() { return test::ProgramsAreSanitized() ? 5s : 1s; }
milliseconds MostWait() { return test::ProgramsAreSanitized() ? 120s : 20s; }

// Ten seconds of hostile peers leave more behind when each of them leaves 4 kB; what the sanitizer
// holds back of what was freed comes on top.
double MostGrowth() { return test::ProgramsAreSanitized() ? 16 : 8; }

// Files, sockets and all else that takes a handle.
int OpenHandles(qint64 process) {
  const std::filesystem::directory_iterator handles("/proc/" + std::to_string(process) + "/fd");
  return static_cast<int>(std::distance(begin(handles), end(handles)));
}

class Soak {
 public:
  bool Start() {
    port_ = test::FreePort();
    if (port_ == 0) return false;
    folder_.WriteSettings(line_,
                          "Softpanel Support=Yes\r\nIP Port=" + std::to_string(port_) + "\r\n");
    console_ = std::make_unique<test::ConsoleProcess>(folder_);
    if (!console_->IsUp() || !simulator_.WaitForLine("rx poll tally")) return false;
    operator_ =
        std::make_unique<soak::Operator>(*console_, test::ReadStations(folder_ / "Tesk.mdb"));
    for (int i = 0; i < kPanels; ++i) panels_.push_back(std::make_unique<soak::GoodPanel>(port_));
    if (!Settle()) return false;
    // What the first round opens for good belongs to the console.
    while (operator_->Rounds() == 0 && operator_->Stuck().empty()) Step();
    handles_ = OpenHandles(console_->Id());
    return true;
  }

  void Run(Clock::duration time) {
    // What each window leaves behind that opens for the first time is no growth.
    const int first = operator_->Rounds();
    while (operator_->Rounds() == first && operator_->Stuck().empty()) {
      Step();
      // A file that is just being written is open for a moment.
      handles_ = std::min(handles_, OpenHandles(console_->Id()));
    }
    soak::HostilePeers hostile(port_);
    const auto start = Clock::now();
    auto nextTake = start;
    auto nextLook = start;
    double early = 0;
    while (Clock::now() - start < time) {
      Step();
      const auto now = Clock::now();
      if (now >= nextTake) {
        nextTake = now + milliseconds(5000);
        Take();
      }
      if (now < nextLook) continue;
      nextLook = now + std::chrono::seconds(10);
      resident_ = console_->ResidentMegabytes();
      if (now - start < time / 3 || early == 0) early = resident_;
      growth_ = resident_ - early;
      std::printf(
          "%4.0f s  %6d hostile connections  %s  operator's round %d  %.1f MB  %d handles  "
          "answers within %lld ms\n",
          std::chrono::duration<double>(now - start).count(), hostile.Connections(),
          Shown().c_str(), operator_->Rounds(), resident_, OpenHandles(console_->Id()),
          static_cast<long long>(held_.count()));
      std::fflush(stdout);
    }
  }

  // The panels come to know the switcher's map.
  bool Settle() {
    const auto start = Clock::now();
    while (Clock::now() - start < std::chrono::seconds(120)) {
      Step();
      if (Differences(false) == 0) return true;
    }
    return false;
  }

  int Verdict() {
    int failures = 0;
    const auto fail = [&](const char* what) {
      std::printf("FAILED: %s\n", what);
      ++failures;
    };
    if (cutOff_) fail("a panel was cut off");
    if (!Settle()) {
      Differences(true);
      fail("a panel does not know the map");
    }
    for (int output = kTakenOutputs + 1; output <= kChannels; ++output) {
      if (output == soak::Operator::kOutput) continue;  // he may be about to undo it
      if (Truth(output) != "none") fail("a crosspoint that nobody asked for");
    }
    if (received_ != takes_) fail("a take did not reach the switcher");
    if (!PanelsTake(milliseconds(500)).empty()) fail("a take that nobody asked for");
    if (held_ > MostHeld()) fail("the console did not answer in time");
    if (growth_ > MostGrowth()) fail("the console's memory grows");
    if (!operator_->Stuck().empty()) {
      std::printf("the operator: %s\n", operator_->Stuck().c_str());
      fail("the operator could not go on");
    }
    if (2 * operator_->ConfirmedSends() <= operator_->Sends()) {
      fail("most of what the operator sent was not confirmed, or he sent nothing");
    }
    if (!HandlesComeBack()) fail("the console's open files grow");
    // What he is about to undo is in no table of his.
    const int round = operator_->Rounds();
    while (operator_->Rounds() == round && operator_->Stuck().empty()) Step();
    const auto boxes = console_->Boxes();
    for (const test::Box& box : boxes) {
      std::printf("box: %s | %s | %s\n", box.title.c_str(), box.text.c_str(), box.more.c_str());
    }
    if (boxes.size() > 2) fail("a stack of boxes");
    milliseconds longest{0};
    for (const auto& panel : panels_) longest = std::max(longest, panel->LongestAnswer());
    if (longest > MostWait()) fail("a poll was not answered in time");
    panels_.clear();
    // The report that shows is read before a console ends.
    for (std::size_t i = 0; i < boxes.size(); ++i) console_->CloseBox();
    if (console_->Terminate() != 0) fail("the console did not end as it should");
    if (test::ReadStations(folder_ / "Tesk.mdb") != operator_->Tables()) {
      fail("the database does not hold what the operator edited");
    }
    std::printf("%d rounds of the operator, %d handles before and after, %+.1f MB\n",
                operator_->Rounds(), handles_, growth_);
    std::printf("%d of %d sends of what was unsent confirmed\n", operator_->ConfirmedSends(),
                operator_->Sends());
    std::printf("%d takes, polls answered within %lld ms, console within %lld ms, %.1f MB\n",
                takes_, static_cast<long long>(longest.count()),
                static_cast<long long>(held_.count()), resident_);
    return failures == 0 ? 0 : 1;
  }

 private:
  std::string Shown() {
    const auto asked = Clock::now();
    const std::string text = console_->Property("aidPanels", "text").toString().toStdString();
    held_ = std::max(held_, std::chrono::duration_cast<milliseconds>(Clock::now() - asked));
    return text;
  }

  // The connections of peers that have gone are closed from the event loop, and what the operator
  // has open has handles, too: the fewest are those of some moment of his round.
  bool HandlesComeBack() {
    const int round = operator_->Rounds();
    int fewest = std::numeric_limits<int>::max();
    while (operator_->Rounds() < round + 2 && operator_->Stuck().empty()) {
      Step();
      fewest = std::min(fewest, OpenHandles(console_->Id()));
      if (fewest <= handles_) return true;
    }
    std::printf("%d handles before, %d after:\n", handles_, fewest);
    std::error_code error;
    for (const auto& handle : std::filesystem::directory_iterator(
             "/proc/" + std::to_string(console_->Id()) + "/fd", error)) {
      std::printf("  %s\n", std::filesystem::read_symlink(handle.path(), error).c_str());
    }
    return false;
  }

  void Step() {
    for (const auto& panel : panels_) cutOff_ = !panel->Step() || cutOff_;
    if (operator_->Stuck().empty()) operator_->Step();
    Shown();
    std::this_thread::sleep_for(milliseconds(5));
  }

  void Take() {
    soak::GoodPanel& panel = *panels_[random_() % panels_.size()];
    const int output = 1 + static_cast<int>(random_() % kTakenOutputs);
    const int input = 1 + static_cast<int>(random_() % kChannels);
    panel.Take(output, input, random_() % 4 != 0);
    ++takes_;
    const std::string line =
        "rx take output " + std::to_string(output) + " source " + std::to_string(input) + " ";
    if (PanelsTake(test::SimulatorProcess::kPatience).find(line) != std::string::npos) ++received_;
  }

  // The next take that the switcher receives, but for those of the operator; "" when none comes.
  std::string PanelsTake(milliseconds within) {
    const std::string operators = "rx take output " + std::to_string(soak::Operator::kOutput) + " ";
    while (const auto line = simulator_.WaitForLine("rx take", within)) {
      if (line->find(operators) == std::string::npos) return *line;
    }
    return "";
  }

  // The sources of an output as the switcher has them.
  std::string Truth(int output) {
    const std::string row = simulator_.Command("row " + std::to_string(output));
    const auto at = row.find("sources ");
    return at == std::string::npos ? row : row.substr(at + 8);
  }

  int Differences(bool print) {
    int count = 0;
    for (int output = 1; output <= kChannels; ++output) {
      const std::string truth = Truth(output);
      for (const auto& panel : panels_) {
        if (panel->Row(output) == truth) continue;
        ++count;
        if (print) {
          std::printf("output %d: %s, a panel has %s\n", output, truth.c_str(),
                      panel->Row(output).c_str());
        }
      }
    }
    return count;
  }

  int port_ = 0;
  test::ConsoleFolder folder_;
  const std::string line_ = folder_ / "line";
  test::SimulatorProcess simulator_{{"--log", "--link", line_}};
  std::unique_ptr<test::ConsoleProcess> console_;
  std::unique_ptr<soak::Operator> operator_;
  std::vector<std::unique_ptr<soak::GoodPanel>> panels_;
  std::mt19937 random_{4};
  int takes_ = 0;
  int received_ = 0;  // by the switcher, as many as were looked for
  bool cutOff_ = false;
  milliseconds held_{0};
  double resident_ = 0;
  double growth_ = 0;
  int handles_ = 0;  // before the hostile peers came
};

}  // namespace

int main(int argc, char** argv) {
  qputenv("ASAN_OPTIONS", kSanitizerOptions + qgetenv("ASAN_OPTIONS"));
  const QCoreApplication application(argc, argv);
  const double minutes = argc > 1 ? std::atof(argv[1]) : 3;
  Soak soak;
  if (!soak.Start()) {
    std::printf("FAILED: the console does not come up\n");
    return 1;
  }
  soak.Run(std::chrono::duration_cast<Clock::duration>(
      std::chrono::duration<double>(std::max(minutes, 0.1) * 60)));
  return soak.Verdict();
}
