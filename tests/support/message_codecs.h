// SPDX-License-Identifier: MIT
//
// Each message of the line in one shape, so that the page of the wire format, the fuzz targets and
// the benchmark take it from here.  A codec has
//
//   Value      what the message says
//   kName      what the page calls it
//   Parse      the checks, and what it says; of a message that only the switcher reads, any refusal
//              is WrongSize
//   Encode     the message that says this
//   Describe   in the words of the page
//   CanBeSent  whether anybody sends this: of some messages the bytes have room for more
//   Example    of a system of these counts, with some of everything

#ifndef TESTS_SUPPORT_MESSAGE_CODECS_H_
#define TESTS_SUPPORT_MESSAGE_CODECS_H_

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "switcher/stored_labels.h"
#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/button_data.h"
#include "switcher/wire/messages/crosspoint_row.h"
#include "switcher/wire/messages/flag_row.h"
#include "switcher/wire/messages/gain.h"
#include "switcher/wire/messages/gain_report.h"
#include "switcher/wire/messages/label_order.h"
#include "switcher/wire/messages/label_texts.h"
#include "switcher/wire/messages/opto_data.h"
#include "switcher/wire/messages/take.h"
#include "switcher/wire/messages/tally.h"

namespace test {

using switcher::Bytes;
using switcher::DecodeStatus;
using MessageBytes = std::span<const std::uint8_t>;

// The counts of a system that its messages depend on.
struct MessageCounts {
  int channels = 0;
  int stations = 0;
  int labels = 0;
  int buttons = 0;  // of a station
  int optos = 0;
  int relays = 0;
  int targets = 0;  // members of a button
};

// "1010": a text as the database has it.
inline std::string FlagText(const std::vector<std::uint8_t>& members) {
  std::string text(members.size(), '0');
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (members[i] != 0) text[i] = '1';
  }
  return text;
}

// `count` members, every third on.
inline std::vector<std::uint8_t> EveryThird(int count) {
  std::vector<std::uint8_t> members(static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < members.size(); i += 3) members[i] = 1;
  return members;
}

// "inputs 1 8": the members that are on.
template <typename Values>
std::string WordsOfMembers(const std::string& name, const Values& members) {
  std::string text = name;
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (members[i] != 0) text += " " + std::to_string(i + 1);
  }
  return text == name ? text + " none" : text;
}

inline std::string KindOfLabels(int selector) {
  return selector == switcher::kOutputLabels ? "output labels" : "input labels";
}

// What a message says that only the switcher reads.
template <typename Said>
DecodeStatus Accepted(std::optional<Said> said, Said* value) {
  if (!said) return DecodeStatus::WrongSize;
  *value = *std::move(said);
  return DecodeStatus::Ok;
}

template <switcher::MessageCode>
struct Codec;

template <>
struct Codec<switcher::kTakeCode> {
  using Value = switcher::Take;
  static constexpr std::string_view kName = "take";
  static DecodeStatus Parse(MessageBytes message, const MessageCounts& /*counts*/, Value* take) {
    return Accepted(switcher::ParseTake(message), take);
  }
  static Bytes Encode(const Value& take, const MessageCounts& /*counts*/) {
    return switcher::EncodeTake(take);
  }
  static bool CanBeSent(const Value& take) { return take.destination <= 256 && take.source <= 256; }
  static std::string Describe(const Value& take) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    return "take: output " + std::to_string(take.destination) + ", input " +
           std::to_string(take.source) + ", action 0x" + kDigits[take.action / 16] +
           kDigits[take.action % 16];
  }
  static Value Example(const MessageCounts& counts) {
    return {.destination = counts.channels, .source = counts.channels, .action = 3};
  }
};

template <>
struct Codec<switcher::kGainCode> {
  using Value = switcher::Gain;
  static constexpr std::string_view kName = "gain";
  static DecodeStatus Parse(MessageBytes message, const MessageCounts& /*counts*/, Value* gain) {
    return Accepted(switcher::ParseGain(message), gain);
  }
  static Bytes Encode(const Value& gain, const MessageCounts& /*counts*/) {
    return switcher::EncodeGain(gain);
  }
  static bool CanBeSent(const Value& gain) { return gain.input < 64 && gain.step < 128; }
  static std::string Describe(const Value& gain) {
    return "gain: input " + std::to_string(gain.input + 1) + ", step " + std::to_string(gain.step);
  }
  static Value Example(const MessageCounts& /*counts*/) { return {.input = 5, .step = 100}; }
};

template <>
struct Codec<switcher::kLabelOrderCode> {
  using Value = switcher::LabelOrder;
  static constexpr std::string_view kName = "order of the labels";
  static DecodeStatus Parse(MessageBytes message, const MessageCounts& counts, Value* order) {
    return Accepted(switcher::ParseLabelOrder(message, counts.labels), order);
  }
  static Bytes Encode(const Value& order, const MessageCounts& /*counts*/) {
    return switcher::EncodeLabelOrder(order);
  }
  static bool CanBeSent(const Value& /*order*/) { return true; }
  static std::string Describe(const Value& order) {
    std::string text = "order of the " + KindOfLabels(order.selector) + ": stations";
    for (const int station : order.stations) text += " " + std::to_string(station);
    return text;
  }
  static Value Example(const MessageCounts& counts) {
    Value order{.selector = switcher::kOutputLabels, .stations = {}};
    for (int label = counts.labels; label >= 1; --label) order.stations.push_back(label);
    return order;
  }
};

