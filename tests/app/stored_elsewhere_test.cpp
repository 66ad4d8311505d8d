// SPDX-License-Identifier: MIT
//
// What is stored by none of the views, as the open views show it.

#include "app/shell/stored_elsewhere.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>
#include <string>
#include <vector>

#include "app/shell/open_views.h"
#include "stations/carry_out.h"
#include "tests/app/eight_channels.h"
#include "tests/views/gui_support.h"
#include "tests/views/view_console.h"

namespace app {
namespace {

using stations::Change;
using stations::Origin;
using testing::IsEmpty;

class StoredElsewhereTest : public testing::Test {
 protected:
  void SetUp() override {
    console_.window->resize(900, 700);
    console_.window->show();
    console_.window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(console_.window.get()));
    console_.GoToStation(2);
  }

  void Store(Origin origin, int station, const std::vector<stations::FieldChange>& fields) {
    const std::vector<Change> changes = {{origin, station, fields}};
    ASSERT_TRUE(stations::CarryOut(*console_.database, changes, stations::Direction::Again,
                                   {console_.changes, origin})
                    .ok());
  }

  template <typename T>
  T& Find(const char* name) {
    return test::Find<T>(*views_.Buttons(), name);
  }
  QTableView& Labels() { return test::Find<QTableView>(*views_.Alphas(), "jgAlphas"); }
  QString LabelCell(int row, int column) {
    return Labels().model()->index(row, column).data().toString();
  }
  QObject& Map() { return test::Find<QObject>(*views_.Xmap(), "msfgXmap"); }
  int Mark(int row, int column) {
    int mark = -1;
    EXPECT_TRUE(QMetaObject::invokeMethod(&Map(), "cellMark", Q_RETURN_ARG(int, mark),
                                          Q_ARG(int, row), Q_ARG(int, column)));
    return mark;
  }
  QString MapText(int row, int column) {
    QString text;
    EXPECT_TRUE(QMetaObject::invokeMethod(&Map(), "cellText", Q_RETURN_ARG(QString, text),
                                          Q_ARG(int, row), Q_ARG(int, column)));
    return text;
  }

