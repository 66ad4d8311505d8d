// SPDX-License-Identifier: MIT

#ifndef SWITCHER_TABLE_H_
#define SWITCHER_TABLE_H_

#include <compare>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "db/table.h"
#include "model/system_model.h"
#include "switcher/wire/message_table.h"

namespace switcher {

using db::Table;

// What a table holds of one station or output (from 1), or of all with model::kAll.
struct TablePart {
  Table table = Table::Optos;
  int station = model::kAll;

  // In the order of a download.
  auto operator<=>(const TablePart&) const = default;
};

// The table whose messages have this code.  Nothing for the two messages of labels, which serve two
// tables and say in their selector which, and for what is of no table.
constexpr std::optional<Table> TableOf(MessageCode code) {
  switch (code) {
    case kInhibitRowCode:
      return Table::Inhibits;
    case kRelayRowCode:
      return Table::Relays;
    case kOptoDataCode:
      return Table::Optos;
    case kButtonDataCode:
      return Table::Buttons;
    case kTakeCode:
    case kGainCode:
    case kGainReportCode:
    case kCrosspointRowCode:
    case kTallyCode:
    case kLabelOrderCode:
    case kAlphaLabelsCode:
      break;
  }
  return std::nullopt;
}

// What of a field a message carries.
enum class Carried : std::uint8_t {
  Number,  // its low eight bits
  Mark,    // whether it is 1
  Label,   // eight characters
  Flags,   // each "0" or "1", a missing one "0"
};

// What a message carries of a field of a station; nothing of one that is in no table.
std::optional<Carried> HowCarried(std::string_view field);

// What a message of a table holds, from or to the switcher; nothing for another message, and for
// labels that are neither the stations' nor the inputs'.
std::optional<TablePart> PartOf(std::span<const std::uint8_t> message);

// The part whose message an edit of `part` is in: all of a table that has one message for all
// stations.
TablePart MessageOf(const TablePart& part);

// The highest number of a table's messages in a system of these counts; 0 when they have none.
int LastRow(Table table, const model::SystemModel& model);

// All messages of tables that a system of these counts has, in the order of a download.
std::vector<TablePart> AllMessages(const model::SystemModel& model);

}  // namespace switcher

#endif  // SWITCHER_TABLE_H_
