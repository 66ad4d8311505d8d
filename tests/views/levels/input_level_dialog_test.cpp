// SPDX-License-Identifier: MIT

#include "views/levels/input_level_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QPushButton>
#include <map>
#include <set>

#include "tests/views/levels/levels_console.h"

namespace test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kAtRest[] = "Input Level Controls";

class InputLevelDialogTest : public testing::Test {
 protected:
  // What went over the line since the last call.
  std::string Sent() { return console_.port.TakeWritten(); }

  LevelsConsole console_;
};

TEST_F(InputLevelDialogTest, OpensWithTheGainsOfTheModelAndSendsNothing) {
  console_.SetGain(0, 100);
  console_.SetGain(1, 127);
  console_.SetGain(63, 0);
  views::InputLevelDialog& dialog = console_.Open();
  EXPECT_EQ(dialog.objectName(), QStringLiteral("frmInptLevel"));
  EXPECT_TRUE(dialog.isModal());
  EXPECT_EQ(console_.Caption(), kAtRest);
  EXPECT_EQ(console_.Slider(0).value(), 27);
  EXPECT_EQ(console_.Tip(0), "0db ");
  EXPECT_EQ(console_.Slider(1).value(), 0);
  EXPECT_EQ(console_.Tip(1), "27db ");
  EXPECT_EQ(console_.Slider(63).value(), 127);
  EXPECT_EQ(console_.Tip(63), "-100db ");
  for (int k = 2; k < 63; ++k) {
    EXPECT_EQ(console_.Slider(k).value(), 63) << k;
    EXPECT_EQ(console_.Tip(k), "-36db ") << k;
    EXPECT_EQ(console_.Slider(k).orientation(), Qt::Vertical) << k;
    EXPECT_EQ(console_.Slider(k).minimum(), 0) << k;
    EXPECT_EQ(console_.Slider(k).maximum(), 127) << k;
  }
  EXPECT_EQ(Sent(), "");
  EXPECT_FALSE(console_.model.SendBusy);
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

TEST_F(InputLevelDialogTest, FitsIntoANarrowScreenWhateverTheFont) {
  for (const double size : {1.0, 1.25, 1.5}) {
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * size);
    views::InputLevelDialog& dialog = console_.Open();
    dialog.FitInto(800);
    dialog.setFont(font);
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.width() <= 800; })) << size;
    for (int k = 0; k < 64; ++k) EXPECT_GE(console_.Slider(k).width(), 36) << size;
    delete &dialog;
  }
}

TEST_F(InputLevelDialogTest, TheStripsAreAllAsWideAsTheWidestLabel) {
  console_.SetField(1, "InLabel", "REPLAY 1");
  console_.SetField(2, "InLabel", "REPLAY 2");
  console_.SetField(64, "InLabel", "MMMMMMMM");
  views::InputLevelDialog& dialog = console_.Open();
  EXPECT_EQ(console_.Label("lblInptName", 0), "REPLAY 1");
  EXPECT_EQ(console_.Label("lblInptName", 1), "REPLAY 2");
  EXPECT_EQ(console_.Label("lblInptName", 63), "MMMMMMMM");
  const int wide = console_.Slider(0).width();
  for (int k = 0; k < 64; ++k) EXPECT_EQ(console_.Slider(k).width(), wide) << k;
  const auto left = [&](int k) { return console_.Slider(k).mapTo(&dialog, QPoint(0, 0)).x(); };
  for (int k = 1; k < 16; ++k) EXPECT_EQ(left(k), left(k - 1) + wide) << k;
  EXPECT_LE(left(15) + wide, console_.Scroll().x());
  console_.SetField(64, "InLabel", "CAM 64");
  dialog.UpdateLabels();
  EXPECT_TRUE(QTest::qWaitFor([&] { return console_.Slider(0).width() < wide; }));
}