template <>
struct Codec<switcher::kGainReportCode> {
  using Value = std::vector<std::int16_t>;
  static constexpr std::string_view kName = "gain steps";
  static DecodeStatus Parse(MessageBytes message, const MessageCounts& counts, Value* steps) {
    return switcher::ParseGainReport(message, counts.channels, steps);
  }
  static Bytes Encode(const Value& steps, const MessageCounts& /*counts*/) {
    return switcher::EncodeGainReport(steps);
  }
  static bool CanBeSent(const Value& /*steps*/) { return true; }
  static std::string Describe(const Value& steps) {
    std::string text = "gain steps:";
    for (const std::int16_t step : steps) text += " " + std::to_string(step);
    return text;
  }
  static Value Example(const MessageCounts& counts) {
    Value steps;  // of each channel another one, from 0 to 127 and around
    for (int channel = 0; channel < counts.channels; ++channel) {
      steps.push_back(static_cast<std::int16_t>(channel % 128));
    }
    return steps;
  }
};

template <>
struct Codec<switcher::kCrosspointRowCode> {
  using Value = switcher::CrosspointRow;
  static constexpr std::string_view kName = "crosspoints of one output";
  static DecodeStatus Parse(MessageBytes message, const MessageCounts& counts, Value* row) {
    return switcher::ParseCrosspointRow(message, counts.channels, row);
  }
  static Bytes Encode(const Value& row, const MessageCounts& /*counts*/) {
    return switcher::EncodeCrosspointRow(row);
  }
  static bool CanBeSent(const Value& /*row*/) { return true; }
  static std::string Describe(const Value& row) {
    return "crosspoints of output " + std::to_string(row.output) + ": " +
           WordsOfMembers("inputs", row.sources) + "; status " + std::to_string(row.status);
  }
  static Value Example(const MessageCounts& counts) {
    return {.output = counts.channels, .status = 0, .sources = EveryThird(counts.channels)};
  }
};

template <>
struct Codec<switcher::kTallyCode> {
  using Value = switcher::TallyValues;
  static constexpr std::string_view kName = "QDV tally";
  static DecodeStatus Parse(MessageBytes message, const MessageCounts& /*counts*/, Value* values) {
    return switcher::ParseTally(message, values);
  }
  static Bytes Encode(const Value& values, const MessageCounts& /*counts*/) {
    return switcher::EncodeTally(values);
  }
  static bool CanBeSent(const Value& /*values*/) { return true; }
  static std::string Describe(const Value& values) {
    return "tally: " + WordsOfMembers("points", values);
  }
  static Value Example(const MessageCounts& /*counts*/) {
    Value lamps{};
    for (std::size_t i = 0; i < lamps.size(); i += 3) lamps[i] = 1;
    return lamps;
  }
};

template <>
struct Codec<switcher::kAlphaLabelsCode> {
  using Value = switcher::LabelTexts;
  static constexpr std::string_view kName = "label texts";
  static DecodeStatus Parse(MessageBytes message, const MessageCounts& counts, Value* texts) {
    return switcher::ParseLabelTexts(message, counts.labels, texts);
  }
  static Bytes Encode(const Value& texts, const MessageCounts& /*counts*/) {
    return switcher::EncodeLabelTexts(texts);
  }
  static bool CanBeSent(const Value& /*texts*/) { return true; }
  static std::string Describe(const Value& texts) {
    std::string text = KindOfLabels(texts.selector) + ":";
    for (const std::string& label : texts.labels) {
      // The page is UTF-8; the fill is shown.
      const std::size_t fill = label.size() - (label.find_last_not_of(' ') + 1);
      text += " \"" + switcher::LabelFromWire(label) + std::string(fill, ' ') + "\"";
    }
    return text;
  }
  static Value Example(const MessageCounts& counts) {
    Value texts{.selector = switcher::kOutputLabels, .labels = {}};
    for (int label = counts.labels; label >= 1; --label) {
      texts.labels.push_back("Sta. " + std::to_string(1000 + label).substr(1));
    }
    return texts;
  }
};

template <>
struct Codec<switcher::kInhibitRowCode> {
  using Value = switcher::FlagRow;
  static constexpr std::string_view kName = "inhibits of one output";
  static DecodeStatus Parse(MessageBytes message, const MessageCounts& counts, Value* row) {
    return switcher::ParseInhibitRow(message, counts.channels, row);
  }
  static Bytes Encode(const Value& row, const MessageCounts& counts) {
    return switcher::EncodeInhibitRow(row.output, FlagText(row.members), counts.channels);
  }
  static bool CanBeSent(const Value& /*row*/) { return true; }
  static std::string Describe(const Value& row) {
    return "inhibits of output " + std::to_string(row.output) + ": " +
           WordsOfMembers("inputs", row.members);
  }
  static Value Example(const MessageCounts& counts) {
    return {.output = counts.channels, .members = EveryThird(counts.channels)};
  }
};

