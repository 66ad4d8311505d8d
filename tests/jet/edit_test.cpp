// SPDX-License-Identifier: MIT
//
// Adding, editing and deleting records, and each way in which that is refused.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/jet/record_fixture.h"

namespace {

using jet::Value;
using test::Fails;
using test::Int;
using test::Ints;
using test::IsOk;
using test::Read;
using test::Text;

class EditTest : public test::RecordTest {
 protected:
  // Nothing in the file has changed since the last call.
  void ExpectUnchangedFile() {
    EXPECT_EQ(disk_.content, before_);
    EXPECT_EQ(test::Problems(*database_), "");
  }
  void RememberFile() { before_ = disk_.content; }

  std::vector<std::uint8_t> before_;
};

TEST_F(EditTest, AddsARecord) {
  ASSERT_THAT(records_->AddNew(), IsOk());
  EXPECT_TRUE(records_->IsChanging());
  EXPECT_TRUE(Read(*records_, "Num").IsNull());
  ASSERT_THAT(records_->Set("Num", 7), IsOk());
  ASSERT_THAT(records_->Set(1, "seven"), IsOk());
  EXPECT_EQ(Int(*records_, "Num"), 7) << "what was set shows before the update";
  EXPECT_EQ(OpenT()->RecordCount(), 0);
  ASSERT_THAT(records_->Update(), IsOk());
  EXPECT_FALSE(records_->IsChanging());
  EXPECT_EQ(Int(*records_, "Num"), 7) << "it is the current one";
  EXPECT_EQ(Text(*records_, "NAME"), "seven");
  EXPECT_TRUE(Read(*records_, "Free").IsNull());
  EXPECT_TRUE(Read(*records_, "Note").IsNull());
  EXPECT_EQ(records_->RecordCount(), 1);
  EXPECT_EQ(test::Problems(*database_), "");
}

TEST_F(EditTest, EditsOnlyWhatIsSet) {
  Add(1, "one");
  ASSERT_THAT(records_->Edit(), IsOk());
  ASSERT_THAT(records_->Set("Free", "f"), IsOk());
  ASSERT_THAT(records_->Set("Free", ""), IsOk()) << "the last value counts";
  ASSERT_THAT(records_->Update(), IsOk());
  EXPECT_EQ(Int(*records_, "Num"), 1);
  EXPECT_EQ(Text(*records_, "Name"), "one");
  EXPECT_EQ(Read(*records_, "Free"), Value(""));
  ASSERT_THAT(records_->Edit(), IsOk());
  ASSERT_THAT(records_->Set("Free", Value()), IsOk());
  ASSERT_THAT(records_->Set("Name", Value()), IsOk());
  ASSERT_THAT(records_->Update(), IsOk());
  EXPECT_TRUE(Read(*records_, "Free").IsNull());
  EXPECT_TRUE(Read(*records_, "Name").IsNull());
}

TEST_F(EditTest, SameValuesLeaveTheFileAlone) {
  Add(1, "one");
  RememberFile();
  const int writes = disk_.writes;
  ASSERT_THAT(records_->Edit(), IsOk());
  ASSERT_THAT(records_->Set("Num", 1), IsOk());
  ASSERT_THAT(records_->Set("Name", "one"), IsOk());
  ASSERT_THAT(records_->Set("Note", Value()), IsOk());
  ASSERT_THAT(records_->Update(), IsOk());
  EXPECT_EQ(disk_.writes, writes);
  ExpectUnchangedFile();
}

TEST_F(EditTest, CancelledChangesAreGone) {
  Add(1, "one");
  RememberFile();
  ASSERT_THAT(records_->Edit(), IsOk());
  ASSERT_THAT(records_->Set("Name", "two"), IsOk());
  records_->CancelUpdate();
  EXPECT_EQ(Text(*records_, "Name"), "one");
  ASSERT_THAT(records_->AddNew(), IsOk());
  ASSERT_THAT(records_->Set("Num", 2), IsOk());
  records_->CancelUpdate();
  EXPECT_EQ(Int(*records_, "Num"), 1) << "the current record is as before";
  EXPECT_THAT(records_->Update(), Fails(3020, "AddNew or Edit must come before Update"));
  ExpectUnchangedFile();
}

TEST_F(EditTest, BeginningAgainDropsWhatWasBegun) {
  Add(1, "one");
  ASSERT_THAT(records_->Edit(), IsOk());
  ASSERT_THAT(records_->Set("Name", "two"), IsOk());
  ASSERT_THAT(records_->Edit(), IsOk());
  ASSERT_THAT(records_->Update(), IsOk());
  EXPECT_EQ(Text(*records_, "Name"), "one");
}

TEST_F(EditTest, NeedsABeginning) {
  Add(1, "one");
  EXPECT_THAT(records_->Set("Num", 1), Fails(3020, "AddNew or Edit must come before Set"));
  EXPECT_THAT(records_->Update(), Fails(3020, "AddNew or Edit must come before Update"));
}

TEST_F(EditTest, NeedsARecord) {
  EXPECT_THAT(records_->Edit(), Fails(3021, "There is no current record"));
  EXPECT_THAT(records_->Delete(), Fails(3021, "There is no current record"));
  Value value;
  EXPECT_THAT(records_->Get("Num", &value), Fails(3021, "There is no current record"));
  EXPECT_FALSE(records_->IsChanging());
}

TEST_F(EditTest, NeedsAField) {
  Add(1, "one");
  Value value;
  EXPECT_THAT(records_->Get("None", &value), Fails(3265, "Table \"T\" has no field \"None\""));
  EXPECT_THAT(records_->Get(4, &value), Fails(3265, "Table \"T\" has no field \"4\""));
  EXPECT_THAT(records_->Get(-1, &value), Fails(3265, "Table \"T\" has no field \"-1\""));
  ASSERT_THAT(records_->Edit(), IsOk());
  EXPECT_THAT(records_->Set("None", 1), Fails(3265, "Table \"T\" has no field \"None\""));
  EXPECT_THAT(records_->Set(99, 1), Fails(3265, "Table \"T\" has no field \"99\""));
}

TEST_F(EditTest, RefusesValuesThatDoNotFit) {
  Add(1, "one");
  ASSERT_THAT(records_->Edit(), IsOk());
  ASSERT_THAT(records_->Set("Name", "kept"), IsOk());
  EXPECT_THAT(records_->Set("Name", "123456789"),
              Fails(3163, "Field \"Name\" takes at most 8 characters"));
  EXPECT_THAT(records_->Set("Name", ""),
              Fails(3315, "Field \"Name\" cannot be a text without characters"));
  EXPECT_EQ(records_->Set("Name", 5).Number(), 3421);
  EXPECT_EQ(records_->Set("Num", 32768).Number(), 3421);
  EXPECT_EQ(records_->Set("Num", -32769).Number(), 3421);
  EXPECT_EQ(records_->Set("Num", 1.5).Number(), 3421);
  EXPECT_EQ(records_->Set("Num", "1").Number(), 3421);
  EXPECT_EQ(records_->Set("Name", "\xFF\xFE").Number(), 3421) << "no UTF-8";
  EXPECT_THAT(records_->Set("Num", 32767), IsOk());
  EXPECT_THAT(records_->Set("Num", -32768), IsOk());
  EXPECT_EQ(Text(*records_, "Name"), "kept") << "a refused value changes nothing";
  ASSERT_THAT(records_->Update(), IsOk());
  EXPECT_EQ(Text(*records_, "Name"), "kept");
  EXPECT_EQ(Int(*records_, "Num"), -32768);
}

TEST_F(EditTest, CountsCharactersNotBytes) {
  Add(1, "ÄÖÜäöüß€");
  EXPECT_EQ(Text(*records_, "Name"), "ÄÖÜäöüß€");
  ASSERT_THAT(records_->Edit(), IsOk());
  EXPECT_THAT(records_->Set("Free", "😀😀😀😀"), IsOk()) << "two units each";
  EXPECT_EQ(records_->Set("Free", "😀😀😀😀x").Number(), 3163);
  ASSERT_THAT(records_->Update(), IsOk());
  EXPECT_EQ(Text(*records_, "Free"), "😀😀😀😀");
}

TEST_F(EditTest, ReadsACharacterThatIsNotAsciiWhereverItStands) {
  Add(1, "one");
  for (std::size_t at = 0; at <= 40; ++at) {
    // Its lower byte alone would be a "1"; its neighbours are of ASCII.
    const std::string text = std::string(at, '0') + "\u0131" + std::string(40 - at, '1');
    ASSERT_THAT(records_->Edit(), IsOk());
    ASSERT_THAT(records_->Set("Note", text), IsOk());
    ASSERT_THAT(records_->Update(), IsOk());
    EXPECT_EQ(Text(*records_, "Note"), text) << at;
  }
}

TEST_F(EditTest, RefusesADuplicateKey) {
  Add(1, "one");
  Add(2, "two");
  RememberFile();
  ASSERT_THAT(records_->AddNew(), IsOk());
  ASSERT_THAT(records_->Set("Num", 1), IsOk());
  ASSERT_THAT(records_->Set("Note", std::string(5000, 'x')), IsOk());
  EXPECT_THAT(records_->Update(),
              Fails(3022, "Another record has the same value in index \"Num\""));
  ExpectUnchangedFile();
  EXPECT_TRUE(records_->IsChanging()) << "it can be corrected";
  ASSERT_THAT(records_->Set("Num", 3), IsOk());
  ASSERT_THAT(records_->Update(), IsOk());
  EXPECT_EQ(Int(*records_, "Num"), 3);
  GoTo(2);
  RememberFile();
  ASSERT_THAT(records_->Edit(), IsOk());
  ASSERT_THAT(records_->Set("Num", 1), IsOk());
  EXPECT_THAT(records_->Update(),
              Fails(3022, "Another record has the same value in index \"Num\""));
  ExpectUnchangedFile();
  EXPECT_EQ(records_->RecordCount(), 3);
}

TEST_F(EditTest, RefusesANullKeyWhereOneIsNeeded) {
  RememberFile();
  ASSERT_THAT(records_->AddNew(), IsOk());
  ASSERT_THAT(records_->Set("Name", "x"), IsOk());
  EXPECT_THAT(records_->Update(), Fails(3058, "Index \"Num\" needs a value in each of its fields"));
  ExpectUnchangedFile();
}

TEST_F(EditTest, RefusesACharacterThatCannotBeIndexed) {
  RememberFile();
  ASSERT_THAT(records_->AddNew(), IsOk());
  ASSERT_THAT(records_->Set("Num", 1), IsOk());
  ASSERT_THAT(records_->Set("Free", "Ж"), IsOk());
  ASSERT_THAT(records_->Set("Name", "Ж"), IsOk());
  EXPECT_THAT(records_->Update(),
              Fails(3251, "Field \"Name\" has a character that cannot be indexed"));
  ExpectUnchangedFile();
  ASSERT_THAT(records_->Set("Name", "x"), IsOk());
  ASSERT_THAT(records_->Update(), IsOk());
  EXPECT_EQ(Text(*records_, "Free"), "Ж");
}

TEST_F(EditTest, RefusesTheUpdateOfADeletedRecord) {
  Add(1, "one");
  const auto other = OpenT();
  ASSERT_THAT(records_->Edit(), IsOk());
  ASSERT_THAT(records_->Set("Name", "two"), IsOk());
  ASSERT_THAT(other->Delete(), IsOk());
  EXPECT_THAT(records_->Update(), Fails(3021, "The record has been deleted"));
  EXPECT_EQ(other->RecordCount(), 0);
}

TEST_F(EditTest, RefusesARecordThatIsTooLarge) {
  jet::TableSpec wide = {"Wide", {}};
  for (int i = 0; i < 10; ++i) {
    wide.fields.push_back({.name = "F" + std::to_string(i),
                           .type = jet::FieldType::Text,
                           .size = 255,
                           .compressed = false});
  }
  ASSERT_THAT(database_->CreateTable(wide), IsOk());
  const auto records = test::OpenTable(*database_, "Wide");
  RememberFile();
  ASSERT_THAT(records->AddNew(), IsOk());
  for (int i = 0; i < 10; ++i) ASSERT_THAT(records->Set(i, std::string(255, 'w')), IsOk());
  EXPECT_THAT(records->Update(), Fails(3047, "The record would be larger than 4060 bytes"));
  ExpectUnchangedFile();
  for (int i = 7; i < 10; ++i) ASSERT_THAT(records->Set(i, Value()), IsOk());
  ASSERT_THAT(records->Update(), IsOk());
  // 7 x 510 + 462 bytes of text and 28 of the record itself are 4060.
  ASSERT_THAT(records->Edit(), IsOk());
  ASSERT_THAT(records->Set(7, std::string(232, 'w')), IsOk());
  EXPECT_THAT(records->Update(), Fails(3047, "The record would be larger than 4060 bytes"));
  ASSERT_THAT(records->Set(7, std::string(231, 'w')), IsOk());
  EXPECT_THAT(records->Update(), IsOk());
  EXPECT_EQ(test::Problems(*database_), "");
}

TEST_F(EditTest, RefusesWritesToAFileOpenForReading) {
  Add(1, "one");
  RememberFile();
  const auto database = test::Open(disk_, jet::Access::ReadOnly);
  const auto records = test::OpenTable(*database, "T");
  EXPECT_THAT(records->AddNew(), Fails(3027, "The database is open for reading only"));
  EXPECT_THAT(records->Edit(), Fails(3027, "The database is open for reading only"));
  EXPECT_THAT(records->Delete(), Fails(3027, "The database is open for reading only"));
  EXPECT_THAT(database->CreateTable({"U", {{.name = "N"}}}),
              Fails(3027, "The database is open for reading only"));
  EXPECT_THAT(database->CreateIndex("T", {.name = "I", .fields = {"Free"}}),
              Fails(3027, "The database is open for reading only"));
  EXPECT_EQ(Text(*records, "Name"), "one");
  ExpectUnchangedFile();
}

TEST_F(EditTest, RefusesToChangeTheCatalogue) {
  const auto records = test::OpenTable(*database_, "MSysObjects");
  EXPECT_THAT(records->AddNew(), Fails(3027, "The tables of the system cannot be changed"));
  EXPECT_THAT(records->Edit(), Fails(3027, "The tables of the system cannot be changed"));
  EXPECT_THAT(records->Delete(), Fails(3027, "The tables of the system cannot be changed"));
}

TEST_F(EditTest, RefusesATableThatIsNotThere) {
  std::unique_ptr<jet::RecordSet> records;
  EXPECT_THAT(database_->OpenTable("U", &records), Fails(3078, "There is no table \"U\""));
  EXPECT_THAT(database_->OpenTable("t", &records), IsOk()) << "names in either case";
}

TEST_F(EditTest, DescribesItsFields) {
  ASSERT_EQ(records_->FieldCount(), 4);
  EXPECT_EQ(records_->FieldNames(), (std::vector<std::string>{"Num", "Name", "Free", "Note"}));
  EXPECT_EQ(records_->FieldIndex("free"), 2);
  EXPECT_EQ(records_->FieldIndex("None"), -1);
  EXPECT_EQ(records_->Field(0).type, jet::FieldType::Integer);
  EXPECT_EQ(records_->Field(0).size, 2);
  EXPECT_EQ(records_->Field(1).type, jet::FieldType::Text);
  EXPECT_EQ(records_->Field(1).size, 8);
  EXPECT_FALSE(records_->Field(1).allowZeroLength);
  EXPECT_TRUE(records_->Field(2).allowZeroLength);
  EXPECT_EQ(records_->Field(3).type, jet::FieldType::Memo);
  EXPECT_EQ(records_->Field(3).size, 0);
  EXPECT_FALSE(records_->Field(3).required);
}

TEST_F(EditTest, DeletedRoomIsUsedAgain) {
  for (int i = 0; i < 300; ++i) Add(i, "record");
  const std::uint32_t pages = test::PageCount(*database_);
  for (int round = 0; round < 5; ++round) {
    while (records_->RecordCount() > 0) {
      ASSERT_THAT(records_->MoveFirst(), IsOk());
      ASSERT_THAT(records_->Delete(), IsOk());
    }
    for (int i = 0; i < 300; ++i) Add(i, "record");
  }
  EXPECT_EQ(test::PageCount(*database_), pages);
  EXPECT_EQ(test::Problems(*database_), "");
}

TEST_F(EditTest, AGrowingRecordMovesAndKeepsItsPlace) {
  for (int i = 0; i < 200; ++i) Add(i, "r");
  // Short memos stand in the record: 64 bytes more for each.
  for (int i = 0; i < 200; ++i) {
    GoTo(i);
    ASSERT_THAT(records_->Edit(), IsOk());
    ASSERT_THAT(records_->Set("Note", std::string(32, static_cast<char>('a' + i % 26))), IsOk());
    ASSERT_THAT(records_->Update(), IsOk());
  }
  EXPECT_EQ(test::Problems(*database_), "");
  const auto reopened = test::Open(disk_);
  const auto records = test::OpenTable(*reopened, "T");
  int i = 0;
  for (; !records->Eof(); ++i) {
    EXPECT_EQ(Int(*records, "Num"), i) << "storage order is that of the home places";
    EXPECT_EQ(Text(*records, "Note"), std::string(32, static_cast<char>('a' + i % 26)));
    ASSERT_THAT(records->MoveNext(), IsOk());
  }
  EXPECT_EQ(i, 200);
}

}  // namespace
