// SPDX-License-Identifier: MIT
//
// The places of the main views in an area that is scrolled, and whose views are maximised and
// minimised: what is stored of them, and where they come up.

#include <gtest/gtest.h>

#include <QScrollBar>

#include "app/shell/focus_in_sight.h"
#include "app/shell/mdi_arrangement.h"
#include "app/shell/open_views.h"
#include "tests/views/gui_support.h"
#include "tests/views/view_console.h"

namespace app {
namespace {

class ChildPlacesTest : public testing::Test {
 protected:
  ChildPlacesTest() {
    console_.area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    console_.area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    console_.window->resize(kRoom);
    console_.window->show();
    for (const char* const prefix : {"Butns", "Alphas", "Xmap"}) {
      Place(prefix, "Left", prefix[0] == 'X' ? "300" : "150");
      Place(prefix, "Top", "450");
      Place(prefix, "Width", "4500");
      Place(prefix, "Height", "3750");
    }
  }

  void Place(const char* prefix, const char* side, const char* twips) {
    console_.settings->SetText(QLatin1String(prefix) + QLatin1String(side), QLatin1String(twips));
  }

  // "left top width height" as stored.
  std::string Stored(const char* prefix) {
    QStringList texts;
    for (const char* const side : {"Left", "Top", "Width", "Height"}) {
      texts.append(console_.settings->Text(QLatin1String(prefix) + QLatin1String(side)));
    }
    return texts.join(u' ').toStdString();
  }

  void ExpectNothingElseStored() {
    EXPECT_EQ(Stored("Butns"), "150 450 4500 3750");
    EXPECT_EQ(Stored("Alphas"), "150 450 4500 3750");
    EXPECT_EQ(Stored("Xmap"), "300 450 4500 3750");
  }

  QMdiSubWindow* Frame(const char* name) { return test::SubWindow(*console_.area, name); }

  // Whether all of the window is seen.
  bool IsSeen(const QMdiSubWindow& window) {
    return console_.area->viewport()->rect().contains(window.geometry());
  }

  QScrollBar& Across() { return *console_.area->horizontalScrollBar(); }
  QScrollBar& Down() { return *console_.area->verticalScrollBar(); }

  static constexpr QSize kRoom{400, 350};