TEST_F(InputLevelDialogTest, WhereRoomIsShortLabelsAreWholeInSmallerLettersAllInOneFont) {
  console_.SetField(1, "InLabel", "REPLAYM1");
  console_.SetField(2, "InLabel", "CAM 2");
  views::InputLevelDialog& dialog = console_.Open();
  const QFont usual = console_.Find<QLabel>(QStringLiteral("lblInptName_0")).font();
  dialog.FitInto(700);
  ASSERT_TRUE(QTest::qWaitFor([&] { return dialog.width() <= 700; }));
  const auto& longest = console_.Find<QLabel>(QStringLiteral("lblInptName_0"));
  EXPECT_EQ(console_.Label("lblInptName", 0), "REPLAYM1");
  EXPECT_NE(longest.font(), usual);
  EXPECT_LE(longest.fontMetrics().horizontalAdvance(longest.text()), longest.width());
  for (const char* const name : {"lblInptName_1", "lblInptName_63", "lblLevel_0", "lblLevel_63"}) {
    EXPECT_EQ(console_.Find<QLabel>(QLatin1String(name)).font(), longest.font()) << name;
  }
}

TEST_F(InputLevelDialogTest, LabelsWithoutRoomDifferInWhatIsLeftOfThem) {
  console_.SetField(1, "InLabel", "REPLAYM1");
  console_.SetField(2, "InLabel", "REPLAYM2");
  views::InputLevelDialog& dialog = console_.Open();
  QFont large = dialog.font();
  large.setPointSizeF(large.pointSizeF() * 1.7);
  dialog.setFont(large);
  dialog.FitInto(700);
  ASSERT_TRUE(QTest::qWaitFor([&] { return dialog.width() <= 700; }));
  const QString first = QString::fromStdString(console_.Label("lblInptName", 0));
  EXPECT_TRUE(first.contains(u'\u2026') && first.endsWith(u'1')) << first.toStdString();
  EXPECT_TRUE(console_.Label("lblInptName", 1).ends_with('2'));
  EXPECT_EQ(console_.Find<QLabel>(QStringLiteral("lblInptName_0")).toolTip(),
            QStringLiteral("REPLAYM1"));
}

TEST_F(InputLevelDialogTest, GainsThatWereNeverReportedAreHatchedAndStandAsRequired) {
  views::InputLevelDialog& dialog = console_.Open();
  const auto reported = [&] {
    return console_.Find<QLabel>(QStringLiteral("aidLastReport")).text().toStdString();
  };
  // The colours at the left of a slider, where neither groove nor marks are.
  const auto colours = [&](int index) {
    const QImage picture = console_.Slider(index).grab().toImage();
    const int left = qRound(5 * picture.devicePixelRatio());
    std::set<QRgb> found;
    for (int y = 0; y < picture.height(); ++y) found.insert(picture.pixel(left, y));
    return found.size();
  };
  for (const int k : {0, 31, 63}) {
    EXPECT_GT(colours(k), 1u) << k;
    EXPECT_EQ(console_.Slider(k).value(), 63) << k;
    EXPECT_EQ(console_.Tip(k), "-36db ");
  }
  EXPECT_EQ(reported(), "No report since start");
  dialog.ShowReported(QDateTime(QDate::currentDate(), QTime(12, 3, 44)));
  EXPECT_EQ(reported(), "Last report 12:03:44");
  for (const int k : {0, 31, 63}) EXPECT_EQ(colours(k), 1u) << k;
}

// 1920 x 1080 pixels at 200 %, less what a desktop puts around a window.
TEST_F(InputLevelDialogTest, LabelsAreWholeOnAScreenOf960Pixels) {
  views::InputLevelDialog& dialog = console_.Open();
  dialog.FitInto(944);
  EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.width() <= 944; }));
  for (int k = 0; k < 64; ++k) {
    EXPECT_EQ(console_.Label("lblInptName", k),
              QStringLiteral("Inpt %1").arg(k + 1, 3, 10, QLatin1Char('0')).toStdString());
  }
}

