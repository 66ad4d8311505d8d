// SPDX-License-Identifier: MIT

#include "switcher/table.h"

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/row_number.h"

namespace switcher {
namespace {

std::optional<TablePart> LabelsOf(int selector) {
  if (selector == kOutputLabels) return TablePart{.table = Table::OutputLabels};
  if (selector == kInputLabels) return TablePart{.table = Table::InputLabels};
  return std::nullopt;
}

}  // namespace

std::optional<TablePart> PartOf(std::span<const std::uint8_t> message) {
  if (message.size() < 2) return std::nullopt;
  switch (static_cast<MessageCode>(message[0])) {
    case kLabelOrderCode:
    case kAlphaLabelsCode:
      return LabelsOf(message[1]);
    case kInhibitRowCode:
      return TablePart{.table = Table::Inhibits, .station = RowNumber(message)};
    case kRelayRowCode:
      return TablePart{.table = Table::Relays, .station = RowNumber(message)};
    case kButtonDataCode:
      return TablePart{.table = Table::Buttons, .station = RowNumber(message)};
    case kOptoDataCode:
      return TablePart{.table = Table::Optos};
    case kTakeCode:
    case kGainCode:
    case kGainReportCode:
    case kCrosspointRowCode:
    case kTallyCode:
      break;
  }
  return std::nullopt;
}

}  // namespace switcher
