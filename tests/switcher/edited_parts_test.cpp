// SPDX-License-Identifier: MIT

#include "switcher/unsent/edited_parts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "switcher/unsent/digest.h"
#include "tests/support/small_database.h"

namespace switcher {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<TablePart> PartsOf(std::string_view field) {
  return EditedParts({.origin = stations::Origin::Operator,
                      .station = 5,
                      .fields = {{.field = std::string(field), .before = {}, .after = {}}}});
}

TEST(EditedParts, AreThoseThatTheFieldTravelsIn) {
  EXPECT_THAT(PartsOf("Label"), ElementsAre(TablePart{Table::OutputLabels, 5}));
  EXPECT_THAT(PartsOf("InLabel"), ElementsAre(TablePart{Table::InputLabels, 5}));
  EXPECT_THAT(PartsOf("Hidden"),
              ElementsAre(TablePart{Table::OutputLabels, 5}, TablePart{Table::InputLabels, 5}));
  EXPECT_THAT(PartsOf("Inhibits"), ElementsAre(TablePart{Table::Inhibits, 5}));
  EXPECT_THAT(PartsOf("Relays"), ElementsAre(TablePart{Table::Relays, 5}));
  for (const char* const field : {"B1 Type", "B17 First", "B32 Prog"}) {
    EXPECT_THAT(PartsOf(field), ElementsAre(TablePart{Table::Buttons, 5})) << field;
  }
  for (const char* const field : {"OptoType", "OptoChannel", "OptoFirst", "OptoStations"}) {
    EXPECT_THAT(PartsOf(field), ElementsAre(TablePart{Table::Optos, 5})) << field;
  }
  EXPECT_THAT(PartsOf("Butter"), IsEmpty());
}

// A new field is in a table, or it is put into this list.
TEST(EditedParts, OfEveryFieldButThoseThatNeverTravel) {
  const std::set<std::string> staysHere = {"StationNum", "Notes", "SysOutput", "SysInput"};
  for (const jet::FieldSpec& field : db::StationsSpec().fields) {
    EXPECT_EQ(PartsOf(field.name).empty(), staysHere.contains(field.name)) << field.name;
  }
}

// Stations 1 to 8, of which nothing is set.
class EditedMessages : public testing::Test {
 protected:
  EditedMessages() {
    for (int station = 1; station <= 8; ++station) database_.AddStation(station, {});
    model_.ApplyFixedValues();
    model_.ChannelCount = 8;
    model_.StationCount = 8;
    model_.LabelCount = 8;
    model_.OptoCount = 8;
  }

  std::map<TablePart, Digest> Digests() {
    std::map<TablePart, Digest> digests;
    for (const auto& [part, print] : LoadPrints(*database_.Files().Database(), model_)) {
      digests[part] = print.digest;
    }
    return digests;
  }

  // The messages that are others when the field of station 5 has a value.
  std::vector<TablePart> ChangedBy(const jet::FieldSpec& field) {
    const auto before = Digests();
    database_.Set(5, field.name,
                  field.type == jet::FieldType::Integer ? jet::Value(1) : jet::Value("11"));
    std::vector<TablePart> changed;
    for (const auto& [part, digest] : Digests()) {
      if (before.at(part) != digest) changed.push_back(part);
    }
    return changed;
  }

 private:
  test::SmallDatabase database_;
  model::SystemModel model_;
};

TEST_F(EditedMessages, AreThoseOfTheEditedParts) {
  for (const jet::FieldSpec& field : db::StationsSpec().fields) {
    if (field.name == "StationNum") continue;  // that is another record
    std::vector<TablePart> messages;
    for (const TablePart& part : PartsOf(field.name)) messages.push_back(MessageOf(part));
    EXPECT_EQ(ChangedBy(field), messages) << field.name;
  }
}

}  // namespace
}  // namespace switcher