TEST_F(InputLevelDialogTest, AMovedSliderIsSentShownAndKept) {
  console_.Open();
  console_.Slider(0).setValue(0);
  EXPECT_EQ(console_.Gain(0), 127);
  EXPECT_EQ(console_.Caption(), "Input Level Controls [Chan 1   27db ]");
  EXPECT_EQ(console_.Tip(0), "27db ");
  EXPECT_EQ(Sent(), "E3 00 7F 7F FF");
  EXPECT_TRUE(console_.model.SendBusy);
  EXPECT_EQ(console_.port.sendThreshold, 1);

  console_.Slider(5).setValue(27);
  EXPECT_EQ(console_.Gain(5), 100);
  EXPECT_EQ(console_.Caption(), "Input Level Controls [Chan 6   0db ]");
  EXPECT_EQ(Sent(), "E3 05 64 69 FF");

  console_.Slider(63).setValue(127);
  EXPECT_EQ(console_.Gain(63), 0);
  EXPECT_EQ(console_.Caption(), "Input Level Controls [Chan 64   -100db ]");
  EXPECT_EQ(Sent(), "E3 3F 00 3F FF");
}

// For whoever else shows gains: controllers on the network.
TEST_F(InputLevelDialogTest, AGainIsAnnouncedWhenTheModelHasIt) {
  views::InputLevelDialog& dialog = console_.Open();
  std::vector<int> gains;
  QObject::connect(&dialog, &views::InputLevelDialog::GainSet,
                   [&] { gains.push_back(console_.Gain(5)); });
  console_.Slider(5).setValue(27);
  EXPECT_THAT(gains, ElementsAre(100));
  console_.SetGain(5, 64);
  dialog.Update_GainMap();
  EXPECT_THAT(gains, ElementsAre(100)) << "a report of the switcher is none of the operator's";
}

// What asks for a layout of its children, of all windows.
class LayoutRequests : public QObject {
 public:
  LayoutRequests() { qApp->installEventFilter(this); }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::LayoutRequest)
      asking.push_back(watched->metaObject()->className());
    return false;
  }
  std::vector<std::string> asking;
};

TEST_F(InputLevelDialogTest, AStepOfASliderLaysNothingOutAnew) {
  console_.SetGain(0, 127);
  console_.Open();
  // What opening asks for, and what that does.
  QCoreApplication::sendPostedEvents();
  QCoreApplication::sendPostedEvents();
  LayoutRequests requests;
  for (const int value : {1, 27, 28, 127}) {
    console_.Slider(0).setValue(value);
    QCoreApplication::sendPostedEvents();
  }
  EXPECT_EQ(console_.Label("lblLevel", 0), "−100 dB");
  EXPECT_THAT(requests.asking, IsEmpty());
}

TEST_F(InputLevelDialogTest, KeysMoveTheFocusedSliderUpIsLouder) {
  console_.Open();
  QSlider& slider = console_.Slider(2);
  slider.setFocus();
  QTest::keyPress(&slider, Qt::Key_Up);
  EXPECT_EQ(Sent(), "E3 02 41 43 FF");
  EXPECT_EQ(console_.Caption(), "Input Level Controls [Chan 3   -35db ]");
  QTest::keyRelease(&slider, Qt::Key_Up);
  EXPECT_EQ(console_.Caption(), kAtRest);
  QTest::keyClick(&slider, Qt::Key_Down);
  EXPECT_EQ(Sent(), "E3 02 40 42 FF");
  QTest::keyClick(&slider, Qt::Key_PageUp);
  EXPECT_EQ(Sent(), "E3 02 43 45 FF");
  QTest::keyClick(&slider, Qt::Key_PageDown);
  EXPECT_EQ(Sent(), "E3 02 40 42 FF");
}

TEST_F(InputLevelDialogTest, ALevelCanBeTyped) {
  console_.Open();
  console_.Slider(4).setFocus();
  QTest::keyClick(&console_.Slider(4), Qt::Key_Minus);
  auto& entry = console_.Find<QLineEdit>(QStringLiteral("aidLevelEntry"));
  ASSERT_TRUE(entry.isVisible());
  EXPECT_EQ(entry.text(), QStringLiteral("-"));
  QTest::keyClicks(&entry, QStringLiteral("12"));
  EXPECT_EQ(Sent(), "") << "nothing before Enter";
  QTest::keyClick(&entry, Qt::Key_Return);
  EXPECT_EQ(Sent(), "E3 04 58 5C FF");
  EXPECT_EQ(console_.Slider(4).value(), 39);
  EXPECT_EQ(console_.Slider(4).toolTip(), QStringLiteral("-12db "));
  EXPECT_EQ(console_.model.InputGains[4], 88);
  EXPECT_EQ(console_.dialog->windowTitle(), QStringLiteral("Input Level Controls"));
  EXPECT_FALSE(entry.isVisible());
  EXPECT_TRUE(console_.Slider(4).hasFocus());
}

