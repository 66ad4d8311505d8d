// SPDX-License-Identifier: MIT

#include "tools/tesksim/spoil.h"

#include <algorithm>
#include <charconv>

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/label_order.h"
#include "tools/command_line/number.h"
#include "tools/tesksim/stream_parser.h"

namespace tesksim {

using command_line::ParseNumber;

namespace {

constexpr std::string_view kHarmNames[] = {"checksum", "length", "number", "end", "drop"};

std::optional<Harm> ParseHarm(std::string_view name) {
  const auto* const found = std::find(std::begin(kHarmNames), std::end(kHarmNames), name);
  if (found == std::end(kHarmNames)) return std::nullopt;
  return static_cast<Harm>(found - std::begin(kHarmNames));
}

// A code by its name or as "F4".
std::optional<std::uint8_t> ParseCode(std::string_view text) {
  if (const auto code = MessageCodeOf(text); code.has_value()) return code;
  std::uint8_t code = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, code, 16);
  if (error != std::errc() || stop != end) return std::nullopt;
  return code;
}

// Whether it is the table of one output or station.
bool IsRow(std::uint8_t code) {
  const switcher::MessageKind* const kind = switcher::FindMessage(code);
  return kind != nullptr && kind->use == switcher::MessageUse::Table &&
         kind->title.find("%1") != std::string_view::npos;
}

std::optional<int> ParseMessageNumber(std::uint8_t code, Words words) {
  if (code == switcher::kOptoDataCode && words.empty()) return 0;
  if (words.size() != 1) return std::nullopt;
  const auto number = ParseNumber(words[0], 1, 256);
  if (IsRow(code)) return number;
  if (code == switcher::kAlphaLabelsCode &&
      (number == switcher::kOutputLabels || number == switcher::kInputLabels)) {
    return number;
  }
  return std::nullopt;
}

// Puts another number into the pair behind the code, and into the checksum.
void ChangeNumber(int wireNumber, switcher::Bytes& message) {
  const int before = message[1] + 128 * message[2];
  std::uint8_t& checksum = message[message.size() - 2];
  checksum = static_cast<std::uint8_t>((checksum + wireNumber - before) & 0x7F);
  message[1] = static_cast<std::uint8_t>(wireNumber & 0x7F);
  message[2] = static_cast<std::uint8_t>(wireNumber >> 7);
}

}  // namespace

std::string Describe(const TableMessage& message) {
  std::string text(MessageName(message.code));
  return message.number == 0 ? text : text + " " + std::to_string(message.number);
}

std::string_view HarmName(Harm harm) { return kHarmNames[static_cast<std::size_t>(harm)]; }

std::optional<SpoiledMessage> ParseSpoiledMessage(Words words) {
  if (words.size() < 2) return std::nullopt;
  const auto code = ParseCode(words.front());
  const auto harm = ParseHarm(words.back());
  if (!code.has_value() || !harm.has_value()) return std::nullopt;
  const auto number = ParseMessageNumber(*code, words.subspan(1, words.size() - 2));
  if (!number.has_value() || (*harm == Harm::Number && !IsRow(*code))) return std::nullopt;
  return SpoiledMessage{.message = {.code = *code, .number = *number}, .harm = *harm};
}

std::string SpoilUsage() {
  return "label-texts 20|10, inhibits N, relays N, optos, buttons N; checksum, length, number, "
         "end, drop";
}

void Spoil(Harm harm, int count, switcher::Bytes* message) {
  switch (harm) {
    case Harm::Checksum:
      (*message)[message->size() - 2] ^= 0x01;
      break;
    case Harm::Length:
      message->erase(message->end() - 3);
      break;
    case Harm::Number:
      ChangeNumber(count, *message);
      break;
    case Harm::End:
      message->pop_back();
      break;
    case Harm::Drop:
      message->clear();
      break;
  }
}

}  // namespace tesksim
