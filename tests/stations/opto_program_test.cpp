// SPDX-License-Identifier: MIT

#include "stations/opto_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/small_database.h"

namespace stations {
namespace {

using test::kNoFlags;
using testing::ElementsAre;

std::string Targets(std::initializer_list<int> selected) {
  std::string targets = kNoFlags;
  for (const int target : selected) targets[static_cast<std::size_t>(target - 1)] = '1';
  return targets;
}

// Three stations; the opto of the second one is edited.
class OptoProgramTest : public testing::Test {
 protected:
  OptoProgramTest() {
    database_.AddStation(1, {{"Label", "Studio A"}, {"InLabel", "Mic 1"}});
    database_.AddStation(2, {{"Label", jet::Value()},
                             {"InLabel", "Mic 2"},
                             {"OptoType", 0},
                             {"OptoChannel", 7},
                             {"OptoFirst", 3},
                             {"OptoStations", Targets({3, 64})}});
    database_.AddStation(3, {{"Label", "Régie"}, {"InLabel", jet::Value()}});
    database_.GoTo(2);
  }

  jet::RecordSet& Stations() { return *database_.Files().Stations(); }

  OptoProgram Read() {
    OptoProgram opto;
    status_ = ReadOpto(Stations(), &opto);
    return opto;
  }

  OptoEdit SetTarget(int target, bool selected) {
    OptoEdit edit = OptoEdit::None;
    status_ = StoreOptoTarget(Stations(), target, selected, author_, &edit);
    return edit;
  }

  // "type|channel|first|targets" of an opto.
  std::string Stored(int opto = 2) {
    return database_.Field(opto, "OptoType") + "|" + database_.Field(opto, "OptoChannel") + "|" +
           database_.Field(opto, "OptoFirst") + "|" + database_.Field(opto, "OptoStations");
  }

  static std::vector<std::string> Captions(const Reading<std::vector<std::string>>& read) {
    EXPECT_TRUE(read.status.ok());
    return read.value;
  }

