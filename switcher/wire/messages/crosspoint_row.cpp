// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/crosspoint_row.h"

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/flag_groups.h"
#include "switcher/wire/messages/row_number.h"

namespace switcher {

DecodeStatus ParseCrosspointRow(std::span<const std::uint8_t> message, int channelCount,
                                CrosspointRow* row) {
  row->output = RowNumber(message);
  const std::size_t required = MessageLength(kCrosspointRowCode, channelCount / 8);
  if (message.size() != required || channelCount % 8 != 0) return DecodeStatus::WrongSize;
  if (row->output > channelCount) return DecodeStatus::WrongChannel;

  WireReader reader(message.subspan(1));
  int wireOutput = 0;
  int status = 0;
  reader.GetPair(&wireOutput);
  reader.GetPair(&status);
  row->status = static_cast<std::uint8_t>(status & 0xFF);
  row->sources.assign(static_cast<std::size_t>(channelCount), 0);
  GetFlagGroups(reader, row->sources);
  return reader.Finish();
}

Bytes EncodeCrosspointRow(const CrosspointRow& row) {
  WireWriter writer(kCrosspointRowCode);
  writer.PutPair(row.output - 1);
  writer.PutPair(row.status);
  PutFlagGroups(writer, row.sources);
  return writer.Finish();
}

}  // namespace switcher
