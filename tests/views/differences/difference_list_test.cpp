// SPDX-License-Identifier: MIT

#include "views/differences/difference_list.h"

#include <gmock/gmock.h>

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>

#include "tests/views/gui_support.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

ChangeRow Row(int station, const QString& what, const QString& before, const QString& after) {
  return {.station = station,
          .fields = {what.toStdString()},
          .where = QStringLiteral("Station %1").arg(station),
          .what = what,
          .before = before,
          .after = after};
}

// Of three stations, in no order, and one row that cannot be ticked.
std::vector<Difference> SomeRows() {
  std::vector<Difference> rows{
      Row(12, QStringLiteral("Button 12"), QStringLiteral("TALK 5"), QStringLiteral("LISTEN 5")),
      Row(12, QStringLiteral("Button 3"), QStringLiteral("NULL"), QStringLiteral("TALK 1")),
      Row(2, QStringLiteral("Label"), QStringLiteral("CAM 1"), QStringLiteral("CAM 2")),
      Row(100, QStringLiteral("Relays"), QStringLiteral("1, 2"), QStringLiteral("not reported")),
  };
  rows.back().obstacle = QStringLiteral("The switcher has not reported it");
  return rows;
}

class DifferenceListTest : public testing::Test {
 protected:
  explicit DifferenceListTest(DifferenceList::Choice choice = DifferenceList::Choice::Ticks)
      : list({.filter = QStringLiteral("txtFilter"),
              .list = QStringLiteral("lstRows"),
              .before = QStringLiteral("Here"),
              .after = QStringLiteral("Switcher"),
              .choice = choice}) {
    list.SetRows(SomeRows());
    list.resize(700, 300);
    list.show();
  }

  QTreeView& View() { return test::Find<QTreeView>(list, "lstRows"); }
  QLineEdit& Filter() { return test::Find<QLineEdit>(list, "txtFilter"); }
  QString Count() { return test::Find<QLabel>(list, "aidDifferenceCount").text(); }
  QString Heading(int column) {
    return View().model()->headerData(column, Qt::Horizontal).toString();
  }

  // The shown rows as "where|what".
  std::vector<std::string> Shown() {
    std::vector<std::string> rows;
    const QAbstractItemModel& model = *View().model();
    for (int row = 0; row < model.rowCount(); ++row) {
      rows.push_back(
          (model.index(row, 1).data().toString() + u'|' + model.index(row, 2).data().toString())
              .toStdString());
    }
    return rows;
  }

  std::vector<std::string> Ticked() {
    std::vector<std::string> rows;
    for (const ChangeRow& row : list.Ticked()) rows.push_back(row.what.toStdString());
    return rows;
  }

  void ClickTick(int row) {
    const QRect cell = View().visualRect(View().model()->index(row, 0));
    QTest::mouseClick(View().viewport(), Qt::LeftButton, {},
                      QPoint(cell.left() + 12, cell.center().y()));
  }

  DifferenceList list;
};

TEST_F(DifferenceListTest, ShowsWhereWhatHereAndThereInTheOrderGiven) {
  EXPECT_EQ(Heading(1), QStringLiteral("Station or output"));
  EXPECT_EQ(Heading(2), QStringLiteral("What"));
  EXPECT_EQ(Heading(3), QStringLiteral("Here"));
  EXPECT_EQ(Heading(4), QStringLiteral("Switcher"));
  EXPECT_THAT(Shown(), ElementsAre("Station 12|Button 12", "Station 12|Button 3", "Station 2|Label",
                                   "Station 100|Relays"));
  const QAbstractItemModel& model = *View().model();
  EXPECT_EQ(model.index(0, 3).data().toString(), QStringLiteral("TALK 5"));
  EXPECT_EQ(model.index(0, 4).data().toString(), QStringLiteral("LISTEN 5"));
  EXPECT_EQ(Count(), QStringLiteral("0 of 3 ticked")) << "of those with a box";
}

