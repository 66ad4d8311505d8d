// SPDX-License-Identifier: MIT
//
// The page of the optos under the hands of the operator: keys, sizes, painting, and what
// a screen reader says.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QStyleOption>
#include <QTest>
#include <map>

#include "tests/views/programming/opto_console.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// How often each widget is painted, by name.
class PaintCounter : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++counts_[NameOf(*watched)];
    return false;
  }
  void Watch(QWidget& root) {
    root.installEventFilter(this);
    for (QWidget* const widget : root.findChildren<QWidget*>()) widget->installEventFilter(this);
  }
  // Paints what waits for it, and gives the counts since the last time.
  std::map<std::string, int> Painted() {
    QCoreApplication::sendPostedEvents();
    return std::exchange(counts_, {});
  }

 private:
  static std::string NameOf(const QObject& widget) {
    return widget.objectName().isEmpty() ? widget.metaObject()->className()
                                         : widget.objectName().toStdString();
  }

  std::map<std::string, int> counts_;
};

class OptoPageUseTest : public testing::Test {
 protected:
  static std::string Focus() {
    const QWidget* const widget = QApplication::focusWidget();
    return widget == nullptr ? "nothing" : widget->objectName().toStdString();
  }
  static void Press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

  test::OptoConsole console_;
};

TEST_F(OptoPageUseTest, KeysAloneProgramAnOpto) {
  console_.Open();
  console_.Channels().setFocus();
  Press(Qt::Key_Down);
  Press(Qt::Key_Tab);
  EXPECT_EQ(Focus(), "optOptoType_0") << "the selected one";
  Press(Qt::Key_Right);
  EXPECT_EQ(Focus(), "optOptoType_1");
  EXPECT_THAT(console_.SelectedOptions(), ElementsAre(1));
  EXPECT_EQ(console_.BoxCaption(1), "Inpt 001");
  Press(Qt::Key_Tab);
  EXPECT_EQ(Focus(), "ckOptoStationSel_0");
  Press(Qt::Key_Right);
  Press(Qt::Key_Down);
  EXPECT_EQ(Focus(), "ckOptoStationSel_9");
  Press(Qt::Key_Space);
  EXPECT_THAT(console_.Ticked(), ElementsAre(3, 5, 10));
  Press(Qt::Key_Up);
  Press(Qt::Key_Space);
  EXPECT_EQ(console_.Stored(1), "1|2|2|2,3,5,10");
  Press(Qt::Key_Backtab);
  EXPECT_EQ(Focus(), "optOptoType_1");
  Press(Qt::Key_Backtab);
  EXPECT_EQ(Focus(), "cmbOptoChan");
}

TEST_F(OptoPageUseTest, OptionsAreReachedAlsoWhenNoneIsSelected) {
  console_.SetField(1, "OptoType", 77);
  console_.Open();
  console_.Channels().setFocus();
  Press(Qt::Key_Tab);
  EXPECT_THAT(Focus(), testing::StartsWith("optOptoType_"));
  EXPECT_EQ(console_.Number(1, "OptoType"), 77) << "reaching them chooses none";
  Press(Qt::Key_Space);
  EXPECT_EQ(console_.SelectedOptions().size(), 1u);
  EXPECT_EQ(console_.Number(1, "OptoType"), console_.SelectedOptions()[0]);
}

TEST_F(OptoPageUseTest, ScreenReaderSaysWhichTargetOfWhichOpto) {
  console_.Open();
  const auto spoken = [this](int target) {
    return QAccessible::queryAccessibleInterface(&console_.Box(target - 1))
        ->text(QAccessible::Name)
        .toStdString();
  };
  EXPECT_EQ(spoken(7), "Target 7 of opto 1: Sta. 007");
  console_.Load(2);
  EXPECT_EQ(spoken(7), "Target 7 of opto 2: Inpt 007");
  EXPECT_EQ(console_.Channels().accessibleName(), QLatin1String("Select Opto Channel"));
  EXPECT_EQ(console_.Channels().accessibleDescription(), console_.Channels().toolTip());
}

TEST_F(OptoPageUseTest, NoCaptionIsCut) {
  console_.Open();
  for (const int code : {0, 3}) {
    console_.Option(code).click();
    console_.host->resize(console_.host->minimumSizeHint());
    QCoreApplication::sendPostedEvents();
    for (int index = 0; index < 64; ++index) {
      const QCheckBox& box = console_.Box(index);
      QStyleOptionButton option;
      option.initFrom(&box);
      EXPECT_GE(box.style()->subElementRect(QStyle::SE_CheckBoxContents, &option, &box).width(),
                box.fontMetrics().horizontalAdvance(box.text()))
          << index;
      EXPECT_GE(box.height(), 20) << index;
      EXPECT_TRUE(console_.Frame().rect().contains(box.geometry())) << index;
    }
  }
}

class OptoPagePaintTest : public OptoPageUseTest {
 protected:
  void SetUp() override {
    console_.Open();
    counter_.Watch(*console_.host);
    // Layouts settle with the first event.
    QTest::qWait(0);
    counter_.Painted();
  }

  PaintCounter counter_;
};

TEST_F(OptoPagePaintTest, TickedBoxIsPaintedOnceAndNoOther) {
  console_.Box(20).setChecked(true);
  const std::map<std::string, int> painted = counter_.Painted();
  EXPECT_EQ(painted.at("ckOptoStationSel_20"), 1);
  EXPECT_EQ(painted.at("aidfrOptoStationsCount"), 1);
  for (const auto& [name, count] : painted) {
    EXPECT_EQ(count, 1) << name;
    EXPECT_TRUE(name == "ckOptoStationSel_20" || !name.starts_with("ckOpto")) << name;
    EXPECT_FALSE(name.starts_with("optOpto")) << name;
  }
}

TEST_F(OptoPagePaintTest, AnotherOptoPaintsEachWidgetOnceAtMost) {
  console_.Load(2);
  const std::map<std::string, int> painted = counter_.Painted();
  EXPECT_EQ(painted.at("ckOptoStationSel_0"), 1);
  EXPECT_EQ(painted.at("ckOptoStationSel_63"), 1);
  EXPECT_EQ(painted.at("optOptoType_1"), 1);
  EXPECT_EQ(painted.at("cmbOptoChan"), 1);
  for (const auto& [name, count] : painted) EXPECT_EQ(count, 1) << name;
}

TEST_F(OptoPagePaintTest, OperationPaintsEachWidgetOnceAtMost) {
  console_.Option(1).setChecked(true);
  const std::map<std::string, int> painted = counter_.Painted();
  EXPECT_EQ(painted.at("ckOptoStationSel_0"), 1);
  EXPECT_EQ(painted.at("frOptoStations"), 1);
  for (const auto& [name, count] : painted) EXPECT_EQ(count, 1) << name;
}

TEST_F(OptoPagePaintTest, RefreshWithoutNewsPaintsNothing) {
  console_.Refresh(&OptoPage::UpdateOptoCheckboxLabels);
  console_.Refresh(&OptoPage::UpdateOptoSelections);
  console_.Refresh(&OptoPage::UpdateOptoOptionButtons);
  console_.Refresh(&OptoPage::FillChannelList);
  console_.Refresh(&OptoPage::SelectChannel);
  EXPECT_THAT(counter_.Painted(), IsEmpty());
}

}  // namespace
}  // namespace views
