// SPDX-License-Identifier: MIT
//
// The manual has every text that the console can show, word for word.  The texts are taken from
// the sources, so that a new one cannot be forgotten: it goes into the manual, or into the list of
// what nobody is shown below.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QWidget>
#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "app/shell/help_window.h"
#include "gateway/panel_tables.h"
#include "gateway/qt_sockets.h"
#include "switcher/serial_port.h"
#include "tests/app/manual_text.h"
#include "tests/support/source_texts.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

using test::IsForPeople;
using test::PageText;
using test::Says;
using test::SourceText;
using test::TextsOf;
using testing::ElementsAre;

// How what stands in the sources and is no text of a window or a box begins.
constexpr const char* kNotShown[] = {
    // Names of fonts.
    "DejaVu Sans",
    "Courier New",
    "Liberation Mono",
    "Nimbus Mono PS",
    "DejaVu Sans Mono",
    // What a new database has in its fields.
    "Notes for Station ",
    "Notes for Channel ",
    "Virtual Output ",
    "Virtual Input ",
    "Ch A",
    "Ch B",
    // Spoken names of what shows its own text, or none.
    "Bands of sliders",
    "Button tools",
    "Crosspoint tools",
    "Label tools",
    "Download progress",
    "Progress of sending",
    "What is sent",
    "Messages received",
    "Link to the switcher",
    "Current crosspoint",
    "Marks of the crosspoint map: %1",
    "Input %1 level",
    "Level in dB",
    "Target %1 of button %2",
    "Target %1 of opto %2",
    "Button %1: %2, %3",
    "TCP port of the network panels",
    "QDV %1 responding",
    "QDV %1 not responding",
    "Events",
    "Filter",
    "Differences",
    // Names of bands of tools.
    "Button Commands",
    "Commands",
    // A file dialog's choice of files.
    "Text files (*.txt);;All files (*)",
    "Database files (*.mdb)",
    "%1 files (*.%2);;All files (*)",
    "CSV files (*.csv);;All files (*)",
    // The picture of a tip.
    "<table cellspacing='2'>",
    "<tr><td><img width='%1' height='%1' src='data:image/png;base64,%2'></td><td>%3</td></tr>",
    // The style of the manual's pages begins so.
    "h1 { font-size: x-large",
    // Forms of dates.
    "yyyy-MM-dd HH:mm:ss",
    "yyyy-MM-dd HH.mm.ss",
    "d MMM yyyy",
    "d MMM HH:mm",
    // The form of the names of what the map was before a recall.
    "^Before recall of ",
    // What the desktop shows of a console that was set up.
    "[Desktop Entry]",
    "\nGenericName=",
    // What controllers show of the open gateway's tree.
    "Calls: target and source count from 0",
    "Parameters of targets and sources",
    // What the printing system says, which is read.
    "system default destination: ",
    // Why the port of the panels cannot be opened: its box says so with words of its own.
    "There is no IP port ",
};

std::vector<fs::path> Sources() {
  const fs::path root(TESK_SOURCE);
  std::vector<fs::path> sources;
  for (const char* const folder : {"app", "views", "switcher", "gateway", "db", "config", "files",
                                   "model", "tools/tesksetup"}) {
    for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
      const fs::path& path = entry.path();
      if (path.extension() != ".cpp" && path.extension() != ".h") continue;
      // The engine's words are many and say where in a file: the manual has its numbers.
      if (path.string().starts_with((root / "db" / "jet").string())) continue;
      // What --help prints is in the manual page.
      if (path == root / "tools" / "tesksetup" / "main.cpp") continue;
      sources.push_back(path);
    }
  }
  std::ranges::sort(sources);
  return sources;
}

bool IsShown(const std::string& text) {
  return std::ranges::none_of(kNotShown,
                              [&](const char* begin) { return text.starts_with(begin); });
}

