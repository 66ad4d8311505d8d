// SPDX-License-Identifier: MIT

#include "tools/tesksim/messages/optos.h"

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/opto_data.h"

namespace tesksim {

Outcome OptosHandler::Accept(std::span<const std::uint8_t> message) {
  switcher::OptoData data;
  const auto status = switcher::ParseOptoData(message, kOptos, &data);
  if (status != switcher::DecodeStatus::Ok) return Rejected(status);
  for (int opto = 1; opto <= kOptos; ++opto) {
    const switcher::OptoData::Opto& received = data.optos[static_cast<std::size_t>(opto - 1)];
    OptoProgram program{
        .type = received.type, .channel = received.channel, .first = received.first, .members = {}};
    for (std::size_t member = 0; member < received.stations.size(); ++member) {
      program.members.set(member, received.stations[member] != 0);
    }
    state_.optos[opto] = program;
  }
  return {.result = Outcome::Result::Done, .text = "all"};
}

switcher::Bytes OptosHandler::Report(int /*number*/) const {
  switcher::OptoData data;
  for (int opto = 1; opto <= kOptos; ++opto) {
    const OptoProgram& program = state_.optos[opto];
    switcher::OptoData::Opto sent{
        .type = program.type, .channel = program.channel, .first = program.first, .stations = {}};
    for (std::size_t member = 0; member < switcher::kOptoStations; ++member) {
      sent.stations.push_back(program.members.test(member) ? 1 : 0);
    }
    data.optos.push_back(std::move(sent));
  }
  return switcher::EncodeOptoData(data);
}

}  // namespace tesksim
