// SPDX-License-Identifier: MIT
//
// What the switcher holds, as text: the answers of the commands, the log and the state file.
// Members of a group are a list of numbers from 1, or "none".

#ifndef TESKSIM_STATE_TEXT_H_
#define TESKSIM_STATE_TEXT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tools/tesksim/switcher_state.h"
#include "tools/tesksim/words.h"

namespace tesksim {

// "output 6 status 1 sources 8 12 priority 12"; "output 6 status 0 sources none".
std::string DescribeRow(const SwitcherState& state, int output);

// "output 3 inhibits 1 8"; "output 3 inhibits none".
std::string DescribeInhibits(const SwitcherState& state, int output);

// "output 3 relays 1 64"; "output 3 relays none".
std::string DescribeRelays(const SwitcherState& state, int output);

// "station 2 button 32 type 255 first 7 members 7 8".
std::string DescribeButton(const SwitcherState& state, int station, int button);

// "opto 2 type 254 channel 2 first 2 members 2".
std::string DescribeOpto(const SwitcherState& state, int opto);

// "1 8", or "none", of the channels 1..count that pass the test.
template <typename Test>
std::string ListOf(int count, Test test) {
  std::string list;
  for (int number = 1; number <= count; ++number) {
    if (!test(number)) continue;
    if (!list.empty()) list += ' ';
    list += std::to_string(number);
  }
  return list.empty() ? "none" : list;
}

// Reads "1 8" or "none".  Nothing when a word is no number within 1..count, or there is none.
// REQUIRES: count <= 256
std::optional<Members> ParseMembers(Words words, int count);

// A label in quotes.  What is no printable ASCII character stands as \xHH, a quote and a
// backslash stand behind a backslash.
std::string QuoteLabel(std::string_view label);

// Reads a label of up to eight characters, with or without quotes, and fills it up with spaces.
// Nothing when it is too long, or what stands behind a backslash is not as QuoteLabel writes it.
std::optional<std::string> ParseLabel(std::string_view text);

}  // namespace tesksim

#endif  // TESKSIM_STATE_TEXT_H_