  test::ViewConsole console_{8};
  FocusInSight focusInSight_{*console_.area};
  OpenViews views_{*console_.area, console_.Services()};
};

TEST_F(ChildPlacesTest, AMaximisedViewThatIsClosedKeepsItsPlaceAndTheOthersTheirs) {
  views_.ShowAllInPlace();
  Frame("frmXmap")->showMaximized();
  ASSERT_TRUE(Frame("frmXmap")->isMaximized());
  Frame("frmXmap")->close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  views_.CloseAll();
  ExpectNothingElseStored();
}

TEST_F(ChildPlacesTest, SwitchingBetweenMaximisedViewsChangesNoPlace) {
  views_.ShowAllInPlace();
  Frame("frmButtons")->showMaximized();
  for (int times = 0; times < 4; ++times) console_.area->activateNextSubWindow();
  views_.CloseAll();
  ExpectNothingElseStored();
}

TEST_F(ChildPlacesTest, AfterARetrievalAMaximisedViewIsWhereItWas) {
  views_.ShowAllInPlace();
  Frame("frmAlphas")->showMaximized();
  views_.CloseAll();
  ExpectNothingElseStored();
  views_.ShowAllInPlace();
  EXPECT_FALSE(Frame("frmAlphas")->isMaximized());
  EXPECT_EQ(Frame("frmAlphas")->geometry(), QRect(10, 30, 300, 250));
  EXPECT_EQ(Frame("frmXmap")->geometry(), QRect(20, 30, 300, 250));
}

TEST_F(ChildPlacesTest, AMinimisedViewStoresNothing) {
  views_.ShowAllInPlace();
  Frame("frmXmap")->setGeometry(40, 40, 200, 200);
  Frame("frmXmap")->showMinimized();
  views_.CloseAll();
  ExpectNothingElseStored();
}

TEST_F(ChildPlacesTest, AViewThatIsMovedBeforeItIsMaximisedStoresWhereItWasMovedTo) {
  views_.ShowAllInPlace();
  Frame("frmXmap")->setGeometry(40, 50, 200, 210);
  Frame("frmXmap")->showMaximized();
  views_.CloseAll();
  EXPECT_EQ(Stored("Xmap"), "600 750 3000 3150");
}

TEST_F(ChildPlacesTest, ScrollingTheAreaChangesNoPlace) {
  Place("Xmap", "Width", "15000");
  Place("Xmap", "Height", "12000");
  views_.ShowAllInPlace();
  Down().setValue(Down().maximum());
  Across().setValue(Across().maximum());
  ASSERT_LT(Frame("frmXmap")->y(), 0);
  views_.CloseAll();
  EXPECT_EQ(Stored("Butns"), "150 450 4500 3750");
  EXPECT_EQ(Stored("Alphas"), "150 450 4500 3750");
  EXPECT_EQ(Stored("Xmap"), "300 450 15000 12000");
}

TEST_F(ChildPlacesTest, AViewComesUpAtItsPlaceInAnAreaThatIsScrolled) {
  Place("Xmap", "Width", "15000");
  Place("Xmap", "Height", "12000");
  views_.ShowXmap();
  Down().setValue(200);
  Across().setValue(300);
  views_.ShowAlphas();
  Down().setValue(0);
  Across().setValue(0);
  EXPECT_EQ(Frame("frmAlphas")->geometry(), QRect(10, 30, 300, 250));
}

// The toolkit takes it back to where it was seen.
TEST_F(ChildPlacesTest, AMinimisedViewComesBackToItsPlaceHoweverTheAreaWasScrolledSince) {
  Place("Xmap", "Width", "15000");
  Place("Xmap", "Height", "12000");
  views_.ShowAllInPlace();
  Frame("frmAlphas")->showMinimized();
  Down().setValue(200);
  Across().setValue(300);
  views_.ShowAlphas();
  EXPECT_FALSE(Frame("frmAlphas")->isMinimized());
  EXPECT_TRUE(IsSeen(*Frame("frmAlphas")));
  Down().setValue(0);
  Across().setValue(0);
  EXPECT_EQ(Frame("frmAlphas")->geometry(), QRect(10, 30, 300, 250));
}

TEST_F(ChildPlacesTest, ShowingAViewTakesItOutOfItsMaximisedState) {
  views_.ShowAllInPlace();
  Frame("frmXmap")->showMaximized();
  views_.ShowXmap();
  EXPECT_FALSE(Frame("frmXmap")->isMaximized());
  EXPECT_EQ(Frame("frmXmap")->geometry(), QRect(20, 30, 300, 250));
}

TEST_F(ChildPlacesTest, ShowingAViewBesideAMaximisedOneDoesNotMaximiseIt) {
  views_.ShowAllInPlace();
  Frame("frmXmap")->showMaximized();
  views_.ShowAlphas();
  EXPECT_FALSE(Frame("frmAlphas")->isMaximized());
  EXPECT_EQ(Frame("frmAlphas")->geometry(), QRect(10, 30, 300, 250));

  Frame("frmAlphas")->close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  Frame("frmXmap")->showMaximized();
  views_.ShowAlphas();
  EXPECT_FALSE(Frame("frmAlphas")->isMaximized()) << "a new one";
  EXPECT_EQ(Frame("frmAlphas")->geometry(), QRect(10, 30, 300, 250));
}

TEST_F(ChildPlacesTest, AViewOutsideTheVisibleAreaIsBroughtIntoSight) {
  Place("Xmap", "Left", "30000");
  Place("Xmap", "Top", "-6000");
  views_.ShowXmap();
  EXPECT_TRUE(IsSeen(*Frame("frmXmap")));
  views_.ShowAlphas();
  EXPECT_TRUE(IsSeen(*Frame("frmAlphas")));
  EXPECT_FALSE(IsSeen(*Frame("frmXmap")));
  views_.ShowXmap();
  EXPECT_TRUE(IsSeen(*Frame("frmXmap")));
  // Also when it has the focus already.
  Across().setValue(Across().minimum());
  Down().setValue(Down().maximum());
  ASSERT_FALSE(IsSeen(*Frame("frmXmap")));
  views_.ShowXmap();
  EXPECT_TRUE(IsSeen(*Frame("frmXmap")));
  views_.CloseAll();
  EXPECT_EQ(Stored("Xmap"), "30000 -6000 4500 3750");
}

TEST_F(ChildPlacesTest, OfAViewThatIsLargerThanTheAreaTheBeginningIsSeen) {
  Place("Xmap", "Left", "3000");
  Place("Xmap", "Width", "15000");
  views_.ShowXmap();
  EXPECT_EQ(Frame("frmXmap")->x(), 0);
  EXPECT_EQ(Frame("frmXmap")->y(), 30) << "there is room for its height";
}

TEST_F(ChildPlacesTest, TheAreaStaysWhereItIsForAViewThatIsSeen) {
  views_.ShowAllInPlace();
  views_.ShowAlphas();
  EXPECT_EQ(Across().value(), 0);
  EXPECT_EQ(Down().value(), 0);
}

}  // namespace
}  // namespace app
