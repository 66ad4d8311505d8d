// SPDX-License-Identifier: MIT
//
// Feeds arbitrary bytes to a panel as a console's stream.  However the stream is portioned, the
// panel sends and prints the same, says the same is wrong, and prints nothing but printable
// characters.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

#include "tools/teskpanel/messages.h"
#include "tools/teskpanel/printer.h"
#include "tools/teskpanel/session.h"
#include "tools/teskpanel/show_task.h"
#include "tools/teskpanel/take_task.h"
#include "tools/teskpanel/watch_task.h"

namespace {

using teskpanel::Bytes;

constexpr int kAll = teskpanel::kAskMap | teskpanel::kAskInputLabels |
                     teskpanel::kAskStationLabels | teskpanel::kAskProgramming;

void Require(bool holds) {
  if (!holds) std::abort();
}

// What a panel makes of a stream.
struct Seen {
  Bytes sent;
  std::string printed;
  std::string problem;
  std::optional<teskpanel::Outcome> result;

  bool operator==(const Seen&) const = default;
};

template <typename TaskType, typename... Arguments>
Seen Run(std::span<const std::uint8_t> stream, std::size_t portion, bool json,
         Arguments... arguments) {
  teskpanel::Printer printer(json);
  TaskType task(arguments..., printer);
  teskpanel::Session session(30, task);
  for (std::size_t first = 0; first < stream.size(); first += portion) {
    const auto bytes = stream.subspan(first, std::min(portion, stream.size() - first));
    if (!session.Receive(bytes)) break;
  }
  return {session.TakeOutput(), printer.TakeText(), session.Problem(), task.Result()};
}

template <typename TaskType, typename... Arguments>
void Check(std::span<const std::uint8_t> stream, bool json, Arguments... arguments) {
  const Seen whole =
      Run<TaskType>(stream, std::max<std::size_t>(1, stream.size()), json, arguments...);
  Require(whole == Run<TaskType>(stream, 1, json, arguments...));
  Require(whole == Run<TaskType>(stream, 7, json, arguments...));
  Require(std::all_of(whole.printed.begin(), whole.printed.end(),
                      [](char c) { return c == '\n' || (c >= ' ' && c < 0x7F); }));
  Require(whole.printed.empty() || whole.printed.back() == '\n');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const std::uint8_t> stream(data, size);
  Check<teskpanel::WatchTask>(stream, false, kAll, std::string("console"));
  Check<teskpanel::WatchTask>(stream, true, kAll, std::string("console"));
  Check<teskpanel::ShowTask>(stream, false, kAll, std::vector<int>{1});
  Check<teskpanel::TakeTask>(stream, true, 1, 2, teskpanel::TakeAction{});
  return 0;
}