  test::ViewConsole console_{kChannels};
  OpenViews views_{*console_.area, console_.Services()};
  StoredElsewhere storedElsewhere_{console_.changes, views_};
};

TEST_F(StoredElsewhereTest, LabelsAreShownInEveryView) {
  views_.ShowButtons();
  views_.ShowXmap();
  views_.ShowAlphas();
  console_.SetField(2, "B1 Type", 0);
  console_.SetField(2, "B1 First", 3);
  console_.SetField(2, "B1 Prog", Flags({3}));
  const struct {
    Origin origin;
    const char* label;
  } kAll[] = {{Origin::Undo, "UNDONE"},      {Origin::Redo, "REDONE"},
              {Origin::Restore, "RESTORED"}, {Origin::Comparison, "COMPARED"},
              {Origin::Backup, "COPIED"},    {Origin::File, "READ"}};
  for (const auto& [origin, label] : kAll) {
    Store(origin, 3, {{"Label", jet::Value(), label}});
    EXPECT_EQ(LabelCell(2, kLabel), QLatin1String(label));
    EXPECT_EQ(MapText(4, 0), QLatin1String(label));
    EXPECT_EQ(Find<QPushButton>("cmdButton_0").text(), QLatin1String(label));
  }
  EXPECT_EQ(console_.CurrentStation(), 2);
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

TEST_F(StoredElsewhereTest, NotesAreShownInTheLabels) {
  views_.ShowAlphas();
  Store(Origin::Undo, 3, {{"Notes", jet::Value(), "left wing"}});
  EXPECT_EQ(LabelCell(2, kNotes), QStringLiteral("left wing"));
}

// The view that was worked in shows it already, and what it leaves as it is stays so.
TEST_F(StoredElsewhereTest, EditsAndTablesOfTheSwitcherAreOthersBusiness) {
  views_.ShowAlphas();
  const QString before = LabelCell(2, kLabel);
  for (const Origin origin : {Origin::Operator, Origin::Navigation, Origin::Switcher}) {
    Store(origin, 3, {{"Label", jet::Value(), std::to_string(static_cast<int>(origin))}});
    EXPECT_EQ(LabelCell(2, kLabel), before);
  }
}

TEST_F(StoredElsewhereTest, AnOpenEditorKeepsWhatIsTyped) {
  views_.ShowAlphas();
  const QModelIndex cell = Labels().model()->index(2, kLabel);
  Labels().setCurrentIndex(cell);
  QTest::keyClicks(&Labels(), QStringLiteral("M"));
  QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("IC"));
  auto* const editor = Labels().viewport()->findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  Store(Origin::Undo, 3, {{"Notes", jet::Value(), "left wing"}});
  Store(Origin::Undo, 5, {{"Label", jet::Value(), "CAM 5"}});
  EXPECT_EQ(LabelCell(4, kLabel), QStringLiteral("CAM 5"));
  EXPECT_EQ(LabelCell(2, kNotes), QStringLiteral("left wing"));
  EXPECT_EQ(Labels().viewport()->findChild<QLineEdit*>(), editor);
  EXPECT_TRUE(editor->isVisible());
  EXPECT_EQ(editor->text(), QStringLiteral("MIC"));
  ASSERT_TRUE(views_.StoreEdits());
  EXPECT_EQ(console_.Text(3, "Label"), "MIC");
  EXPECT_EQ(console_.Text(3, "Notes"), "left wing");
}

TEST_F(StoredElsewhereTest, InhibitsLeaveStandingCrosspointsInSight) {
  views_.ShowXmap();
  views_.CrosspointRowChanged(2, 0);
  console_.model.CrosspointMap.At(3, 5) = 1;
  console_.model.ChannelStatus[3] = 1;
  views_.CrosspointRowChanged(3, 1);
  console_.model.CrosspointMap.At(3, 6) = 1;  // reported with the next row only
  Store(Origin::Redo, 3, {{"Inhibits", Flags({}), Flags({1, 5, 8})}});
  EXPECT_EQ(Mark(4, 2), 2);
  EXPECT_EQ(Mark(4, 6), 3) << "a call that stands";
  EXPECT_EQ(Mark(4, 7), 0) << "no inhibit of it changed";
  EXPECT_EQ(Mark(4, 9), 2);
  Store(Origin::Undo, 3, {{"Inhibits", Flags({1, 5, 8}), Flags({8})}});
  EXPECT_EQ(Mark(4, 2), 0);
  EXPECT_EQ(Mark(4, 6), 3);
  EXPECT_EQ(Mark(4, 9), 2);
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

TEST_F(StoredElsewhereTest, AnInhibitThatGoesLeavesTheCrosspointThatIsMade) {
  views_.ShowXmap();
  Store(Origin::Redo, 3, {{"Inhibits", jet::Value(), Flags({1})}});
  console_.model.CrosspointMap.At(3, 1) = 1;
  views_.Xmap()->UpdateXmapInhibits();
  ASSERT_EQ(Mark(4, 2), 2);
  Store(Origin::Undo, 3, {{"Inhibits", Flags({1}), jet::Value()}});
  EXPECT_EQ(Mark(4, 2), 1);
}

// There may be more stations than channels.
TEST_F(StoredElsewhereTest, InhibitsOfAStationWithoutAnOutputAreNotShown) {
  views_.ShowXmap();
  Store(Origin::Undo, 9, {{"Inhibits", Flags({}), Flags({1})}});
  EXPECT_EQ(console_.Text(9, "Inhibits"), Flags({1}));
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

TEST_F(StoredElsewhereTest, ProgrammingIsShownOfTheStationInSight) {
  views_.ShowButtons();
  Store(Origin::Undo, 2, {{"B2 Type", jet::Value(), 1}, {"Relays", jet::Value(), Flags({3})}});
  EXPECT_EQ(Find<QLabel>("lblBtype_1").text(), QStringLiteral("LISTEN"));
  EXPECT_TRUE(Find<QCheckBox>("ckRelaySel_2").isChecked());
  Store(Origin::Undo, 2, {{"OptoType", jet::Value(), 3}});
  EXPECT_TRUE(Find<QRadioButton>("optOptoType_3").isChecked());
  // Another station's is no reason to draw what stands for something else meanwhile.
  Find<QLabel>("lblBtype_1").setText(QStringLiteral("as it was"));
  Store(Origin::Undo, 4, {{"B2 Type", jet::Value(), 0}});
  EXPECT_EQ(Find<QLabel>("lblBtype_1").text(), QStringLiteral("as it was"));
  EXPECT_EQ(console_.CurrentStation(), 2);
}

TEST_F(StoredElsewhereTest, WithoutViewsNothingIsShown) {
  Store(Origin::Undo, 3,
        {{"Label", jet::Value(), "CAM"}, {"Inhibits", jet::Value(), Flags({1})}, {"Hidden", 0, 1}});
  EXPECT_EQ(console_.Text(3, "Label"), "CAM");
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

}  // namespace
}  // namespace app
