// SPDX-License-Identifier: MIT
//
// Holds the examples of docs/wire-format.md against the program: lines of bytes, then a line that
// begins with "= " and says what they mean.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "switcher/stored_labels.h"
#include "switcher/wire/frame.h"
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
#include "tests/support/hex.h"
#include "tests/support/page_examples.h"

namespace switcher {
namespace {

// The system of the page.
constexpr int kPageChannels = 16;
constexpr int kPageRelays = 16;
constexpr int kPageLabels = 2;
constexpr int kPageButtons = 2;
constexpr int kPageOptos = 1;

struct Example {
  Bytes bytes;
  std::string meaning;
};

std::vector<Example> Examples() {
  std::vector<Example> examples(1);
  for (const std::string& line : test::PageLines("wire-format.md", "hex")) {
    if (line.starts_with("= ")) {
      examples.back().meaning = line.substr(2);
      examples.emplace_back();
    } else {
      const Bytes bytes = test::FromHex(line);
      examples.back().bytes.insert(examples.back().bytes.end(), bytes.begin(), bytes.end());
    }
  }
  EXPECT_TRUE(examples.back().bytes.empty()) << "bytes without a meaning";
  examples.pop_back();
  return examples;
}

// What a message says, and the same message built from that.
struct Read {
  std::string meaning;
  Bytes rebuilt;
};

std::string Number(int number) { return std::to_string(number); }

std::string ActionText(int action) {
  return "0x" + test::Hex(Bytes{static_cast<std::uint8_t>(action)});
}

// "inputs 1 8": the members that are on.
template <typename Values>
std::string On(const std::string& name, const Values& members) {
  std::string text = name;
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (members[i] != 0) text += " " + Number(static_cast<int>(i) + 1);
  }
  return text == name ? text + " none" : text;
}

std::string Flags(const std::vector<std::uint8_t>& members) {
  std::string text;
  for (const std::uint8_t member : members) text += member != 0 ? '1' : '0';
  return text;
}

std::string KindOfLabels(int selector) {
  return selector == kOutputLabels ? "output labels" : "input labels";
}

Read ReadTake(const Bytes& message) {
  const auto take = ParseTake(message);
  if (!take) return {"refused", {}};
  return {"take: output " + Number(take->destination) + ", input " + Number(take->source) +
              ", action " + ActionText(take->action),
          EncodeTake(*take)};
}

Read ReadGain(const Bytes& message) {
  const auto gain = ParseGain(message);
  if (!gain) return {"refused", {}};
  return {"gain: input " + Number(gain->input + 1) + ", step " + Number(gain->step),
          EncodeGain(*gain)};
}

Read ReadOrder(const Bytes& message) {
  const auto order = ParseLabelOrder(message, kPageLabels);
  if (!order) return {"refused", {}};
  std::string meaning = "order of the " + KindOfLabels(order->selector) + ": stations";
  for (const int station : order->stations) meaning += " " + Number(station);
  return {meaning, EncodeLabelOrder(*order)};
}

Read ReadRow(const Bytes& message) {
  CrosspointRow row;
  const DecodeStatus status = ParseCrosspointRow(message, kPageChannels, &row);
  if (status != DecodeStatus::Ok) return {std::string(StatusWord(status)), {}};
  return {"crosspoints of output " + Number(row.output) + ": " + On("inputs", row.sources) +
              "; status " + Number(row.status),
          EncodeCrosspointRow(row)};
}

Read ReadTally(const Bytes& message) {
  TallyValues values{};
  const DecodeStatus status = ParseTally(message, &values);
  if (status != DecodeStatus::Ok) return {std::string(StatusWord(status)), {}};
  return {"tally: " + On("points", values), EncodeTally(values)};
}

Read ReadGains(const Bytes& message) {
  std::vector<std::int16_t> steps;
  const DecodeStatus status = ParseGainReport(message, kPageChannels, &steps);
  if (status != DecodeStatus::Ok) return {std::string(StatusWord(status)), {}};
  std::string meaning = "gain steps:";
  for (const std::int16_t step : steps) meaning += " " + Number(step);
  return {meaning, EncodeGainReport(steps)};
}

Read ReadTexts(const Bytes& message) {
  LabelTexts texts;
  const DecodeStatus status = ParseLabelTexts(message, kPageLabels, &texts);
  if (status != DecodeStatus::Ok) return {std::string(StatusWord(status)), {}};
  std::string meaning = KindOfLabels(texts.selector) + ":";
  for (const std::string& label : texts.labels) {
    // The page is UTF-8; the fill is shown.
    const std::string stored = LabelFromWire(label);
    const std::size_t fill = label.size() - (label.find_last_not_of(' ') + 1);
    meaning += " \"" + stored + std::string(fill, ' ') + "\"";
  }
  return {meaning, EncodeLabelTexts(texts)};
}

Read ReadInhibits(const Bytes& message) {
  FlagRow row;
  const DecodeStatus status = ParseInhibitRow(message, kPageChannels, &row);
  if (status != DecodeStatus::Ok) return {std::string(StatusWord(status)), {}};
  return {"inhibits of output " + Number(row.output) + ": " + On("inputs", row.members),
          EncodeInhibitRow(row.output, Flags(row.members), kPageChannels)};
}

Read ReadRelays(const Bytes& message) {
  FlagRow row;
  const DecodeStatus status = ParseRelayRow(message, kPageChannels, kPageRelays, &row);
  if (status != DecodeStatus::Ok) return {std::string(StatusWord(status)), {}};
  return {"relays of output " + Number(row.output) + ": " + On("relays", row.members),
          EncodeRelayRow(row.output, Flags(row.members), kPageRelays)};
}

Read ReadButtons(const Bytes& message) {
  ButtonData data;
  const DecodeStatus status =
      ParseButtonData(message, kPageChannels, kPageButtons, kPageChannels / 8, &data);
  if (status != DecodeStatus::Ok) return {std::string(StatusWord(status)), {}};
  std::string meaning = "buttons of station " + Number(data.station) + ":";
  for (const ButtonData::Button& button : data.buttons) {
    if (!meaning.ends_with(':')) meaning += ';';
    meaning += " type " + Number(button.type) + ", first " + Number(button.first) + ", " +
               On("stations", button.targets);
  }
  return {meaning, EncodeButtonData(data)};
}

Read ReadOptos(const Bytes& message) {
  OptoData data;
  const DecodeStatus status = ParseOptoData(message, kPageOptos, &data);
  if (status != DecodeStatus::Ok) return {std::string(StatusWord(status)), {}};
  const OptoData::Opto& opto = data.optos.front();
  return {"optos: type " + Number(opto.type) + ", channel " + Number(opto.channel) + ", first " +
              Number(opto.first) + ", " + On("stations", opto.stations),
          EncodeOptoData(data)};
}

Read ReadMessage(const Bytes& message) {
  switch (static_cast<MessageCode>(message.front())) {
    case kTakeCode:
      return ReadTake(message);
    case kGainCode:
      return ReadGain(message);
    case kLabelOrderCode:
      return ReadOrder(message);
    case kGainReportCode:
      return ReadGains(message);
    case kCrosspointRowCode:
      return ReadRow(message);
    case kAlphaLabelsCode:
      return ReadTexts(message);
    case kButtonDataCode:
      return ReadButtons(message);
    case kRelayRowCode:
      return ReadRelays(message);
    case kInhibitRowCode:
      return ReadInhibits(message);
    case kTallyCode:
      return ReadTally(message);
    case kOptoDataCode:
      return ReadOptos(message);
  }
  return {"no known message", {}};
}

TEST(WirePageTest, TheExamplesSayWhatThePageSays) {
  for (const Example& example : Examples()) {
    ASSERT_FALSE(example.bytes.empty()) << example.meaning;
    const Read read = ReadMessage(example.bytes);
    EXPECT_EQ(read.meaning, example.meaning) << test::Hex(example.bytes);
    EXPECT_EQ(test::Hex(read.rebuilt), test::Hex(example.bytes)) << example.meaning;
  }
}

TEST(WirePageTest, WhatTheSwitcherSendsIsCutOffWhole) {
  for (const Example& example : Examples()) {
    if (!IsReceivedCode(example.bytes.front())) continue;
    ReceiveBuffer received{.bytes = example.bytes};
    Bytes message;
    EXPECT_EQ(CutMessage(received, &message), Cut::Message) << example.meaning;
    EXPECT_EQ(message, example.bytes) << example.meaning;
  }
}

TEST(WirePageTest, EveryMessageHasAnExample) {
  std::set<std::uint8_t> codes;
  for (const Example& example : Examples()) codes.insert(example.bytes.front());
  for (const MessageKind& kind : kMessages) EXPECT_TRUE(codes.contains(kind.code)) << kind.name;
}

// A system of the table of lengths.
struct PageSize {
  int channels;
  int labels;
};
constexpr PageSize kPageSizes[] = {{16, 128}, {64, 128}, {256, 256}};

// The 32 buttons of a station, each with so many members.
ButtonData Buttons(int members) {
  ButtonData data{.station = 1, .buttons = {}};
  data.buttons.resize(32);
  for (ButtonData::Button& button : data.buttons) {
    button.targets.assign(static_cast<std::size_t>(members), 0);
  }
  return data;
}

OptoData Optos() {
  OptoData data;
  data.optos.resize(64);
  for (OptoData::Opto& opto : data.optos) opto.stations.assign(64, 0);
  return data;
}

// The message that a row of the table is about.
Bytes MessageOfRow(const std::string& name, const PageSize& size) {
  const auto channels = static_cast<std::size_t>(size.channels);
  const std::vector<int> stations(static_cast<std::size_t>(size.labels), 1);
  const std::vector<std::string> labels(static_cast<std::size_t>(size.labels), "12345678");
  if (name == "take") return EncodeTake({.destination = 1, .source = 1, .action = 3});
  if (name == "gain") return EncodeGain({.input = 0, .step = 100});
  if (name == "crosspoints of one output") {
    return EncodeCrosspointRow(
        {.output = 1, .status = 0, .sources = std::vector<std::uint8_t>(channels)});
  }
  if (name == "QDV tally") return EncodeTally({});
  if (name == "gain steps") return EncodeGainReport(std::vector<std::int16_t>(channels));
  if (name == "order of the labels")
    return EncodeLabelOrder({.selector = 20, .stations = stations});
  if (name == "label texts") return EncodeLabelTexts({.selector = 20, .labels = labels});
  if (name == "inhibits of one output") {
    return EncodeInhibitRow(1, std::string(channels, '0'), size.channels);
  }
  if (name == "relays of one output") return EncodeRelayRow(1, std::string(64, '0'), 64);
  // A stored text has 64 members, or as many as there are stations beyond.
  if (name == "buttons, to the switcher") {
    return EncodeButtonData(Buttons(std::max(64, size.channels)));
  }
  if (name == "buttons, from the switcher") return EncodeButtonData(Buttons(size.channels));
  if (name == "optos") return EncodeOptoData(Optos());
  ADD_FAILURE() << name;
  return {};
}

TEST(WirePageTest, TheLengthsAreThoseOfThePage) {
  std::set<std::string> codes;
  for (const auto& row : test::PageTable("wire-format.md", "## Lengths")) {
    ASSERT_EQ(row.size(), 7U) << row.front();
    codes.insert(row[0]);
    for (std::size_t i = 0; i < std::size(kPageSizes); ++i) {
      const Bytes message = MessageOfRow(row[1], kPageSizes[i]);
      EXPECT_EQ(std::to_string(message.size()), row[4 + i]) << row[1];
      EXPECT_EQ("0x" + test::Hex(Bytes{message.front()}), row[0]) << row[1];
    }
  }
  for (const MessageKind& kind : kMessages) {
    EXPECT_TRUE(codes.contains("0x" + test::Hex(Bytes{kind.code}))) << kind.name;
  }
}

TEST(WirePageTest, TheSwitcherSendsWhatThePageSays) {
  std::set<std::string> received;
  std::set<std::string> sent;
  for (const auto& row : test::PageTable("wire-format.md", "## Lengths")) {
    ASSERT_THAT(row[2], testing::AnyOf("to", "from", "both"));
    if (row[2] != "to") received.insert(row[0]);
    if (row[2] != "from") sent.insert(row[0]);
  }
  for (int code = 0; code <= 0xFF; ++code) {
    const auto byte = static_cast<std::uint8_t>(code);
    const std::string name = "0x" + test::Hex(Bytes{byte});
    EXPECT_EQ(IsReceivedCode(byte), received.contains(name)) << name;
    const MessageKind* const kind = FindMessage(byte);
    EXPECT_EQ(kind != nullptr && kind->ToSwitcher(), sent.contains(name)) << name;
  }
}

}  // namespace
}  // namespace switcher