// A copy may differ in thousands of rows.
TEST_F(DifferenceListTest, TextsOfValuesAreMadeForRowsThatAreSeenOrSoughtOnly) {
  std::vector<Difference> rows;
  for (int station = 1; station <= 1000; ++station) {
    rows.emplace_back(Row(station, QStringLiteral("Label"), {}, {}));
  }
  int made = 0;
  list.SetRows(std::move(rows), true, [&made](ChangeRow* row) {
    ++made;
    row->before = QStringLiteral("CAM %1").arg(row->station);
    row->after = QStringLiteral("VT");
  });
  (void)list.grab();
  EXPECT_GT(made, 0);
  EXPECT_LT(made, 50);
  EXPECT_EQ(list.TickedCount(), 1000);
  const QAbstractItemModel& model = *View().model();
  EXPECT_EQ(model.index(700, 3).data().toString(), QStringLiteral("CAM 701"));
  const int before = made;
  EXPECT_EQ(model.index(700, 4).data().toString(), QStringLiteral("VT"));
  EXPECT_EQ(made, before) << "once";
  Filter().setText(QStringLiteral("cam 1000"));
  EXPECT_THAT(Shown(), ElementsAre("Station 1000|Label"));
  EXPECT_EQ(made, 1000);
}

TEST_F(DifferenceListTest, AClickOnTheBoxTicksItsRow) {
  QSignalSpy told(&list, &DifferenceList::TicksChanged);
  ClickTick(2);
  EXPECT_THAT(Ticked(), ElementsAre("Label"));
  EXPECT_EQ(told.count(), 1);
  EXPECT_EQ(Count(), QStringLiteral("1 of 3 ticked"));
  ClickTick(2);
  EXPECT_THAT(Ticked(), IsEmpty());
}

TEST_F(DifferenceListTest, ARowWithAnObstacleHasNoBoxAndSaysWhy) {
  const QModelIndex tick = View().model()->index(3, 0);
  EXPECT_FALSE(tick.data(Qt::CheckStateRole).isValid());
  EXPECT_EQ(tick.data(Qt::ToolTipRole).toString(),
            QStringLiteral("The switcher has not reported it"));
  ClickTick(3);
  EXPECT_THAT(Ticked(), IsEmpty());
}

TEST_F(DifferenceListTest, SpaceTicksAllSelectedRowsUnlessAllAreTicked) {
  View().selectAll();
  QTest::keyClick(&View(), Qt::Key_Space);
  EXPECT_THAT(Ticked(), ElementsAre("Button 12", "Button 3", "Label"));
  QTest::keyClick(&View(), Qt::Key_Space);
  EXPECT_THAT(Ticked(), IsEmpty());
  ClickTick(1);
  View().selectAll();
  QTest::keyClick(&View(), Qt::Key_Space);
  EXPECT_THAT(Ticked(), ElementsAre("Button 12", "Button 3", "Label"));
}

TEST_F(DifferenceListTest, SpaceTicksTheRowWithTheFocus) {
  View().selectionModel()->setCurrentIndex(View().model()->index(1, 2),
                                           QItemSelectionModel::NoUpdate);
  QTest::keyClick(&View(), Qt::Key_Space);
  EXPECT_THAT(Ticked(), ElementsAre("Button 3"));
}

TEST_F(DifferenceListTest, TheFilterWantsEachWordSomewhereInTheRow) {
  QTest::keyClicks(&Filter(), QStringLiteral("talk"));
  EXPECT_THAT(Shown(), ElementsAre("Station 12|Button 12", "Station 12|Button 3"));
  QTest::keyClicks(&Filter(), QStringLiteral(" listen"));
  EXPECT_THAT(Shown(), ElementsAre("Station 12|Button 12"));
  EXPECT_EQ(Count(), QStringLiteral("0 of 3 ticked, 1 shown"));
  Filter().clear();
  EXPECT_EQ(Shown().size(), 4U);
}

