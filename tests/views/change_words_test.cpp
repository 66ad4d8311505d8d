// SPDX-License-Identifier: MIT

#include "views/change_words.h"

#include <gtest/gtest.h>

namespace views {
namespace {

using stations::Change;
using stations::Origin;

Change Of(int station, std::vector<stations::FieldChange> fields,
          Origin origin = Origin::Operator) {
  return {origin, station, std::move(fields)};
}

using Texts = std::vector<std::string>;

// Each row as one line: "Station 17 | Label | Sta. 017 | CAM 4".
Texts Lines(const std::vector<ChangeRow>& rows) {
  Texts lines;
  for (const ChangeRow& row : rows) {
    const QString line =
        QStringList{row.where, row.what, row.before, row.after}.join(QStringLiteral(" | "));
    lines.push_back(line.toStdString());
  }
  return lines;
}

Texts Lines(const Change& change, const FieldLookup& lookup = nullptr) {
  return Lines(ChangeRows({&change, 1}, lookup));
}

TEST(ChangeWords, TextsStandAsTheyAre) {
  EXPECT_EQ(
      Lines(Of(17, {{"Notes", "old", ""},
                    {"InLabel", jet::Value(), "MIC 4"},
                    {"Label", "Sta. 017", "CAM 4"},
                    {"Hidden", 0, 1},
                    {"SysOutput", "QDV(1)", "QDV(2)"},
                    {"SysInput", "HRJ(1)", "HRJ(2)"}})),
      Texts({"Station 17 | Label | Sta. 017 | CAM 4", "Station 17 | Input label | (empty) | MIC 4",
             "Station 17 | Hidden | No | Yes", "Station 17 | System input | HRJ(1) | HRJ(2)",
             "Station 17 | System output | QDV(1) | QDV(2)",
             "Station 17 | Notes | old | (empty)"}));
}

TEST(ChangeWords, FlagsAreTheNumbersThatAreSet) {
  EXPECT_EQ(Lines(Of(3, {{"Inhibits", "0010", "11001110001"}})),
            Texts{"Output 3 | Inhibits | 3 | 1, 2, 5–7, 11"});
  EXPECT_EQ(Lines(Of(3, {{"Relays", "0000", "1000"}})), Texts{"Output 3 | Relays | none | 1"});
}

TEST(ChangeWords, AButtonIsOneRow) {
  const Change change =
      Of(12, {{"B3 Type", 0, 1}, {"B3 First", 5, 7}, {"B3 Prog", "00001", "0000001"}});
  EXPECT_EQ(Lines(change), Texts{"Station 12 | Button 3 | TALK 5 | LISTEN 7"});
  EXPECT_EQ(ChangeRows({&change, 1})[0].fields,
            (std::vector<std::string>{"B3 Type", "B3 First", "B3 Prog"}));
}

TEST(ChangeWords, AnOutlineGetsTheSameTextsLater) {
  const std::vector<Change> changes{
      Of(12, {{"Label", "MIC", "VT"}, {"B3 Type", 0, 1}, {"Inhibits", "01", "10"}}),
      Of(17, {{"B3 First", 5, 7}, {"OptoChannel", 1, 2}, {"B3 Prog", "0001", "1"}})};
  const auto lookup = [](int, std::string_view) { return jet::Value("00001"); };
  std::vector<ChangeRow> rows = ChangeOutline(changes);
  for (const ChangeRow& row : rows) {
    EXPECT_EQ(row.before, QString());
    EXPECT_EQ(row.after, QString());
  }
  for (ChangeRow& row : rows) SayValues(changes, lookup, &row);
  EXPECT_EQ(Lines(rows), Lines(ChangeRows(changes, lookup)));
  EXPECT_EQ(Lines(rows)[0], "Station 12 | Label | MIC | VT");
  EXPECT_EQ(rows.size(), 5U);
}

// A station may have changed more than once.
TEST(ChangeWords, AnOutlineKnowsWhichChangeARowIsOf) {
  const std::vector<Change> changes{Of(12, {{"Label", "MIC", "VT"}}),
                                    Of(12, {{"Label", "VT", "CAM"}})};
  std::vector<ChangeRow> rows = ChangeOutline(changes);
  for (ChangeRow& row : rows) SayValues(changes, nullptr, &row);
  EXPECT_EQ(Lines(rows), Texts({"Station 12 | Label | MIC | VT", "Station 12 | Label | VT | CAM"}));
}

TEST(ChangeWords, WhatWasNotChangedIsLookedUp) {
  const Change change = Of(12, {{"B3 Type", 0, 255}});
  EXPECT_EQ(Lines(change), Texts{"Station 12 | Button 3 | TALK | GROUP"});
  EXPECT_EQ(Lines(change,
                  [](int station, std::string_view field) {
                    EXPECT_EQ(station, 12);
                    EXPECT_EQ(field, "B3 Prog");
                    return jet::Value("00001");
                  }),
            Texts{"Station 12 | Button 3 | TALK 5 | GROUP 5"});
}

TEST(ChangeWords, TargetsAloneAreSaidToBeTargets) {
  EXPECT_EQ(Lines(Of(12, {{"B3 Prog", "01", "0000001"}})),
            Texts{"Station 12 | Button 3 | target 2 | target 7"});
  EXPECT_EQ(Lines(Of(12, {{"B3 Prog", "0", "0110001"}})),
            Texts{"Station 12 | Button 3 | without a target | targets 2, 3, 7"});
  EXPECT_EQ(Lines(Of(12, {{"B3 Prog", "000000000001", "1111"}})),
            Texts{"Station 12 | Button 3 | target 12 | targets 1–4"});
  EXPECT_EQ(Lines(Of(4, {{"OptoChannel", 4, 5}, {"OptoStations", "1", "01"}})),
            Texts{"Station 4 | Opto | target 1, channel 4 | target 2, channel 5"});
}

TEST(ChangeWords, RowsAreCountedWithoutTheirWords) {
  const std::vector<Change> changes = {
      Of(1, {{"Label", "A", "B"}, {"B1 Type", 0, 1}, {"B1 First", 1, 2}, {"B2 Type", 0, 1}}),
      Of(1, {{"Label", "B", "C"}, {"Colour", 1, 2}})};
  EXPECT_EQ(ChangeRows(changes).size(), 5u);
  EXPECT_EQ(CountRows(changes), 5u);
  EXPECT_EQ(CountRows({}), 0u);
}

TEST(ChangeWords, ProgramsOfEveryKind) {
  EXPECT_EQ(Lines(Of(1, {{"B1 Type", 77, 254}, {"B1 Prog", "1", ""}})),
            Texts{"Station 1 | Button 1 | NULL (77) 1 | NULL without a target"});
  EXPECT_EQ(Lines(Of(1, {{"B1 First", 1, 2}})),
            Texts{"Station 1 | Button 1 | first target 1 | first target 2"});
  EXPECT_EQ(
      Lines(Of(4, {{"OptoType", 254, 0}, {"OptoChannel", 4, 5}, {"OptoStations", "0", "01"}})),
      Texts{"Station 4 | Opto | NULL without a target, channel 4 | TALK 2, channel 5"});
  EXPECT_EQ(Lines(Of(4, {{"OptoChannel", 4, 5}})),
            Texts{"Station 4 | Opto | channel 4 | channel 5"});
  EXPECT_EQ(Lines(Of(4, {{"OptoFirst", 4, 5}})),
            Texts{"Station 4 | Opto | first target 4 | first target 5"});
}

TEST(ChangeWords, AFieldWithoutANameOfItsOwnIsNamedAsItIsStored) {
  EXPECT_EQ(Lines(Of(4, {{"Colour", 4, 5}})), Texts{"Station 4 | Colour | 4 | 5"});
}

TEST(ChangeWords, OnlyWhatIsChosenIsLeft) {
  const std::vector<Change> changes = {
      Of(1, {{"Label", "A", "B"}, {"B1 Type", 0, 1}, {"B1 First", 1, 2}}),
      Of(2, {{"Label", "C", "D"}}), Of(3, {{"Label", "E", "F"}})};
  std::vector<ChangeRow> rows = ChangeRows(changes);
  ASSERT_EQ(rows.size(), 4u);
  rows.erase(rows.begin());  // the label of station 1
  rows.pop_back();           // and all of station 3
  const std::vector<Change> chosen = Chosen(changes, rows);
  ASSERT_EQ(chosen.size(), 2u);
  EXPECT_EQ(chosen[0].station, 1);
  ASSERT_EQ(chosen[0].fields.size(), 2u);
  EXPECT_EQ(chosen[0].fields[0].field, "B1 Type");
  EXPECT_EQ(chosen[0].fields[1].after, jet::Value(2));
  EXPECT_EQ(chosen[1].station, 2);
}

std::string Title(const std::vector<Change>& changes) { return ActTitle(changes).toStdString(); }

TEST(ChangeWords, AnActIsOneLine) {
  const Change label = Of(17, {{"Label", "A", "B"}});
  EXPECT_EQ(Title({label}), "Label of station 17");
  const Change inhibits = Of(3, {{"Inhibits", "0", "1"}});
  EXPECT_EQ(Title({inhibits}), "Inhibits of output 3");
  const Change two = Of(3, {{"Notes", "0", "1"}, {"Label", "A", "B"}});
  EXPECT_EQ(Title({two}), "Label, notes of station 3");
  const Change button = Of(12, {{"B3 Type", 0, 1}, {"B3 First", 0, 1}}, Origin::Undo);
  EXPECT_EQ(Title({button}), "Undo: Button 3 of station 12");
  const Change buttons = Of(12, {{"B3 Type", 0, 1}, {"B4 Type", 0, 1}}, Origin::Redo);
  EXPECT_EQ(Title({buttons}), "Redo: Buttons of station 12");
  const std::vector<Change> labels = {Of(1, {{"Label", "A", "B"}}, Origin::Restore),
                                      Of(2, {{"Label", "A", "B"}}, Origin::Restore)};
  EXPECT_EQ(Title(labels), "Restored: Label of 2 stations");
  const std::vector<Change> outputs = {Of(1, {{"Inhibits", "0", "1"}}, Origin::Comparison),
                                       Of(2, {{"Inhibits", "0", "1"}}, Origin::Comparison)};
  EXPECT_EQ(Title(outputs), "From the switcher: Inhibits of 2 outputs");
  const std::vector<Change> many = {
      Of(1, {{"Inhibits", "0", "1"}, {"Label", "A", "B"}, {"Relays", "0", "1"}}, Origin::Backup),
      Of(2, {{"Notes", "0", "1"}}, Origin::Backup)};
  EXPECT_EQ(Title(many), "From a copy: 4 changes");
  const Change both = Of(1, {{"Label", "A", "B"}, {"Notes", "0", "1"}}, Origin::Restore);
  EXPECT_EQ(Title({both}), "Restored: 2 changes");
}

TEST(ChangeWords, RelaysAreOfOutputsAsInhibitsAre) {
  const Change relays = Of(3, {{"Relays", "0", "1"}});
  EXPECT_EQ(Title({relays}), "Relays of output 3");
  EXPECT_EQ(Title({relays, Of(4, {{"Inhibits", "0", "1"}})}), "Inhibits, relays of 2 outputs");
  EXPECT_EQ(Title({relays, Of(4, {{"Label", "0", "1"}})}), "Label, relays of 2 stations");
  EXPECT_EQ(ChangeRows(std::vector<Change>{relays}).front().where, QStringLiteral("Output 3"));
}

}  // namespace
}  // namespace views
