// SPDX-License-Identifier: MIT
//
// The optos in the programming view: its last tab, its navigation and its tools.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>

#include <QRadioButton>

#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QWheelEvent>
#include <algorithm>
#include <string>
#include <vector>

#include "tests/views/programming/buttons_console.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kBoxes[] = "ckOptoStationSel";
constexpr char kOptions[] = "optOptoType";

// The view on its last tab, with opto 1 talking to stations 3 and 5 and opto 2 listening to 7.
class OptoTabTest : public testing::Test {
 protected:
  OptoTabTest() {
    console_.SetField(1, "OptoType", 0);
    console_.SetField(1, "OptoFirst", 3);
    console_.SetField(1, "OptoStations", test::Flags({3, 5}));
    console_.SetField(2, "OptoType", 1);
    console_.SetField(2, "OptoFirst", 7);
    console_.SetField(2, "OptoStations", test::Flags({7}));
    console_.Open();
    console_.GoToTab(7);
  }

  QComboBox& Channels() { return console_.Find<QComboBox>(QStringLiteral("cmbOptoChan")); }
  std::string Text(const char* box, int index) {
    return console_.Find<QCheckBox>(box, index).text().toStdString();
  }
  std::string FrameCaption() {
    return console_.Find<QGroupBox>(QStringLiteral("frOptoStations")).title().toStdString();
  }

  test::ButtonsConsole console_;
};

TEST_F(OptoTabTest, ShowsTheOptoOfTheRecordWithItsSelector) {
  EXPECT_EQ(console_.Find<QGroupBox>(QStringLiteral("frNavControls")).title(),
            QLatin1String("Navigation Controls [ Select Opto To Configure ]"));
  EXPECT_TRUE(Channels().isVisible());
  EXPECT_EQ(Channels().currentText(), QLatin1String("Inpt 001"));
  EXPECT_EQ(Channels().count(), 64);
  EXPECT_EQ(FrameCaption(), "Station(s) To Be Called When OPTO Is Activated");
  EXPECT_EQ(Text(kBoxes, 0), "Sta. 001");
  EXPECT_THAT(console_.Ticked(kBoxes), ElementsAre(2, 4));
  EXPECT_TRUE(console_.Find<QRadioButton>(kOptions, 0).isChecked());
  console_.GoToTab(1);
  EXPECT_FALSE(Channels().isVisible());
}

TEST_F(OptoTabTest, TheNoteOfAnInactiveOptoIsInSightInANarrowView) {
  console_.Press("cmdNext");
  console_.subWindow->resize(433, 433);
  console_.ClickBox(kBoxes, 6);
  QCoreApplication::sendPostedEvents();
  const auto& note = console_.Find<QWidget>(QStringLiteral("aidOptoInactiveNote"));
  const QWidget& viewport = *console_.Find<QTabWidget>(QStringLiteral("SSActiveTabs1"))
                                 .currentWidget()
                                 ->findChild<QWidget*>(QStringLiteral("qt_scrollarea_viewport"));
  ASSERT_TRUE(note.isVisible());
  EXPECT_GE(note.width(), note.sizeHint().width());
  EXPECT_TRUE(viewport.rect().contains(QRect(note.mapTo(&viewport, QPoint()), note.size())));
}

TEST_F(OptoTabTest, NavigationShowsTheNextOptoWhole) {
  console_.Press("cmdNext");
  EXPECT_EQ(console_.CurrentStation(), 2);
  EXPECT_EQ(FrameCaption(), "Source To Be Monitored When OPTO Is Activated");
  EXPECT_EQ(Text(kBoxes, 6), "Inpt 007");
  EXPECT_THAT(console_.Ticked(kBoxes), ElementsAre(6));
  EXPECT_TRUE(console_.Find<QRadioButton>(kOptions, 1).isChecked());
  EXPECT_EQ(Channels().currentText(), QLatin1String("Sta. 002"));
  console_.Press("cmdLast");
  EXPECT_EQ(FrameCaption(), "OPTO Specified Inactive");
  EXPECT_EQ(Channels().currentText(), QLatin1String("Channel 64"));
  EXPECT_THAT(console_.Ticked(kBoxes), ElementsAre(63));
  EXPECT_THAT(console_.told, IsEmpty());
}

