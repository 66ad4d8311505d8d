// SPDX-License-Identifier: MIT

#include "switcher/messages/inhibit_row.h"

#include <utility>

#include "model/flag_string.h"
#include "switcher/frame.h"
#include "switcher/messages/flag_groups.h"
#include "switcher/messages/row_number.h"

namespace switcher {

Bytes EncodeInhibitRow(int output, std::string_view inhibits, int channelCount) {
  WireWriter writer(kInhibitRowCode);
  writer.PutPair(output - 1);
  for (int first = 1; first <= channelCount; first += 8) {
    writer.PutPair(model::FlagGroup(inhibits, first));
  }
  return writer.Finish();
}

DecodeStatus ParseInhibitRow(std::span<const std::uint8_t> message, int channelCount,
                             InhibitRow* row) {
  row->output = RowNumber(message);
  const std::size_t required = 2 * static_cast<std::size_t>(channelCount / 8) + 5;
  if (message.size() != required || channelCount % 8 != 0) return DecodeStatus::WrongSize;
  if (row->output > channelCount) return DecodeStatus::WrongChannel;

  WireReader reader(message.subspan(1));
  int wireOutput = 0;
  reader.GetPair(&wireOutput);
  std::vector<std::uint8_t> inhibited(static_cast<std::size_t>(channelCount));
  GetFlagGroups(reader, inhibited);
  if (reader.GetRaw() != reader.Checksum()) return DecodeStatus::ChecksumFailed;
  if (reader.GetRaw() != kEndOfMessage) return DecodeStatus::MissingEnd;
  row->inhibited = std::move(inhibited);
  return DecodeStatus::Ok;
}

}  // namespace switcher
