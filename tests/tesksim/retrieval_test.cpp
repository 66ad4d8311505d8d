// SPDX-License-Identifier: MIT
//
// What the switcher answers when it is asked for its tables.

#include "tools/tesksim/retrieval.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "switcher/wire/frame.h"
#include "switcher/wire/messages/button_data.h"
#include "switcher/wire/messages/flag_row.h"
#include "switcher/wire/messages/label_order.h"
#include "switcher/wire/messages/label_texts.h"
#include "switcher/wire/messages/opto_data.h"
#include "tests/support/hex.h"
#include "tests/tesksim/simulated_line.h"
#include "tools/tesksim/kept_state.h"

namespace tesksim {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using test::Hex;
using test::Times;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// Cuts a stream into messages at the end bytes; labels here have none inside.
std::vector<Bytes> Cut(const Bytes& stream) {
  std::vector<Bytes> messages(1);
  for (const std::uint8_t byte : stream) {
    messages.back().push_back(byte);
    if (byte == 0xFF) messages.emplace_back();
  }
  messages.pop_back();
  return messages;
}

class RetrievalTest : public testing::Test {
 protected:
  SwitcherState& State() { return line_.simulator.State(); }
  std::vector<Bytes> Retrieve() { return Cut(test::FromHex(line_.Ask("E7"))); }
  void Spoil(const std::string& text) {
    const auto spoiled = ParseSpoiledMessage(SplitWords(text));
    ASSERT_TRUE(spoiled.has_value()) << text;
    line_.simulator.Tables().Spoil(*spoiled);
  }

