// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/label_texts.h"

#include <utility>

#include "switcher/wire/message_table.h"

namespace switcher {

namespace {

constexpr std::uint8_t kHighestSelector = 0x7F;

}  // namespace

Bytes EncodeLabelTexts(const LabelTexts& texts) {
  WireWriter writer(kAlphaLabelsCode);
  writer.PutByte(texts.selector & 0x7F);
  for (const std::string& label : texts.labels) {
    for (const char character : label) writer.PutByte(static_cast<std::uint8_t>(character));
  }
  return writer.Finish();
}

DecodeStatus ParseLabelTexts(std::span<const std::uint8_t> message, int labelCount,
                             LabelTexts* texts) {
  if (message.size() != MessageLength(kAlphaLabelsCode, labelCount)) {
    return DecodeStatus::WrongSize;
  }
  if (message[1] > kHighestSelector) return DecodeStatus::WrongChannel;
  WireReader reader(message.subspan(1));
  LabelTexts received;
  reader.GetByte(&received.selector);
  received.labels.assign(static_cast<std::size_t>(labelCount), std::string(kLabelLength, ' '));
  for (std::string& label : received.labels) {
    for (char& character : label) {
      int value = 0;
      reader.GetByte(&value);
      character = static_cast<char>(value);
    }
  }
  if (const DecodeStatus status = reader.Finish(); status != DecodeStatus::Ok) return status;
  *texts = std::move(received);
  return DecodeStatus::Ok;
}

}  // namespace switcher