TEST_F(DifferenceListTest, ANumberAloneIsAStation) {
  std::vector<Difference> rows = SomeRows();
  rows.back().first = 98;  // "Outputs 98 to 100"
  list.SetRows(rows);
  Filter().setText(QStringLiteral("2"));
  EXPECT_THAT(Shown(), ElementsAre("Station 2|Label"));
  Filter().setText(QStringLiteral(" 12 "));
  EXPECT_THAT(Shown(), ElementsAre("Station 12|Button 12", "Station 12|Button 3"));
  Filter().setText(QStringLiteral("99"));
  EXPECT_THAT(Shown(), ElementsAre("Station 100|Relays"));
  Filter().setText(QStringLiteral("97"));
  EXPECT_EQ(Count(), QStringLiteral("No row has all these words"));
  Filter().setText(QStringLiteral("2 label"));
  EXPECT_THAT(Shown(), ElementsAre("Station 2|Label"));
  Filter().setText(QStringLiteral("0"));
  EXPECT_THAT(Shown(), ElementsAre("Station 100|Relays")) << "no station: a word";
}

TEST_F(DifferenceListTest, RowsWithoutABoxAreNotCountedAsTicks) {
  list.SetRows({SomeRows().back()});
  EXPECT_EQ(Count(), QString());
  Filter().setText(QStringLiteral("100"));
  EXPECT_EQ(Count(), QString());
}

TEST_F(DifferenceListTest, WhereNothingCanBeTickedTheButtonsDoNotOfferIt) {
  list.SetRows({SomeRows().back()});
  EXPECT_FALSE(test::Find<QPushButton>(list, "aidTickAll").isEnabled());
  EXPECT_FALSE(test::Find<QPushButton>(list, "aidTickNone").isEnabled());
}

TEST_F(DifferenceListTest, AFilterWithoutAHitSaysSoAndLeavesNothingToTick) {
  EXPECT_TRUE(test::Find<QPushButton>(list, "aidTickAll").isEnabled());
  Filter().setText(QStringLiteral("talk nowhere"));
  EXPECT_EQ(Count(), QStringLiteral("No row has all these words"));
  EXPECT_FALSE(test::Find<QPushButton>(list, "aidTickAll").isEnabled());
  EXPECT_FALSE(test::Find<QPushButton>(list, "aidTickNone").isEnabled());
  Filter().clear();
  EXPECT_TRUE(test::Find<QPushButton>(list, "aidTickNone").isEnabled());
  list.SetRows({});
  EXPECT_FALSE(test::Find<QPushButton>(list, "aidTickAll").isEnabled());
}

TEST_F(DifferenceListTest, TheButtonsTickWhatIsShownAndLeaveWhatIsHidden) {
  Filter().setText(QStringLiteral("button"));
  test::Find<QPushButton>(list, "aidTickAll").click();
  EXPECT_THAT(Ticked(), ElementsAre("Button 12", "Button 3"));
  Filter().setText(QStringLiteral("label"));
  test::Find<QPushButton>(list, "aidTickNone").click();
  EXPECT_THAT(Ticked(), ElementsAre("Button 12", "Button 3"));
  EXPECT_EQ(Count(), QStringLiteral("2 of 3 ticked, 1 shown"));
  Filter().clear();
  test::Find<QPushButton>(list, "aidTickNone").click();
  EXPECT_THAT(Ticked(), IsEmpty());
}

TEST_F(DifferenceListTest, AClickOnAHeadingSortsStationsAndNumbersAsNumbers) {
  View().sortByColumn(1, Qt::AscendingOrder);
  EXPECT_THAT(Shown(), ElementsAre("Station 2|Label", "Station 12|Button 12", "Station 12|Button 3",
                                   "Station 100|Relays"));
  View().sortByColumn(2, Qt::AscendingOrder);
  EXPECT_THAT(Shown(), ElementsAre("Station 12|Button 3", "Station 12|Button 12", "Station 2|Label",
                                   "Station 100|Relays"));
  ClickTick(0);
  EXPECT_THAT(Ticked(), ElementsAre("Button 3"));
}