  SimulatedLine line_{{.channels = 8, .stations = 8, .labels = 2}};
};

// The messages' places in the answer of this system.
constexpr std::size_t kRelaysOf1 = 3;
constexpr std::size_t kOptos = 18;
constexpr std::size_t kButtonsOf8 = 26;

TEST_F(RetrievalTest, BringsEveryTableThatTheSwitcherSends) {
  std::set<int> codes;
  for (const Bytes& message : Retrieve()) codes.insert(message.front());
  for (const switcher::MessageKind& kind : switcher::kMessages) {
    EXPECT_EQ(codes.contains(kind.code),
              kind.use == switcher::MessageUse::Table && kind.FromSwitcher())
        << kind.name;
  }
}

// The rows of the map, the gains, the tally and the tables.
TEST_F(RetrievalTest, AllThatIsAskedForBringsEveryMessageOfTheSwitcher) {
  std::set<int> codes;
  for (const char* const question : {"E5", "E4", "E7"}) {
    for (const Bytes& message : Cut(test::FromHex(line_.Ask(question)))) {
      codes.insert(message.front());
    }
  }
  for (const switcher::MessageKind& kind : switcher::kMessages) {
    EXPECT_EQ(codes.contains(kind.code), kind.FromSwitcher()) << kind.name;
  }
}

TEST_F(RetrievalTest, EveryTableByteByByte) {
  State().outLabels[1] = "CAM 1   ";
  State().outLabels[2] = "{IC     ";
  State().inLabels[1] = "\x80\xC9t\xE9  \xFE ";
  State().relays[1].set(0);
  State().relays[1].set(63);
  State().buttons[8][1] = {.type = 255, .first = 130, .members = Members("10000001")};
  State().optos[1] = {.type = 3, .channel = 200, .first = 2, .members = Members("10000000")};
  const std::vector<Bytes> answer = Retrieve();
  ASSERT_EQ(answer.size(), 2u + 16 + 1 + 8);
  EXPECT_EQ(Hex(answer[0]), "F9 14 43 41 4D 20 31 20 20 20 7B 49 43 20 20 20 20 20 3D FF");
  EXPECT_EQ(Hex(answer[1]), "F9 0A 80 C9 74 E9 20 20 FE 20 49 6E 70 74 20 30 30 32 5B FF");
  EXPECT_EQ(Hex(answer[2]), "F5 00 00 01 00 01 FF");
  EXPECT_EQ(Hex(answer[kRelaysOf1]),
            "F4 00 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 01 01 FF");
  EXPECT_EQ(Hex(answer[16]), "F5 07 00 00 01 07 FF");
  EXPECT_EQ(Hex(answer[17]), "F4 07 00 " + Times(8, "00 00") + "07 FF");
  EXPECT_THAT(Hex(answer[kOptos]),
              StartsWith("E1 03 00 48 01 02 00 00 01 " + Times(7, "00 00") +
                         "7E 01 02 00 02 00 02 00 " + Times(7, "00 00") + "7E 01 "));
  EXPECT_EQ(answer[kOptos].size(), 1411u);
  EXPECT_THAT(Hex(answer[19]), StartsWith("FB 00 00 00 00 01 00 00 00 02 00 "));
  EXPECT_THAT(Hex(answer[kButtonsOf8]), StartsWith("FB 07 00 7F 01 02 01 00 00 02 00 "));
  // Its groups: button 1 acts on 1 and 8, 2 to 8 on themselves, the rest on stations that the
  // system does not have.
  EXPECT_THAT(Hex(answer[kButtonsOf8]),
              HasSubstr(" 20 00 01 01 02 00 04 00 08 00 10 00 20 00 40 00 00 01 00 00 00 00 "));
  EXPECT_EQ(answer[kButtonsOf8].size(), 197u);
}

TEST_F(RetrievalTest, TheLastStationsButtonsAreLast) {
  const std::vector<Bytes> answer = Retrieve();
  ASSERT_EQ(answer.size(), kButtonsOf8 + 1);
  EXPECT_EQ(answer.back()[0], 0xFB);
  EXPECT_EQ(answer.back()[1], 0x07);
}

struct SizeCase {
  SystemSizes sizes;
  std::size_t messages;
  std::size_t bytes;
};

// Every message is one that the console accepts, and what one switcher gives back another one
// stores.
TEST(Retrieval, EverySizeOfSystem) {
  const SizeCase cases[] = {
      {{.channels = 16, .stations = 16, .labels = 32}, 51, 2 * 260 + 16 * 30 + 1411 + 16 * 261},
      {{.channels = 64, .stations = 64, .labels = 128}, 195, 2 * 1028 + 64 * 42 + 1411 + 64 * 645},
      {{.channels = 128, .stations = 64, .labels = 128},
       323,
       2 * 1028 + 128 * 58 + 1411 + 64 * 645},
      {{.channels = 256, .stations = 256, .labels = 256},
       771,
       2 * 2052 + 256 * 90 + 1411 + 256 * 2181},
  };
  for (const SizeCase& one : cases) {
    SCOPED_TRACE(one.sizes.channels);
    const SystemSizes& sizes = one.sizes;
    SimulatedLine from(sizes);
    SimulatedLine to(sizes);
    SwitcherState& state = from.simulator.State();
    for (int output = 1; output <= sizes.channels; ++output) {
      state.inhibits.At(output, sizes.channels + 1 - output) = 1;
      state.relays[output].set(static_cast<std::size_t>(output % 64));
    }
    for (int station = 1; station <= sizes.stations; ++station) {
      for (int button = 1; button <= 32; ++button) {
        Members members;
        members.set(static_cast<std::size_t>((station * button) % sizes.stations));
        members.set(static_cast<std::size_t>(sizes.stations - 1));
        state.buttons[station][button] = {
            .type = button * 8 - 1, .first = station - 1, .members = members};
      }
    }
    for (int label = 1; label <= sizes.labels; ++label) {
      state.outLabels[label] = "out " + std::to_string(1000 + label);
      state.inLabels[label] = "in\xE9 " + std::to_string(1000 + label);
    }
    state.optos[64] = {.type = 1, .channel = sizes.channels - 1, .first = 64, .members = {}};

    from.Send("E7");
    const Bytes stream = from.Run(seconds(120));
    EXPECT_EQ(stream.size(), one.bytes);
    const std::vector<Bytes> messages = Cut(stream);
    ASSERT_EQ(messages.size(), one.messages);
    switcher::LabelOrder order{.selector = 20, .stations = {}};
    for (int label = 1; label <= sizes.labels; ++label) order.stations.push_back(label);
    for (const Bytes& message : messages) {
      if (message[0] == 0xF9) {
        order.selector = message[1];
        to.simulator.Receive(switcher::EncodeLabelOrder(order), to.now);
      }
      to.simulator.Receive(message, to.now);
    }
    EXPECT_EQ(to.simulator.Counts().tables, one.messages + 2);
    EXPECT_EQ(WriteState(to.simulator.State()), WriteState(state));
  }
}

TEST_F(RetrievalTest, KeepsThePaceOfTheLine) {
  SimulatedLine line({.channels = 64});
  line.Send("E7");
  std::size_t received = 0;
  for (int tick = 1; tick <= 9000; ++tick) {
    received += line.Run(milliseconds(1)).size();
    const double carried = std::min(tick * 5.760, 47435.0);
    ASSERT_LE(static_cast<double>(received), carried);
    ASSERT_GE(static_cast<double>(received), carried - 7.0);
  }
  EXPECT_EQ(received, 47435u);
}

TEST_F(RetrievalTest, NothingComesBetweenTwoBytesOfATable) {
  line_.Send("E7");
  EXPECT_EQ(Hex(line_.Run(milliseconds(2))), "F9 14 53 74 61 2E 20 30 30 31 53");
  // A keep-alive, a tally poll and a take of output 6 inside the first message.
  const std::string rest = line_.Ask("ED E4 FD 03 00 07 00 05 00 0F FF");
  EXPECT_THAT(rest, StartsWith("74 61 2E 20 30 30 32 23 FF EB E4 00 00"));
  EXPECT_THAT(rest, HasSubstr(" 00 FF F3 05 00 00 00 00 01 05 FF F9 0A 49 6E 70 74 20 30 30 31 "));
  std::string alone = line_.Ask("E7");
  alone.erase(0, 3 * 20);  // the first message, of which half was compared above
  EXPECT_THAT(rest, testing::EndsWith(alone));
}

TEST_F(RetrievalTest, GoesBeforeTheRestOfAMap) {
  line_.Send("E5");
  EXPECT_EQ(Hex(line_.Run(milliseconds(2))), "F3 00 00 00 00 00 00 00 FF F3 01");
  const std::string rest = line_.Ask("E7");
  EXPECT_THAT(rest, StartsWith("00 00 00 00 00 01 FF F9 14 "));
  EXPECT_THAT(rest, HasSubstr(" FF F3 02 00 00 00 00 00 02 FF F3 03 "));
  EXPECT_THAT(rest, testing::EndsWith("E2 40 40 40 40 40 40 40 40 00 FF"));
}

TEST_F(RetrievalTest, AskedForAgainItStartsAgain) {
  const std::string whole = line_.Ask("E7");
  line_.Send("E7");
  const std::string begun = Hex(line_.Run(milliseconds(5)));
  EXPECT_EQ(begun, whole.substr(0, begun.size()));
  // The message under way comes to its end, then everything comes.
  const std::string answer = line_.Ask("E7");
  constexpr std::size_t kRest = 12 * 3;
  EXPECT_EQ(answer.substr(0, kRest), "30 31 49 6E 70 74 20 30 30 32 23 FF ");
  EXPECT_TRUE(answer.substr(kRest) == whole);
}

TEST_F(RetrievalTest, ADroppedLineEndsIt) {
  line_.Send("E7");
  line_.Run(milliseconds(5));
  line_.simulator.DropLine();
  EXPECT_EQ(line_.Answer(), "");
}

TEST_F(RetrievalTest, SilenceEndsItAndAnswersNone) {
  line_.Send("E7");
  line_.Run(milliseconds(5));
  line_.simulator.SetSilence(true);
  EXPECT_EQ(line_.Ask("E7"), "");
  line_.simulator.SetSilence(false);
  EXPECT_EQ(line_.Answer(), "");
  EXPECT_EQ(Retrieve().size(), 27u);
}

TEST_F(RetrievalTest, WhatChangesMeanwhileComesAsItStandsThen) {
  line_.Send("E7");
  line_.Run(milliseconds(5));
  EXPECT_THAT(line_.Ask("F5 07 00 01 01 08 FF"), HasSubstr(" F5 07 00 01 01 08 FF "));
}

TEST_F(RetrievalTest, SpoiledChecksum) {
  Spoil("relays 1 checksum");
  const std::vector<Bytes> answer = Retrieve();
  EXPECT_EQ(Hex(answer[kRelaysOf1]), "F4 00 00 " + Times(8, "00 00") + "01 FF");
  EXPECT_EQ(Hex(answer[kRelaysOf1 + 2]), "F4 01 00 " + Times(8, "00 00") + "01 FF");
  EXPECT_THAT(line_.log, Contains("tx table relays 1 (spoiled: checksum)"));
  EXPECT_THAT(line_.log, Contains("tx table relays 2"));
  EXPECT_EQ(Hex(Retrieve()[kRelaysOf1]), Hex(answer[kRelaysOf1]));  // in every retrieval
  line_.simulator.Tables().Mend();
  EXPECT_EQ(Hex(Retrieve()[kRelaysOf1]), "F4 00 00 " + Times(8, "00 00") + "00 FF");
}

TEST_F(RetrievalTest, SpoiledLength) {
  Spoil("F5 1 length");
  Spoil("label-texts 20 length");
  const std::vector<Bytes> answer = Retrieve();
  EXPECT_EQ(Hex(answer[0]), "F9 14 53 74 61 2E 20 30 30 31 53 74 61 2E 20 30 30 23 FF");
  EXPECT_EQ(Hex(answer[2]), "F5 00 00 01 01 FF");
}

TEST_F(RetrievalTest, SpoiledNumber) {
  Spoil("inhibits 1 number");
  Spoil("buttons 8 number");
  const std::vector<Bytes> answer = Retrieve();
  EXPECT_EQ(Hex(answer[2]), "F5 08 00 01 00 09 FF");  // output 9 of 8, and the checksum is right
  switcher::ButtonData data;
  EXPECT_EQ(switcher::ParseButtonData(answer[kButtonsOf8], 9, 32, 1, &data),
            switcher::DecodeStatus::Ok);
  EXPECT_EQ(data.station, 9);
}

TEST_F(RetrievalTest, SpoiledNumberInTheLargestSystem) {
  SimulatedLine big({.channels = 256, .stations = 8, .labels = 1});
  const auto spoiled = ParseSpoiledMessage(SplitWords("relays 1 number"));
  big.simulator.Tables().Spoil(*spoiled);
  // Output 257: 256 is 0 + 2 * 128, and adds nothing to the checksum.
  EXPECT_THAT(big.Ask("E7"), HasSubstr(" FF F4 00 02 " + Times(8, "00 00") + "00 FF "));
}

TEST_F(RetrievalTest, SpoiledEnd) {
  Spoil("inhibits 1 end");
  EXPECT_EQ(Hex(Retrieve()[2]), "F5 00 00 01 00 01 F4 00 00 " + Times(8, "00 00") + "00 FF");
}

TEST_F(RetrievalTest, Dropped) {
  Spoil("label-texts 20 drop");
  Spoil("optos drop");
  Spoil("buttons 8 drop");
  const std::vector<Bytes> answer = Retrieve();
  ASSERT_EQ(answer.size(), 24u);
  EXPECT_EQ(answer[0][1], 0x0A);
  EXPECT_EQ(answer[17][0], 0xFB);
  EXPECT_EQ(answer.back()[1], 0x06);
  EXPECT_THAT(line_.log, Contains("tx table optos (dropped)"));
  EXPECT_THAT(line_.log, Not(Contains("tx table optos")));
}

TEST_F(RetrievalTest, EverythingDropped) {
  SimulatedLine small({.channels = 8, .stations = 1, .labels = 1});
  for (const char* message : {"label-texts 20", "label-texts 10", "optos", "buttons 1"}) {
    small.simulator.Tables().Spoil(
        *ParseSpoiledMessage(SplitWords(message + std::string(" drop"))));
  }
  for (int output = 1; output <= 8; ++output) {
    for (const char* row : {"inhibits ", "relays "}) {
      const std::string text = row + std::to_string(output) + " drop";
      small.simulator.Tables().Spoil(*ParseSpoiledMessage(SplitWords(text)));
    }
  }
  EXPECT_EQ(small.Ask("E7"), "");
  EXPECT_EQ(small.Ask("ED"), "EB");
}

TEST_F(RetrievalTest, DroppedWhileItIsTheNextOne) {
  line_.Send("E7");
  line_.Run(milliseconds(1));
  Spoil("label-texts 10 drop");
  EXPECT_THAT(line_.Answer(), HasSubstr("30 30 32 23 FF F5 00 00 "));
}

}  // namespace
}  // namespace tesksim
