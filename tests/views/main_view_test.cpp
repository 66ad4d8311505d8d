// SPDX-License-Identifier: MIT

#include "views/main_view.h"

#include <gtest/gtest.h>

#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSettings>

namespace views {
namespace {

class CountingView : public MainView {
 public:
  explicit CountingView(config::WindowSettings& settings)
      : MainView(QStringLiteral("frmAlphas"), QStringLiteral("Station Labels"),
                 QStringLiteral("Alphas"), settings) {}
  using MainView::FormGeometry;
  int resizes = 0;

 protected:
  void FormResized() override { ++resizes; }
};

class MainViewTest : public testing::Test {
 protected:
  MainViewTest() {
    QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Orvo"),
              QStringLiteral("Orvo Intercom Control"))
        .clear();
    window_.resize(1000, 800);
    window_.setCentralWidget(area_);
    window_.show();
  }

  void Open() {
    view_ = new CountingView(settings_);
    child_ = area_->addSubWindow(view_);
    child_->setAttribute(Qt::WA_DeleteOnClose);
    child_->show();
  }

  std::string Stored(const char* side) {
    return settings_.Text(QStringLiteral("Alphas") + QLatin1String(side)).toStdString();
  }

  config::WindowSettings settings_{QString()};
  QMainWindow window_;
  QMdiArea* area_ = new QMdiArea;
  CountingView* view_ = nullptr;
  QMdiSubWindow* child_ = nullptr;
};

TEST_F(MainViewTest, FirstStartUsesTheDefaults) {
  Open();
  EXPECT_EQ(child_->geometry(), QRect(20, 20, 667, 600));
  EXPECT_EQ(view_->FormGeometry(), child_->geometry());
  child_->close();
  EXPECT_EQ(Stored("Left"), "300");
  EXPECT_EQ(Stored("Width"), "10000") << "not 10005, though the window has 667 pixels";
  EXPECT_EQ(Stored("Height"), "9000");
}

TEST_F(MainViewTest, TextThatIsNoNumberStaysWhenNothingMoved) {
  settings_.SetText(QStringLiteral("AlphasLeft"), QStringLiteral("301 "));
  Open();
  EXPECT_EQ(child_->x(), 20);
  child_->close();
  EXPECT_EQ(Stored("Left"), "301 ");
}

TEST_F(MainViewTest, OnlyWhatMovedIsStoredAnew) {
  Open();
  child_->resize(500, 600);
  child_->close();
  EXPECT_EQ(Stored("Left"), "300");
  EXPECT_EQ(Stored("Width"), "7500");
  EXPECT_EQ(Stored("Height"), "9000");
}

TEST_F(MainViewTest, PlaceCanBeTakenAgain) {
  Open();
  child_->setGeometry(1, 2, 300, 301);
  view_->RestorePlacement();
  EXPECT_EQ(child_->geometry(), QRect(20, 20, 667, 600));
}

TEST_F(MainViewTest, HidingAndShowingKeepsThePlace) {
  Open();
  child_->setGeometry(50, 60, 300, 301);
  child_->hide();
  child_->show();
  EXPECT_EQ(child_->geometry(), QRect(50, 60, 300, 301));
}

TEST_F(MainViewTest, MinimisedFormStoresNothing) {
  Open();
  child_->setGeometry(50, 60, 300, 301);
  child_->showMinimized();
  child_->close();
  EXPECT_EQ(Stored("Left"), "300");
  EXPECT_EQ(Stored("Width"), "10000");
}

TEST_F(MainViewTest, ResizeOfTheFormIsTold) {
  Open();
  view_->resizes = 0;
  child_->resize(400, 401);
  EXPECT_GT(view_->resizes, 0);
  EXPECT_EQ(view_->FormGeometry().size(), QSize(400, 401));
}

TEST_F(MainViewTest, ViewWithoutASubWindowIsItsOwnForm) {
  CountingView view(settings_);
  view.show();
  EXPECT_EQ(view.FormGeometry().size(), QSize(667, 600));
  view.close();
}

}  // namespace
}  // namespace views