TEST_F(InputLevelDialogTest, ADoubleClickOnALevelEntersAnother) {
  console_.Open();
  QTest::mouseDClick(&console_.Find<QLabel>(QStringLiteral("lblLevel_2")), Qt::LeftButton);
  auto& entry = console_.Find<QLineEdit>(QStringLiteral("aidLevelEntry"));
  ASSERT_TRUE(entry.isVisible());
  EXPECT_EQ(entry.selectedText(), QStringLiteral("-36"));
  QTest::keyClicks(&entry, QStringLiteral("200"));
  QTest::keyClick(&entry, Qt::Key_Return);
  EXPECT_EQ(Sent(), "") << "there is no such level";
  QTest::keyClick(&entry, Qt::Key_Escape);
  EXPECT_FALSE(entry.isVisible());
  EXPECT_EQ(Sent(), "");
  EXPECT_EQ(console_.Slider(2).value(), 63);
  EXPECT_TRUE(console_.dialog->isVisible());
}

TEST_F(InputLevelDialogTest, LeavingTheFieldDropsWhatWasTyped) {
  console_.Open();
  console_.Slider(4).setFocus();
  QTest::keyClick(&console_.Slider(4), Qt::Key_5);
  console_.Slider(5).setFocus();
  EXPECT_FALSE(console_.Find<QLineEdit>(QStringLiteral("aidLevelEntry")).isVisible());
  EXPECT_EQ(Sent(), "");
}

TEST_F(InputLevelDialogTest, HomeAndEndDoNothing) {
  console_.Open();
  console_.Slider(2).setFocus();
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_End}) {
    QTest::keyClick(&console_.Slider(2), key);
    EXPECT_EQ(console_.Slider(2).value(), 63);
  }
  EXPECT_EQ(Sent(), "");
}

TEST_F(InputLevelDialogTest, AKeyAtTheEndOfTheRangeSendsNothing) {
  console_.SetGain(2, 127);
  console_.Open();
  QTest::keyClick(&console_.Slider(2), Qt::Key_Up);
  EXPECT_EQ(Sent(), "");
  EXPECT_EQ(console_.Gain(2), 127);
}

TEST_F(InputLevelDialogTest, CaptionGoesBackWhenTheMouseOrTheFocusGoes) {
  console_.Open();
  QSlider& slider = console_.Slider(4);
  slider.setFocus();
  // Above the handle: a page up, not a jump to the pointer.
  QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(slider.width() / 2, 6));
  EXPECT_EQ(Sent(), "E3 04 43 47 FF");
  EXPECT_EQ(console_.Caption(), "Input Level Controls [Chan 5   -33db ]");
  QTest::mouseRelease(&slider, Qt::LeftButton, {}, QPoint(slider.width() / 2, 6));
  EXPECT_EQ(console_.Caption(), kAtRest);

  QTest::keyPress(&slider, Qt::Key_Up);
  EXPECT_EQ(console_.Caption(), "Input Level Controls [Chan 5   -32db ]");
  console_.Slider(5).setFocus();
  EXPECT_EQ(console_.Caption(), kAtRest);
}

TEST_F(InputLevelDialogTest, OnlyTheLeftButtonMovesASlider) {
  console_.Open();
  QSlider& slider = console_.Slider(4);
  for (const Qt::MouseButton button : {Qt::MiddleButton, Qt::RightButton}) {
    QTest::mouseClick(&slider, button, {}, QPoint(slider.width() / 2, 6));
  }
  EXPECT_EQ(Sent(), "");
  EXPECT_EQ(slider.value(), 63);
}