  test::SmallDatabase database_;
  Changes changes_;
  const Author author_{changes_, Origin::Operator};
  model::Status status_;
};

TEST_F(OptoProgramTest, IsReadFromTheCurrentRecord) {
  const OptoProgram opto = Read();
  EXPECT_TRUE(status_.ok());
  EXPECT_EQ(opto.stationNum, 2);
  EXPECT_EQ(opto.type, 0);
  EXPECT_EQ(opto.channel, 7);
  EXPECT_EQ(opto.targets, Targets({3, 64}));
}

TEST_F(OptoProgramTest, OfNullFieldsIsAsItIsSent) {
  database_.GoTo(3);
  const OptoProgram opto = Read();
  EXPECT_TRUE(status_.ok());
  EXPECT_EQ(opto.stationNum, 3);
  EXPECT_EQ(opto.type, 0);
  EXPECT_EQ(opto.channel, 0);
  EXPECT_EQ(opto.targets, "");
}

TEST_F(OptoProgramTest, TargetsAreReadOnePerCharacter) {
  database_.Set(2, "OptoStations", "é1x1");
  EXPECT_EQ(Read().targets, "0101");
}

TEST_F(OptoProgramTest, WithoutARecordIsAFailure) {
  (void)Stations().Seek(99);
  const OptoProgram opto = Read();
  EXPECT_EQ(status_.Number(), 3021);
  EXPECT_EQ(opto.type, kNoType);
  EXPECT_EQ(opto.channel, 0);
  EXPECT_EQ(opto.targets, "");
}

TEST(OptoProgram, WithoutAFieldHasTheOthers) {
  Changes changes;
  const Author author{changes, Origin::Operator};
  test::SmallDatabase database(test::StationsWithout("OptoType"));
  database.AddStation(5, {{"OptoChannel", 9}, {"OptoStations", Targets({1})}});
  database.GoTo(5);
  OptoProgram opto;
  EXPECT_EQ(ReadOpto(*database.Files().Stations(), &opto).Number(), 3265);
  EXPECT_EQ(opto.stationNum, 5);
  EXPECT_EQ(opto.type, kNoType);
  EXPECT_EQ(opto.channel, 9);
  EXPECT_EQ(opto.targets, Targets({1}));

  OptoEdit edit = OptoEdit::Stored;
  EXPECT_EQ(StoreOptoTarget(*database.Files().Stations(), 1, false, author, &edit).Number(), 3265);
  EXPECT_EQ(edit, OptoEdit::None);
  EXPECT_EQ(database.Field(5, "OptoStations"), Targets({1})) << "all or nothing";
  EXPECT_FALSE(database.Files().Stations()->IsChanging());
}

TEST(OptoProgram, ThatDoesNotFitItsFieldIsNotStored) {
  Changes changes;
  const Author author{changes, Origin::Operator};
  jet::TableSpec spec = test::StationsWithout("OptoStations");
  spec.fields.push_back({.name = "OptoStations", .type = jet::FieldType::Text, .size = 10});
  test::SmallDatabase database(spec);
  database.AddStation(1, {{"OptoType", 1}, {"OptoFirst", 2}, {"OptoStations", "01"}});
  database.GoTo(1);
  OptoEdit edit = OptoEdit::Stored;
  EXPECT_EQ(StoreOptoTarget(*database.Files().Stations(), 1, true, author, &edit).Number(), 3163);
  EXPECT_EQ(edit, OptoEdit::None);
  EXPECT_EQ(database.Field(1, "OptoStations"), "01");
  EXPECT_EQ(database.Field(1, "OptoFirst"), "2");
  EXPECT_FALSE(database.Files().Stations()->IsChanging());
}

TEST(OptoCaption, AtOpeningKnowsNoInactiveOptoOutsideTheTable) {
  for (const int type : {0, 255, 4, 77, -1, 256}) {
    EXPECT_EQ(OptoCaptionAtOpening(type), "Station(s) To Be Called When OPTO Is Activated") << type;
  }
  for (const int type : {1, 2}) {
    EXPECT_EQ(OptoCaptionAtOpening(type), "Source To Be Monitored When OPTO Is Activated") << type;
  }
  EXPECT_EQ(OptoCaptionAtOpening(3), "External Channel To Be Called When OPTO Is Activated");
  EXPECT_EQ(OptoCaptionAtOpening(254), "OPTO Specified Inactive");
}

TEST_F(OptoProgramTest, CaptionsOfTargetsAndChannelsAreCrossed) {
  std::vector<std::string> captions;
  const auto head = [&captions] {
    EXPECT_EQ(captions.size(), 64u);
    captions.resize(4);
    return captions;
  };
  for (const int type : {0, 255}) {
    captions = Captions(TargetLabels(&Stations()).Captions(type, kOptoTargets));
    EXPECT_THAT(head(), ElementsAre("Studio A", "Sta. 002", "Régie", "Sta. 004")) << type;
    captions = Captions(OptoChannelCaptions(type, TargetLabels(&Stations())));
    EXPECT_THAT(head(), ElementsAre("Mic 1", "Mic 2", "Sta. 003", "Sta. 004")) << type;
  }
  for (const int type : {1, 2}) {
    captions = Captions(TargetLabels(&Stations()).Captions(type, kOptoTargets));
    EXPECT_THAT(head(), ElementsAre("Mic 1", "Mic 2", "Sta. 003", "Sta. 004")) << type;
    captions = Captions(OptoChannelCaptions(type, TargetLabels(&Stations())));
    EXPECT_THAT(head(), ElementsAre("Studio A", "Sta. 002", "Régie", "Sta. 004")) << type;
  }
}

TEST_F(OptoProgramTest, CaptionsOfTheOthersAreNumbers) {
  std::vector<std::string> captions;
  for (const int type : {3, 254, 77, kNoType}) {
    captions = Captions(TargetLabels(&Stations()).Captions(type, kOptoTargets));
    ASSERT_EQ(captions.size(), 64u);
    EXPECT_EQ(captions.front(), "Chan 01");
    EXPECT_EQ(captions.back(), "Chan 64");
    captions = Captions(OptoChannelCaptions(type, TargetLabels(&Stations())));
    ASSERT_EQ(captions.size(), 64u);
    EXPECT_EQ(captions[0], "Channel 01");
    EXPECT_EQ(captions[9], "Channel 10");
    EXPECT_EQ(captions.back(), "Channel 64");
  }
}

TEST(OptoCaptions, OfAFieldThatIsNotThereAreAFailure) {
  test::SmallDatabase database(test::StationsWithout("InLabel"));
  database.AddStation(1, {{"Label", "Studio A"}});
  const TargetLabels labels(database.Files().Stations());
  for (const auto& captions : {labels.Captions(1, kOptoTargets), OptoChannelCaptions(0, labels)}) {
    EXPECT_EQ(captions.status.Number(), 3265);
    EXPECT_EQ(captions.value.size(), 64u);
  }
}

TEST_F(OptoProgramTest, ATargetIsStoredWithTheLowest) {
  EXPECT_EQ(SetTarget(2, true), OptoEdit::Stored);
  EXPECT_EQ(Stored(), "0|7|2|" + Targets({2, 3, 64}));
  EXPECT_EQ(SetTarget(2, false), OptoEdit::Stored);
  EXPECT_EQ(SetTarget(3, false), OptoEdit::Stored);
  EXPECT_EQ(Stored(), "0|7|64|" + Targets({64}));
  EXPECT_EQ(Stored(3), "null|null|null|null") << "the neighbour";
  EXPECT_EQ(database_.CurrentStation(), 2);
}

TEST_F(OptoProgramTest, WithoutItsLastTargetIsInactive) {
  EXPECT_EQ(SetTarget(64, false), OptoEdit::Stored);
  EXPECT_EQ(SetTarget(3, false), OptoEdit::MadeInactive);
  EXPECT_EQ(Stored(), "254|7|1|" + kNoFlags);
  EXPECT_EQ(SetTarget(6, true), OptoEdit::Stored);
  EXPECT_EQ(Stored(), "254|7|6|" + Targets({6})) << "it gets no operation of its own accord";
  EXPECT_EQ(SetTarget(6, false), OptoEdit::Stored) << "it was inactive before";
  EXPECT_EQ(Stored(), "254|7|1|" + kNoFlags);
}

TEST_F(OptoProgramTest, OfATypeOutsideTheTableKeepsItWhileItHasTargets) {
  database_.Set(2, "OptoType", 77);
  EXPECT_EQ(SetTarget(1, true), OptoEdit::Stored);
  EXPECT_EQ(Stored(), "77|7|1|" + Targets({1, 3, 64}));
  database_.Set(2, "OptoStations", Targets({9}));
  EXPECT_EQ(SetTarget(9, false), OptoEdit::MadeInactive);
  EXPECT_EQ(Stored(), "254|7|1|" + kNoFlags);
}

TEST_F(OptoProgramTest, TargetsAreStoredWellFormed) {
  const std::string tail = "1tail";
  const struct {
    jet::Value before;
    std::string after;
  } cases[] = {{jet::Value(), Targets({5})},
               {"", Targets({5})},
               {"01", Targets({2, 5})},
               {"xé1 2", Targets({3, 5})},
               {Targets({1, 64}) + tail, Targets({1, 5, 64}) + tail}};
  for (const auto& one : cases) {
    database_.Set(2, "OptoStations", one.before);
    EXPECT_EQ(SetTarget(5, true), OptoEdit::Stored);
    EXPECT_EQ(database_.Field(2, "OptoStations"), one.after);
  }
  database_.Set(2, "OptoStations", Targets({5}) + tail);
  EXPECT_EQ(SetTarget(5, false), OptoEdit::MadeInactive) << "what stands behind is no target";
  EXPECT_EQ(Stored(), "254|7|1|" + kNoFlags + tail);
}

TEST_F(OptoProgramTest, WhatIsStoredAlreadyIsNotWritten) {
  EXPECT_EQ(SetTarget(3, true), OptoEdit::None);
  OptoEdit edit = OptoEdit::Stored;
  EXPECT_TRUE(StoreOptoType(Stations(), 0, author_, &edit).ok());
  EXPECT_EQ(edit, OptoEdit::None);
  edit = OptoEdit::Stored;
  EXPECT_TRUE(StoreOptoChannel(Stations(), 7, author_, &edit).ok());
  EXPECT_EQ(edit, OptoEdit::None);
}

TEST_F(OptoProgramTest, TypeAndChannelAreStored) {
  OptoEdit edit = OptoEdit::None;
  EXPECT_TRUE(StoreOptoType(Stations(), 255, author_, &edit).ok());
  EXPECT_EQ(edit, OptoEdit::Stored);
  edit = OptoEdit::None;
  EXPECT_TRUE(StoreOptoChannel(Stations(), 64, author_, &edit).ok());
  EXPECT_EQ(edit, OptoEdit::Stored);
  EXPECT_EQ(Stored(), "255|64|3|" + Targets({3, 64}));
  database_.GoTo(3);
  EXPECT_TRUE(StoreOptoType(Stations(), 0, author_, &edit).ok());
  EXPECT_EQ(edit, OptoEdit::Stored) << "null is no operation that was chosen";
  EXPECT_EQ(Stored(3), "0|null|null|null");
}

TEST_F(OptoProgramTest, NothingIsStoredWithoutARecord) {
  (void)Stations().Seek(99);
  EXPECT_EQ(SetTarget(1, true), OptoEdit::None);
  EXPECT_EQ(status_.Number(), 3021);
  OptoEdit edit = OptoEdit::Stored;
  EXPECT_EQ(StoreOptoType(Stations(), 1, author_, &edit).Number(), 3021);
  EXPECT_EQ(edit, OptoEdit::None);
  EXPECT_EQ(StoreOptoChannel(Stations(), 1, author_, &edit).Number(), 3021);
}

}  // namespace
}  // namespace stations
