// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/opto_data.h"

#include <utility>

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/flag_groups.h"

namespace switcher {

Bytes EncodeOptoData(const OptoData& data) {
  WireWriter writer(kOptoDataCode);
  for (const OptoData::Opto& opto : data.optos) {
    writer.PutPair(opto.type);
    writer.PutPair(opto.channel);
    writer.PutPair(opto.first);
    PutFlagGroups(writer, opto.stations);
  }
  return writer.Finish();
}

DecodeStatus ParseOptoData(std::span<const std::uint8_t> message, int optoCount, OptoData* data) {
  if (message.size() != MessageLength(kOptoDataCode, optoCount)) return DecodeStatus::WrongSize;
  WireReader reader(message.subspan(1));
  OptoData received;
  received.optos.resize(static_cast<std::size_t>(optoCount));
  for (OptoData::Opto& opto : received.optos) {
    for (int* const field : {&opto.type, &opto.channel, &opto.first}) {
      reader.GetPair(field);
      *field &= 0xFF;
    }
    opto.stations.resize(kOptoStations);
    GetFlagGroups(reader, opto.stations);
  }
  if (const DecodeStatus status = reader.Finish(); status != DecodeStatus::Ok) return status;
  *data = std::move(received);
  return DecodeStatus::Ok;
}

}  // namespace switcher
