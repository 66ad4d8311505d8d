// SPDX-License-Identifier: MIT
//
// Memos from nothing to many pages, in both versions of the format.

#include <gtest/gtest.h>

#include <string>

#include "tests/jet/record_fixture.h"

namespace {

using jet::Value;
using test::IsOk;
using test::Read;
using test::Text;

// A text whose every part can be told from the others.
std::string LongText(std::size_t size) {
  std::string text;
  while (text.size() < size) text += std::to_string(text.size()) + ";";
  text.resize(size);
  return text;
}

void SetNote(jet::RecordSet& records, const char* field, const Value& note) {
  ASSERT_THAT(records.Edit(), IsOk());
  ASSERT_THAT(records.Set(field, note), IsOk());
  ASSERT_THAT(records.Update(), IsOk());
}

constexpr std::size_t kSizes[] = {0,    1,    31,   32,   33,   63,   64,   65,    1000,
                                  2031, 2033, 2038, 2039, 4076, 4096, 8144, 10000, 100000};

class LongValueTest : public test::RecordTest {
 protected:
  std::string Reopened(int num) {
    const auto database = test::Open(disk_, jet::Access::ReadOnly);
    EXPECT_EQ(test::Problems(*database), "");
    const auto records = test::OpenTable(*database, "T");
    EXPECT_THAT(records->FindFirst("Num", num), IsOk());
    return Text(*records, "Note");
  }
};

TEST_F(LongValueTest, OfEverySizeIsReadBack) {
  int num = 0;
  for (const std::size_t size : kSizes) {
    SCOPED_TRACE(size);
    Add(++num, "x");
    SetNote(*records_, "Note", LongText(size));
    EXPECT_EQ(Read(*records_, "Note"), Value(LongText(size)));
    EXPECT_EQ(Reopened(num), LongText(size));
  }
}

TEST_F(LongValueTest, OfEverySizeAfterEveryOther) {
  Add(1, "x");
  for (const std::size_t first : kSizes) {
    for (const std::size_t second : kSizes) {
      SetNote(*records_, "Note", LongText(first));
      SetNote(*records_, "Note", LongText(second) + "!");
      ASSERT_EQ(Text(*records_, "Note"), LongText(second) + "!") << first << ", " << second;
    }
  }
  EXPECT_EQ(test::Problems(*database_), "");
}

TEST_F(LongValueTest, EmptyIsNotNull) {
  Add(1, "x");
  EXPECT_TRUE(Read(*records_, "Note").IsNull());
  SetNote(*records_, "Note", "");
  EXPECT_EQ(Read(*records_, "Note"), Value(""));
  SetNote(*records_, "Note", LongText(5000));
  SetNote(*records_, "Note", Value());
  EXPECT_TRUE(Read(*records_, "Note").IsNull());
}

TEST_F(LongValueTest, GivesItsPagesBack) {
  Add(1, "x");
  SetNote(*records_, "Note", LongText(100000));
  const std::uint32_t pages = test::PageCount(*database_);
  for (int i = 0; i < 20; ++i) {
    SetNote(*records_, "Note", i % 2 == 0 ? Value() : Value(LongText(90000)));
  }
  ASSERT_THAT(records_->Delete(), IsOk());
  Add(2, "y");
  SetNote(*records_, "Note", LongText(100000));
  EXPECT_LE(test::PageCount(*database_), pages + 24) << "old and new stand side by side once";
  EXPECT_EQ(test::Problems(*database_), "");
}

TEST_F(LongValueTest, KeepsEveryCharacter) {
  Add(1, "x");
  for (const std::string& text : {std::string("äöü€"), std::string("日本語 und 😀"),
                                  std::string("\xEF\xBB\xBF"
                                              "feff"),
                                  std::string("a\0b", 3), std::string(300, '\x01') + "Ж"}) {
    SetNote(*records_, "Note", text);
    const std::string expected = text.substr(0, 3) == "\xEF\xBB\xBF" ? "feff" : text;
    EXPECT_EQ(Text(*records_, "Note"), expected);
  }
}

TEST_F(LongValueTest, StandsInTheRecordUpTo64Bytes) {
  // Plain text: two bytes a character.
  Add(1, "x");
  const std::uint32_t before = test::PageCount(*database_);
  SetNote(*records_, "Note", LongText(32));
  EXPECT_EQ(test::PageCount(*database_), before);
  SetNote(*records_, "Note", LongText(33));
  EXPECT_EQ(test::PageCount(*database_), before + 1);
}

// The same in the Jet 3 sample, whose pages are half as long.
TEST(LongValueJet3, OfEverySizeIsReadBack) {
  test::MemoryDisk disk(test::SampleBytes("tesk_jet3"));
  const auto database = test::Open(disk);
  const auto stations = test::OpenTable(*database, "Stations");
  for (const std::size_t size : kSizes) {
    SCOPED_TRACE(size);
    SetNote(*stations, "B1 Prog", LongText(size));
    EXPECT_EQ(Text(*stations, "B1 Prog"), LongText(size));
    const auto again = test::Open(disk, jet::Access::ReadOnly);
    const auto records = test::OpenTable(*again, "Stations");
    ASSERT_THAT(records->FindFirst("StationNum", test::Int(*stations, "StationNum")), IsOk());
    EXPECT_EQ(Text(*records, "B1 Prog"), LongText(size));
    ASSERT_THAT(stations->MoveNext(), IsOk());
  }
  EXPECT_EQ(test::Problems(*database), "");
}

TEST(LongValueJet3, RefusesWhatItsCodePageLacks) {
  const auto database = test::OpenSample("tesk_jet3");
  const auto stations = test::OpenTable(*database, "Stations");
  ASSERT_THAT(stations->Edit(), IsOk());
  EXPECT_EQ(stations->Set("B1 Prog", "Ж").Number(), 3421);
  EXPECT_THAT(stations->Set("B1 Prog", "€ÿ"), IsOk());
  ASSERT_THAT(stations->Update(), IsOk());
  EXPECT_EQ(Text(*stations, "B1 Prog"), "€ÿ");
}

}  // namespace