TEST_F(DifferenceListTest, NewRowsAndOtherColumnsAreSortedByWhatTheyHold) {
  View().sortByColumn(3, Qt::AscendingOrder);
  EXPECT_THAT(Shown(), ElementsAre("Station 100|Relays", "Station 2|Label", "Station 12|Button 3",
                                   "Station 12|Button 12"));
  View().sortByColumn(4, Qt::AscendingOrder);
  EXPECT_THAT(Shown(), ElementsAre("Station 2|Label", "Station 12|Button 12", "Station 100|Relays",
                                   "Station 12|Button 3"));
  list.SetRows({Row(1, QStringLiteral("Label"), {}, QStringLiteral("CAM 12")),
                Row(2, QStringLiteral("Label"), {}, QStringLiteral("VT")),
                Row(3, QStringLiteral("Label"), {}, QStringLiteral("cam 2"))});
  EXPECT_THAT(Shown(), ElementsAre("Station 3|Label", "Station 1|Label", "Station 2|Label"));
}

TEST_F(DifferenceListTest, RowsAreUntickedByWhatTheyAreAbout) {
  list.SetRows(SomeRows(), /*ticked=*/true);
  ClickTick(1);
  const std::vector<ChangeRow> unticked = list.Unticked();
  ASSERT_EQ(unticked.size(), 1U) << "of those with a box";
  EXPECT_EQ(unticked[0].what, QStringLiteral("Button 3"));
  std::vector<Difference> rows = SomeRows();
  rows.erase(rows.begin());
  rows.emplace_back(Row(13, QStringLiteral("Button 3"), {}, {}));
  list.SetRows(std::move(rows), /*ticked=*/true);
  list.Untick(unticked);
  EXPECT_THAT(Ticked(), ElementsAre("Label", "Button 3"));
  EXPECT_EQ(list.Ticked().back().station, 13);
}

TEST_F(DifferenceListTest, NewRowsAreTickedAsWanted) {
  list.SetRows(SomeRows(), /*ticked=*/true);
  EXPECT_THAT(Ticked(), ElementsAre("Button 12", "Button 3", "Label"));
  EXPECT_EQ(list.TickedCount(), 3);
  list.SetRows(SomeRows());
  EXPECT_EQ(list.TickedCount(), 0);
}

// 256 stations that differ in each of their hundred fields.
TEST_F(DifferenceListTest, ManyRowsAreTickedAndFiltered) {
  std::vector<Difference> rows;
  for (int station = 1; station <= 256; ++station) {
    for (int button = 1; button <= 100; ++button) {
      rows.push_back(Row(station, QStringLiteral("Button %1").arg(button), QStringLiteral("NULL"),
                         QStringLiteral("TALK 1")));
    }
  }
  list.SetRows(std::move(rows));
  Filter().setText(QStringLiteral("Station 256"));
  test::Find<QPushButton>(list, "aidTickAll").click();
  EXPECT_EQ(Count(), QStringLiteral("100 of 25600 ticked, 100 shown"));
}

class ShownDifferencesTest : public DifferenceListTest {
 protected:
  ShownDifferencesTest() : DifferenceListTest(DifferenceList::Choice::None) {}
};

TEST_F(ShownDifferencesTest, AListToReadHasNoTicks) {
  EXPECT_TRUE(View().isColumnHidden(0));
  EXPECT_FALSE(test::Find<QPushButton>(list, "aidTickAll").isVisible());
  View().selectAll();
  QTest::keyClick(&View(), Qt::Key_Space);
  list.SetRows(SomeRows(), /*ticked=*/true);
  EXPECT_THAT(Ticked(), IsEmpty());
  EXPECT_EQ(Count(), QString());
  Filter().setText(QStringLiteral("cam"));
  EXPECT_EQ(Count(), QStringLiteral("1 of 4 shown"));
}

}  // namespace
}  // namespace views
