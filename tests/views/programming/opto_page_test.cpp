// SPDX-License-Identifier: MIT

#include "views/programming/opto_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFontInfo>
#include <QTest>

#include "tests/views/programming/opto_console.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kCodes[] = {0, 1, 2, 3, 254, 255};

class OptoPageTest : public testing::Test {
 protected:
  // As the operator does, with the pointer.
  void ClickBox(int target) {
    QCheckBox& box = console_.Box(target - 1);
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box.height() / 2));
  }
  void ClickOption(int code) {
    QRadioButton& option = console_.Option(code);
    QTest::mouseClick(&option, Qt::LeftButton, Qt::NoModifier, QPoint(8, option.height() / 2));
  }

  test::OptoConsole console_;
};

TEST_F(OptoPageTest, BoxesAreAsDesignedBeforeARecordIsShown) {
  const OptoPage page(console_.shown);
  const auto* const frame = page.findChild<QGroupBox*>(QStringLiteral("frOptoStations"));
  ASSERT_NE(frame, nullptr);
  EXPECT_EQ(frame->findChildren<QCheckBox*>().size(), 64);
  for (int index = 0; index < 64; ++index) {
    const auto* const box =
        frame->findChild<QCheckBox*>(QStringLiteral("ckOptoStationSel_%1").arg(index));
    ASSERT_NE(box, nullptr) << index;
    EXPECT_EQ(box->text(), QStringLiteral("Sta. %1").arg(index + 1, 2, 10, QLatin1Char('0')));
    EXPECT_EQ(box->font().families().front(), QLatin1String("Courier New"));
    EXPECT_TRUE(QFontInfo(box->font()).fixedPitch());
    EXPECT_FALSE(box->isChecked());
  }
}

TEST_F(OptoPageTest, BoxesKeepTheirFamilyAndFollowTheSizeOfTheFrame) {
  console_.Open();
  const double before = console_.Box(63).font().pointSizeF();
  console_.Frame().setFont(QFont(QStringLiteral("DejaVu Sans"), 6));
  EXPECT_EQ(console_.Box(0).font().families().front(), QLatin1String("Courier New"));
  EXPECT_LT(console_.Box(63).font().pointSizeF(), before);
}

TEST_F(OptoPageTest, OptionsCarryTheCodesOfTheOperations) {
  console_.Open();
  const auto* const frame = console_.host->findChild<QGroupBox*>(QStringLiteral("frOptoButType"));
  ASSERT_NE(frame, nullptr);
  EXPECT_EQ(frame->title(), QLatin1String("Operation"));
  EXPECT_EQ(frame->findChildren<QRadioButton*>().size(), 6);
  EXPECT_EQ(console_.Option(3).text(), QLatin1String("External"));
  EXPECT_EQ(console_.Option(2).text(), QLatin1String("P-Listen"));
  EXPECT_EQ(console_.Option(1).text(), QLatin1String("Listen"));
  EXPECT_EQ(console_.Option(255).text(), QLatin1String("Group"));
  EXPECT_EQ(console_.Option(0).text(), QLatin1String("Talk"));
  EXPECT_EQ(console_.Option(254).text(), QLatin1String("Inactive"));
}

TEST_F(OptoPageTest, ChannelSelectorWaitsForItsPlace) {
  const OptoPage page(console_.shown);
  EXPECT_EQ(page.ChannelSelector()->objectName(), QLatin1String("cmbOptoChan"));
  EXPECT_TRUE(page.ChannelSelector()->isHidden());
  EXPECT_EQ(page.ChannelSelector()->toolTip(),
            QLatin1String("Click To Select A Switcher Input Or Output Channel To Be Associated "
                          "With The Current Opto"));
}

