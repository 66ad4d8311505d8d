// SPDX-License-Identifier: MIT
//
// Whatever writes a station's record announces what it has changed: every edit of every view, and
// every table of the switcher.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QRadioButton>
#include <QTest>

#include "switcher/decoder.h"
#include "tests/support/hex.h"
#include "tests/support/recording_changes.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_switcher_events.h"
#include "tests/support/small_database.h"
#include "tests/views/labels/labels_console.h"
#include "tests/views/programming/buttons_console.h"
#include "tests/views/xmap/xmap_console.h"

namespace {

using test::Flags;
using test::Times;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ChangesOfTheViews, ARowOfTheLabelsIsOne) {
  test::LabelsConsole console;
  console.Open();
  test::RecordingChanges heard(console.changes);
  console.Click(4, test::kLabel);
  console.Type("CAM 5");
  console.Click(4, test::kNotes);
  console.Type("left");
  EXPECT_THAT(heard.seen, IsEmpty()) << "the row is not stored yet";
  console.Click(7, test::kLabel);
  EXPECT_THAT(heard.Take(), ElementsAre("operator 5: Label Sta. 005 > CAM 5, "
                                        "Notes Notes for Station 005 > left"));
  console.Click(2, test::kLabel);
  console.Paste(QStringLiteral("MIC 3\tIN 3\tYes\nSta. 004\tInpt 004\tNo\nCAM 5\tIN 5\tNo\n"));
  EXPECT_THAT(heard.Take(), ElementsAre("operator 3: Label Sta. 003 > MIC 3, "
                                        "InLabel Inpt 003 > IN 3, Hidden 0 > 1",
                                        "operator 5: InLabel Inpt 005 > IN 5"));
}

TEST(ChangesOfTheViews, AnInhibitIsOne) {
  test::XmapConsole console(8);
  console.Open();
  test::RecordingChanges heard(console.changes);
  console.SelectCell(4, 3);
  console.ClickTool("ID_ToggleInhibit");
  console.ClickTool("ID_ToggleInhibit");
  EXPECT_THAT(heard.seen, ElementsAre("operator 3: Inhibits 00000000 > 01000000",
                                      "operator 3: Inhibits 01000000 > 00000000"));
}

TEST(ChangesOfTheViews, EveryEditOfTheProgrammingIsOne) {
  test::ButtonsConsole console;
  console.Open();
  test::RecordingChanges heard(console.changes);
  console.GoToTab(5);
  console.ClickBox("ckStationSel", 4);
  EXPECT_THAT(heard.Take(),
              ElementsAre("operator 1: B1 Prog " + Flags({1}) + " > " + Flags({1, 5})));
  console.ClickBox("ckStationSel", 0);
  EXPECT_THAT(heard.Take(), ElementsAre("operator 1: B1 Prog " + Flags({1, 5}) + " > " +
                                        Flags({5}) + ", B1 First 1 > 5"));
  console.ChooseOption(1);
  EXPECT_THAT(heard.Take(), ElementsAre("operator 1: B1 Type 0 > 1"));
  console.ChooseOption(1);
  EXPECT_THAT(heard.Take(), IsEmpty()) << "it is stored already";
  console.ClickBox("ckStationSel", 4);
  EXPECT_THAT(heard.Take(), ElementsAre("operator 1: B1 Prog " + Flags({5}) + " > " + Flags({}) +
                                        ", B1 First 5 > 1, B1 Type 1 > 254"));
  console.ChooseOption(255);
  EXPECT_THAT(heard.Take(), ElementsAre("operator 1: B1 Type 254 > 255"));
  console.Press("cmdNext");
  EXPECT_THAT(heard.Take(), ElementsAre("navigation 1: B1 Type 255 > 254"))
      << "a button without targets is left behind as inactive";
  console.GoToTab(6);
  console.ClickBox("ckRelaySel", 63);
  EXPECT_THAT(heard.Take(), ElementsAre("operator 2: Relays " + Flags({}) + " > " + Flags({64})));
  console.GoToTab(7);
  console.ClickBox("ckOptoStationSel", 2);
  EXPECT_THAT(heard.Take(),
              ElementsAre("operator 2: OptoStations " + Flags({2}) + " > " + Flags({2, 3})));
  QTest::mouseClick(&console.Find<QRadioButton>("optOptoType", 0), Qt::LeftButton, Qt::NoModifier,
                    QPoint(8, 8));
  EXPECT_THAT(heard.Take(), ElementsAre("operator 2: OptoType 254 > 0"));
  console.Find<QComboBox>(QStringLiteral("cmbOptoChan")).setCurrentIndex(6);
  EXPECT_THAT(heard.Take(), ElementsAre("operator 2: OptoChannel 2 > 7"));
}

