// SPDX-License-Identifier: MIT

#include "stations/snapshot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "tests/support/small_database.h"

namespace stations {
namespace {

std::string Only(int member) {
  std::string flags = test::kNoFlags;
  flags[static_cast<std::size_t>(member - 1)] = '1';
  return flags;
}

// Two stations, the second one the current.
class SnapshotTest : public testing::Test {
 protected:
  void Use(const jet::TableSpec& spec) {
    database_ = std::make_unique<test::SmallDatabase>(spec);
    database_->AddStation(1, {});
    database_->AddStation(2, {});
    for (const auto& [field, value] : test::SmallDatabase::Fields{{"Label", "Studio A"},
                                                                  {"InLabel", "Mic 1"},
                                                                  {"Relays", Only(9)},
                                                                  {"OptoType", 1},
                                                                  {"OptoChannel", 7},
                                                                  {"OptoStations", Only(3)},
                                                                  {"B1 Type", 0},
                                                                  {"B1 First", 2},
                                                                  {"B1 Prog", Only(2)},
                                                                  {"B2 Type", 255},
                                                                  {"B2 First", 2},
                                                                  {"B2 Prog", Only(2)}}) {
      if (std::ranges::count(spec.fields, field, &jet::FieldSpec::name) == 1) {
        database_->Set(2, field, value);
      }
    }
    database_->GoTo(2);
  }
  StationSnapshot Take() { return {database_->Files().Stations(), 2}; }

  std::unique_ptr<test::SmallDatabase> database_;
};

TEST_F(SnapshotTest, HasAllThatIsProgrammed) {
  Use(db::StationsSpec());
  const StationSnapshot station = Take();
  EXPECT_EQ(station.number.value.Int(), 2);
  EXPECT_EQ(station.label.value, "Studio A");
  EXPECT_EQ(station.inputLabel.value, "Mic 1");
  EXPECT_EQ(station.relays.value, Only(9));
  EXPECT_EQ(station.opto.value.type, 1);
  EXPECT_EQ(station.opto.value.channel, 7);
  EXPECT_EQ(station.opto.value.targets, Only(3));
  ASSERT_EQ(station.buttons.size(), 2u);
  EXPECT_EQ(station.buttons[1].type.value, 255);
  EXPECT_EQ(station.buttons[1].targets.value, Only(2));
  EXPECT_EQ(ButtonCaption(station.buttons[0], station.targets).value, "Studio A");
  for (const model::Status& status :
       {station.number.status, station.label.status, station.relays.status, station.opto.status,
        station.buttons[0].Outcome(), station.buttons[1].Outcome()}) {
    EXPECT_TRUE(status.ok());
  }
  EXPECT_EQ(database_->CurrentStation(), 2);
}

TEST_F(SnapshotTest, AFieldThatIsLackingSpoilsNoOther) {
  for (const char* const lacking :
       {"Label", "InLabel", "Relays", "OptoChannel", "B1 Prog", "B2 Type"}) {
    SCOPED_TRACE(lacking);
    const auto isLacking = [&](const char* field) { return std::string_view(field) == lacking; };
    Use(test::StationsWithout(lacking));
    const StationSnapshot station = Take();
    EXPECT_EQ(station.label.status.ok(), !isLacking("Label"));
    EXPECT_EQ(station.inputLabel.status.ok(), !isLacking("InLabel"));
    EXPECT_EQ(station.relays.status.ok(), !isLacking("Relays"));
    EXPECT_EQ(station.opto.status.ok(), !isLacking("OptoChannel"));
    EXPECT_EQ(station.buttons[0].targets.status.ok(), !isLacking("B1 Prog"));
    EXPECT_EQ(station.buttons[1].type.status.ok(), !isLacking("B2 Type"));
    EXPECT_EQ(station.targets.Captions(0, 2).status.ok(), !isLacking("Label"));
    EXPECT_EQ(station.opto.value.type, 1);
    EXPECT_EQ(station.buttons[0].first.value, 2);
    EXPECT_EQ(station.number.value.Int(), 2);
  }
}

TEST_F(SnapshotTest, WithoutADatabaseNothingIsRead) {
  const StationSnapshot station(nullptr, 2);
  EXPECT_FALSE(station.number.status.ok());
  EXPECT_FALSE(station.label.status.ok());
  EXPECT_FALSE(station.relays.status.ok());
  EXPECT_FALSE(station.opto.status.ok());
  EXPECT_FALSE(station.buttons[1].type.status.ok());
  for (const int type : {0, 3}) {
    EXPECT_FALSE(station.targets.Captions(type, 2).status.ok());
    EXPECT_TRUE(station.targets.Captions(type, 2).value.empty());
    EXPECT_TRUE(OptoChannelCaptions(type, station.targets).value.empty());
  }
  EXPECT_TRUE(station.number.value.IsNull());
  EXPECT_EQ(station.buttons[1].type.value, kNoType);
}

}  // namespace
}  // namespace stations