TEST_F(OptoPageTest, OpensWithTheCurrentOpto) {
  console_.GoToStation(2);
  console_.Open();
  EXPECT_THAT(console_.SelectedOptions(), ElementsAre(1));
  EXPECT_THAT(console_.Ticked(), ElementsAre(7));
  EXPECT_EQ(console_.BoxCaption(1), "Inpt 001");
  EXPECT_EQ(console_.BoxCaption(64), "Inpt 064");
  EXPECT_EQ(console_.Channels().count(), 64);
  EXPECT_EQ(console_.Channels().currentText(), QLatin1String("Sta. 002"));
  EXPECT_EQ(console_.CurrentStation(), 2);
  EXPECT_THAT(console_.edited, IsEmpty());
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

struct CaptionOfCode {
  int code;
  const char* atOpening;
  const char* afterwards;
};

class OptoFrameCaptionTest : public OptoPageTest,
                             public testing::WithParamInterface<CaptionOfCode> {};

TEST_P(OptoFrameCaptionTest, AtOpeningAndAfterwards) {
  console_.SetField(1, "OptoType", GetParam().code);
  console_.Open();
  EXPECT_EQ(console_.FrameCaption(), GetParam().atOpening);
  console_.Load(2);
  EXPECT_EQ(console_.FrameCaption(), "Source To Be Monitored When OPTO Is Activated");
  console_.Load(1);
  EXPECT_EQ(console_.FrameCaption(), GetParam().afterwards);
  EXPECT_EQ(console_.Number(1, "OptoType"), GetParam().code);
}

constexpr char kStations[] = "Station(s) To Be Called When OPTO Is Activated";
constexpr char kSource[] = "Source To Be Monitored When OPTO Is Activated";
constexpr char kExternal[] = "External Channel To Be Called When OPTO Is Activated";
constexpr char kInactive[] = "OPTO Specified Inactive";

INSTANTIATE_TEST_SUITE_P(
    Codes, OptoFrameCaptionTest,
    testing::Values(CaptionOfCode{0, kStations, kStations},
                    CaptionOfCode{255, kStations, kStations}, CaptionOfCode{1, kSource, kSource},
                    CaptionOfCode{2, kSource, kSource}, CaptionOfCode{3, kExternal, kExternal},
                    CaptionOfCode{254, kInactive, kInactive},
                    CaptionOfCode{77, kStations, kInactive}, CaptionOfCode{4, kStations, kInactive},
                    CaptionOfCode{-1, kStations, kInactive}),
    [](const auto& one) { return "Case" + std::to_string(one.index); });

// After a click on an operation: the frame, box 12, item 34 of the channels.
struct ClickedOperation {
  int code;
  const char* frame;
  const char* box;
  const char* channel;
};

class OptoOperationTest : public OptoPageTest,
                          public testing::WithParamInterface<ClickedOperation> {};

TEST_P(OptoOperationTest, IsStoredAndCaptionsTargetsAndChannels) {
  const ClickedOperation& expected = GetParam();
  // Coming from another operation, whose captions are others.
  console_.SetField(9, "OptoType", expected.code == 3 ? 0 : 3);
  console_.GoToStation(9);
  console_.Open();
  ClickOption(expected.code);
  EXPECT_EQ(console_.Stored(9), std::to_string(expected.code) + "|9|9|9");
  EXPECT_EQ(console_.FrameCaption(), expected.frame);
  EXPECT_EQ(console_.BoxCaption(12), expected.box);
  EXPECT_EQ(console_.Channels().count(), 64);
  EXPECT_EQ(console_.ChannelItem(34), expected.channel);
  EXPECT_EQ(console_.Channels().currentIndex(), 8);
  EXPECT_THAT(console_.SelectedOptions(), ElementsAre(expected.code));
  EXPECT_THAT(console_.Ticked(), ElementsAre(9));
  EXPECT_THAT(console_.edited, ElementsAre(9));
  EXPECT_EQ(console_.CurrentStation(), 9);
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Codes, OptoOperationTest,
                         testing::Values(ClickedOperation{0, kStations, "Sta. 012", "Inpt 034"},
                                         ClickedOperation{255, kStations, "Sta. 012", "Inpt 034"},
                                         ClickedOperation{1, kSource, "Inpt 012", "Sta. 034"},
                                         ClickedOperation{2, kSource, "Inpt 012", "Sta. 034"},
                                         ClickedOperation{3, kExternal, "Chan 12", "Channel 34"},
                                         ClickedOperation{254, kInactive, "Chan 12", "Channel 34"}),
                         [](const auto& one) { return "Code" + std::to_string(one.param.code); });

TEST_F(OptoPageTest, ChannelsOfAnExternalOptoAreAllNumbered) {
  console_.SetField(1, "OptoType", 3);
  console_.Open();
  ASSERT_EQ(console_.Channels().count(), 64);
  EXPECT_EQ(console_.ChannelItem(1), "Channel 01");
  EXPECT_EQ(console_.ChannelItem(64), "Channel 64");
  EXPECT_EQ(console_.BoxCaption(1), "Chan 01");
  EXPECT_EQ(console_.BoxCaption(64), "Chan 64");
}

TEST_F(OptoPageTest, OperationChosenAgainStoresNothingAndShowsTheLabelsAnew) {
  console_.Open();
  console_.SetField(12, "Label", "STUDIO");
  console_.SetField(12, "InLabel", "MIC");
  ClickOption(0);
  EXPECT_EQ(console_.BoxCaption(12), "STUDIO");
  EXPECT_EQ(console_.ChannelItem(12), "MIC");
  EXPECT_THAT(console_.edited, IsEmpty());
}

TEST_F(OptoPageTest, TargetsAreStoredAsTheyAreTicked) {
  console_.Open();
  ClickBox(2);
  EXPECT_EQ(console_.Stored(1), "0|1|2|2,3,5");
  ClickBox(64);
  EXPECT_EQ(console_.Stored(1), "0|1|2|2,3,5,64");
  ClickBox(2);
  ClickBox(3);
  EXPECT_EQ(console_.Stored(1), "0|1|5|5,64");
  EXPECT_THAT(console_.Ticked(), ElementsAre(5, 64));
  EXPECT_THAT(console_.edited, ElementsAre(1, 1, 1, 1));
  EXPECT_THAT(console_.notes, IsEmpty());
  EXPECT_EQ(console_.Stored(2), "1|2|7|7") << "the neighbour";
  EXPECT_EQ(console_.CurrentStation(), 1);
}

TEST_F(OptoPageTest, WithoutItsLastTargetTheOptoIsInactiveAtOnce) {
  console_.GoToStation(2);
  console_.Open();
  ClickBox(7);
  EXPECT_EQ(console_.Stored(2), "254|2|1|");
  EXPECT_THAT(console_.edited, ElementsAre(2));
  EXPECT_THAT(console_.notes, ElementsAre("Opto 2 has no target left and is inactive now"));
  // Options and captions stay as they were; the note says so.
  EXPECT_THAT(console_.SelectedOptions(), ElementsAre(1));
  EXPECT_EQ(console_.FrameCaption(), kSource);
  EXPECT_EQ(console_.BoxCaption(7), "Inpt 007");
  EXPECT_TRUE(console_.NoteIsShown());

  ClickBox(8);
  EXPECT_EQ(console_.Stored(2), "254|2|8|8");
  EXPECT_THAT(console_.SelectedOptions(), ElementsAre(1));
  EXPECT_TRUE(console_.NoteIsShown());
  ClickOption(1);
  EXPECT_EQ(console_.Stored(2), "1|2|8|8");
  EXPECT_FALSE(console_.NoteIsShown());
  EXPECT_EQ(console_.notes.size(), 1u);
}

TEST_F(OptoPageTest, InactiveOptoIsCaptionedSoAtTheNextRefresh) {
  console_.GoToStation(2);
  console_.Open();
  ClickBox(7);
  console_.Load(1);
  console_.Load(2);
  EXPECT_EQ(console_.FrameCaption(), kInactive);
  EXPECT_EQ(console_.BoxCaption(7), "Chan 07");
  EXPECT_EQ(console_.ChannelItem(7), "Channel 07");
  EXPECT_THAT(console_.Ticked(), IsEmpty());
  EXPECT_THAT(console_.SelectedOptions(), ElementsAre(254));
  EXPECT_FALSE(console_.NoteIsShown());
}

TEST_F(OptoPageTest, AnotherOptoIsShownWhole) {
  console_.Open();
  console_.Load(2);
  EXPECT_THAT(console_.SelectedOptions(), ElementsAre(1));
  EXPECT_THAT(console_.Ticked(), ElementsAre(7));
  EXPECT_EQ(console_.FrameCaption(), kSource);
  EXPECT_EQ(console_.BoxCaption(7), "Inpt 007");
  EXPECT_EQ(console_.Channels().currentText(), QLatin1String("Sta. 002"));
  console_.Load(64);
  EXPECT_THAT(console_.SelectedOptions(), ElementsAre(254));
  EXPECT_THAT(console_.Ticked(), ElementsAre(64));
  EXPECT_EQ(console_.Channels().currentText(), QLatin1String("Channel 64"));
  EXPECT_EQ(console_.CurrentStation(), 64);
  EXPECT_THAT(console_.edited, IsEmpty());
  for (const int opto : {1, 2, 64}) {
    const char* const before[] = {"0|1|3|3,5", "1|2|7|7", "254|64|64|64"};
    EXPECT_EQ(console_.Stored(opto), before[opto == 64 ? 2 : opto - 1]) << "only shown";
  }
}

TEST_F(OptoPageTest, OptionsAreFollowedByTheCaptions) {
  console_.Open();
  console_.GoToStation(2);
  console_.Refresh(&OptoPage::UpdateOptoOptionButtons);
  EXPECT_THAT(console_.SelectedOptions(), ElementsAre(1));
  EXPECT_EQ(console_.FrameCaption(), kSource);
  EXPECT_EQ(console_.BoxCaption(7), "Inpt 007");
  EXPECT_EQ(console_.ChannelItem(7), "Sta. 007");
  EXPECT_THAT(console_.edited, IsEmpty());
}

TEST_F(OptoPageTest, HandlersDoNothingWhileThePageIsFilled) {
  console_.Open();
  console_.GoToStation(2);
  console_.Refresh(&OptoPage::Show);
  EXPECT_THAT(console_.Ticked(), ElementsAre(7));
  EXPECT_EQ(console_.Stored(1), "0|1|3|3,5");
  EXPECT_EQ(console_.Stored(2), "1|2|7|7");
  EXPECT_THAT(console_.edited, IsEmpty());
  EXPECT_THAT(console_.notes, IsEmpty());
}

TEST_F(OptoPageTest, ChannelIsStoredByItsPlaceInTheList) {
  console_.Open();
  console_.Channels().setFocus();
  QTest::keyClick(&console_.Channels(), Qt::Key_Down);
  EXPECT_EQ(console_.Stored(1), "0|2|3|3,5");
  QTest::keyClick(&console_.Channels(), Qt::Key_End);
  EXPECT_EQ(console_.Stored(1), "0|64|3|3,5");
  QTest::keyClick(&console_.Channels(), Qt::Key_Home);
  EXPECT_EQ(console_.Stored(1), "0|1|3|3,5");
  EXPECT_THAT(console_.edited, ElementsAre(1, 1, 1));
  QTest::keyClick(&console_.Channels(), Qt::Key_Home);
  EXPECT_EQ(console_.edited.size(), 3u) << "nothing new";
  EXPECT_EQ(console_.CurrentStation(), 1);
}

TEST_F(OptoPageTest, ChannelOutsideTheListSelectsNoneAndIsKept) {
  console_.Open();
  for (const int channel : {0, -3, 65, 32767}) {
    console_.SetField(1, "OptoChannel", channel);
    console_.Load(1);
    EXPECT_EQ(console_.Channels().currentIndex(), -1) << channel;
    ClickOption(1);
    ClickOption(0);
    EXPECT_EQ(console_.Channels().currentIndex(), -1) << channel;
    EXPECT_EQ(console_.Number(1, "OptoChannel"), channel);
  }
  console_.SetField(1, "OptoChannel", jet::Value());
  console_.Load(1);
  EXPECT_EQ(console_.Channels().currentIndex(), -1);
  console_.Channels().setCurrentIndex(63);
  EXPECT_EQ(console_.Number(1, "OptoChannel"), 64);
}

TEST_F(OptoPageTest, TypeOutsideTheTableSelectsNoOptionAndIsKept) {
  console_.Open();
  console_.SetField(1, "OptoType", 77);
  console_.Load(1);
  EXPECT_THAT(console_.SelectedOptions(), IsEmpty());
  EXPECT_EQ(console_.BoxCaption(5), "Chan 05");
  EXPECT_EQ(console_.ChannelItem(5), "Channel 05");
  EXPECT_THAT(console_.Ticked(), ElementsAre(3, 5));
  ClickBox(9);
  console_.Channels().setCurrentIndex(3);
  EXPECT_EQ(console_.Stored(1), "77|4|3|3,5,9");
  EXPECT_THAT(console_.SelectedOptions(), IsEmpty());
  ClickOption(255);
  EXPECT_EQ(console_.Stored(1), "255|4|3|3,5,9");
}

}  // namespace
}  // namespace views