std::set<std::string> TextsForPeople() {
  std::set<std::string> texts;
  for (const fs::path& path : Sources()) {
    for (const SourceText& each : TextsOf(test::ReadFile(path))) {
      if (IsForPeople(each)) texts.insert(each.text);
    }
  }
  return texts;
}

TEST(ManualMessagesTest, HasEveryTextOfTheConsole) {
  const QString manual = test::ManualText();
  for (const std::string& text : TextsForPeople()) {
    if (!IsShown(text)) continue;
    EXPECT_TRUE(Says(manual, QString::fromStdString(text))) << "not in the manual: " << text;
  }
}

// The search finds what is reported in any of the ways there are.
TEST(ManualMessagesTest, TheSearchFindsTheTexts) {
  const std::set<std::string> texts = TextsForPeople();
  for (const char* const known :
       {// Handed to the box itself, as a constant, by way of another operation.
        "Orvo Intercom Control is already running in this folder.",
        " is either in use by another program or unavailable.\rPlease select another comm port and "
        "restart Orvo Intercom Control",
        "Crosspoint selection received for Inhibited Crosspoint.\n",
        "Error in format of received Alpha Label message (Channel Not Found).\nThis message only "
        "partially saved.",
        "Error Sending Take Command", "Error Storing Relays Table", "Error Sending Inhibits Table",
        "Action Not Allowed On Inhibited Crosspoint", "Error Reading Station Record",
        "Writing Configuration File", "Error Processing Take Command",
        // Notes, hints, the status bar, a window.
        "Panel %1 was dropped: it does not read what it is sent",
        "Button %1 of station %2 has no target and is stored as inactive", "Unsent since %1: %2",
        "Map requesting…", "DEMO", "No data for %1 s", "Failed Csum",
        "The serial line has taken no byte for two seconds", "Cannot write in ",
        "Reported %1 times", "You may not open %1: its rights forbid it.", "Nothing was pasted."}) {
    EXPECT_TRUE(texts.contains(known)) << known;
  }
  for (const char* const begin : kNotShown) {
    EXPECT_TRUE(std::ranges::any_of(
        texts, [&](const std::string& text) { return text.starts_with(begin); }))
        << "not in the sources any more: " << begin;
  }
}

TEST(ManualMessagesTest, DoesNotSayWhatItDoesNotHave) {
  const QString manual = test::ManualText();
  EXPECT_FALSE(Says(manual, QStringLiteral("Error Sending Coffee Command")));
  EXPECT_FALSE(Says(manual, QStringLiteral("rror Sending Take Command")));
  EXPECT_FALSE(Says(manual, QStringLiteral("Error Sending Take Comman")));
  EXPECT_FALSE(Says(manual, QStringLiteral("No data for %1 minutes")));
  EXPECT_TRUE(Says(manual, QStringLiteral("Error Sending\r\rTake &Command")));
  EXPECT_TRUE(Says(manual, QStringLiteral("No data for %1 s")));
}

