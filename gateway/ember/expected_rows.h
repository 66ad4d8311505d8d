// SPDX-License-Identifier: MIT

#ifndef GATEWAY_EMBER_EXPECTED_ROWS_H_
#define GATEWAY_EMBER_EXPECTED_ROWS_H_

#include <bitset>
#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include "model/system_model.h"
#include "switcher/wire/messages/take.h"

namespace ember {

// A row as the switcher will report it when it has carried out what was sent.
struct ExpectedRow {
  using Inputs = std::bitset<model::kMaxChannelCount + 1>;  // by input, from 1

  Inputs sources;
  Inputs calls;    // the sources that are, or may be, a call or a priority listen
  Inputs awaited;  // what of the row was commanded and not reported yet
  bool isPriority = false;

  bool operator==(const ExpectedRow&) const = default;
};

// The row as it was last reported.  REQUIRES: the output is a channel of the system
ExpectedRow ReportedRow(const model::SystemModel& model, int output);

// The commands for consumers that were sent and are not in a report yet: what is wanted next is
// judged by what they bring about, and not by a row that is older.
//
// A report takes only the oldest command for an input for carried out: it may be that of an earlier
// one.  A command that no report shows in time counts no more.
class ExpectedRows {
 public:
  using Time = std::chrono::steady_clock::time_point;

  // `model` must outlive the object.  So long a report is waited for.
  ExpectedRows(const model::SystemModel& model, std::chrono::milliseconds patience)
      : model_(model), patience_(patience) {}

  // REQUIRES: the output is a channel of the system
  ExpectedRow At(int output) const;

  // A command was sent.
  void Sent(const switcher::Take& take, Time now);

  // The model has a new report of the row.
  void Reported(int output);

  // Forgets what was sent too long ago.
  void Expire(Time now);

  // When the next command will be forgotten.
  std::optional<Time> NextExpiry() const;

 private:
  enum class Effect : std::uint8_t { Makes, Breaks, MakesCall, BreaksCall };

  struct Command {
    int input;
    Effect effect;
    Time until;
  };

  bool IsReported(int output, const Command& command) const;

  const model::SystemModel& model_;
  const std::chrono::milliseconds patience_;
  std::map<int, std::vector<Command>> commands_;  // by output, the oldest first
};

}  // namespace ember

#endif  // GATEWAY_EMBER_EXPECTED_ROWS_H_