TEST_F(InputLevelDialogTest, EachStepOfADragIsSent) {
  console_.Open();
  QSlider& slider = console_.Slider(0);
  // The handle stands in the middle; the mouse takes it to the top, pixel by pixel.
  const int x = slider.width() / 2;
  int y = slider.height() / 2;
  QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(x, y));
  ASSERT_TRUE(slider.isSliderDown());
  EXPECT_EQ(Sent(), "");
  int changes = 0;
  while (--y > -20) {
    const int before = console_.Gain(0);
    QTest::mouseMove(&slider, QPoint(x, y));
    const std::string sent = Sent();
    if (console_.Gain(0) == before) {
      EXPECT_EQ(sent, "");
      continue;
    }
    ++changes;
    EXPECT_GT(console_.Gain(0), before);
    char bytes[32];
    std::snprintf(bytes, sizeof bytes, "E3 00 %02X %02X FF", console_.Gain(0), console_.Gain(0));
    EXPECT_EQ(sent, bytes);
  }
  EXPECT_GT(changes, 20);
  EXPECT_EQ(console_.Gain(0), 127);
  EXPECT_EQ(console_.Caption(), "Input Level Controls [Chan 1   27db ]");
  QTest::mouseRelease(&slider, Qt::LeftButton, {}, QPoint(x, y));
  EXPECT_EQ(console_.Caption(), kAtRest);
}

TEST_F(InputLevelDialogTest, AReportMovesTheSlidersAndSendsNothing) {
  views::InputLevelDialog& dialog = console_.Open();
  for (int k = 0; k < 64; ++k) console_.SetGain(k, 2 * k);
  dialog.Update_GainMap();
  for (int k = 0; k < 64; ++k) EXPECT_EQ(console_.Slider(k).value(), 127 - 2 * k) << k;
  EXPECT_EQ(console_.Tip(50), "0db ");
  EXPECT_EQ(console_.Label("lblLevel", 50), "0 dB");
  EXPECT_EQ(console_.Caption(), kAtRest);
  EXPECT_EQ(Sent(), "");
  EXPECT_EQ(console_.Gain(50), 100);
}

TEST_F(InputLevelDialogTest, ASliderInHandIsNotPulledAwayByAReport) {
  views::InputLevelDialog& dialog = console_.Open();
  QSlider& slider = console_.Slider(0);
  const QPoint middle(slider.width() / 2, slider.height() / 2);
  QTest::mousePress(&slider, Qt::LeftButton, {}, middle);
  QTest::mouseMove(&slider, middle - QPoint(0, 20));
  const int atHand = slider.value();
  ASSERT_LT(atHand, 63);
  Sent();

  console_.SetGain(0, 10);
  console_.SetGain(1, 10);
  dialog.Update_GainMap();
  EXPECT_EQ(slider.value(), atHand);
  EXPECT_EQ(console_.Slider(1).value(), 117);
  // The next move starts from the hand, not from the report.
  QTest::mouseMove(&slider, middle - QPoint(0, 24));
  EXPECT_LT(slider.value(), atHand);
  EXPECT_EQ(console_.Gain(0), 127 - slider.value());
  Sent();

  // Let go of, it shows what came last.
  console_.SetGain(0, 12);
  dialog.Update_GainMap();
  QTest::mouseRelease(&slider, Qt::LeftButton, {}, middle - QPoint(0, 24));
  EXPECT_EQ(slider.value(), 115);
  EXPECT_EQ(console_.Tip(0), "-88db ");
  EXPECT_EQ(Sent(), "");
}

TEST_F(InputLevelDialogTest, ASliderUnderAKeyIsNotPulledAwayEither) {
  views::InputLevelDialog& dialog = console_.Open();
  QSlider& slider = console_.Slider(0);
  slider.setFocus();
  QTest::keyPress(&slider, Qt::Key_Up);
  console_.SetGain(0, 10);
  dialog.Update_GainMap();
  EXPECT_EQ(slider.value(), 62);
  QTest::keyRelease(&slider, Qt::Key_Up);
  EXPECT_EQ(slider.value(), 117);
  EXPECT_EQ(Sent(), "E3 00 41 41 FF");
}

