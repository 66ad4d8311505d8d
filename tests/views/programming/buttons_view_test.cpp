// SPDX-License-Identifier: MIT
//
// What the programming view is made of, how it opens, and how it goes from station to station
// and from tab to tab.

#include "views/programming/buttons_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QWheelEvent>

#include "tests/views/programming/buttons_console.h"

namespace views {
namespace {

using test::ButtonsConsole;
using test::Flags;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ButtonsView, HasItsNameTitleAndTools) {
  ButtonsConsole console;
  const ButtonsView& view = console.Open();
  EXPECT_EQ(view.objectName(), QLatin1String("frmButtons"));
  EXPECT_EQ(view.windowTitle(), QLatin1String("Station Button Programming"));
  std::vector<std::string> tools;
  for (const QAction* const action : view.findChild<QToolBar*>()->actions()) {
    tools.push_back(action->isSeparator()
                        ? "-"
                        : (action->objectName() + u'|' + action->text() + u'|' + action->toolTip())
                              .toStdString());
    if (!action->isSeparator()) {
      EXPECT_FALSE(action->icon().isNull());
    }
  }
  EXPECT_THAT(
      tools, ElementsAre(
                 "ID_SendButtonData|Send All Button Data|Click To Send Button Programming "
                 "Information Only For All Stations",
                 "-",
                 "ID_SendSingleStation|Program Single Station|Click To Send Button And Relay "
                 "Programming Information For The Current Station Only",
                 "-",
                 "ID_SendOptoData|Send Opto Data Only|Click To Send Opto Programming Information "
                 "Only",
                 "-", "ID_QDVStatus|QDV Status|Click To Display Current QDV Output Module Status"));
}

TEST(ButtonsView, ToolsSendWhatTheySay) {
  ButtonsConsole console;
  console.GoToStation(12);
  console.Open();
  console.ClickTool("ID_SendButtonData");
  EXPECT_THAT(console.tables.traffic, IsEmpty()) << "that is the download's";
  console.ClickTool("ID_SendSingleStation");
  EXPECT_THAT(console.tables.traffic,
              ElementsAre("poll off", "buttons 12", "relays 12", "poll on"));
  console.tables.traffic.clear();
  console.ClickTool("ID_SendOptoData");
  EXPECT_THAT(console.tables.traffic, ElementsAre("optos"));
  console.ClickTool("ID_QDVStatus");
  EXPECT_THAT(console.told, ElementsAre("send buttons", "sent buttons 12", "sent relays 12",
                                        "sent optos 9999", "qdv"));
}

TEST(ButtonsView, WhatDidNotGoOutIsNotSent) {
  ButtonsConsole console;
  console.tables.goOut = false;
  console.Open();
  console.ClickTool("ID_SendSingleStation");
  console.ClickTool("ID_SendOptoData");
  EXPECT_THAT(console.tables.traffic,
              ElementsAre("poll off", "buttons 1", "relays 1", "poll on", "optos"));
  EXPECT_THAT(console.told, IsEmpty());
}

TEST(ButtonsView, HasItsControlsWithTheirTexts) {
  ButtonsConsole console;
  console.Open();
  std::vector<std::string> tips;
  for (const char* const name :
       {"cmdFirst", "cmdPrev", "cmdBack10", "cmdFwd10", "cmdNext", "cmdLast", "txtStaLabel",
        "txtInptLabel", "txtPortNmbr", "cmbButton"}) {
    tips.push_back(console.Find<QWidget>(QString::fromLatin1(name)).toolTip().toStdString());
  }
  EXPECT_THAT(tips, ElementsAre("Backup To The First Station", "Backup To The Previous Station",
                                "Backup 10 Stations", "Advance 10 Stations",
                                "Advance To The Next Station", "Advance To The Last Station",
                                "Label For Switcher Output Channel Associated With This Station",
                                "Label For Switcher Input Channel Associated With This Station",
                                "RS-485 Serial Control Port Associated With This Station",
                                "Click To Select A Station Button To Be Programmed"));
  for (const char* const name : {"txtStaLabel", "txtInptLabel", "txtPortNmbr"}) {
    auto& field = console.Find<QLineEdit>(QString::fromLatin1(name));
    EXPECT_TRUE(field.isReadOnly()) << name;
    EXPECT_EQ(field.grab().toImage().pixelColor(field.width() - 5, field.height() / 2),
              field.palette().color(QPalette::Window))
        << name;
  }
  for (const char* const name :
       {"cmdFirst", "cmdPrev", "cmdBack10", "cmdFwd10", "cmdNext", "cmdLast"}) {
    const auto& command = console.Find<QToolButton>(QString::fromLatin1(name));
    EXPECT_FALSE(command.icon().pixmap(16).isNull()) << name;
    EXPECT_EQ(command.accessibleName(), command.toolTip());
    EXPECT_EQ(command.size(), QSize(20, 20)) << name;
  }
  EXPECT_EQ(console.Find<QLabel>(QStringLiteral("lblStaLabel")).text(),
            QLatin1String("Station Name"));
  EXPECT_EQ(console.Find<QLabel>(QStringLiteral("lblInptLabel")).text(),
            QLatin1String("Input Name"));
  EXPECT_EQ(console.Find<QLabel>(QStringLiteral("lblPortNmbr")).text(), QLatin1String("Port"));
  const auto& selector = console.Find<QComboBox>(QStringLiteral("cmbButton"));
  ASSERT_EQ(selector.count(), 32);
  for (int n = 1; n <= 32; ++n) {
    EXPECT_EQ(selector.itemText(n - 1), QStringLiteral("Button %1").arg(n));
  }
  EXPECT_EQ(selector.currentIndex(), 0);
}

TEST(ButtonsView, HasSevenTabs) {
  ButtonsConsole console;
  console.Open();
  const auto& tabs = console.Find<QTabWidget>(QStringLiteral("SSActiveTabs1"));
  std::vector<std::string> texts;
  for (int i = 0; i < tabs.count(); ++i) texts.push_back(tabs.tabText(i).toStdString());
  EXPECT_THAT(texts,
              ElementsAre("Buttons 1 - 16", "Buttons 17 - 32", "Buttons 33 - 48", "Buttons 49 - 64",
                          "Edit Selected Button", "Relay Assignments", "Opto Assignments"));
  EXPECT_EQ(console.Tab(), 1);
}

TEST(ButtonsView, DrawsSixtyFourButtonsOfWhichThoseAboveTheCountAreDisabled) {
  ButtonsConsole console;
  console.Open();
  for (int n = 1; n <= 64; ++n) {
    const auto& number = console.Find<QLabel>("lblBnum", n - 1);
    EXPECT_EQ(number.text(), QStringLiteral(" Btn - %1").arg(n, 2, 10, QLatin1Char('0')));
    EXPECT_EQ(console.Find<QPushButton>("cmdButton", n - 1).isEnabled(), n <= 32) << n;
    EXPECT_EQ(number.isEnabled(), n <= 32) << n;
    const auto& type = console.Find<QLabel>("lblBtype", n - 1);
    EXPECT_EQ(type.text(), n <= 32 ? QStringLiteral("TALK") : QString()) << n;
  }
  for (const int page : {0, 1}) {
    EXPECT_EQ(console.Find<QLabel>("lblEditNote", page).text(),
              QLatin1String("Click Any Button To Edit Programming"));
  }
  for (const int page : {2, 3}) {
    EXPECT_EQ(console.Find<QLabel>("aidButtonCount", page).text(),
              QLatin1String("32 buttons per station"));
  }
}

TEST(ButtonsView, HasItsBoxesAndOptions) {
  ButtonsConsole console;
  console.Open();
  for (int k = 0; k < 64; ++k) {
    EXPECT_TRUE(console.Find<QGroupBox>(QStringLiteral("frStations"))
                    .isAncestorOf(&console.Find<QCheckBox>("ckStationSel", k)));
    const auto& relay = console.Find<QCheckBox>("ckRelaySel", k);
    EXPECT_TRUE(console.Find<QGroupBox>(QStringLiteral("frRelays")).isAncestorOf(&relay));
    EXPECT_EQ(relay.text(), QStringLiteral("Relay %1").arg(k + 1, 2, 10, QLatin1Char('0')));
  }
  const auto& frame = console.Find<QGroupBox>(QStringLiteral("fmButType"));
  EXPECT_EQ(frame.title(), QLatin1String("Operation"));
  for (const int code : {0, 1, 2, 3, 254, 255}) {
    EXPECT_TRUE(frame.isAncestorOf(&console.Find<QRadioButton>("optButType", code)));
  }
}

TEST(ButtonsView, OpensOnTheCurrentStation) {
  ButtonsConsole console;
  console.SetField(5, "Label", "Studio A");
  console.SetField(5, "InLabel", "Mic 5");
  console.SetField(5, "B1 Type", 1);
  console.SetField(5, "B1 Prog", Flags({3, 64}));
  console.SetField(5, "B1 First", 3);
  console.SetField(5, "B2 Type", 3);
  console.SetField(5, "B2 First", 5);
  console.SetField(5, "B3 First", 0);
  console.SetField(5, "Relays", Flags({1, 7}));
  console.GoToStation(5);
  console.Open();
  EXPECT_EQ(console.CurrentStation(), 5);
  EXPECT_EQ(console.StationText(), "Studio A|Mic 5|5");
  EXPECT_EQ(console.Caption(1), "Sta. 003");
  EXPECT_EQ(console.Caption(2), "Ext. 005") << "the label of station 69";
  EXPECT_EQ(console.Caption(3), "NONE");
  EXPECT_EQ(console.Caption(32), "Sta. 032");
  EXPECT_EQ(console.Type(1), "LISTEN");
  EXPECT_EQ(console.Type(2), "EXTRN");
  EXPECT_THAT(console.Options(), ElementsAre(1));
  EXPECT_THAT(console.Ticked("ckStationSel"), ElementsAre(2, 63));
  EXPECT_EQ(console.Find<QCheckBox>("ckStationSel", 0).text(), QLatin1String("Inpt 001"));
  EXPECT_THAT(console.Ticked("ckRelaySel"), ElementsAre(0, 6));
  EXPECT_THAT(console.told, IsEmpty()) << "opening edits nothing";
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

TEST(ButtonsView, TheFirstCaptionOfTheTargetsIsOneOfItsOwn) {
  for (const auto& [type, caption] : std::vector<std::pair<int, std::string>>{
           {0, "Station(s) To Be Called Upon Button Press"},
           {255, "Station(s) To Be Called Upon Button Press"},
           {1, "Source To Be Monitored Upon Button Press"},
           {2, "Source To Be Monitored Upon Button Press"},
           {3, "External Channel To Be Called When OPTO Is Activated"},
           {254, "Station(s) To Be Called When Opto Is Activated"},
           {77, "Station(s) To Be Called When Opto Is Activated"}}) {
    ButtonsConsole console;
    console.SetField(1, "B1 Type", type);
    console.Open();
    EXPECT_EQ(console.TargetsCaption(), caption) << type;
    EXPECT_EQ(console.Number(1, "B1 Type"), type);
  }
}

struct ShownType {
  int code;
  const char* label;
  QRgb colour;
  const char* targets;
  const char* firstBox;
  const char* caption;
};

constexpr ShownType kShownTypes[] = {
    {0, "TALK", 0xFF80FF80, "Station(s) To Be Called Upon Button Press", "Sta. 001", "Sta. 005"},
    {1, "LISTEN", 0xFFFFFF80, "Source To Be Monitored Upon Button Press", "Inpt 001", "Inpt 005"},
    {2, "P-LSTN", 0xFFFF8080, "Source To Be Monitored Upon Button Press", "Inpt 001", "Inpt 005"},
    {3, "EXTRN", 0xFFFF80FF, "External Switcher Destinatons", "Chan 01", "Ext. 005"},
    {254, "NULL", 0xFF808080, "Button Specified Inactive", "Chan 01", "INACTIVE"},
    {255, "GROUP", 0xFF8080FF, "Station(s) To Be Called Upon Button Press", "Sta. 001", "Sta. 005"},
};

TEST(ButtonsView, EveryOperationIsShownAsTheTableSays) {
  ButtonsConsole console;
  console.SetField(1, "B1 First", 5);
  console.SetField(1, "B1 Prog", Flags({5}));
  console.Open();
  console.GoToTab(5);
  for (const ShownType& shown : kShownTypes) {
    console.ChooseOption(shown.code);
    EXPECT_EQ(console.Number(1, "B1 Type"), shown.code);
    EXPECT_EQ(console.Type(1), shown.label);
    EXPECT_EQ(console.TypeColour(1).rgb(), shown.colour) << shown.label;
    EXPECT_EQ(console.Find<QLabel>("lblBtype", 0).palette().color(QPalette::WindowText),
              QColor(Qt::black));
    EXPECT_EQ(console.TargetsCaption(), shown.targets) << shown.label;
    EXPECT_EQ(console.Find<QCheckBox>("ckStationSel", 0).text(), QLatin1String(shown.firstBox))
        << shown.label;
    EXPECT_EQ(console.Caption(1), shown.caption) << shown.label;
    EXPECT_THAT(console.Options(), ElementsAre(shown.code));
    EXPECT_EQ(console.CurrentStation(), 1);
  }
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

TEST(ButtonsView, EveryTabHasItsCaptions) {
  ButtonsConsole console;
  console.Open();
  struct Captions {
    int tab;
    const char* navigation;
    const char* selector;  // its caption, "" for none
    const char* port;
    int forward;  // where the forward commands stand; 0: somewhere
  };
  for (const Captions& expected :
       {Captions{5, "Navigation Controls [ Select Station And Button To Configure ]",
                 "Select Button", "Port", 282},
        Captions{1, "Navigation Controls [ Select Station To Configure ]", "", "Port", 0},
        Captions{7, "Navigation Controls [ Select Opto To Configure ]", "Select Opto Channel",
                 "Opto", 0},
        Captions{2, "Navigation Controls [ Select Station To Configure ]", "", "Port", 0},
        Captions{3, "Navigation Controls [ Select Station To Configure ]", "", "Port", 0},
        Captions{4, "Navigation Controls [ Select Station To Configure ]", "", "Port", 0},
        Captions{6, "Navigation Controls [ Select Station To Configure ]", "", "Port", 0},
        Captions{5, "Navigation Controls [ Select Station And Button To Configure ]",
                 "Select Button", "Port", 282}}) {
    console.GoToTab(expected.tab);
    SCOPED_TRACE(expected.tab);
    auto& frame = console.Find<QGroupBox>(QStringLiteral("frNavControls"));
    EXPECT_EQ(frame.title(), QLatin1String(expected.navigation));
    const auto& prompt = console.Find<QLabel>(QStringLiteral("lblSelectButton"));
    EXPECT_EQ(prompt.isVisible(), *expected.selector != '\0');
    if (prompt.isVisible()) {
      EXPECT_EQ(prompt.text(), QLatin1String(expected.selector));
    }
    EXPECT_EQ(console.Find<QComboBox>(QStringLiteral("cmbButton")).isVisible(), expected.tab == 5);
    int channelSelectors = 0;
    for (const QComboBox* const selector : frame.findChildren<QComboBox*>()) {
      if (selector->objectName() != QLatin1String("cmbButton") && selector->isVisible())
        ++channelSelectors;
    }
    EXPECT_EQ(channelSelectors, expected.tab == 7 ? 1 : 0);
    EXPECT_EQ(console.Find<QLabel>(QStringLiteral("lblPortNmbr")).text(),
              QLatin1String(expected.port));
    for (const char* const name : {"txtStaLabel", "lblStaLabel", "txtInptLabel", "lblInptLabel"}) {
      EXPECT_EQ(console.Find<QWidget>(QString::fromLatin1(name)).isVisible(), expected.tab != 7)
          << name;
    }
    EXPECT_TRUE(console.Find<QWidget>(QStringLiteral("txtPortNmbr")).isVisible());
    if (expected.forward != 0) {
      EXPECT_EQ(console.Find<QWidget>(QStringLiteral("cmdNext")).x(), 282);
      EXPECT_EQ(console.Find<QWidget>(QStringLiteral("cmdFwd10")).x(), 302);
      EXPECT_EQ(console.Find<QWidget>(QStringLiteral("cmdLast")).x(), 322);
    }
  }
}

TEST(ButtonsView, GoesFromStationToStation) {
  ButtonsConsole console;
  console.SetField(2, "Relays", Flags({9}));
  console.SetField(2, "B1 Type", 2);
  console.SetField(2, "B1 Prog", Flags({4, 5}));
  console.SetField(2, "B1 First", 4);
  console.Open();
  console.Press("cmdNext");
  EXPECT_EQ(console.CurrentStation(), 2);
  EXPECT_EQ(console.StationText(), "Sta. 002|Inpt 002|2");
  EXPECT_THAT(console.Ticked("ckRelaySel"), ElementsAre(8));
  EXPECT_THAT(console.Ticked("ckStationSel"), ElementsAre(3, 4));
  EXPECT_THAT(console.Options(), ElementsAre(2));
  EXPECT_EQ(console.Type(1), "P-LSTN");
  EXPECT_EQ(console.Caption(1), "Inpt 004") << "the option's handler captions it";
  EXPECT_EQ(console.TargetsCaption(), "Source To Be Monitored Upon Button Press");
  EXPECT_EQ(console.Find<QCheckBox>("ckStationSel", 63).text(), QLatin1String("Inpt 064"));
  console.Press("cmdFwd10");
  EXPECT_EQ(console.CurrentStation(), 12);
  EXPECT_EQ(console.Find<QCheckBox>("ckStationSel", 63).text(), QLatin1String("Sta. 064"));
  console.Press("cmdPrev");
  EXPECT_EQ(console.CurrentStation(), 11);
  console.Press("cmdBack10");
  EXPECT_EQ(console.CurrentStation(), 1);
  console.Press("cmdPrev");
  EXPECT_EQ(console.CurrentStation(), 1);
  console.Press("cmdLast");
  EXPECT_EQ(console.CurrentStation(), 64);
  console.Press("cmdNext");
  console.Press("cmdFwd10");
  EXPECT_EQ(console.CurrentStation(), 64) << "there are 128 records, but 64 stations";
  console.Press("cmdFirst");
  EXPECT_EQ(console.CurrentStation(), 1);
  EXPECT_THAT(console.told, IsEmpty()) << "going around edits nothing";
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

TEST(ButtonsView, NavigationKeepsToTheStationCount) {
  for (const int count : {0, 8, 200}) {
    ButtonsConsole console;
    console.model.StationCount = static_cast<std::int16_t>(count);
    console.Open();
    const int last = count == 8 ? 8 : count == 0 ? 1 : 128;
    if (count == 8) {
      console.GoToStation(5);
      console.Press("cmdFwd10");
      EXPECT_EQ(console.CurrentStation(), 8);
      console.Press("cmdFirst");
    }
    console.Press("cmdLast");
    EXPECT_EQ(console.CurrentStation(), count == 8 ? 8 : 1) << count;
    for (int i = 0; i < 14; ++i) console.Press("cmdFwd10");
    EXPECT_EQ(console.CurrentStation(), last) << count;
    console.Press("cmdNext");
    EXPECT_EQ(console.CurrentStation(), last) << count;
    EXPECT_EQ(console.StationText().substr(console.StationText().rfind('|') + 1),
              std::to_string(last));
    EXPECT_THAT(console.reporter.reports, IsEmpty());
  }
}

TEST(ButtonsView, AClickedButtonIsSelectedAndEdited) {
  ButtonsConsole console;
  console.SetField(1, "B17 Type", 1);
  console.Open();
  console.GoToTab(2);
  console.Press("cmdButton_16");
  EXPECT_EQ(console.Find<QComboBox>(QStringLiteral("cmbButton")).currentIndex(), 16);
  EXPECT_EQ(console.Tab(), 5);
  EXPECT_THAT(console.Ticked("ckStationSel"), ElementsAre(16));
  EXPECT_THAT(console.Options(), ElementsAre(1));
  EXPECT_EQ(console.TargetsCaption(), "Source To Be Monitored Upon Button Press");
  EXPECT_EQ(console.Find<QCheckBox>("ckStationSel", 16).text(), QLatin1String("Inpt 017"));
  console.GoToTab(1);
  console.Press("cmdButton_0");
  EXPECT_EQ(console.Find<QComboBox>(QStringLiteral("cmbButton")).currentIndex(), 0);
  EXPECT_EQ(console.Tab(), 5);
  EXPECT_THAT(console.Ticked("ckStationSel"), ElementsAre(0));
}

TEST(ButtonsView, TheSelectorSelects) {
  ButtonsConsole console;
  console.SetField(1, "B3 Type", 3);
  console.Open();
  console.GoToTab(5);
  console.PickButton(3);
  EXPECT_THAT(console.Ticked("ckStationSel"), ElementsAre(2));
  EXPECT_THAT(console.Options(), ElementsAre(3));
  EXPECT_EQ(console.TargetsCaption(), "External Switcher Destinatons");
  EXPECT_EQ(console.Find<QCheckBox>("ckStationSel", 2).text(), QLatin1String("Chan 03"));
  EXPECT_EQ(console.Find<QCheckBox>("ckStationSel", 2).accessibleName(),
            QLatin1String("Target 3 of button 3: Chan 03"));
}

TEST(ButtonsView, TheWheelSelectsNothing) {
  ButtonsConsole console;
  console.Open();
  console.GoToTab(5);
  auto& selector = console.Find<QComboBox>(QStringLiteral("cmbButton"));
  selector.setFocus();
  const QPoint at = selector.rect().center();
  QWheelEvent wheel(at, selector.mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&selector, &wheel);
  EXPECT_EQ(selector.currentIndex(), 0);
}

TEST(ButtonsView, EachStationKeepsTheSelectedButton) {
  ButtonsConsole console;
  console.SetField(2, "B20 Type", 255);
  console.SetField(2, "B20 Prog", Flags({1, 2, 3}));
  console.Open();
  console.GoToTab(5);
  console.PickButton(20);
  console.Press("cmdNext");
  EXPECT_EQ(console.Find<QComboBox>(QStringLiteral("cmbButton")).currentIndex(), 19);
  EXPECT_THAT(console.Ticked("ckStationSel"), ElementsAre(0, 1, 2));
  EXPECT_THAT(console.Options(), ElementsAre(255));
}

TEST(ButtonsView, FollowsWhatIsWrittenElsewhere) {
  ButtonsConsole console;
  ButtonsView& view = console.Open();
  console.SetField(1, "Label", "Studio A");
  console.SetField(1, "B1 Type", 3);
  console.SetField(1, "B1 First", 2);
  console.SetField(1, "B1 Prog", Flags({2}));
  console.SetField(1, "Relays", Flags({2}));
  console.SetField(66, "Label", "Truck");
  view.UpdateStation();
  EXPECT_EQ(console.StationText(), "Studio A|Inpt 001|1");
  EXPECT_EQ(console.Caption(1), "Truck");
  EXPECT_EQ(console.Type(1), "EXTRN");
  EXPECT_THAT(console.Options(), ElementsAre(3));
  EXPECT_THAT(console.Ticked("ckStationSel"), ElementsAre(1));
  EXPECT_THAT(console.Ticked("ckRelaySel"), ElementsAre(1));
  EXPECT_EQ(console.TargetsCaption(), "External Switcher Destinatons");
  console.SetField(1, "B1 Prog", Flags({}));
  view.UpdateStation();
  EXPECT_EQ(console.Number(1, "B1 Type"), 3) << "it stores nothing";
  EXPECT_THAT(console.told, IsEmpty());
}

TEST(ButtonsView, FollowsEditedLabels) {
  ButtonsConsole console;
  ButtonsView& view = console.Open();
  console.SetField(1, "Label", "A & B");
  view.UpdateButtonLabels();
  view.UpdateCheckboxLabels();
  EXPECT_EQ(console.Caption(1), "A && B") << "which shows A & B";
  EXPECT_EQ(console.Find<QCheckBox>("ckStationSel", 0).text(), QLatin1String("A && B"));
  EXPECT_EQ(console.StationText(), "A & B|Inpt 001|1");
  EXPECT_EQ(console.CurrentStation(), 1);
}

TEST(ButtonsView, KeepsItsPlace) {
  ButtonsConsole console;
  console.Open();
  console.subWindow->setGeometry(30, 45, 620, 450);
  console.Close();
  EXPECT_EQ(console.settings->Text(QStringLiteral("ButnsLeft")), QLatin1String("450"));
  EXPECT_EQ(console.settings->Text(QStringLiteral("ButnsTop")), QLatin1String("675"));
  EXPECT_EQ(console.settings->Text(QStringLiteral("ButnsWidth")), QLatin1String("9300"));
  EXPECT_EQ(console.settings->Text(QStringLiteral("ButnsHeight")), QLatin1String("6750"));
}

}  // namespace
}  // namespace views