TEST_F(OptoTabTest, EditsAreUnsentUntilTheToolSendsThem) {
  console_.Press("cmdNext");
  console_.ClickBox(kBoxes, 9);
  console_.ClickBox(kBoxes, 6);
  console_.ClickBox(kBoxes, 9);
  console_.ClickTool("ID_SendOptoData");
  EXPECT_THAT(console_.told,
              ElementsAre("edited optos 2", "edited optos 2", "edited optos 2",
                          "note Opto 2 has no target left and is inactive now", "sent optos 9999"));
  EXPECT_THAT(console_.tables.traffic, ElementsAre("optos")) << "the poll goes on";
  EXPECT_EQ(console_.Number(2, "OptoType"), 254);
}

TEST_F(OptoTabTest, PageKeysChangeTheOptoAndTheWheelChangesNothing) {
  Channels().setFocus();
  QTest::keyClick(&Channels(), Qt::Key_PageDown);
  EXPECT_EQ(console_.CurrentStation(), 2);
  EXPECT_EQ(Channels().currentIndex(), 1);
  QTest::keyClick(&Channels(), Qt::Key_PageUp);
  EXPECT_EQ(console_.CurrentStation(), 1);
  const QPoint centre = Channels().rect().center();
  QWheelEvent wheel(centre, Channels().mapToGlobal(centre), QPoint(), QPoint(0, -120), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&Channels(), &wheel);
  EXPECT_EQ(Channels().currentIndex(), 0);
  EXPECT_EQ(console_.Number(1, "OptoChannel"), 1);
  EXPECT_EQ(console_.Number(2, "OptoChannel"), 2);
  EXPECT_THAT(console_.told, IsEmpty());
}

TEST_F(OptoTabTest, NumbersAbove32AreOptosToo) {
  for (int ten = 0; ten < 4; ++ten) console_.Press("cmdFwd10");
  EXPECT_EQ(console_.CurrentStation(), 41);
  console_.ClickBox(kBoxes, 0);
  EXPECT_EQ(console_.Text(41, "OptoStations"), test::Flags({1, 41}));
  EXPECT_EQ(console_.Number(41, "OptoFirst"), 1);
  EXPECT_THAT(console_.told, ElementsAre("edited optos 41"));
}

TEST_F(OptoTabTest, FailureOfAMoveIsOneReport) {
  console_.databaseIsOpen = false;
  console_.Press("cmdNext");
  EXPECT_EQ(console_.reporter.reports.size(), 1u);
  console_.ClickBox(kBoxes, 0);
  ASSERT_EQ(console_.reporter.reports.size(), 2u);
  EXPECT_THAT(console_.reporter.reports[1], HasSubstr("Error Storing Opto Programming Data"));
}

TEST_F(OptoTabTest, EverythingFitsIntoTheFirstSize) {
  ASSERT_EQ(console_.subWindow->size(), QSize(593, 407));
  QCoreApplication::sendPostedEvents();
  const auto* const page = static_cast<QScrollArea*>(
      console_.Find<QTabWidget>(QStringLiteral("SSActiveTabs1")).currentWidget());
  EXPECT_EQ(page->horizontalScrollBar()->maximum(), 0);
  EXPECT_EQ(page->verticalScrollBar()->maximum(), 0);
}

TEST_F(OptoTabTest, TabsAreInReadingOrder) {
  Channels().setFocus();
  std::vector<std::string> order;
  for (int i = 0; i < 8; ++i) {
    order.push_back(QApplication::focusWidget()->objectName().toStdString());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  const auto place = [&order](const char* name) {
    return std::ranges::find(order, name) - order.begin();
  };
  EXPECT_LT(place("cmdLast"), place("optOptoType_0"));
  EXPECT_LT(place("optOptoType_0"), place("ckOptoStationSel_0"));
  EXPECT_LT(place("ckOptoStationSel_0"), static_cast<std::ptrdiff_t>(order.size()));
}

}  // namespace
}  // namespace views