TEST_F(InputLevelDialogTest, AFailedSendIsReportedByTheCommandAndTheGainStays) {
  console_.Open();
  console_.port.writesUntilFailure = 2;
  console_.Slider(7).setValue(26);
  ASSERT_EQ(console_.reporter.reports.size(), 1U);
  EXPECT_THAT(console_.reporter.reports[0],
              testing::StartsWith(
                  "critical|Serial Communications Error|Error Sending Gain Command\r\rError # "));
  EXPECT_EQ(console_.Gain(7), 101);
  EXPECT_EQ(console_.Slider(7).value(), 26);
  EXPECT_TRUE(console_.model.SendBusy);
}

TEST_F(InputLevelDialogTest, GainsOutOfRangeStandAtTheEnds) {
  console_.SetGain(0, 32767);
  console_.SetGain(1, -32768);
  console_.SetGain(2, 128);
  console_.SetGain(3, -1);
  console_.Open();
  EXPECT_EQ(console_.Slider(0).value(), 0);
  EXPECT_EQ(console_.Slider(1).value(), 127);
  EXPECT_EQ(console_.Slider(2).value(), 0);
  EXPECT_EQ(console_.Slider(3).value(), 127);
  EXPECT_EQ(console_.Tip(0), "27db ");
  EXPECT_EQ(console_.Tip(1), "-100db ");
  EXPECT_EQ(Sent(), "");
}

TEST_F(InputLevelDialogTest, AnInputWithoutARecordHasItsNumber) {
  ASSERT_TRUE(console_.stations->Seek(62).ok());
  while (console_.stations->HasRecord()) {
    ASSERT_TRUE(console_.stations->Delete().ok());
    ASSERT_TRUE(console_.stations->MoveNext().ok());
  }
  console_.Open();
  EXPECT_EQ(console_.Label("lblInptName", 60), "Inpt 061");
  EXPECT_EQ(console_.Label("lblInptName", 61), "Sta. 062");
  EXPECT_EQ(console_.Label("lblInptName", 63), "Sta. 064");
  EXPECT_THAT(console_.reporter.reports, testing::IsEmpty());
}

TEST_F(InputLevelDialogTest, LabelsAreReadAndTheCurrentRecordStays) {
  console_.SetField(1, "InLabel", "CAM 1");
  console_.SetField(2, "InLabel", jet::Value());
  console_.SetField(64, "InLabel", "MMMMMMMM");
  console_.GoToStation(33);
  views::InputLevelDialog& dialog = console_.Open();
  EXPECT_EQ(console_.Label("lblInptNumber", 0), "01");
  EXPECT_EQ(console_.Label("lblLevel", 0),
            "\xE2\x88\x92"
            "36 dB");
  EXPECT_EQ(console_.Label("lblInptName", 0), "CAM 1");
  EXPECT_EQ(console_.Label("lblInptName", 1), "Sta. 002") << "as the programming shows it";
  EXPECT_EQ(console_.Label("lblInptName", 2), "Inpt 003");
  EXPECT_EQ(console_.Label("lblInptNumber", 63), "64");
  // One that is too wide for the screen is cut and stands whole in its tip.
  const auto& wide = console_.Find<QLabel>(QStringLiteral("lblInptName_63"));
  QFont large = dialog.font();
  large.setPointSizeF(large.pointSizeF() * 1.7);
  dialog.setFont(large);
  dialog.FitInto(800);
  EXPECT_TRUE(QTest::qWaitFor([&] { return wide.text().contains(u'\u2026'); }));
  EXPECT_EQ(wide.toolTip(), QStringLiteral("MMMMMMMM"));
  EXPECT_EQ(console_.CurrentStation(), 33);

  console_.SetField(1, "InLabel", "CAM 2");
  dialog.UpdateLabels();
  EXPECT_EQ(console_.Label("lblInptName", 0), "CAM 2");
  EXPECT_EQ(console_.CurrentStation(), 33);
}

TEST_F(InputLevelDialogTest, WithoutADatabaseTheSlidersWorkAndOneReportSaysWhy) {
  console_.databaseIsOpen = false;
  console_.Open();
  ASSERT_EQ(console_.reporter.reports.size(), 1U);
  EXPECT_THAT(console_.reporter.reports[0],
              testing::StartsWith("critical|Control Error|Error Reading Input Labels\r\rError # "));
  EXPECT_EQ(console_.Label("lblInptName", 0), "");
  console_.Slider(0).setValue(27);
  EXPECT_EQ(Sent(), "E3 00 64 64 FF");
}

