// SPDX-License-Identifier: MIT

#include "switcher/decoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/tally.h"
#include "tests/support/hex.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_switcher_events.h"

namespace switcher {
namespace {

using test::FromHex;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class DecoderTest : public testing::Test {
 protected:
  DecoderTest() {
    SetChannels(16);
    decoder_.SetHistory(&events_);
  }

  void SetChannels(int count) {
    model_.ChannelCount = static_cast<std::int16_t>(count);
    model_.AllocateMap();
    model_.ResetLevels();
  }

  // Decodes and returns what was announced.
  std::vector<std::string> Decode(std::string_view hex) {
    events_.seen.clear();
    decoder_.Decode(FromHex(hex));
    return events_.seen;
  }

  std::string Row(int output) const {
    std::string marks;
    for (const std::uint8_t crosspoint : model_.CrosspointMap.Row(output)) {
      marks += crosspoint == 1 ? 'x' : '.';
    }
    return marks;
  }

  model::SystemModel model_;
  test::RecordingSwitcherEvents events_;
  test::RecordingReporter reporter_;
  stations::Changes changes_;
  Decoder decoder_{{.model = model_,
                    .database = [] { return nullptr; },
                    .reporter = reporter_,
                    .changes = changes_,
                    .observers = {events_}}};
};

TEST_F(DecoderTest, WireOutputZeroIsRowOne) {
  EXPECT_THAT(Decode("F3 00 00 00 00 02 00 00 00 02 FF"), ElementsAre("row 1 mode 0"));
  EXPECT_EQ(Row(1), ".x..............");
  EXPECT_EQ(model_.ChannelStatus[1], 0);
}

TEST_F(DecoderTest, StatusValueIsTheModeAndIsKept) {
  EXPECT_THAT(Decode("F3 01 00 01 00 00 00 00 01 02 FF"), ElementsAre("row 2 mode 1"));
  EXPECT_EQ(Row(2), "...............x");
  EXPECT_EQ(model_.ChannelStatus[2], 1);
}

TEST_F(DecoderTest, RowReplacesWhatWasThere) {
  Decode("F3 00 00 00 00 7F 01 7F 01 7E FF");
  EXPECT_EQ(Row(1), "xxxxxxxxxxxxxxxx");
  Decode("F3 00 00 00 00 00 00 01 00 01 FF");
  EXPECT_EQ(Row(1), "........x.......");
}

TEST_F(DecoderTest, LastOutputCompletesTheMapAndAFailureUndoesIt) {
  Decode("F3 0E 00 00 00 00 00 00 00 0E FF");
  EXPECT_FALSE(model_.XmapComplete);
  Decode("F3 0F 00 00 00 00 00 00 00 0F FF");
  EXPECT_TRUE(model_.XmapComplete);
  Decode("F3 00 00 00 00 00 00 00 00 00 FF");
  EXPECT_TRUE(model_.XmapComplete);
  for (const char* bad : {
           "F3 00 00 00 00 00 00 00 00 01 FF",     // checksum
           "F3 00 00 00 00 00 00 00 00 00 00 FF",  // size
           "F3 10 00 00 00 00 00 00 00 10 FF",     // output
           "F3 00 00 00 00 00 00 00 00 00 00",     // end
       }) {
    model_.XmapComplete = true;
    EXPECT_THAT(Decode(bad), IsEmpty()) << bad;
    EXPECT_FALSE(model_.XmapComplete) << bad;
  }
}

TEST_F(DecoderTest, WhatIsRefusedIsAnnouncedAlsoOutsideARetrieval) {
  ASSERT_FALSE(model_.RetrieveActive);
  Decode("F3 01 00 00 00 00 00 00 00 01 FF");
  EXPECT_THAT(events_.refused, IsEmpty());
  for (const char* bad : {
           "F3 01 00 00 00 00 00 00 00 02 FF",     // checksum
           "F3 01 00 00 00 00 00 00 00 00 01 FF",  // size
           "F3 10 00 00 00 00 00 00 00 10 FF",     // output
           "F3 01 00 00 00 00 00 00 00 01 00",     // end
           "E4 00 FF", "E2 FF",
           "F5 01 00 00 00 00 00 01 FF",  // right, but there is no database
       }) {
    EXPECT_THAT(Decode(bad), IsEmpty()) << bad;
  }
  EXPECT_THAT(
      events_.refused,
      ElementsAre("Output 2 Crosspoint Map|1", "Output 2 Crosspoint Map|2",
                  "Output 17 Crosspoint Map|3", "Output 2 Crosspoint Map|4",
                  "QDV Responding Tally Info|2", "DCA Gain Settings|2", "Output 2 Inhibit Map|5"));
}

TEST_F(DecoderTest, BadChecksumKeepsRow) {
  EXPECT_THAT(Decode("F3 04 00 01 00 03 00 00 00 00 FF"), IsEmpty());
  EXPECT_EQ(Row(5), "xx..............");
  EXPECT_EQ(model_.ChannelStatus[5], 1);
}

TEST_F(DecoderTest, WrongSizeAndWrongOutputChangeNothing) {
  Decode("F3 00 00 01 00 7F 01 00 00 00 00 FF");
  Decode("F3 10 00 01 00 7F 01 00 00 10 FF");
  for (int output = 1; output <= 16; ++output) {
    EXPECT_EQ(Row(output), "................");
    EXPECT_EQ(model_.ChannelStatus[output], 0);
  }
}

TEST_F(DecoderTest, MapOfASystemThatIsNoMultipleOfEightIsRefused) {
  SetChannels(12);
  EXPECT_THAT(Decode("F3 00 00 00 00 01 00 01 FF"), IsEmpty());
  EXPECT_THAT(Decode("F3 00 00 00 00 01 00 01 00 02 FF"), IsEmpty());
  EXPECT_EQ(Row(1), "............");
}

TEST_F(DecoderTest, NoChannelsRefuseEveryRow) {
  SetChannels(0);
  EXPECT_THAT(Decode("F3 00 00 00 00 00 FF"), IsEmpty());
}

TEST_F(DecoderTest, GainsReachTheTableAndTheView) {
  EXPECT_THAT(Decode("E2 00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 64 4D FF"),
              ElementsAre("gains"));
  EXPECT_EQ(model_.InputGains[0], 0);
  EXPECT_EQ(model_.InputGains[14], 14);
  EXPECT_EQ(model_.InputGains[15], 100);
  EXPECT_EQ(model_.InputGains[16], 64);  // beyond the message: as before
}

TEST_F(DecoderTest, GainsBeyondTheTableAreLeftOut) {
  SetChannels(128);
  std::string hex = "E2";
  for (int channel = 0; channel < 128; ++channel) hex += channel < 64 ? " 01" : " 02";
  hex += " 40 FF";  // 64 * 1 + 64 * 2 = 192
  EXPECT_THAT(Decode(hex), ElementsAre("gains"));
  EXPECT_EQ(model_.InputGains[63], 1);
}

TEST_F(DecoderTest, RefusedGainsChangeNothing) {
  EXPECT_THAT(Decode("E2 00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 64 00 FF"), IsEmpty());
  EXPECT_EQ(model_.InputGains[0], 64);
}

class TallyDecoderTest : public DecoderTest {
 protected:
  // A tally in which point 64 has the value 1.
  static std::string Tally(std::string_view checksum) {
    std::string hex = "E4";
    for (int point = 1; point <= 63; ++point) hex += " 00 00";
    return hex + " 01 00 " + std::string(checksum) + " FF";
  }
};

TEST_F(TallyDecoderTest, AcceptedTallyIsSeen) {
  EXPECT_THAT(Decode(Tally("01")), ElementsAre("tally"));
  EXPECT_EQ(model_.QdvTally[63], 1);
  EXPECT_TRUE(model_.TallySeen);
}

TEST_F(TallyDecoderTest, RefusedTallyIsNotWrittenAndNotSeen) {
  EXPECT_THAT(Decode(Tally("02")), IsEmpty());
  EXPECT_EQ(model_.QdvTally[63], 0);
  EXPECT_FALSE(model_.TallySeen);
}

TEST_F(TallyDecoderTest, HistoryOfARetrievalNamesEveryMessage) {
  model_.RetrieveActive = true;
  EXPECT_THAT(Decode("F3 04 00 00 00 00 00 00 00 04 FF"),
              ElementsAre("Output 5 Crosspoint Map|11|OK", "row 5 mode 0"));
  EXPECT_THAT(Decode("F3 04 00 00 00 00 00 00 00 05 FF"),
              ElementsAre("Output 5 Crosspoint Map|11|Failed Csum"));
  EXPECT_THAT(Decode("F3 04 00 00 00 00 00 00 04 FF"),
              ElementsAre("Output 5 Crosspoint Map|10|Size Error"));
  EXPECT_THAT(Decode("F3 20 00 00 00 00 00 00 00 20 FF"),
              ElementsAre("Output 33 Crosspoint Map|11|Channel Error"));
  EXPECT_THAT(Decode("F3 04 00 00 00 00 00 00 00 04 00"),
              ElementsAre("Output 5 Crosspoint Map|11|Missing EOM"));
  EXPECT_THAT(Decode(Tally("01")), ElementsAre("QDV Responding Tally|131|OK", "tally"));
  EXPECT_THAT(Decode(Tally("02")), ElementsAre("QDV Responding Tally Info|131|Failed Csum"));
  EXPECT_THAT(Decode("E4 00 FF"), ElementsAre("QDV Responding Tally Info|3|Size Error"));
  EXPECT_THAT(Decode("E2 00 FF"), ElementsAre("DCA Gain Settings|3|Size Error"));
  EXPECT_THAT(Decode("E2 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 64 64 FF"),
              ElementsAre("DCA Gain Settings|19|OK", "gains"));
  EXPECT_THAT(Decode("E2 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 64 63 FF"),
              ElementsAre("DCA Gain Settings|19|Failed Csum"));
  EXPECT_THAT(Decode("E2 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 64 64 00"),
              ElementsAre("DCA Gain Settings|19|Missing EOM"));
}

TEST_F(TallyDecoderTest, NothingIsLoggedOutsideARetrieval) {
  EXPECT_THAT(Decode(Tally("01")), ElementsAre("tally"));
  EXPECT_THAT(Decode("F3 04 00 00 00 00 00 00 00 04 FF"), ElementsAre("row 5 mode 0"));
  EXPECT_THAT(Decode("F3 04 FF"), IsEmpty());
  EXPECT_THAT(Decode("E2 00 FF"), IsEmpty());
}

TEST_F(DecoderTest, EmptyAndForeignMessagesDoNothing) {
  EXPECT_THAT(Decode(""), IsEmpty());
  EXPECT_THAT(Decode("E0 00 FF"), IsEmpty());
}

TEST_F(DecoderTest, EveryMessageOfTheSwitcherIsDecoded) {
  for (const MessageKind& kind : kMessages) {
    events_.refused.clear();
    const Bytes cutShort{kind.code, kEndOfMessage};
    decoder_.Decode(cutShort);
    if (kind.FromSwitcher()) {
      EXPECT_THAT(events_.refused, SizeIs(1)) << kind.name;
    } else {
      EXPECT_THAT(events_.refused, IsEmpty()) << kind.name;
    }
  }
}

TEST_F(DecoderTest, ObserversAreToldInTheirOrder) {
  // Each keeps a place in the order of those that were told.
  class Observer : public SwitcherEvents {
   public:
    Observer(std::vector<std::string>& told, std::string name)
        : told_(told), name_(std::move(name)) {}
    void TallyChanged() override { told_.push_back(name_); }

   private:
    std::vector<std::string>& told_;
    const std::string name_;
  };
  std::vector<std::string> told;
  Observer first(told, "first");
  Observer second(told, "second");
  Decoder decoder({.model = model_,
                   .database = [] { return nullptr; },
                   .reporter = reporter_,
                   .changes = changes_,
                   .observers = {first, second}});
  decoder.Decode(EncodeTally({}));
  EXPECT_THAT(told, ElementsAre("first", "second"));
}

}  // namespace
}  // namespace switcher
