// SPDX-License-Identifier: MIT
//
// Tables from the switcher, as they reach the open map.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTableView>
#include <string>

#include "tests/app/views_fixture.h"
#include "tests/support/hex.h"

namespace app {
namespace {

using testing::IsEmpty;

class OpenMapTest : public ViewsFixture {
 protected:
  OpenMapTest() {
    model_.ApplyFixedValues();
    model_.ChannelCount = 8;
    model_.LabelCount = 8;
    model_.AllocateMap();
    for (int station = 1; station <= 8; ++station) {
      database_.AddStation(
          station, {{"Hidden", 0}, {"Label", "out"}, {"InLabel", "in"}, {"Inhibits", "00000000"}});
    }
  }

  // The grid cell of the map: row and column 0 are the labels, 1 the numbers.
  QString CellText(int row, int column) {
    QString text;
    EXPECT_TRUE(QMetaObject::invokeMethod(Grid(), "cellText", Q_RETURN_ARG(QString, text),
                                          Q_ARG(int, row), Q_ARG(int, column)));
    return text;
  }
  int CellMark(int row, int column) {
    int mark = -1;
    EXPECT_TRUE(QMetaObject::invokeMethod(Grid(), "cellMark", Q_RETURN_ARG(int, mark),
                                          Q_ARG(int, row), Q_ARG(int, column)));
    return mark;
  }
  QTableView* Grid() { return views_.Xmap()->findChild<QTableView*>(QStringLiteral("msfgXmap")); }

  void Decode(std::string_view hex) { decoder_.Decode(test::FromHex(hex)); }

  QMdiArea area_;
  OpenViews views_{area_, Services()};
  switcher::Decoder decoder_{{.model = model_,
                              .database = [this] { return database_.Files().Database(); },
                              .reporter = reporter_,
                              .changes = changes_,
                              .observers = {views_}}};
};

constexpr char kOutputLabels[] =
    "F9 14 61 20 20 20 20 20 20 20 62 20 20 20 20 20 20 20 63 20 20 20 20 20 20 20 "
    "64 20 20 20 20 20 20 20 65 20 20 20 20 20 20 20 66 20 20 20 20 20 20 20 "
    "67 20 20 20 20 20 20 20 68 20 20 20 20 20 20 20 38 FF";

TEST_F(OpenMapTest, AnAcceptedLabelTableReachesTheOpenMap) {
  views_.ShowXmap();
  ASSERT_EQ(CellText(3, 0), QStringLiteral("out"));
  Decode(kOutputLabels);
  EXPECT_EQ(CellText(2, 0), QStringLiteral("a"));
  EXPECT_EQ(CellText(9, 0), QStringLiteral("h"));
  EXPECT_EQ(CellText(0, 2), QStringLiteral("i\rn\r"));  // upright
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(OpenMapTest, AnAcceptedInhibitRowReachesTheOpenMap) {
  views_.ShowXmap();
  ASSERT_EQ(CellMark(3, 2), 0);
  Decode("F5 01 00 01 00 02 FF");
  EXPECT_EQ(CellMark(3, 2), 2);
  Decode("F5 01 00 00 00 02 FF");  // refused: its checksum
  EXPECT_EQ(CellMark(3, 2), 2);
  Decode("F5 01 00 00 00 01 FF");
  EXPECT_EQ(CellMark(3, 2), 0);
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

// Nothing would ask for the map again, and a call that was taken from sight would still stand.
TEST_F(OpenMapTest, AnInhibitRowLeavesStandingCallsInSight) {
  views_.ShowXmap();
  Decode("F3 01 00 01 00 06 00 08 FF");  // output 2: inputs 2 and 3, by priority
  Decode("F3 02 00 00 00 08 00 0A FF");  // output 3: input 4
  ASSERT_EQ(CellMark(3, 3), 3);
  ASSERT_EQ(CellMark(3, 4), 3);
  ASSERT_EQ(CellMark(4, 5), 1);
  Decode("F5 04 00 01 00 05 FF");  // an inhibit elsewhere
  EXPECT_EQ(CellMark(6, 2), 2);
  EXPECT_EQ(CellMark(3, 3), 3);
  EXPECT_EQ(CellMark(3, 4), 3);
  EXPECT_EQ(CellMark(4, 5), 1);
  // One on a standing call shows; that they conflict is not the inhibits' news.
  Decode("F5 01 00 02 00 03 FF");
  EXPECT_EQ(CellMark(3, 3), 2);
  EXPECT_EQ(CellMark(3, 4), 3);
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(OpenMapTest, WithoutAMapTablesAreStoredAllTheSame) {
  Decode(kOutputLabels);
  Decode("F5 01 00 01 00 02 FF");
  EXPECT_EQ(database_.Field(8, "Label"), "h");
  EXPECT_EQ(database_.Field(2, "Inhibits"), "1" + std::string(63, '0'));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

}  // namespace
}  // namespace app