// The titles of the message boxes: written where the box is shown, or a constant of that file or
// of another one.
std::set<std::string> BoxTitles() {
  QString all;
  for (const fs::path& path : Sources())
    all += QString::fromStdString(test::ReadFile(path)) + u'\n';
  const QRegularExpression shown(
      QStringLiteral(R"re(Show\([\w:]*Icon::\w+,\s*(?:"([^"]+)"|(k\w+)))re"));
  std::set<std::string> titles;
  for (auto each = shown.globalMatch(all); each.hasNext();) {
    const QRegularExpressionMatch match = each.next();
    if (match.captured(2).isEmpty()) {
      titles.insert(match.captured(1).toStdString());
      continue;
    }
    const QRegularExpression constant(
        QStringLiteral(R"re(\b%1(?:\[\])? = "([^"]+)")re").arg(match.captured(2)));
    const QRegularExpressionMatch value = constant.match(all);
    EXPECT_TRUE(value.hasMatch()) << match.captured(2).toStdString();
    titles.insert(value.captured(1).toStdString());
  }
  return titles;
}

// The key for the manual leads from each box to what is said about it.
TEST(ManualMessagesTest, EveryBoxHasItsPlace) {
  std::set<std::string> titles = BoxTitles();
  // Shown before there is a console.
  EXPECT_EQ(titles.erase("Orvo Intercom Control"), 1U);
  EXPECT_THAT(titles,
              ElementsAre("Comm Error", "Control Error", "Database Error", "Error Processing",
                          "Serial Communications Error", "Synchronization Warning"));
  for (const std::string& title : titles) {
    QWidget box;
    box.setWindowTitle(QString::fromStdString(title));
    const QStringList place = app::ManualPlace(&box).split(u'#');
    ASSERT_EQ(place.size(), 2) << title;
    EXPECT_TRUE(app::ManualPages().contains(place[0])) << title;
    const std::string page =
        test::ReadFile(fs::path(TESK_SOURCE) / "app" / "help" / place[0].toStdString());
    EXPECT_NE(page.find("<a name=\"" + place[1].toStdString() + "\">"), std::string::npos) << title;
  }
}

TEST(ManualMessagesTest, HasEveryErrorNumber) {
  const QString errors = PageText(QStringLiteral("errors.html"));
  for (const int number : {switcher::kPortNotOpen, switcher::kPortWriteFailed,
                           gateway::kSocketFailed, gateway::kOutOfRange, 75}) {
    EXPECT_TRUE(Says(errors, QString::number(number))) << number;
  }
  const std::string numbers = test::ReadFile(fs::path(TESK_SOURCE) / "db" / "jet" / "status.h");
  int found = 0;
  const QRegularExpression entry(QStringLiteral("^  [A-Za-z]+ = (3[0-9]{3}),"),
                                 QRegularExpression::MultilineOption);
  for (auto each = entry.globalMatch(QString::fromStdString(numbers)); each.hasNext(); ++found) {
    const QString number = each.next().captured(1);
    EXPECT_TRUE(Says(errors, number)) << number.toStdString();
  }
  EXPECT_GE(found, 20);
}

std::vector<std::string> ForPeople(std::string_view code) {
  std::vector<std::string> texts;
  for (const SourceText& each : TextsOf(code)) {
    if (IsForPeople(each)) texts.push_back(each.text);
  }
  return texts;
}

TEST(SourceTextsTest, ReadsTheLiteralsOfCode) {
  EXPECT_THAT(ForPeople("Show(\"One text\"); // \"not this\"\n/* \"nor this\" */ Show(\"ab cd\")"),
              ElementsAre("One text", "ab cd"));
  EXPECT_THAT(ForPeople("a = \"One \"\n    \"text\\rof \\\"two\\\" lines\";"),
              ElementsAre("One text\rof \"two\" lines"));
  EXPECT_THAT(ForPeople("if (c == '\"') x = 5'000; s = \"with \" + Name() + \" in between\";"),
              ElementsAre(" in between"));
  EXPECT_THAT(ForPeople("#include \"ab cd.h\"\nR\"(two words, \"quoted\")\""),
              ElementsAre("two words, \"quoted\""));
}

TEST(SourceTextsTest, TellsTextsForPeople) {
  EXPECT_THAT(ForPeople("setObjectName(\"aidNote\"); add(\"ID_Take\")"), ElementsAre());
  EXPECT_THAT(ForPeople("tr(\"Copied\"), Tr(\"%1\"), QT_TR_NOOP(\"Map\")"),
              ElementsAre("Copied", "Map"));
  EXPECT_THAT(ForPeople("QT_TRANSLATE_NOOP(\"views::Legend\", \"Inhibited\")"),
              ElementsAre("Inhibited"));
  EXPECT_THAT(ForPeople("QCoreApplication::translate(\"LinkAids\", \"Port\")"),
              ElementsAre("Port"));
  EXPECT_THAT(ForPeople("attr(\"Copied\")"), ElementsAre());
}

}  // namespace
