// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/flag_row.h"

#include <utility>

#include "model/flag_string.h"
#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/flag_groups.h"
#include "switcher/wire/messages/row_number.h"

namespace switcher {

namespace {

Bytes EncodeFlagRow(MessageCode code, int output, std::string_view flags, int memberCount) {
  WireWriter writer(code);
  writer.PutPair(output - 1);
  for (int first = 1; first <= memberCount; first += 8) {
    writer.PutPair(model::FlagGroup(flags, first));
  }
  return writer.Finish();
}

DecodeStatus ParseFlagRow(MessageCode code, std::span<const std::uint8_t> message, int channelCount,
                          int memberCount, FlagRow* row) {
  row->output = RowNumber(message);
  const std::size_t required = MessageLength(code, memberCount / 8);
  if (message.size() != required || memberCount % 8 != 0) return DecodeStatus::WrongSize;
  if (row->output > channelCount) return DecodeStatus::WrongChannel;

  WireReader reader(message.subspan(1));
  int wireOutput = 0;
  reader.GetPair(&wireOutput);
  std::vector<std::uint8_t> received(static_cast<std::size_t>(memberCount));
  GetFlagGroups(reader, received);
  if (const DecodeStatus status = reader.Finish(); status != DecodeStatus::Ok) return status;
  row->members = std::move(received);
  return DecodeStatus::Ok;
}

}  // namespace

Bytes EncodeInhibitRow(int output, std::string_view inhibits, int channelCount) {
  return EncodeFlagRow(kInhibitRowCode, output, inhibits, channelCount);
}

Bytes EncodeRelayRow(int output, std::string_view relays, int relayCount) {
  return EncodeFlagRow(kRelayRowCode, output, relays, relayCount);
}

DecodeStatus ParseInhibitRow(std::span<const std::uint8_t> message, int channelCount,
                             FlagRow* row) {
  return ParseFlagRow(kInhibitRowCode, message, channelCount, channelCount, row);
}

DecodeStatus ParseRelayRow(std::span<const std::uint8_t> message, int channelCount, int relayCount,
                           FlagRow* row) {
  return ParseFlagRow(kRelayRowCode, message, channelCount, relayCount, row);
}

}  // namespace switcher
