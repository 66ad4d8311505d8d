// SPDX-License-Identifier: MIT

#include "app/shell/main_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QToolBar>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/views/gui_support.h"
#include "tests/views/mnemonics.h"

namespace app {
namespace {

using testing::ElementsAre;

// Every identifier, spelt as the tool bar's definition spells it.
constexpr const char* kHeadings[] = {"ID_File", "ID_Window", "ID_Help"};
constexpr const char* kOperations[] = {
    "ID_Contents",      "ID_About",
    "ID_ViewQDVStatus", "ID_QDVStatus",
    "ID_Exit",          "ID_XpointMap",
    "ID_StationAlphas", "ID_ButtonProgramming",
    "ID_RetreiveData",  "ID_SourceLevelControl",
    "ID_SendData",      "ID_ViewSourcelevelControl",
    "ID_Cascade",       "ID_TileHorizontal",
    "ID_TileVertical",  "ID_ArrangeIcons",
};

class MainWindowTest : public testing::Test {
 protected:
  QAction* Command(const char* id) {
    return window_.findChild<QAction*>(QLatin1String(id), Qt::FindDirectChildrenOnly);
  }

  // The names of what stands in a menu or tool bar; "-" for a separator.
  static std::vector<std::string> Names(const QWidget& bar) {
    std::vector<std::string> names;
    for (const QAction* const action : bar.actions()) {
      names.push_back(action->isSeparator() ? "-" : action->objectName().toStdString());
    }
    return names;
  }

