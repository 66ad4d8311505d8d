// SPDX-License-Identifier: MIT

#include "gateway/panel_tables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "db/station_fields.h"
#include "tests/support/hex.h"
#include "tests/support/small_database.h"

namespace gateway {
namespace {

using test::Hex;

class PanelTablesTest : public testing::Test {
 protected:
  void Size(int channels) {
    model_.ChannelCount = static_cast<std::int16_t>(channels);
    model_.AllocateMap();
  }

  std::string Map(int first, int count) {
    Bytes frame;
    const model::Status status = BuildCrosspointMap(model_, first, count, &frame);
    return status.ok() ? Hex(frame) : "# " + std::to_string(status.Number());
  }
  std::string Labels(int kind) {
    Bytes frame;
    const model::Status status =
        BuildLabelTable(*database_.Files().Database(), model_, kind, &frame);
    return status.ok() ? Hex(frame) : "# " + std::to_string(status.Number());
  }
  std::string Buttons() {
    Bytes frame;
    const model::Status status =
        BuildButtonProgramming(*database_.Files().Database(), model_, &frame);
    return status.ok() ? Hex(frame) : "# " + std::to_string(status.Number());
  }

  model::SystemModel model_;
  test::SmallDatabase database_;
};

TEST_F(PanelTablesTest, OneRowOfTheMap) {
  Size(8);
  model_.CrosspointMap.At(3, 1) = 1;
  model_.CrosspointMap.At(3, 8) = 1;
  model_.ChannelStatus[3] = 1;
  EXPECT_EQ(Map(3, 1), "F6 00 01 00 02 00 02 00 01 00 00 07 00 0D FF");
}

TEST_F(PanelTablesTest, TheWholeMap) {
  Size(8);
  model_.CrosspointMap.At(1, 2) = 1;
  model_.CrosspointMap.At(8, 8) = 1;
  EXPECT_EQ(Map(1, 8),
            "F6 00 08 00 00 00 "
            "01 00 00 01 00 "
            "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
            "01 00 00 07 00 "
            "12 FF");
}

TEST_F(PanelTablesTest, OnlyTheValueOneIsAMadeCrosspoint) {
  Size(8);
  model_.CrosspointMap.At(1, 1) = 2;
  model_.CrosspointMap.At(1, 2) = 255;
  model_.CrosspointMap.At(1, 3) = 1;
  EXPECT_EQ(Map(1, 1), "F6 00 01 00 00 00 01 00 00 02 00 04 FF");
}

TEST_F(PanelTablesTest, ChannelsAbove128) {
  Size(256);
  model_.CrosspointMap.At(256, 128) = 1;
  model_.CrosspointMap.At(256, 129) = 1;
  model_.CrosspointMap.At(256, 256) = 1;
  EXPECT_EQ(Map(256, 1), "F6 00 01 00 7F 01 03 00 00 7F 00 00 01 7F 01 04 FF");
}

TEST_F(PanelTablesTest, AFullRowOf256) {
  Size(256);
  for (int input = 1; input <= 256; ++input) model_.CrosspointMap.At(1, input) = 1;
  const std::string row = Map(1, 1);
  EXPECT_EQ(row.substr(0, 35), "F6 00 01 00 00 00 00 02 00 00 00 01");
  EXPECT_EQ(row.size(), 3U * (9 + 512 + 2) - 1);
}

TEST_F(PanelTablesTest, TheStatusTravelsAsSevenBits) {
  Size(8);
  model_.ChannelStatus[1] = 0xFF;
  EXPECT_EQ(Map(1, 1), "F6 00 01 00 00 00 00 00 7F 00 FF");
}

TEST_F(PanelTablesTest, ASystemWithoutChannels) {
  Size(0);
  EXPECT_EQ(Map(1, 0), "F6 00 00 00 00 00 00 FF");
  EXPECT_EQ(Labels(20), "FC 14 08 00 00 00 00 1C FF");
  EXPECT_EQ(Hex(BuildStationList(model_)), "FB 00 00 00 00 00 00 FF");
  EXPECT_EQ(Buttons(), "FD 00 00 00 00 00 20 00 20 FF");
}

TEST_F(PanelTablesTest, ChannelsThatAreNotThere) {
  Size(8);
  for (const auto& [first, count] : {std::pair{0, 1}, {9, 1}, {1, 9}, {8, 2}, {-5, 1}, {1, -1}}) {
    EXPECT_EQ(Map(first, count), "# 9") << first << " " << count;
  }
}

TEST_F(PanelTablesTest, StationLabels) {
  Size(2);
  database_.AddStation(1, {{"Label", "Sta. 001"}, {"InLabel", "Inpt 001"}});
  database_.AddStation(2, {{"Label", "AB"}, {"InLabel", ""}});
  EXPECT_EQ(Labels(20),
            "FC 14 08 02 00 00 00 "
            "53 74 61 2E 20 30 30 31 00 00 "
            "41 42 20 20 20 20 20 20 01 00 "
            "69 FF");
}

TEST_F(PanelTablesTest, InputLabels) {
  Size(2);
  database_.AddStation(1, {{"Label", "Sta. 001"}, {"InLabel", "Inpt 001"}});
  database_.AddStation(2, {{"Label", "AB"}, {"InLabel", "C"}});
  EXPECT_EQ(Labels(10),
            "FC 0A 08 02 00 00 00 "
            "49 6E 70 74 20 30 30 31 00 00 "
            "43 20 20 20 20 20 20 20 01 00 "
            "04 FF");
  EXPECT_EQ(Labels(11).substr(0, 35), "FC 0B 08 02 00 00 00 49 6E 70 74 20");
}

TEST_F(PanelTablesTest, RecordsGoInTheOrderOfTheirNumbersAndBeyondTheCountNot) {
  Size(2);
  database_.AddStation(300, {{"Label", "D"}});
  database_.AddStation(130, {{"Label", "B"}});
  database_.AddStation(7, {{"Label", "A"}});
  EXPECT_EQ(Labels(20),
            "FC 14 08 02 00 00 00 "
            "41 20 20 20 20 20 20 20 06 00 "
            "42 20 20 20 20 20 20 20 01 01 "
            "69 FF");
}

TEST_F(PanelTablesTest, FewerRecordsThanChannelsAreAFailure) {
  Size(2);
  database_.AddStation(1, {});
  EXPECT_EQ(Labels(20), "# 3021");
  EXPECT_EQ(Buttons(), "# 3021");
}

TEST(PanelLabel, IsEightCharactersOfSevenBits) {
  EXPECT_EQ(PanelLabel(""), "        ");
  EXPECT_EQ(PanelLabel("Sta. 001"), "Sta. 001");
  EXPECT_EQ(PanelLabel("Sta. 0012"), "Sta. 001");
  EXPECT_EQ(PanelLabel("K\xC3\xBC"
                       "che"),
            "K?che   ");                          // a character of two bytes in UTF-8
  EXPECT_EQ(PanelLabel("\xC3\xBF"), "?       ");  // 0xFF in the code page
  EXPECT_EQ(PanelLabel("{hidden}"), "{hidden}");
}

TEST_F(PanelTablesTest, ALabelThatIsNullIsEmpty) {
  Size(1);
  database_.AddStation(1, {});
  EXPECT_EQ(Labels(20), "FC 14 08 01 00 00 00 20 20 20 20 20 20 20 20 00 00 1D FF");
}

TEST_F(PanelTablesTest, TheStationListCountsFromOne) {
  Size(3);
  EXPECT_EQ(Hex(BuildStationList(model_)), "FB 00 03 00 00 00 01 00 02 00 03 00 09 FF");
  Size(256);
  const std::string list = Hex(BuildStationList(model_));
  EXPECT_EQ(list.substr(0, 3 * 10), "FB 00 00 02 00 00 01 00 02 00 ");
  EXPECT_EQ(list.substr(3 * (6 + 2 * 126), 3 * 6), "7F 00 00 01 01 01 ");
  EXPECT_EQ(list.substr(list.size() - 3 * 4 + 1), "00 02 04 FF");
}

TEST_F(PanelTablesTest, ButtonProgramming) {
  Size(1);
  database_.AddStation(1, {{"B1 Type", 0},
                           {"B1 First", 1},
                           {"B1 Prog", "0101"},
                           {"B2 Type", 254},
                           {"B2 First", 200},
                           {"B2 Prog", "0000"},
                           {"B32 Type", 7},
                           {"B32 First", 8},
                           {"B32 Prog", "1"}});
  const std::string frame = Buttons();
  const std::string idle = " 02 00 7F 7F 00 00";  // a null type counts as 0
  std::string expected = "FD 00 01 00 00 00 20 00 02 00 00 00 02 00 01 00 03 00 7F 01 47 01 00 00";
  for (int i = 3; i <= 31; ++i) expected += idle;
  expected += " 00 00 07 00 01 00 00 00";
  EXPECT_EQ(frame.substr(0, expected.size()), expected);
  // 29 idle buttons count 0x100 each, which is nothing in seven bits.
  EXPECT_EQ(frame.substr(expected.size()), " 79 FF");
}

TEST(PanelButtonType, Mapping) {
  EXPECT_EQ(PanelButtonType(0), 2);
  EXPECT_EQ(PanelButtonType(1), 0);
  EXPECT_EQ(PanelButtonType(2), 1);
  EXPECT_EQ(PanelButtonType(3), 5);
  EXPECT_EQ(PanelButtonType(254), 255);
  EXPECT_EQ(PanelButtonType(255), 3);
  for (const int other : {-1, 4, 5, 7, 253, 256, 32767}) EXPECT_EQ(PanelButtonType(other), 0);
}

TEST_F(PanelTablesTest, ProgsOfAnyLength) {
  Size(1);
  database_.AddStation(1, {{"B1 Type", 1},
                           {"B1 First", 1},
                           {"B1 Prog", std::string(128, '0') + "1"},
                           {"B2 Type", 1},
                           {"B2 First", 1},
                           {"B2 Prog", "1x1 2"}});
  EXPECT_EQ(Buttons().substr(3 * 8, 3 * 16), "00 00 00 00 01 00 00 01 00 00 00 00 02 00 00 00 ");
}

TEST_F(PanelTablesTest, NoFrameHasAByteThatIsNoDataInside) {
  Size(8);
  for (int i = 1; i <= 8; ++i) {
    test::SmallDatabase::Fields fields{{"Label", "\xC3\xBF\xE2\x82\xAC"}, {"InLabel", "\xC3\xBF"}};
    for (int button = 1; button <= 32; ++button) {
      fields.emplace_back(db::ButtonField(button, "Type"), 255 * (button % 2));
      fields.emplace_back(db::ButtonField(button, "First"), -32768);
      fields.emplace_back(db::ButtonField(button, "Prog"), std::string(300, '1'));
    }
    database_.AddStation(i, fields);
    model_.ChannelStatus[i] = 255;
  }
  for (const std::string& frame : {Map(1, 8), Labels(10), Labels(20), Buttons()}) {
    const Bytes bytes = test::FromHex(frame);
    for (std::size_t i = 1; i + 1 < bytes.size(); ++i) ASSERT_LT(bytes[i], 0x80) << frame;
    EXPECT_EQ(bytes.back(), 0xFF);
    EXPECT_TRUE(ChecksumMatches(bytes));
  }
}

}  // namespace
}  // namespace gateway
