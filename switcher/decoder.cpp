// SPDX-License-Identifier: MIT

#include "switcher/decoder.h"

#include <algorithm>
#include <string>
#include <vector>

#include "switcher/frame.h"
#include "switcher/messages/crosspoint_row.h"
#include "switcher/messages/gain_report.h"
#include "switcher/messages/tally.h"

namespace switcher {

void Decoder::Decode(std::span<const std::uint8_t> message) {
  if (message.empty()) return;
  switch (message[0]) {
    case kGainReportCode:
      DecodeGainReport(message);
      break;
    case kCrosspointRowCode:
      DecodeCrosspointRow(message);
      break;
    case kTallyCode:
      DecodeTally(message);
      break;
    default:
      break;
  }
}

void Decoder::DecodeCrosspointRow(std::span<const std::uint8_t> message) {
  CrosspointRow row;
  const DecodeStatus status = ParseCrosspointRow(message, model_.ChannelCount, &row);

  // The row is stored before its checksum and end byte are judged: a message that fails there
  // leaves the row changed, and the map that is asked for again puts it right.
  if (status != DecodeStatus::WrongSize && status != DecodeStatus::WrongChannel) {
    model_.ChannelStatus[row.output] = row.status;
    for (int input = 1; input <= model_.ChannelCount; ++input) {
      model_.CrosspointMap.At(row.output, input) = row.sources[static_cast<std::size_t>(input - 1)];
    }
  }
  if (status != DecodeStatus::Ok) model_.XmapComplete = false;
  TellHistory("Output " + std::to_string(row.output) + " Crosspoint Map", message, status);
  if (status != DecodeStatus::Ok) return;

  events_.CrosspointRowChanged(row.output, row.status);
  if (row.output == model_.ChannelCount) model_.XmapComplete = true;
}

void Decoder::DecodeGainReport(std::span<const std::uint8_t> message) {
  std::vector<std::int16_t> steps;
  const DecodeStatus status = ParseGainReport(message, model_.ChannelCount, &steps);
  if (status == DecodeStatus::Ok) {
    const auto count = std::min(steps.size(), model_.InputGains.size());
    std::copy_n(steps.begin(), count, model_.InputGains.begin());
  }
  TellHistory("DCA Gain Settings", message, status);
  if (status == DecodeStatus::Ok) events_.GainsChanged();
}

void Decoder::DecodeTally(std::span<const std::uint8_t> message) {
  const DecodeStatus status = ParseTally(message, &model_.QdvTally);
  const bool accepted = status == DecodeStatus::Ok;
  if (accepted) model_.TallySeen = true;
  TellHistory(accepted ? "QDV Responding Tally" : "QDV Responding Tally Info", message, status);
  if (accepted) events_.TallyChanged();
}

void Decoder::TellHistory(std::string_view description, std::span<const std::uint8_t> message,
                          DecodeStatus status) {
  if (!model_.RetrieveActive || history_ == nullptr) return;
  history_->UpdateStatus(description, static_cast<int>(message.size()), status);
}

}  // namespace switcher