TEST_F(InputLevelDialogTest, ASmallSystemHasNamesForItsChannelsAlone) {
  LevelsConsole small(16);
  small.Open();
  EXPECT_EQ(small.Label("lblInptName", 15), "Inpt 016");
  EXPECT_EQ(small.Label("lblInptName", 16), "");
  EXPECT_THAT(small.reporter.reports, IsEmpty());
}

TEST_F(InputLevelDialogTest, AnEmptySystemAsksForNoStation) {
  LevelsConsole none(0);
  none.databaseIsOpen = false;
  none.Open();
  EXPECT_THAT(none.reporter.reports, IsEmpty());
}

TEST_F(InputLevelDialogTest, AssistiveToolsReadAndSetDecibels) {
  console_.Open();
  QSlider& slider = console_.Slider(11);
  QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&slider);
  ASSERT_NE(accessible, nullptr);
  EXPECT_EQ(accessible->role(), QAccessible::Slider);
  EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Input 12 level"));
  EXPECT_EQ(accessible->text(QAccessible::Value), QStringLiteral("\u221236 dB"));
  EXPECT_EQ(accessible->text(QAccessible::Description), QStringLiteral("-36db "));
  QAccessibleValueInterface* const value = accessible->valueInterface();
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(value->currentValue(), -36);
  EXPECT_EQ(value->minimumValue(), -100);
  EXPECT_EQ(value->maximumValue(), 27);
  EXPECT_EQ(value->minimumStepSize(), 1);
  value->setCurrentValue(-6);
  EXPECT_EQ(slider.value(), 33);
  EXPECT_EQ(Sent(), "E3 0B 5E 69 FF");
}

TEST_F(InputLevelDialogTest, ClosesByEscapeAndByTheButton) {
  console_.Open();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(console_.dialog->isVisible());
  console_.dialog->open();
  console_.Slider(0).setFocus();
  QTest::mouseClick(&console_.Find<QPushButton>(QStringLiteral("cmdClose")), Qt::LeftButton);
  EXPECT_FALSE(console_.dialog->isVisible());
  EXPECT_EQ(Sent(), "");
}

TEST_F(InputLevelDialogTest, GoesAwayWithASliderInHand) {
  console_.Open();
  console_.Slider(3).setFocus();
  QTest::keyPress(&console_.Slider(3), Qt::Key_Up);
  EXPECT_EQ(Sent(), "E3 03 41 44 FF");
  delete console_.dialog;
  EXPECT_EQ(Sent(), "");
  EXPECT_EQ(console_.Gain(3), 65);
}

// Counts the paint events of each widget.
class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget& window) {
    for (auto* const widget : window.findChildren<QWidget*>()) widget->installEventFilter(this);
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++painted[watched->objectName().toStdString()];
    return false;
  }
  std::map<std::string, int> painted;
};

TEST_F(InputLevelDialogTest, OneMoveRepaintsTheSliderAndItsLevelOnce) {
  console_.Open();
  QCoreApplication::sendPostedEvents();
  PaintCounter counter(*console_.dialog);
  console_.Slider(9).setValue(50);
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(counter.painted["Slider1_9"], 1);
  EXPECT_EQ(counter.painted["lblLevel_9"], 1);
  EXPECT_EQ(counter.painted["Slider1_8"], 0);
  EXPECT_EQ(counter.painted["lblInptName_9"], 0);
}

TEST_F(InputLevelDialogTest, AReportRepaintsOnceWhatChanged) {
  views::InputLevelDialog& dialog = console_.Open();
  QCoreApplication::sendPostedEvents();
  PaintCounter counter(dialog);
  console_.SetGain(0, 90);
  console_.SetGain(31, 90);
  dialog.Update_GainMap();
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(counter.painted["Slider1_0"], 1);
  EXPECT_EQ(counter.painted["Slider1_31"], 1);
  EXPECT_EQ(counter.painted["Slider1_1"], 0);
  EXPECT_EQ(counter.painted["Slider1_30"], 0);
}

}  // namespace
}  // namespace test