  CommandTable commands_;
  MainWindow window_{commands_};
};

TEST_F(MainWindowTest, BearsItsNameAndTitle) {
  EXPECT_EQ(window_.objectName(), QStringLiteral("frmMain"));
  EXPECT_EQ(window_.windowTitle(), QStringLiteral("Orvo Intercom Control"));
}

TEST_F(MainWindowTest, EveryIdentifierRunsItsOwnOperation) {
  std::vector<std::string> run;
  for (const char* const id : kOperations) {
    commands_.Set(QLatin1String(id), [&run, id] { run.emplace_back(id); });
  }
  for (const char* const id : kOperations) {
    QAction* const action = Command(id);
    ASSERT_NE(action, nullptr) << id;
    run.clear();
    action->trigger();
    EXPECT_THAT(run, ElementsAre(id));
  }
}

TEST_F(MainWindowTest, ThereIsNoOtherCommand) {
  std::set<std::string> expected(std::begin(kHeadings), std::end(kHeadings));
  expected.insert(std::begin(kOperations), std::end(kOperations));
  std::set<std::string> ids;
  for (const QAction* const action : window_.findChildren<QAction*>()) {
    const std::string name = action->objectName().toStdString();
    if (!name.starts_with("ID_")) continue;
    EXPECT_TRUE(ids.insert(name).second) << name;
  }
  EXPECT_EQ(ids, expected);
}

TEST_F(MainWindowTest, IdentifiersAreExactAndUnknownOnesDoNothing) {
  int runs = 0;
  commands_.Set(QStringLiteral("ID_RetreiveData"), [&runs] { ++runs; });
  for (const char* const id : {"ID_RetrieveData", "id_retreivedata", "ID_RetreiveData ",
                               "ID_ViewSourceLevelControl", "ID_File", ""}) {
    commands_.Run(QLatin1String(id));
  }
  EXPECT_EQ(runs, 0);
  commands_.Run(QStringLiteral("ID_RetreiveData"));
  EXPECT_EQ(runs, 1);
}

TEST_F(MainWindowTest, HeadingsOpenMenusAndDoNothingElse) {
  for (const char* const id : kHeadings) {
    ASSERT_NE(Command(id), nullptr) << id;
    EXPECT_NE(Command(id)->menu(), nullptr) << id;
    EXPECT_FALSE(commands_.Has(QLatin1String(id)));
  }
  EXPECT_THAT(Names(*window_.menuBar()),
              ElementsAre("ID_File", "", "", "ID_Window", "ID_Help"));  // Edit and View
}

TEST_F(MainWindowTest, MenusHoldTheCommandsInTheirOrder) {
  EXPECT_THAT(Names(*Command("ID_File")->menu()),
              ElementsAre("ID_SendData", "aidSendChanges", "ID_RetreiveData", "aidCompare",
                          "aidDiscardByte", "-", "aidSaveCopy", "aidRestoreBackup",
                          "aidUnsavedRuns", "-", "", "aidKeySheets", "aidImportProgramming", "-",
                          "aidSettings", "aidPresets", "aidLockConsole", "-",
                          "ID_Exit"));  // "": Export
  EXPECT_THAT(Names(*Command("ID_Window")->menu()),
              ElementsAre("ID_XpointMap", "ID_StationAlphas", "ID_ButtonProgramming",
                          "ID_ViewSourcelevelControl", "ID_ViewQDVStatus", "-", "ID_Cascade",
                          "ID_TileHorizontal", "ID_TileVertical", "ID_ArrangeIcons", "-"));
  EXPECT_THAT(Names(*Command("ID_Help")->menu()), ElementsAre("ID_Contents", "-", "ID_About"));
}

TEST_F(MainWindowTest, EveryMenuItemHasAMnemonicOfItsOwn) {
  test::ExpectMnemonics(*window_.menuBar());
  for (const char* const id : kHeadings) test::ExpectMnemonics(*Command(id)->menu());
}

// What the tool bar offers to the mouse alone, a menu offers to keys.
TEST_F(MainWindowTest, EveryToolIsInAMenuToo) {
  QStringList operations;
  for (const char* const id : kHeadings) {
    for (const QAction* const action : Command(id)->menu()->actions()) {
      operations.append(action->text().remove(u'&'));
    }
  }
  for (const QAction* const tool : test::Find<QToolBar>(window_, "SSActiveToolBars1").actions()) {
    if (tool->isSeparator()) continue;
    EXPECT_TRUE(operations.contains(tool->text().remove(u'&'))) << tool->text().toStdString();
  }
}

TEST_F(MainWindowTest, ToolBarHoldsTheTwinsAndTheTransfersLast) {
  auto* const tools = &test::Find<QToolBar>(window_, "SSActiveToolBars1");
  EXPECT_THAT(Names(*tools), ElementsAre("ID_XpointMap", "ID_StationAlphas", "ID_ButtonProgramming",
                                         "-", "ID_SourceLevelControl", "ID_QDVStatus", "-",
                                         "ID_SendData", "ID_RetreiveData", "-", "ID_Contents"));
}

TEST_F(MainWindowTest, NoTwoCommandsShareAShortcut) {
  std::set<QString> shortcuts;
  for (const QAction* const action : window_.findChildren<QAction*>()) {
    const QString shortcut = action->shortcut().toString();
    if (shortcut.isEmpty()) continue;
    EXPECT_TRUE(shortcuts.insert(shortcut).second) << shortcut.toStdString();
  }
  EXPECT_EQ(shortcuts.size(), 11U);
}

TEST_F(MainWindowTest, CommandsWithoutAnOperationAreGreyAndHeadingsAreNot) {
  commands_.Set(QStringLiteral("ID_Exit"), [] {});
  window_.UpdateCommands();
  EXPECT_TRUE(Command("ID_Exit")->isEnabled());
  EXPECT_FALSE(Command("ID_SendData")->isEnabled());
  for (const char* const id : kHeadings) EXPECT_TRUE(Command(id)->isEnabled()) << id;
}

TEST_F(MainWindowTest, TimersHaveTheirNamesAndIntervals) {
  const auto* const poll = &test::Find<QTimer>(window_, "tmrPoll");
  EXPECT_EQ(poll->interval(), 1000);
  EXPECT_FALSE(poll->isSingleShot());
  const auto* const decode = &test::Find<QTimer>(window_, "tmrDecodeTCP");
  EXPECT_EQ(decode->interval(), 5);
  EXPECT_FALSE(decode->isSingleShot());
}

TEST_F(MainWindowTest, ReceivedBytesStartTheDecodeTimer) {
  window_.DecodeTimer().stop();
  window_.StartDecodeTimer();
  EXPECT_TRUE(window_.DecodeTimer().isActive());
}

TEST_F(MainWindowTest, ClosingAsksTheProgram) {
  window_.show();
  bool may = false;
  window_.SetCloseHandler([&may] { return may; });
  EXPECT_FALSE(window_.close());
  EXPECT_TRUE(window_.isVisible());
  may = true;
  EXPECT_TRUE(window_.close());
}

TEST_F(MainWindowTest, AWindowIsManagedByKeys) {
  QMdiSubWindow* const child = window_.Area().addSubWindow(new QWidget);
  window_.show();
  child->show();
  window_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  QTest::keyClick(&window_, Qt::Key_Minus, Qt::AltModifier);
  ASSERT_TRUE(child->systemMenu()->isVisible());
  child->systemMenu()->close();
  QTest::keySequence(&window_, QKeySequence::Close);
  EXPECT_FALSE(child->isVisible());
  QTest::keyClick(&window_, Qt::Key_Minus, Qt::AltModifier);  // nothing to manage any more
}

TEST_F(MainWindowTest, OpenWindowsAreListedNumberedAndTheActiveOneChecked) {
  window_.resize(800, 600);
  window_.show();
  std::vector<QMdiSubWindow*> children;
  for (const char* const title : {"One", "Two", "Closed"}) {
    children.push_back(window_.Area().addSubWindow(new QWidget));
    children.back()->setWindowTitle(QLatin1String(title));
    children.back()->show();
  }
  children[2]->hide();
  children[0]->showMinimized();
  window_.Area().setActiveSubWindow(children[1]);

  QMenu* const menu = Command("ID_Window")->menu();
  const auto fixed = static_cast<qsizetype>(Names(*menu).size());
  for (int shown = 0; shown < 2; ++shown) Q_EMIT menu->aboutToShow();
  const QList<QAction*> listed = menu->actions().mid(fixed);
  ASSERT_EQ(listed.size(), 2);
  EXPECT_EQ(listed[0]->text(), QStringLiteral("&1 One"));
  EXPECT_EQ(listed[1]->text(), QStringLiteral("&2 Two"));
  EXPECT_FALSE(listed[0]->isChecked());
  EXPECT_TRUE(listed[1]->isChecked());

  listed[0]->trigger();
  EXPECT_FALSE(children[0]->isMinimized());
  EXPECT_EQ(window_.Area().activeSubWindow(), children[0]);
}

class StatusBarTest : public MainWindowTest {
 protected:
  QLabel* Panel(const char* name) {
    return test::Find<QStatusBar>(window_, "sbStatusBar").findChild<QLabel*>(QLatin1String(name));
  }
};

TEST_F(StatusBarTest, LinkTextIsWholeHoweverNarrowTheWindow) {
  window_.show();
  window_.ShowLinkText("Connected - COM 1  (57600, 8, N, 1)");
  window_.Status().SetReadout(QString(200, QLatin1Char('x')));
  window_.resize(window_.minimumSizeHint());
  const QLabel* const link = Panel("sbStatusBar_1");
  EXPECT_EQ(link->text(), QStringLiteral("Connected - COM 1  (57600, 8, N, 1)"));
  EXPECT_GE(link->width(), link->sizeHint().width());
}

// As on the first start, with all that there can be to say.
TEST_F(StatusBarTest, NothingInItWidensTheWindow) {
  window_.resize(433, 433);
  window_.show();
  StatusBar& bar = window_.Status();
  auto* const legend = new QLabel(QString(60, QLatin1Char('o')));
  bar.SetLegend(legend);
  bar.WantLegend(true);
  window_.ShowLinkText("Not Connected - COM 1");
  bar.SetReadout(QStringLiteral("Out 064  Sta. 064  <  In 064  Inpt 064: Priority crosspoint"));
  bar.SetClosedPort(1);
  bar.SetBlockedCode(0xCD);
  bar.SetMapState(QStringLiteral("Map 12:03:44"));
  bar.SetUnsent(QStringLiteral("labels, inhibits, relays, buttons, optos, everything else"));
  bar.SetPanels({QStringLiteral("192.0.2.7")});
  bar.ShowNote(QString(200, QLatin1Char('n')));
  bar.SetDemo(true);
  bar.SetFolder(QStringLiteral("/home/studio/.local/share/Orvo/Orvo Intercom Control"));
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(window_.size(), QSize(433, 433));
  const QLabel* const link = Panel("sbStatusBar_1");
  EXPECT_TRUE(link->isVisible());
  EXPECT_GE(link->width(), link->sizeHint().width());
  EXPECT_LE(window_.minimumSizeHint().width(), 300);
  // What shows stands whole within the bar, and nothing over anything else.
  QRect taken;
  for (const QLabel* const panel : bar.findChildren<QLabel*>()) {
    if (!panel->isVisible()) continue;
    EXPECT_TRUE(bar.rect().contains(panel->geometry())) << panel->objectName().toStdString();
    EXPECT_FALSE(taken.intersects(panel->geometry())) << panel->objectName().toStdString();
    taken |= panel->geometry();
  }
}

TEST_F(StatusBarTest, ALongerLinkTextWidensNothingEither) {
  window_.resize(200, 200);
  window_.show();
  window_.ShowLinkText(
      "Connected - COM 1  (57600, 8, N, 1) and much more that no window has room for");
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(window_.size(), QSize(200, 200));
}

TEST_F(StatusBarTest, WarningsComeBeforeWhatIsGoodToKnow) {
  window_.resize(433, 433);
  window_.show();
  StatusBar& bar = window_.Status();
  window_.ShowLinkText("Connected - COM 1  (57600, 8, N, 1)");
  bar.SetPanels({});
  bar.SetMapState(QStringLiteral("Map 12:03:44"));
  EXPECT_TRUE(Panel("aidPanels")->isVisible() || Panel("aidMapState")->isVisible());
  bar.SetBlockedCode(0xCD);
  QCoreApplication::sendPostedEvents();
  EXPECT_TRUE(Panel("aidBlockedCode")->isVisible());
  EXPECT_GE(Panel("aidBlockedCode")->width(), 60);
  window_.resize(1400, 433);
  QCoreApplication::sendPostedEvents();
  for (const char* const name : {"aidBlockedCode", "aidPanels", "aidMapState", "aidReadout"}) {
    EXPECT_TRUE(Panel(name)->isVisible()) << name;
  }
  EXPECT_GE(Panel("aidBlockedCode")->width(), Panel("aidBlockedCode")->sizeHint().width());
}

// Whatever the width, a warning is whole before anything that is only good to know stands.
TEST_F(StatusBarTest, NothingThatIsGoodToKnowStandsBesideAWarningThatIsCut) {
  window_.show();
  StatusBar& bar = window_.Status();
  window_.ShowLinkText("Connected - COM 1  (57600, 8, N, 1)");
  bar.SetPanels({});
  bar.SetMapState(QStringLiteral("Map 12:03:44"));
  bar.SetDemo(true);
  bar.SetReadout(QStringLiteral("Out 05  OB VAN 1  <  In 01  STUDIO 1: Crosspoint"));
  bar.SetFolder(QStringLiteral("/home/studio/.local/share/Orvo/Orvo Intercom Control"));
  bar.SetBlockedCode(0xCD);
  bar.SetClosedPort(1);
  const auto isWhole = [&](const char* name) {
    return Panel(name)->isVisible() && Panel(name)->width() >= Panel(name)->sizeHint().width();
  };
  for (int width = 300; width < 2000; width += 25) {
    window_.resize(width, 433);
    QCoreApplication::sendPostedEvents();
    const bool hasWarnings = isWhole("aidBlockedCode") && isWhole("aidClosedPort");
    for (const char* const name : {"aidReadout", "aidDemo", "aidMapState", "aidPanels"}) {
      EXPECT_TRUE(hasWarnings || !Panel(name)->isVisible()) << name << " at " << width;
    }
  }
  for (const char* const name : {"aidBlockedCode", "aidClosedPort", "aidReadout", "aidDemo",
                                 "aidMapState", "aidPanels", "aidFolder"}) {
    EXPECT_TRUE(isWhole(name)) << name;
  }
}

TEST_F(StatusBarTest, ALabelThatLooksLikeMarkupIsNoneInATip) {
  StatusBar& bar = window_.Status();
  bar.SetReadout(QStringLiteral("Out 05  <b>A</b>"), QStringLiteral("<b>A</b> hears none"));
  EXPECT_EQ(
      Panel("aidReadout")->toolTip(),
      QStringLiteral("<pre>Out 05  &lt;b&gt;A&lt;/b&gt;\n&lt;b&gt;A&lt;/b&gt; hears none</pre>"));
  bar.ShowNote(QStringLiteral("<b>A</b>: Output unlocked"));
  EXPECT_EQ(Panel("aidNote")->toolTip(),
            QStringLiteral("<pre>&lt;b&gt;A&lt;/b&gt;: Output unlocked</pre>"));
}

TEST_F(StatusBarTest, ANoteIsWholeBesideTheFolderAndWhatIsLeftOfTheReadoutGoes) {
  window_.resize(1000, 433);
  window_.show();
  StatusBar& bar = window_.Status();
  window_.ShowLinkText("Connected - COM 1  (57600, 8, N, 1)");
  bar.SetPanels({});
  bar.SetMapState(QStringLiteral("Map 12:03:44"));
  bar.SetReadout(QStringLiteral("Out 05  OB VAN 1  <  In 01  STUDIO 1: Crosspoint"));
  bar.SetFolder(QStringLiteral("/home/studio/.local/share/Orvo/Orvo Intercom Control"));
  QCoreApplication::sendPostedEvents();
  EXPECT_TRUE(Panel("aidReadout")->isVisible());
  bar.ShowNote(QString(40, QLatin1Char('n')));
  QCoreApplication::sendPostedEvents();
  EXPECT_TRUE(Panel("aidFolder")->isVisible());
  EXPECT_GE(Panel("aidNote")->width(), Panel("aidNote")->sizeHint().width());
  EXPECT_FALSE(Panel("aidReadout")->isVisible());
}

// So many characters, and not what stands around them.
TEST_F(StatusBarTest, AWarningThatIsCutKeepsTwelveCharacters) {
  window_.show();
  StatusBar& bar = window_.Status();
  window_.ShowLinkText("Connected - COM 1  (57600, 8, N, 1)");
  bar.SetBlockedCode(0xCD);
  const QLabel* const blocked = Panel("aidBlockedCode");
  int width = 1000;
  while (width > 100) {
    window_.resize(--width, 433);
    QCoreApplication::sendPostedEvents();
    if (!blocked->isVisible()) break;
    ASSERT_GE(blocked->contentsRect().width(), 12 * blocked->fontMetrics().averageCharWidth());
  }
  EXPECT_FALSE(blocked->isVisible());
}

TEST_F(StatusBarTest, AnotherFontIsGivenItsRoom) {
  window_.resize(1400, 433);
  window_.show();
  StatusBar& bar = window_.Status();
  window_.ShowLinkText("Not Connected - COM 1");
  bar.SetBlockedCode(0xCD);
  QFont large = bar.font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  bar.setFont(large);
  QCoreApplication::sendPostedEvents();
  for (const char* const name : {"sbStatusBar_1", "aidBlockedCode"}) {
    EXPECT_GE(Panel(name)->width(), Panel(name)->sizeHint().width()) << name;
  }
}

// Each takes its part of the room, whichever it is.
TEST_F(StatusBarTest, TheLegendStandsOnlyWhereAllElseHasRoom) {
  window_.ShowLinkText("Connected - COM 1  (57600, 8, N, 1)");
  window_.show();
  StatusBar& bar = window_.Status();
  auto* const legend = new QLabel(QStringLiteral("the legend of the map"));
  bar.SetLegend(legend);
  bar.WantLegend(true);
  const std::pair<const char*, std::function<void(bool)>> panels[] = {
      {"aidNote", [&](bool) { bar.ShowNote(QString(40, QLatin1Char('n'))); }},
      {"aidPanels", [&](bool) { bar.SetPanels({}); }},
      {"aidClosedPort", [&](bool on) { bar.SetClosedPort(on ? std::optional(1) : std::nullopt); }},
      {"aidBlockedCode",
       [&](bool on) { bar.SetBlockedCode(on ? std::optional<std::uint8_t>(1) : std::nullopt); }},
      {"aidMapState", [&](bool on) { bar.SetMapState(on ? QStringLiteral("Map") : QString()); }},
      {"aidUnsent", [&](bool on) { bar.SetUnsent(on ? QStringLiteral("optos") : QString()); }},
      {"aidDemo", [&](bool on) { bar.SetDemo(on); }},
      {"aidFolder", [&](bool) { bar.SetFolder(QStringLiteral("/home/studio/consoles")); }}};
  for (const auto& [name, set] : panels) {
    // The narrowest window that has room for the legend.
    int width = 300;
    const auto fits = [&] {
      window_.resize(width, 400);
      return legend->isVisible();
    };
    while (!fits() && width < 3000) ++width;
    ASSERT_LT(width, 3000) << name;
    set(true);
    EXPECT_FALSE(legend->isVisible()) << name;
    EXPECT_TRUE(Panel(name)->isVisible()) << name;
    set(false);
  }
}

// Cut to "Unse…" it would say nothing.
TEST_F(StatusBarTest, WhatIsUnsentSaysSinceWhenOrIsASignAtEveryWidth) {
  window_.ShowLinkText("Connected - COM 1  (57600, 8, N, 1)");
  window_.show();
  StatusBar& bar = window_.Status();
  bar.SetUnsent(QStringLiteral("Unsent since 22 Nov: inhibits of output 3, buttons of station 12"));
  bar.SetReadout(QString(60, QLatin1Char('x')));
  const QLabel& words = *Panel("aidUnsent");
  const QLabel& sign = *Panel("aidUnsentSign");
  int worded = 0;
  int signs = 0;
  for (int width = 2000; width >= 433; width -= 7) {
    window_.resize(width, 433);
    if (words.isVisible()) {
      ++worded;
      const QString shown = words.fontMetrics().elidedText(words.text(), Qt::ElideRight,
                                                           words.contentsRect().width());
      EXPECT_TRUE(shown.startsWith(QStringLiteral("Unsent since 22 Nov")))
          << width << ' ' << shown.toStdString();
      EXPECT_FALSE(sign.isVisible()) << width;
    } else {
      ++signs;
      EXPECT_TRUE(sign.isVisible()) << width;
      EXPECT_FALSE(sign.pixmap(Qt::ReturnByValue).isNull());
      EXPECT_TRUE(sign.toolTip().startsWith(words.text()));
    }
  }
  EXPECT_GT(worded, 0);
  EXPECT_GT(signs, 0);
  bar.SetUnsent(QString());
  EXPECT_FALSE(words.isVisible());
  EXPECT_FALSE(sign.isVisible());
}

TEST_F(StatusBarTest, TheReadoutGivesWayToWhatIsUnsent) {
  window_.ShowLinkText("Connected - COM 1  (57600, 8, N, 1)");
  window_.show();
  StatusBar& bar = window_.Status();
  const QString words = QStringLiteral("Unsent since 22 Nov: inhibits of output 3");
  bar.SetUnsent(words);
  bar.SetReadout(QString(60, QLatin1Char('x')));
  int width = 433;
  const QLabel& unsent = *Panel("aidUnsent");
  const auto isWhole = [&] {
    window_.resize(width, 433);
    return unsent.isVisible() &&
           unsent.fontMetrics().horizontalAdvance(words) <= unsent.contentsRect().width();
  };
  while (!isWhole() && width < 3000) {
    EXPECT_FALSE(Panel("aidReadout")->isVisible()) << width;
    ++width;
  }
  EXPECT_LT(width, 3000);
}

TEST_F(StatusBarTest, NotesStandBesideTheLinkText) {
  window_.resize(800, 600);
  window_.show();
  window_.ShowLinkText("Not Connected - COM 1");
  EXPECT_FALSE(Panel("aidNote")->isVisible());
  window_.Status().ShowNote(QStringLiteral("Inhibits sent"));
  EXPECT_TRUE(Panel("aidNote")->isVisible());
  EXPECT_TRUE(Panel("sbStatusBar_1")->isVisible());
  EXPECT_EQ(Panel("sbStatusBar_1")->text(), QStringLiteral("Not Connected - COM 1"));
}

TEST_F(StatusBarTest, ABlockingCodeIsNamedUntilItIsGone) {
  window_.resize(800, 600);
  window_.show();
  EXPECT_FALSE(Panel("aidBlockedCode")->isVisible());
  window_.ShowBlockedCode(0xE0);
  EXPECT_TRUE(Panel("aidBlockedCode")->isVisible());
  EXPECT_TRUE(Panel("aidBlockedCode")->text().contains(QStringLiteral("0xE0")));
  window_.ShowBlockedCode(std::nullopt);
  EXPECT_FALSE(Panel("aidBlockedCode")->isVisible());
}

}  // namespace
}  // namespace app
