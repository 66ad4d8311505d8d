// SPDX-License-Identifier: MIT
//
// The tables as the console sends them, byte by byte.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/hex.h"
#include "tests/tesksim/simulated_line.h"
#include "tools/tesksim/kept_state.h"
#include "tools/tesksim/state_text.h"

namespace tesksim {
namespace {

using test::Times;
using testing::ElementsAre;

class TablesTest : public testing::Test {
 protected:
  SwitcherState& State() { return line_.simulator.State(); }
  const Stats& Counts() { return line_.simulator.Counts(); }

  // The switcher takes the message and says nothing.
  void Send(const std::string& hex) { EXPECT_EQ(line_.Ask(hex), ""); }

  SimulatedLine line_{{.channels = 16, .stations = 16, .labels = 2}};
};

constexpr char kOrder21[] = "F7 14 00 01 00 00 00 15 FF ";  // output labels: station 2, then 1
constexpr char kTexts[] =
    "F9 14 7B 49 43 20 20 20 20 20 43 41 4D 20 31 20 20 20 3D FF";  // "{IC", "CAM 1"

TEST_F(TablesTest, LabelsComeInTheOrderThatWasSentBefore) {
  Send(kOrder21 + std::string(kTexts));
  EXPECT_EQ(State().outLabels[1], "CAM 1   ");
  EXPECT_EQ(State().outLabels[2], "{IC     ");
  EXPECT_EQ(State().inLabels[1], "Inpt 001");
  EXPECT_THAT(line_.log, ElementsAre("rx label-order selector 20", "rx label-texts selector 20"));
  EXPECT_EQ(Counts().tables, 2u);
}

TEST_F(TablesTest, InputLabelsOfAnyCharacters) {
  // 0xFF among them: first and eighth of the first label.
  Send("F7 0A 00 00 00 01 00 0B FF");
  Send("F9 0A FF 80 C9 74 E9 20 20 FF 49 6E 70 74 20 30 30 32 3B FF");
  EXPECT_EQ(State().inLabels[1], "\xFF\x80\xC9t\xE9  \xFF");
  EXPECT_EQ(State().inLabels[2], "Inpt 002");
  EXPECT_EQ(State().outLabels[1], "Sta. 001");
  EXPECT_EQ(Counts().malformed, 0u);
}

TEST_F(TablesTest, TextsWithoutAnOrderAreRefused) {
  const std::string before = WriteState(State());
  Send(kTexts);
  EXPECT_THAT(line_.log, ElementsAre("rx label-texts selector 20, no order before it (refused)"));
  Send("F7 0A 00 00 00 01 00 0B FF");  // the order of the other labels
  Send(kTexts);
  EXPECT_EQ(Counts().refused, 2u);
  EXPECT_EQ(WriteState(State()), before);
}

TEST_F(TablesTest, AnOrderHoldsForOneMessage) {
  Send(kOrder21 + std::string(kTexts));
  Send("F9 14 53 74 61 2E 20 30 30 31 53 74 61 2E 20 30 30 32 23 FF");
  EXPECT_EQ(Counts().refused, 1u);
  EXPECT_EQ(State().outLabels[1], "CAM 1   ");
}

TEST_F(TablesTest, BrokenTextsUseTheOrderUp) {
  Send(kOrder21);
  Send("F9 14 7B 49 43 20 20 20 20 20 43 41 4D 20 31 20 20 20 3E FF");
  Send(kTexts);
  EXPECT_THAT(line_.log, ElementsAre("rx label-order selector 20",
                                     "rx malformed label-texts 20 bytes, wrong checksum",
                                     "rx label-texts selector 20, no order before it (refused)"));
  EXPECT_EQ(State().outLabels[1], "Sta. 001");
}

TEST_F(TablesTest, AWrongOrderIsRefusedAndItsTextsAreToo) {
  const std::string before = WriteState(State());
  for (const char* order : {"F7 14 00 01 00 01 00 16 FF",     // station 2 twice
                            "F7 14 00 00 00 02 00 16 FF",     // station 3 of 2
                            "F7 1E 00 00 00 01 00 1F FF"}) {  // selector 30
    SCOPED_TRACE(order);
    line_.log.clear();
    Send(order + std::string(" ") + kTexts);
    EXPECT_THAT(line_.log, ElementsAre(testing::EndsWith("(refused)"),
                                       "rx label-texts selector 20, no order before it (refused)"));
  }
  for (const char* order : {"F7 14 00 01 00 00 00 14 FF",  // checksum
                            "F7 14 00 00 00 14 FF"}) {     // one label
    SCOPED_TRACE(order);
    line_.log.clear();
    Send(order + std::string(" ") + kTexts);
    EXPECT_THAT(line_.log, ElementsAre(testing::StartsWith("rx malformed label-order"),
                                       "rx label-texts selector 20, no order before it (refused)"));
  }
  EXPECT_EQ(WriteState(State()), before);
}

TEST_F(TablesTest, TextsOfTheWrongLength) {
  Send(kOrder21 + std::string("F9 14 43 41 4D 20 31 20 20 20 16 FF"));  // one label
  EXPECT_THAT(line_.log, ElementsAre("rx label-order selector 20",
                                     "rx malformed label-texts 12 bytes, wrong length"));
}

TEST_F(TablesTest, TextsOfAnotherSelector) {
  Send("F9 1E 7B 49 43 20 20 20 20 20 43 41 4D 20 31 20 20 20 47 FF");
  EXPECT_THAT(line_.log, ElementsAre("rx label-texts selector 30, no order before it (refused)"));
}

TEST_F(TablesTest, Inhibits) {
  Send("F5 0F 00 01 01 00 01 10 FF");
  EXPECT_EQ(DescribeInhibits(State(), 16), "output 16 inhibits 1 8 16");
  EXPECT_EQ(DescribeInhibits(State(), 15), "output 15 inhibits 15");
}

TEST_F(TablesTest, Relays) {
  Send("F4 02 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 01 03 FF");
  EXPECT_EQ(DescribeRelays(State(), 3), "output 3 relays 1 64");
  EXPECT_EQ(DescribeRelays(State(), 2), "output 2 relays none");
  EXPECT_THAT(line_.log, ElementsAre("rx relays output 3 relays 1 64"));
}

TEST_F(TablesTest, Buttons) {
  // Station 2: button 1 is 255 (group), first 7, stations 1, 8 and 16; the others are 0.
  Send("FB 01 00 7F 01 07 00 " + Times(31, "00 00 00 00") + "01 01 00 01 " +
       Times(31, "00 00 00 00") + "08 FF");
  EXPECT_EQ(DescribeButton(State(), 2, 1), "station 2 button 1 type 255 first 7 members 1 8 16");
  EXPECT_EQ(DescribeButton(State(), 2, 2), "station 2 button 2 type 0 first 0 members none");
  EXPECT_EQ(DescribeButton(State(), 1, 1), "station 1 button 1 type 0 first 1 members 1");
  EXPECT_THAT(line_.log, ElementsAre("rx buttons station 2"));
}

TEST_F(TablesTest, ButtonsWithMoreGroupsThanStations) {
  // Eight groups; station 64 of button 32.
  Send("FB 0F 00 " + Times(64, "00 00") + Times(255, "00 00") + "00 01 0F FF");
  EXPECT_EQ(DescribeButton(State(), 16, 32), "station 16 button 32 type 0 first 0 members 64");
  EXPECT_EQ(DescribeButton(State(), 16, 1), "station 16 button 1 type 0 first 0 members none");
}

TEST_F(TablesTest, ButtonsWithFewerGroupsThanStations) {
  Send("FB 00 00 " + Times(64, "00 00") + "00 00 01 00 " + Times(30, "00 00") + "01 FF");
  EXPECT_EQ(DescribeButton(State(), 1, 2), "station 1 button 2 type 0 first 0 members 1");
  Send("FB 00 00 " + Times(64, "00 00") + "00 FF");  // none at all
  EXPECT_EQ(DescribeButton(State(), 1, 2), "station 1 button 2 type 0 first 0 members none");
  EXPECT_EQ(Counts().tables, 2u);
}

TEST_F(TablesTest, Optos) {
  // Opto 2: type 254, channel 129, first 3, stations 1 and 64.
  Send("E1 " + Times(11, "00 00") +
       "7E 01 01 01 03 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 01 " +
       Times(62 * 11, "00 00") + "03 FF");
  EXPECT_EQ(DescribeOpto(State(), 2), "opto 2 type 254 channel 129 first 3 members 1 64");
  EXPECT_EQ(DescribeOpto(State(), 1), "opto 1 type 0 channel 0 first 0 members none");
  EXPECT_THAT(line_.log, ElementsAre("rx optos all"));
}

struct WrongTable {
  std::string hex;
  const char* log;
};

TEST_F(TablesTest, WhatIsWrongChangesNothing) {
  const std::string relays = Times(7, "00 00");
  const std::string buttons = Times(127, "00 00");
  const std::string optos = Times(703, "00 00");
  const WrongTable cases[] = {
      {"F4 02 00 " + relays + "01 00 02 FF", "rx malformed relays 21 bytes, wrong checksum"},
      {"F4 02 00 " + relays + "01 03 FF", "rx malformed relays 20 bytes, wrong length"},
      {"F4 02 00 " + relays + "01 00 00 03 FF", "rx malformed relays 22 bytes, wrong length"},
      {"F4 10 00 " + relays + "01 00 11 FF", "rx relays output 17 (refused)"},
      {"F4 FF", "rx malformed relays 2 bytes, wrong length"},
      {"F5 00 00 00 00 00 00 01 FF", "rx malformed inhibits 9 bytes, wrong checksum"},
      {"F5 00 00 00 00 00 FF", "rx malformed inhibits 7 bytes, wrong length"},
      {"F5 10 00 00 00 00 00 10 FF", "rx inhibits output 17 (refused)"},
      {"FB 00 00 01 00 " + buttons + "00 FF", "rx malformed buttons 261 bytes, wrong checksum"},
      {"FB 00 00 01 " + buttons + "01 FF", "rx malformed buttons 260 bytes, wrong length"},
      {"FB 00 00 01 00 " + buttons + "00 01 FF", "rx malformed buttons 262 bytes, wrong length"},
      {"FB 10 00 01 00 " + buttons + "11 FF", "rx buttons station 17 (refused)"},
      {"FB 00 00 00 FF", "rx malformed buttons 5 bytes, wrong length"},
      {"FB FF", "rx malformed buttons 2 bytes, wrong length"},
      {"FB 00 00 " + Times(32 * 35, "00 00") + "00 FF",  // 33 groups: 264 stations
       "rx malformed buttons 2245 bytes, wrong length"},
      {"E1 01 00 " + optos + "00 FF", "rx malformed optos 1411 bytes, wrong checksum"},
      {"E1 01 " + optos + "01 FF", "rx malformed optos 1410 bytes, wrong length"},
      {"E1 FF", "rx malformed optos 2 bytes, wrong length"},
  };
  const std::string before = WriteState(State());
  for (const WrongTable& wrong : cases) {
    SCOPED_TRACE(wrong.log);
    line_.log.clear();
    Send(wrong.hex);
    EXPECT_THAT(line_.log, ElementsAre(wrong.log));
  }
  EXPECT_EQ(WriteState(State()), before);
  EXPECT_EQ(Counts().refused, 3u);
  EXPECT_EQ(Counts().malformed, 15u);
  EXPECT_EQ(Counts().tables, 0u);
}

TEST_F(TablesTest, AMessageWithoutItsEndByteIsBrokenAndTheNextOneIsTaken) {
  Send("F4 02 00 " + Times(8, "00 00") + "02 F5 0F 00 01 01 00 01 10 FF");
  EXPECT_THAT(line_.log,
              ElementsAre("rx broken relays 20 bytes", "rx inhibits output 16 inhibits 1 8 16"));
}

TEST_F(TablesTest, TheLastOnesOfTheLargestSystem) {
  SimulatedLine big({.channels = 256, .stations = 256, .labels = 256});
  big.Ask("F5 7F 01 " + Times(31, "00 00") + "00 01 7F FF");
  EXPECT_EQ(DescribeInhibits(big.simulator.State(), 256), "output 256 inhibits 256");
  big.Ask("F4 7F 01 " + Times(7, "00 00") + "01 00 00 FF");
  EXPECT_EQ(DescribeRelays(big.simulator.State(), 256), "output 256 relays 57");
  // 32 groups for each of 32 buttons: 2181 bytes.
  big.Ask("FB 7F 01 " + Times(64, "00 00") + Times(1023, "00 00") + "00 01 7F FF");
  EXPECT_EQ(DescribeButton(big.simulator.State(), 256, 32),
            "station 256 button 32 type 0 first 0 members 256");
  EXPECT_EQ(big.simulator.Counts().tables, 3u);
}

}  // namespace
}  // namespace tesksim