template <>
struct Codec<switcher::kRelayRowCode> {
  using Value = switcher::FlagRow;
  static constexpr std::string_view kName = "relays of one output";
  static DecodeStatus Parse(MessageBytes message, const MessageCounts& counts, Value* row) {
    return switcher::ParseRelayRow(message, counts.channels, counts.relays, row);
  }
  static Bytes Encode(const Value& row, const MessageCounts& counts) {
    return switcher::EncodeRelayRow(row.output, FlagText(row.members), counts.relays);
  }
  static bool CanBeSent(const Value& /*row*/) { return true; }
  static std::string Describe(const Value& row) {
    return "relays of output " + std::to_string(row.output) + ": " +
           WordsOfMembers("relays", row.members);
  }
  static Value Example(const MessageCounts& counts) {
    return {.output = counts.channels, .members = EveryThird(counts.relays)};
  }
};

template <>
struct Codec<switcher::kOptoDataCode> {
  using Value = switcher::OptoData;
  static constexpr std::string_view kName = "optos";
  static DecodeStatus Parse(MessageBytes message, const MessageCounts& counts, Value* data) {
    return switcher::ParseOptoData(message, counts.optos, data);
  }
  static Bytes Encode(const Value& data, const MessageCounts& /*counts*/) {
    return switcher::EncodeOptoData(data);
  }
  static bool CanBeSent(const Value& /*data*/) { return true; }
  static std::string Describe(const Value& data) {
    std::string text = "optos:";
    for (const Value::Opto& opto : data.optos) {
      if (!text.ends_with(':')) text += ';';
      text += " type " + std::to_string(opto.type) + ", channel " + std::to_string(opto.channel) +
              ", first " + std::to_string(opto.first) + ", " +
              WordsOfMembers("stations", opto.stations);
    }
    return text;
  }
  static Value Example(const MessageCounts& counts) {
    Value data;
    for (int opto = 1; opto <= counts.optos; ++opto) {
      data.optos.push_back({.type = 254,
                            .channel = opto,
                            .first = opto,
                            .stations = EveryThird(switcher::kOptoStations)});
    }
    return data;
  }
};

template <>
struct Codec<switcher::kButtonDataCode> {
  using Value = switcher::ButtonData;
  static constexpr std::string_view kName = "buttons";
  static DecodeStatus Parse(MessageBytes message, const MessageCounts& counts, Value* data) {
    return switcher::ParseButtonData(message, counts.stations, counts.buttons, counts.targets / 8,
                                     data);
  }
  static Bytes Encode(const Value& data, const MessageCounts& /*counts*/) {
    return switcher::EncodeButtonData(data);
  }
  static bool CanBeSent(const Value& /*data*/) { return true; }
  static std::string Describe(const Value& data) {
    std::string text = "buttons of station " + std::to_string(data.station) + ":";
    for (const Value::Button& button : data.buttons) {
      if (!text.ends_with(':')) text += ';';
      text += " type " + std::to_string(button.type) + ", first " + std::to_string(button.first) +
              ", " + WordsOfMembers("stations", button.targets);
    }
    return text;
  }
  static Value Example(const MessageCounts& counts) {
    Value data{.station = counts.stations, .buttons = {}};
    for (int button = 1; button <= counts.buttons; ++button) {
      data.buttons.push_back({.type = 254, .first = button, .targets = EveryThird(counts.targets)});
    }
    return data;
  }
};

// What `use` makes of the codec of a message.
template <typename Use>
auto WithCodec(switcher::MessageCode code, const Use& use) {
  switch (code) {
    case switcher::kTakeCode:
      return use(Codec<switcher::kTakeCode>());
    case switcher::kGainCode:
      return use(Codec<switcher::kGainCode>());
    case switcher::kLabelOrderCode:
      return use(Codec<switcher::kLabelOrderCode>());
    case switcher::kGainReportCode:
      return use(Codec<switcher::kGainReportCode>());
    case switcher::kCrosspointRowCode:
      return use(Codec<switcher::kCrosspointRowCode>());
    case switcher::kAlphaLabelsCode:
      return use(Codec<switcher::kAlphaLabelsCode>());
    case switcher::kButtonDataCode:
      return use(Codec<switcher::kButtonDataCode>());
    case switcher::kRelayRowCode:
      return use(Codec<switcher::kRelayRowCode>());
    case switcher::kInhibitRowCode:
      return use(Codec<switcher::kInhibitRowCode>());
    case switcher::kTallyCode:
      return use(Codec<switcher::kTallyCode>());
    case switcher::kOptoDataCode:
      return use(Codec<switcher::kOptoDataCode>());
  }
  std::abort();  // no message has this code
}

// The message that is the codec's example.
inline Bytes ExampleMessage(switcher::MessageCode code, const MessageCounts& counts) {
  return WithCodec(code, [&](auto codec) { return codec.Encode(codec.Example(counts), counts); });
}

}  // namespace test

#endif  // TESTS_SUPPORT_MESSAGE_CODECS_H_
