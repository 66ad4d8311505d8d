// SPDX-License-Identifier: MIT

#include "gateway/ember/s101.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/hex.h"

namespace ember {
namespace {

using test::FromHex;
using test::Hex;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kRootAsked[] =
    "FE 00 0E 00 01 C0 01 02 1F 02 60 0B 6B 09 A0 07 62 05 A0 03 02 01 20 B4 EC FF";

// What a reader makes of a stream: "message 60 0B", "request", "response"; "broken" at the end.
std::vector<std::string> Read(FrameReader& reader, const Bytes& bytes) {
  std::vector<FrameReader::Event> events;
  const bool isWhole = reader.Read(bytes, &events);
  std::vector<std::string> words;
  for (const FrameReader::Event& event : events) {
    switch (event.kind) {
      case FrameReader::Kind::Message:
        words.push_back("message " + Hex(event.message));
        break;
      case FrameReader::Kind::KeepAliveRequest:
        words.emplace_back("request");
        break;
      case FrameReader::Kind::KeepAliveResponse:
        words.emplace_back("response");
        break;
    }
  }
  if (!isWhole) words.emplace_back("broken");
  return words;
}

std::vector<std::string> Read(std::string_view hex) {
  FrameReader reader;
  return Read(reader, FromHex(hex));
}

TEST(S101, ChecksumOfTheUsualText) {
  const std::string digits = "123456789";
  EXPECT_EQ(Crc(Bytes(digits.begin(), digits.end())), 0x906E);
}

TEST(S101, KeepAlives) {
  EXPECT_EQ(Hex(KeepAliveRequest()), "FE 00 0E 01 01 94 E4 FF");
  EXPECT_EQ(Hex(KeepAliveResponse()), "FE 00 0E 02 01 FD DC CE FF");
  EXPECT_THAT(Read("FE 00 0E 01 01 94 E4 FF FE 00 0E 02 01 FD DC CE FF"),
              ElementsAre("request", "response"));
}

TEST(S101, AMessageInOnePacket) {
  EXPECT_EQ(Hex(Packets(FromHex("60 0B 6B 09 A0 07 62 05 A0 03 02 01 20"))), kRootAsked);
  EXPECT_THAT(Read(kRootAsked), ElementsAre("message 60 0B 6B 09 A0 07 62 05 A0 03 02 01 20"));
}

TEST(S101, BytesFromF8UpAreEscaped) {
  EXPECT_THAT(Read("FE 00 0E 00 01 C0 01 02 1F 02 60 10 6B 0E A0 0C 62 0A A0 03 02 01 20 A1 03 02 "
                   "01 FD DF 94 8F FF"),
              ElementsAre("message 60 10 6B 0E A0 0C 62 0A A0 03 02 01 20 A1 03 02 01 FF"));
  EXPECT_EQ(Hex(Packets(FromHex("60 10 6B 0E A0 0C 62 0A A0 03 02 01 20 A1 03 02 01 FF"))),
            "FE 00 0E 00 01 C0 01 02 1F 02 60 10 6B 0E A0 0C 62 0A A0 03 02 01 20 A1 03 02 01 FD "
            "DF 94 8F FF");
}

// The bytes do not matter where a stream is cut.
TEST(S101, AStreamMayBeCutAnywhere) {
  FrameReader reader;
  std::vector<std::string> words;
  for (const std::uint8_t byte : FromHex(kRootAsked)) {
    for (std::string& word : Read(reader, {byte})) words.push_back(std::move(word));
  }
  EXPECT_THAT(words, ElementsAre("message 60 0B 6B 09 A0 07 62 05 A0 03 02 01 20"));
  EXPECT_EQ(reader.Kept(), 0U);
}

// A packet carries 1,024 bytes; only the first and the last say so.
TEST(S101, ALongMessageIsCutIntoPackets) {
  Bytes message(2500, 0x11);
  const Bytes frames = Packets(message);
  const std::string words = Hex(frames);
  EXPECT_EQ(words.rfind("FE 00 0E 00 01 80 01 02 1F 02 11 11", 0), 0U) << words.substr(0, 60);
  EXPECT_NE(words.find("FF FE 00 0E 00 01 00 01 02 1F 02 11"), std::string::npos);
  EXPECT_NE(words.find("FF FE 00 0E 00 01 40 01 02 1F 02 11"), std::string::npos);
  EXPECT_EQ(frames.size(), 2500U + 3 * 13U);
  FrameReader reader;
  EXPECT_THAT(Read(reader, frames), ElementsAre("message " + Hex(message)));
}

TEST(S101, AMessageOfExactlyOnePacketHasNoSecond) {
  const std::string words = Hex(Packets(Bytes(1024, 0x11)));
  EXPECT_EQ(words.rfind("FE 00 0E 00 01 C0", 0), 0U);
  EXPECT_EQ(words.find("FF FE"), std::string::npos);
}

TEST(S101, WhatIsNoFrameOfOursIsPassedOver) {
  const std::string good = std::string(" ") + kRootAsked;
  const std::string message = "message 60 0B 6B 09 A0 07 62 05 A0 03 02 01 20";
  // Noise, a frame cut off by the next, a wrong checksum.
  EXPECT_THAT(Read("00 11 FD 22" + good), ElementsAre(message));
  EXPECT_THAT(Read("FE 00 0E 00 01" + good), ElementsAre(message));
  EXPECT_THAT(Read("FE 00 0E 01 01 94 E5 FF" + good), ElementsAre(message));
  EXPECT_THAT(Read("FE FF FE FD FF" + good), ElementsAre(message));
  // Well made, but of another message type (0D), command (05), DTD (02).
  EXPECT_THAT(Read("FE 00 0D 01 01 EB B9 FF"), IsEmpty());
  EXPECT_THAT(Read("FE 00 0E 05 01 F1 86 FF"), IsEmpty());
}

// Some peers try this first; its raw bytes may look like anything.
TEST(S101, TheOtherFramingIsReadOverByItsLength) {
  EXPECT_THAT(Read("F8 01 04 00 0E 01 01 FE 00 0E 01 01 94 E4 FF"), ElementsAre("request"));
  EXPECT_THAT(Read("F8 01 02 FE F8 FE 00 0E 01 01 94 E4 FF"), ElementsAre("request"));
  EXPECT_THAT(Read("F8 02 00 01 FE FE 00 0E 01 01 94 E4 FF"), ElementsAre("request"));
  EXPECT_THAT(Read("F8 00 FE 00 0E 01 01 94 E4 FF"), ElementsAre("request"));
  EXPECT_THAT(Read("F8 03 01 00 01"), ElementsAre("broken"));
}

TEST(S101, APacketWithoutABeginningIsDropped) {
  Bytes frames = Packets(Bytes(1500, 0x11));
  const Bytes second(frames.begin() + 1037, frames.end());
  ASSERT_EQ(Hex(second).rfind("FE 00 0E 00 01 40", 0), 0U);
  FrameReader reader;
  EXPECT_THAT(Read(reader, second), IsEmpty());
}

// A packet for nothing has no answer.
TEST(S101, AnEmptyMessageIsNone) {
  const Bytes body = FromHex("00 0E 00 01 E0 01 02 1F 02");
  Bytes frame{0xFE};
  frame.insert(frame.end(), body.begin(), body.end());
  const std::uint16_t crc = Crc(body);
  frame.push_back(static_cast<std::uint8_t>(crc & 0xFF));
  frame.push_back(static_cast<std::uint8_t>(crc >> 8));
  frame.push_back(0xFF);
  ASSERT_LT(crc & 0xFF, 0xF8);
  ASSERT_LT(crc >> 8, 0xF8);
  FrameReader reader;
  EXPECT_THAT(Read(reader, frame), IsEmpty());
}

TEST(S101, AFrameWithoutAnEndIsTooLong) {
  FrameReader reader;
  std::vector<FrameReader::Event> events;
  EXPECT_TRUE(reader.Read(FromHex("FE"), &events));
  EXPECT_TRUE(reader.Read(Bytes(65536, 0x11), &events));
  EXPECT_FALSE(reader.Read(Bytes(1, 0x11), &events));
  EXPECT_THAT(events, IsEmpty());
}

TEST(S101, AMessageWithoutAnEndIsTooLong) {
  const Bytes frames = Packets(Bytes(300000, 0x11));
  FrameReader reader;
  std::vector<FrameReader::Event> events;
  EXPECT_FALSE(reader.Read(frames, &events));
  EXPECT_THAT(events, IsEmpty());
  EXPECT_LE(reader.Kept(), 262144U + 65536U);
}

}  // namespace
}  // namespace ember