class ChangesOfTheSwitcher : public testing::Test {
 protected:
  ChangesOfTheSwitcher() {
    model_.ApplyFixedValues();
    model_.ChannelCount = 16;
    model_.StationCount = 16;
    model_.LabelCount = 2;
    model_.RelayCount = 8;
    model_.ButtonCount = 2;
    model_.OptoCount = 2;
    for (const int station : {1, 2}) {
      database_.AddStation(station, {{"Hidden", 0},
                                     {"Label", "old"},
                                     {"InLabel", "in"},
                                     {"Inhibits", Flags({})},
                                     {"Relays", Flags({})},
                                     {"OptoType", 254},
                                     {"OptoChannel", 1},
                                     {"OptoFirst", 1},
                                     {"OptoStations", Flags({1})},
                                     {"B1 Type", 0},
                                     {"B1 First", 1},
                                     {"B1 Prog", Flags({1})},
                                     {"B2 Type", 2},
                                     {"B2 First", 9},
                                     {"B2 Prog", Flags({9})}});
    }
  }

  // What is announced when a message comes.
  std::vector<std::string> Decode(std::string_view message) {
    decoder_.Decode(test::FromHex(message));
    return heard_.Take();
  }

  model::SystemModel model_;
  test::SmallDatabase database_;
  test::RecordingReporter reporter_;
  test::RecordingSwitcherEvents events_;
  stations::Changes changes_;
  test::RecordingChanges heard_{changes_};
  switcher::Decoder decoder_{{.model = model_,
                              .database = [this] { return database_.Files().Database(); },
                              .reporter = reporter_,
                              .changes = changes_,
                              .observers = {events_}}};
};

TEST_F(ChangesOfTheSwitcher, EveryTableTellsStationByStationWhatItChanged) {
  EXPECT_THAT(Decode("F9 14 61 62 20 20 20 20 20 20 7B 6C 64 20 20 20 20 20 02 FF"),
              ElementsAre("switcher 1: Label old > ab", "switcher 2: Hidden 0 > 1"));
  EXPECT_THAT(Decode("F9 0A 61 20 20 20 20 20 20 20 69 6E 20 20 20 20 20 20 62 FF"),
              ElementsAre("switcher 1: InLabel in > a"));
  EXPECT_THAT(Decode("F5 01 00 01 01 00 01 02 FF"),
              ElementsAre("switcher 2: Inhibits " + Flags({}) + " > " + Flags({1, 8, 16})));
  EXPECT_THAT(Decode("F4 01 00 03 00 04 FF"),
              ElementsAre("switcher 2: Relays " + Flags({}) + " > " + Flags({1, 2})));
  EXPECT_THAT(Decode("FB 01 00 7F 01 01 00 02 00 09 00 01 00 00 00 00 00 01 00 0E FF"),
              ElementsAre("switcher 2: B1 Type 0 > 255"));
  EXPECT_THAT(Decode("E1 7E 01 01 00 01 00 01 00 " + Times(7, "00 00") + "00 00 02 01 02 00 " +
                     Times(7, "00 00") + "00 01 05 FF"),
              ElementsAre("switcher 2: OptoType 254 > 0, OptoChannel 1 > 130, OptoFirst 1 > 2, "
                          "OptoStations " +
                          Flags({1}) + " > " + Flags({64})));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(ChangesOfTheSwitcher, WhatIsThereAlreadyRefusedOrNotStoredIsNoChange) {
  const char* const inhibits = "F5 01 00 01 01 00 01 02 FF";
  EXPECT_THAT(Decode("F5 01 00 01 01 00 01 03 FF"), IsEmpty()) << "a wrong checksum";
  EXPECT_THAT(Decode("F5 04 00 01 01 00 01 05 FF"), IsEmpty()) << "no such record";
  EXPECT_THAT(Decode(inhibits), testing::SizeIs(1));
  EXPECT_THAT(Decode(inhibits), IsEmpty()) << "the same again";
}

// The table is stored whole or not at all, so nothing is told of its first station either.
TEST(ChangesOfAFailure, OfATableThatIsNotStoredAreNone) {
  test::SmallDatabase narrow(test::StationsWithTextSize("Label", 4));
  narrow.AddStation(1, {{"Label", "old"}, {"Hidden", 0}});
  narrow.AddStation(2, {{"Label", "old"}, {"Hidden", 0}});
  model::SystemModel model;
  model.LabelCount = 2;
  test::RecordingReporter reporter;
  test::RecordingSwitcherEvents events;
  stations::Changes changes;
  const test::RecordingChanges heard(changes);
  switcher::Decoder decoder({.model = model,
                             .database = [&] { return narrow.Files().Database(); },
                             .reporter = reporter,
                             .changes = changes,
                             .observers = {events}});
  decoder.Decode(test::FromHex("F9 14 61 20 20 20 20 20 20 20 53 74 61 2E 20 30 30 32 5D FF"));
  EXPECT_EQ(reporter.reports.size(), 1U);
  EXPECT_EQ(narrow.Field(1, "Label"), "old");
  EXPECT_THAT(heard.seen, IsEmpty());
}

}  // namespace
