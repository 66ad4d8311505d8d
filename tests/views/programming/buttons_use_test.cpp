// SPDX-License-Identifier: MIT
//
// The programming view by keys alone, its layout, and what it paints.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyleOption>
#include <QTabWidget>
#include <QTest>
#include <map>
#include <set>

#include "tests/views/programming/buttons_console.h"
#include "views/widgets/contrast.h"

namespace views {
namespace {

using test::ButtonsConsole;
using test::Flags;
using testing::ElementsAre;
using testing::IsEmpty;

std::string Focus() {
  const QWidget* const focus = QApplication::focusWidget();
  return focus == nullptr ? "nothing" : focus->objectName().toStdString();
}

void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

// Presses Tab until the focus is on a control of that name; false when it never comes.
bool TabTo(const std::string& name) {
  for (int i = 0; i < 80; ++i) {
    if (Focus() == name) return true;
    Press(Qt::Key_Tab);
  }
  return false;
}

TEST(ButtonsByKeys, AStationIsProgrammedWithoutAMouse) {
  ButtonsConsole console;
  console.Open();
  ASSERT_TRUE(TabTo("cmdNext"));
  Press(Qt::Key_PageDown);
  Press(Qt::Key_PageDown);
  EXPECT_EQ(console.CurrentStation(), 3);
  Press(Qt::Key_PageUp);
  EXPECT_EQ(console.CurrentStation(), 2);
  Press(Qt::Key_Space);
  EXPECT_EQ(console.CurrentStation(), 3);
  ASSERT_TRUE(TabTo("cmdButton_0"));
  Press(Qt::Key_Down);
  Press(Qt::Key_Right);
  EXPECT_EQ(Focus(), "cmdButton_9");
  Press(Qt::Key_Return);
  EXPECT_EQ(console.Tab(), 5);
  EXPECT_EQ(Focus(), "ckStationSel_0");
  Press(Qt::Key_Space);
  Press(Qt::Key_End);
  Press(Qt::Key_Space);
  EXPECT_EQ(console.Text(3, "B10 Prog"), Flags({1, 8, 10}));
  Press(Qt::Key_Backtab);
  EXPECT_EQ(Focus(), "optButType_0");
  Press(Qt::Key_Right);
  EXPECT_EQ(Focus(), "optButType_1");
  EXPECT_EQ(console.Number(3, "B10 Type"), 1);
  Press(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(console.Tab(), 6);
  ASSERT_TRUE(TabTo("ckRelaySel_0"));
  Press(Qt::Key_Right);
  Press(Qt::Key_Space);
  EXPECT_EQ(console.Text(3, "Relays"), Flags({2}));
  for (int i = 0; i < 9; ++i) Press(Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_EQ(console.Tab(), 1);
}

TEST(ButtonsByKeys, PageKeysGoToStationsAlsoFromTheSelector) {
  ButtonsConsole console;
  console.Open();
  console.GoToTab(5);
  console.Find<QWidget>(QStringLiteral("cmbButton")).setFocus();
  Press(Qt::Key_PageDown);
  EXPECT_EQ(console.CurrentStation(), 2);
  EXPECT_EQ(console.Find<QComboBox>(QStringLiteral("cmbButton")).currentIndex(), 0);
  Press(Qt::Key_Down);
  EXPECT_EQ(console.Find<QComboBox>(QStringLiteral("cmbButton")).currentIndex(), 1);
  EXPECT_EQ(console.CurrentStation(), 2);
}

TEST(ButtonsByKeys, TabGoesInReadingOrderAndAround) {
  ButtonsConsole console;
  console.Open();
  console.GoToTab(5);
  console.Find<QWidget>(QStringLiteral("cmdFirst")).setFocus();
  std::vector<std::string> order;
  do {
    order.push_back(Focus());
    Press(Qt::Key_Tab);
  } while (Focus() != "cmdFirst" && order.size() < 60);
  EXPECT_THAT(order,
              ElementsAre("cmdFirst", "cmdBack10", "cmdPrev", "cmbButton", "cmdNext", "cmdFwd10",
                          "cmdLast", "txtStaLabel", "txtInptLabel", "txtPortNmbr",
                          "qt_tabwidget_tabbar", "optButType_0", "ckStationSel_0", "aidStation",
                          "btnCopyToStations", "btnWhereUsed", "btnSendButtonData",
                          "btnSendSingleStation", "btnSendOptoData", "btnQDVStatus"));
}

TEST(ButtonsLook, EverythingFitsIntoItsFirstSize) {
  ButtonsConsole console;
  console.Open();
  EXPECT_EQ(console.subWindow->size(), QSize(593, 407));
  for (const int tab : {1, 2, 3, 4, 5, 6}) {
    console.GoToTab(tab);
    QCoreApplication::sendPostedEvents();
    auto* const page = static_cast<QScrollArea*>(
        console.Find<QTabWidget>(QStringLiteral("SSActiveTabs1")).currentWidget());
    EXPECT_EQ(page->horizontalScrollBar()->maximum(), 0) << tab;
    EXPECT_EQ(page->verticalScrollBar()->maximum(), 0) << tab;
  }
}

// Of eight characters, as they are in use.
const char* const kRealLabels[] = {"GRAPHICS", "CAM CREW", "MIC ANCH", "REPLAY 1",
                                   "SOUND 01", "LIGHTING", "STUDIO A", "OB VAN 3"};

TEST(ButtonsLook, EverythingFitsIntoItsFirstSizeWithRealLabelsInALargeFont) {
  const QFont usual = QApplication::font();
  const auto restore = qScopeGuard([usual] { QApplication::setFont(usual); });
  for (const double points : {9.0, 10.0, 11.0, 12.0}) {
    QFont font = usual;
    font.setPointSizeF(points);
    QApplication::setFont(font);
    ButtonsConsole console;
    for (int n = 1; n <= 64; ++n) {
      console.SetField(n, "Label", kRealLabels[n % 8]);
      console.SetField(n, "InLabel", kRealLabels[(n + 3) % 8]);
      if (n <= 32) console.SetField(1, "B" + std::to_string(n) + " First", n);
    }
    console.SetField(1, "OptoType", 1);
    console.Open();
    ASSERT_EQ(console.subWindow->size(), QSize(593, 407));
    const auto& tabs = console.Find<QTabWidget>(QStringLiteral("SSActiveTabs1"));
    for (const int tab : {1, 2, 3, 4, 5, 6, 7}) {
      console.GoToTab(tab);
      // With the note that has the least room.
      if (tab == 5) console.ClickBox("ckStationSel", 0);
      QCoreApplication::sendPostedEvents();
      const auto* const page = static_cast<const QScrollArea*>(tabs.currentWidget());
      EXPECT_EQ(page->horizontalScrollBar()->maximum(), 0) << points << " points, tab " << tab;
      EXPECT_EQ(page->verticalScrollBar()->maximum(), 0) << points << " points, tab " << tab;
      for (const QAbstractButton* const button : page->widget()->findChildren<QAbstractButton*>()) {
        QStyleOptionButton option;
        option.initFrom(button);
        const auto contents = qobject_cast<const QCheckBox*>(button) != nullptr
                                  ? QStyle::SE_CheckBoxContents
                                  : QStyle::SE_PushButtonContents;
        if (qobject_cast<const QRadioButton*>(button) != nullptr) continue;
        EXPECT_GE(button->style()->subElementRect(contents, &option, button).width(),
                  button->fontMetrics().horizontalAdvance(button->text()))
            << points << " points, " << button->objectName().toStdString();
      }
    }
  }
}

TEST(ButtonsLook, BoxesOfTargetsRelaysAndOptosAreInOneFontWhateverTheyAreCalled) {
  const QFont usual = QApplication::font();
  const auto restore = qScopeGuard([usual] { QApplication::setFont(usual); });
  for (const double points : {9.0, 12.0}) {
    QFont font = usual;
    font.setPointSizeF(points);
    QApplication::setFont(font);
    ButtonsConsole console;
    for (int n = 1; n <= 64; ++n) console.SetField(n, "Label", "MMMMMMMM");
    console.SetField(1, "OptoType", 1);
    console.Open();
    for (const int tab : {5, 6, 7}) console.GoToTab(tab);
    QCoreApplication::sendPostedEvents();
    const QFont first = console.Find<QCheckBox>("ckStationSel", 0).font();
    for (const char* const boxes : {"ckStationSel", "ckRelaySel", "ckOptoStationSel"}) {
      for (const int index : {0, 63}) {
        EXPECT_EQ(console.Find<QCheckBox>(boxes, index).font(), first) << boxes << points;
      }
    }
    EXPECT_EQ(console.Find<QCheckBox>("ckStationSel", 0).text(), QStringLiteral("MMMMMMMM"));
  }
}

TEST(ButtonsLook, ALargerViewHasTheDesktopsFont) {
  const QFont usual = QApplication::font();
  const auto restore = qScopeGuard([usual] { QApplication::setFont(usual); });
  QFont font = usual;
  font.setPointSizeF(12);
  QApplication::setFont(font);
  ButtonsConsole console;
  console.Open();
  EXPECT_NEAR(console.view->font().pointSizeF(), 9, 0.3);
  console.subWindow->resize(900, 600);
  EXPECT_EQ(console.view->font().pointSizeF(), 12);
  EXPECT_EQ(console.Find<QWidget>(QStringLiteral("fmButType")).font().pointSizeF(), 12);
  const auto& selector = console.Find<QComboBox>(QStringLiteral("cmbButton"));
  EXPECT_NEAR(selector.font().pointSizeF(), 9, 0.3) << "at places that are fixed";
}

TEST(ButtonsLook, TheFieldsStandBesideTheNavigation) {
  ButtonsConsole console;
  console.Open();
  QCoreApplication::sendPostedEvents();
  int right = console.Find<QWidget>(QStringLiteral("frNavControls")).geometry().right();
  for (const char* const name : {"txtStaLabel", "txtInptLabel", "txtPortNmbr"}) {
    const auto& field = console.Find<QWidget>(QString::fromLatin1(name));
    const int left = field.mapTo(console.view, QPoint()).x();
    EXPECT_GT(left, right) << name;
    EXPECT_GE(field.width(), 36) << name;
    right = left + field.width();
  }
  EXPECT_LE(right, console.view->width());
}

TEST(ButtonsLook, TheFieldsStandUnderTheNavigationInANarrowView) {
  ButtonsConsole console;
  console.Open();
  console.subWindow->resize(433, 433);
  QCoreApplication::sendPostedEvents();
  const auto& frame = console.Find<QWidget>(QStringLiteral("frNavControls"));
  EXPECT_LE(frame.geometry().right(), console.view->width());
  for (const char* const name : {"txtStaLabel", "txtInptLabel", "txtPortNmbr"}) {
    const auto& field = console.Find<QWidget>(QString::fromLatin1(name));
    const QPoint at = field.mapTo(console.view, QPoint());
    EXPECT_GT(at.y(), frame.geometry().bottom()) << name;
    EXPECT_LE(at.x() + field.width(), console.view->width()) << name;
  }
  EXPECT_LE(console.view->minimumSizeHint().width(), 433);
}

TEST(ButtonsLook, TheFieldsKeepTogetherInAWideView) {
  ButtonsConsole console;
  console.Open();
  console.subWindow->resize(1900, 407);
  QCoreApplication::sendPostedEvents();
  const auto& port = console.Find<QWidget>(QStringLiteral("txtPortNmbr"));
  EXPECT_LE(port.mapTo(console.view, QPoint()).x() + port.width(), 380 + 360 + 12);
}

TEST(ButtonsLook, TypesCanBeReadInADarkTheme) {
  ButtonsConsole console;
  const int codes[] = {0, 1, 2, 3, 254, 255};
  for (int n = 1; n <= 6; ++n) console.SetField(1, "B" + std::to_string(n) + " Type", codes[n - 1]);
  console.Open();
  QPalette dark(QColor(0x31, 0x36, 0x3B), QColor(0x2A, 0x2E, 0x32));
  dark.setColor(QPalette::WindowText, Qt::white);
  console.view->setPalette(dark);
  std::set<QRgb> grounds;
  for (int index = 0; index < 6; ++index) {
    const QPalette colours = console.Find<QLabel>("lblBtype", index).palette();
    const QColor ground = colours.color(QPalette::Window);
    EXPECT_GE(Contrast(colours.color(QPalette::WindowText), ground), 4.5) << codes[index];
    grounds.insert(ground.rgb());
  }
  EXPECT_EQ(grounds.size(), 6U);
}

TEST(ButtonsLook, WideLabelsAreShownWhole) {
  ButtonsConsole console;
  console.SetField(1, "Label", "WWWWWWWW");
  console.Open();
  const auto& button = console.Find<QPushButton>("cmdButton", 0);
  EXPECT_GT(button.width(), button.fontMetrics().horizontalAdvance(QStringLiteral("WWWWWWWW")));
}

// How often each widget is painted.
class Paints : public QObject {
 public:
  explicit Paints(QWidget& view) {
    for (QWidget* const widget : view.findChildren<QWidget*>()) widget->installEventFilter(this);
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++counts_[watched];
    return false;
  }
  void Clear() {
    QCoreApplication::sendPostedEvents();
    QTest::qWait(1);
    counts_.clear();
  }
  // Those that were painted more often than once.
  std::vector<std::string> Repeated() {
    QCoreApplication::sendPostedEvents();
    QTest::qWait(1);
    std::vector<std::string> repeated;
    for (const auto& [widget, count] : counts_) {
      if (count > 1) {
        repeated.push_back(widget->metaObject()->className() +
                           (" " + widget->objectName().toStdString()));
      }
    }
    return repeated;
  }
  bool WasPainted(const QObject& widget) const {
    const auto found = counts_.find(&widget);
    return found != counts_.end();
  }

 private:
  std::map<const QObject*, int> counts_;
};

TEST(ButtonsLook, EachChangeIsPaintedOnce) {
  ButtonsConsole console;
  for (int n = 1; n <= 32; ++n) {
    const std::string field = "B" + std::to_string(n);
    console.SetField(2, field + " Type", n % 2 == 0 ? 1 : 3);
    console.SetField(2, field + " First", 33 - n);
  }
  console.SetField(2, "B2 Prog", Flags({1, 2, 3}));
  console.Open();
  Paints paints(*console.view);
  paints.Clear();
  console.Find<QAbstractButton>(QStringLiteral("cmdNext")).click();
  EXPECT_THAT(paints.Repeated(), IsEmpty()) << "a station, on the page of its buttons";
  EXPECT_TRUE(paints.WasPainted(console.Find<QLabel>("lblBtype", 15)));

  console.GoToTab(5);
  paints.Clear();
  console.Find<QAbstractButton>(QStringLiteral("cmdPrev")).click();
  EXPECT_THAT(paints.Repeated(), IsEmpty()) << "a station, on the page that edits";
  EXPECT_TRUE(paints.WasPainted(console.Find<QCheckBox>("ckStationSel", 63)));

  paints.Clear();
  console.Find<QComboBox>(QStringLiteral("cmbButton")).setCurrentIndex(1);
  EXPECT_THAT(paints.Repeated(), IsEmpty()) << "a button";
  EXPECT_TRUE(paints.WasPainted(console.Find<QCheckBox>("ckStationSel", 1)));

  paints.Clear();
  console.Find<QAbstractButton>("ckStationSel", 40).click();
  EXPECT_THAT(paints.Repeated(), IsEmpty()) << "a target";
  EXPECT_TRUE(paints.WasPainted(console.Find<QCheckBox>("ckStationSel", 40)));
  EXPECT_FALSE(paints.WasPainted(console.Find<QCheckBox>("ckStationSel", 50)));

  paints.Clear();
  console.Find<QAbstractButton>("optButType", 2).click();
  EXPECT_THAT(paints.Repeated(), IsEmpty()) << "an operation";
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

}  // namespace
}  // namespace views
