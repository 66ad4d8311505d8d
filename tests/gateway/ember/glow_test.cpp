// SPDX-License-Identifier: MIT

#include "gateway/ember/glow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "gateway/ember/s101.h"
#include "tests/gateway/ember/conversation.h"
#include "tests/support/hex.h"

namespace ember {
namespace {

using test::FromHex;
using test::Hex;
using testing::ElementsAre;
using testing::IsEmpty;

// The one message of a frame.
Bytes MessageOf(std::string_view frame) {
  FrameReader reader;
  std::vector<FrameReader::Event> events;
  EXPECT_TRUE(reader.Read(FromHex(frame), &events));
  EXPECT_EQ(events.size(), 1U);
  return events.empty() ? Bytes() : events[0].message;
}

// "GetDirectory 1.2", "Connect 1.2: 5 absolute 7", "SetValue 1.4.2.3.1: -12", "unreadable".
std::string Words(const Request& request) {
  static constexpr const char* kKinds[] = {"Subscribe", "Unsubscribe", "GetDirectory",
                                           "Invoke",    "SetValue",    "Connect"};
  static constexpr const char* kOperations[] = {"absolute", "connect", "disconnect"};
  const auto value = [](const GlowValue& each) -> std::string {
    if (const auto* const number = std::get_if<std::int64_t>(&each)) return std::to_string(*number);
    if (const auto* const real = std::get_if<double>(&each)) return std::to_string(*real);
    if (const auto* const flag = std::get_if<bool>(&each)) return *flag ? "true" : "false";
    if (const auto* const text = std::get_if<std::string>(&each)) return *text;
    return "nothing";
  };
  std::string words = kKinds[static_cast<std::size_t>(request.kind)];
  words += " ";
  for (std::size_t i = 0; i < request.path.size(); ++i) {
    words += (i > 0 ? "." : "") + std::to_string(request.path[i]);
  }
  for (const Connection& connection : request.connections) {
    words += ": " + std::to_string(connection.target) + " " +
             kOperations[static_cast<std::size_t>(connection.operation)];
    for (const int source : connection.sources) words += " " + std::to_string(source);
  }
  if (request.kind == Request::Kind::SetValue) words += ": " + value(request.value);
  if (request.invocation) words += " #" + std::to_string(*request.invocation);
  for (const GlowValue& argument : request.arguments) words += " " + value(argument);
  return words;
}

std::vector<std::string> Parse(const Bytes& message) {
  const auto requests = ParseGlow(message);
  if (!requests) return {"unreadable"};
  std::vector<std::string> words;
  for (const Request& request : *requests) words.push_back(Words(request));
  return words;
}
std::vector<std::string> ParseFrame(std::string_view frame) { return Parse(MessageOf(frame)); }

TEST(GlowRequests, Directories) {
  EXPECT_THAT(ParseFrame(test::kRootAsked), ElementsAre("GetDirectory "));
  EXPECT_THAT(ParseFrame(test::kRootAskedWithMask), ElementsAre("GetDirectory "));
  EXPECT_THAT(ParseFrame(test::kNodeAsked), ElementsAre("GetDirectory 1"));
  EXPECT_THAT(ParseFrame(test::kMatrixAsked), ElementsAre("GetDirectory 1.2"));
}

TEST(GlowRequests, Takes) {
  EXPECT_THAT(ParseFrame(test::kAbsolute), ElementsAre("Connect 1.2: 5 absolute 7"));
  EXPECT_THAT(ParseFrame(test::kAbsoluteWithContents), ElementsAre("Connect 1.2: 5 absolute 7"));
  EXPECT_THAT(ParseFrame(test::kConnect), ElementsAre("Connect 1.2: 5 connect 3"));
  EXPECT_THAT(ParseFrame(test::kDisconnect), ElementsAre("Connect 1.2: 5 disconnect 7"));
}

// An element with a command says nothing else.
TEST(GlowRequests, ASubscriptionWithConnectionsIsNoTake) {
  EXPECT_THAT(ParseFrame(test::kSubscribed), ElementsAre("Subscribe 1.2"));
}

// 1.4.2.3.1 with a value beside GetDirectory.
TEST(GlowRequests, AValueBesideACommandIsNotSet) {
  EXPECT_THAT(Parse(FromHex("60 29 6B 27 A0 25 69 23 A0 07 0D 05 01 04 02 03 01 A1 07 31 05 A2 03 "
                            "02 01 F4 A2 0F 64 0D A0 0B 62 09 A0 03 02 01 20 A1 02 02 00")),
              ElementsAre("GetDirectory 1.4.2.3.1"));
}

TEST(GlowRequests, ValuesAndInvocations) {
  EXPECT_THAT(ParseFrame(test::kGainSet), ElementsAre("SetValue 1.4.2.3.1: -12"));
  EXPECT_THAT(ParseFrame(test::kCallInvoked), ElementsAre("Invoke 1.7.1 #1 5 7 true"));
}

// Target 5 without sources, by the empty list and by none at all; with what cannot be read it is
// no take.
TEST(GlowRequests, ATakeOfNothing) {
  EXPECT_THAT(Parse(FromHex("60 1D 6B 1B A0 19 71 17 A0 04 0D 02 01 02 A5 0F 30 0D A0 0B 70 09 A0 "
                            "03 02 01 05 A1 02 0D 00")),
              ElementsAre("Connect 1.2: 5 absolute"));
  EXPECT_THAT(Parse(FromHex("60 19 6B 17 A0 15 71 13 A0 04 0D 02 01 02 A5 0B 30 09 A0 07 70 05 A0 "
                            "03 02 01 05")),
              ElementsAre("Connect 1.2: 5 absolute"));
  EXPECT_THAT(Parse(FromHex("60 1E 6B 1C A0 1A 71 18 A0 04 0D 02 01 02 A5 10 30 0E A0 0C 70 0A A0 "
                            "03 02 01 05 A1 03 0C 01 07")),
              IsEmpty());
  // Operation 3, and one that is no number.
  EXPECT_THAT(Parse(FromHex("60 1E 6B 1C A0 1A 71 18 A0 04 0D 02 01 02 A5 10 30 0E A0 0C 70 0A A0 "
                            "03 02 01 05 A2 03 02 01 03")),
              IsEmpty());
  EXPECT_THAT(Parse(FromHex("60 1E 6B 1C A0 1A 71 18 A0 04 0D 02 01 02 A5 10 30 0E A0 0C 70 0A A0 "
                            "03 02 01 05 A2 03 01 01 01")),
              IsEmpty());
}

// Node 1, in it node 7, in it function 2, invoked without a number.
TEST(GlowRequests, ElementsInsideEachOther) {
  EXPECT_THAT(Parse(FromHex(
                  "60 32 6B 30 A0 2E 63 2C A0 03 02 01 01 A2 25 64 23 A0 21 63 1F A0 03 02 01 07 "
                  "A2 18 64 16 A0 14 73 12 A0 03 02 01 02 A2 0B 64 09 A0 07 62 05 A0 03 02 01 21")),
              ElementsAre("Invoke 1.7.2"));
}

// A path of a thousand numbers would be kept with each of the commands below it.
TEST(GlowRequests, APathOfManyNumbersIsNone) {
  const auto asked = [](std::size_t numbers) {
    const Bytes command = BerValue(Application(2), BerValue(Context(0), BerInteger(32)));
    const Bytes children =
        BerValue(Context(2), BerValue(Application(4), BerValue(Context(0), command)));
    const std::vector<Bytes> elements{BerValue(
        Application(10), {BerValue(Context(0), BerOid(std::vector<int>(numbers, 1))), children})};
    return GlowMessage(elements);
  };
  EXPECT_THAT(Parse(asked(8)), ElementsAre("GetDirectory 1.1.1.1.1.1.1.1"));
  EXPECT_THAT(Parse(asked(9)), IsEmpty());
}

TEST(GlowRequests, WhatIsUnknownIsPassedOver) {
  // A stream collection, a template, command 40, a qualified element inside another one.
  EXPECT_THAT(Parse(FromHex("60 02 66 00")), IsEmpty());
  EXPECT_THAT(Parse(FromHex("60 06 6B 04 A0 02 78 00")), IsEmpty());
  EXPECT_THAT(Parse(FromHex("60 0B 6B 09 A0 07 62 05 A0 03 02 01 28")), IsEmpty());
  EXPECT_THAT(Parse(FromHex("60 14 6B 12 A0 10 63 0E A0 03 02 01 01 A2 07 64 05 A0 03 6A 01 00")),
              ElementsAre("unreadable"));
  EXPECT_THAT(Parse(FromHex("60 05 6B 03 A0 05 62")), ElementsAre("unreadable"));
  EXPECT_THAT(Parse({}), IsEmpty());
}

TEST(GlowRequests, IndefiniteLengthsAreAccepted) {
  EXPECT_THAT(
      Parse(FromHex("60 80 6B 80 A0 80 62 80 A0 80 02 01 20 00 00 00 00 00 00 00 00 00 00")),
      ElementsAre("GetDirectory "));
}

TEST(GlowAnswers, TheTopNode) {
  const Bytes message = GlowMessage(std::vector<Bytes>{
      TopNode(1, {.identifier = "teskctl", .description = "Orvo Intercom Control"})});
  EXPECT_EQ(Hex(Packets(message)), test::kRootAnswered);
}

MatrixContents Crosspoints() {
  return {.identifier = "crosspoints",
          .description = "Crosspoints",
          .targetCount = 8,
          .sourceCount = 8,
          .parameters = {1, 4},
          .labels = {1, 3},
          .labelsDescription = "Primary"};
}

TEST(GlowAnswers, TheMatrixWithAllTargets) {
  std::vector<Connection> connections(8);
  for (int target = 0; target < 8; ++target) {
    connections[static_cast<std::size_t>(target)].target = target;
  }
  connections[0].sources = {2};
  connections[5].sources = {1, 7};
  const Bytes message =
      GlowMessage(std::vector<Bytes>{QualifiedMatrix({1, 2}, Crosspoints(), connections)});
  EXPECT_EQ(Hex(Packets(message)), test::kMatrixAnswered);
}

TEST(GlowAnswers, Connections) {
  const auto answer = [](const Connection& connection) {
    return Hex(Packets(
        GlowMessage(std::vector<Bytes>{MatrixConnections({1, 2}, std::span(&connection, 1))})));
  };
  EXPECT_EQ(answer({.target = 5, .sources = {7}, .disposition = Disposition::Modified}),
            test::kAbsoluteReported);
  EXPECT_EQ(answer({.target = 5, .sources = {3, 7}, .disposition = Disposition::Modified}),
            test::kConnectReported);
  EXPECT_EQ(answer({.target = 4, .disposition = Disposition::Locked}), test::kConnectRefused);
}

TEST(GlowAnswers, Parameters) {
  const Path gain{1, 4, 2, 3, 1};
  EXPECT_EQ(Hex(Packets(GlowMessage(
                std::vector<Bytes>{QualifiedParameter(gain, {.identifier = "gain",
                                                             .value = std::int64_t{-36},
                                                             .minimum = -100,
                                                             .maximum = 27,
                                                             .access = Access::ReadWrite})}))),
            test::kGainDescribed);
  EXPECT_EQ(Hex(Packets(GlowMessage(std::vector<Bytes>{ParameterValue(gain, std::int64_t{-12})}))),
            test::kGainTold);
  EXPECT_EQ(
      Hex(QualifiedParameter({1, 6, 1}, {.identifier = "link", .value = true})),
      "69 22 A0 05 0D 03 01 06 01 A1 19 31 17 A0 06 0C 04 6C 69 6E 6B A2 03 01 01 FF A5 03 02 "
      "01 01 AD 03 02 01 04");
}

TEST(GlowAnswers, Functions) {
  using Type = TupleItem::Type;
  const Bytes call = QualifiedFunction(
      {1, 7, 1},
      {.identifier = "call",
       .arguments = {{Type::Integer, "target"}, {Type::Integer, "source"}, {Type::Boolean, "on"}},
       .result = {{Type::Boolean, "done"}}});
  EXPECT_EQ(Hex(BerValue(Context(0), call)), test::kCallDescribed);
  EXPECT_EQ(Hex(Packets(InvocationResult(1, true, std::vector<GlowValue>{true}))),
            test::kCallAnswered);
}

TEST(GlowAnswers, NodesByTheirPath) {
  EXPECT_EQ(Hex(EmptyNode({1, 4, 3})), "6A 07 A0 05 0D 03 01 04 03");
  EXPECT_EQ(Hex(QualifiedNode({1, 6}, {.identifier = "link", .description = "Link"})),
            "6A 1A A0 04 0D 02 01 06 A1 12 31 10 A0 06 0C 04 6C 69 6E 6B A1 06 0C 04 4C 69 6E 6B");
}

}  // namespace
}  // namespace ember
