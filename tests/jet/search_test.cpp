// SPDX-License-Identifier: MIT
//
// Seek in an index, search without one, and sorted queries.

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/jet/record_fixture.h"

namespace {

using test::Fails;
using test::Int;
using test::Ints;
using test::IsOk;
using test::Texts;
using Numbers = std::vector<int>;
using Strings = std::vector<std::string>;

class SearchTest : public test::RecordTest {
 protected:
  // The number of the record found, or -1.
  int Seek(const jet::Value& key) {
    EXPECT_THAT(records_->Seek(key), IsOk());
    EXPECT_NE(records_->NoMatch(), records_->HasRecord());
    return records_->NoMatch() ? -1 : Int(*records_, "Num");
  }
  int Find(std::string_view field, const jet::Value& value) {
    EXPECT_THAT(records_->FindFirst(field, value), IsOk());
    EXPECT_NE(records_->NoMatch(), records_->HasRecord());
    return records_->NoMatch() ? -1 : Int(*records_, "Num");
  }
  // The text goes into the field that is in no index.
  void AddFree(int num, const jet::Value& text) {
    Add(num, "x");
    ASSERT_THAT(records_->Edit(), IsOk());
    ASSERT_THAT(records_->Set("Free", text), IsOk());
    ASSERT_THAT(records_->Update(), IsOk());
  }
  std::unique_ptr<jet::RecordSet> Ordered(std::vector<std::string_view> fields) {
    std::unique_ptr<jet::RecordSet> records;
    EXPECT_THAT(database_->OpenOrdered("T", fields, &records), IsOk());
    return records;
  }
};

TEST_F(SearchTest, SeekNeedsAnIndex) {
  EXPECT_THAT(records_->Seek(1), Fails(3251, "No index is set to seek in"));
}

TEST_F(SearchTest, SeekFindsNumbers) {
  for (int num = -300; num <= 300; num += 3) Add(num, "x");
  ASSERT_THAT(records_->SetIndex("Num"), IsOk());
  for (int num = -301; num <= 301; ++num) ASSERT_EQ(Seek(num), num % 3 == 0 ? num : -1);
  EXPECT_EQ(Seek(3.0), 3);
  EXPECT_EQ(Seek(3.5), -1);
  EXPECT_EQ(Seek(100000), -1);
  EXPECT_EQ(Seek("3"), -1);
  EXPECT_EQ(Seek(jet::Value()), -1);
}

TEST_F(SearchTest, SeekFindsTheFirstOfEqualKeys) {
  Add(3, "same");
  Add(1, "same");
  Add(2, "Same");
  Add(4, "other");
  ASSERT_THAT(records_->SetIndex("Name"), IsOk());
  EXPECT_EQ(Seek("SAME"), 3);
  ASSERT_THAT(records_->MoveNext(), IsOk());
  EXPECT_EQ(Int(*records_, "Num"), 1);
  ASSERT_THAT(records_->MoveNext(), IsOk());
  EXPECT_EQ(Int(*records_, "Num"), 2);
  ASSERT_THAT(records_->MoveNext(), IsOk());
  EXPECT_TRUE(records_->Eof());
}

TEST_F(SearchTest, SeekComparesTextsByTheSortOrder) {
  Add(1, "Ärger");
  Add(2, "A-b");
  Add(3, "straße");
  Add(4, jet::Value());
  Add(5, "ÿ");
  ASSERT_THAT(records_->SetIndex("Name"), IsOk());
  EXPECT_EQ(Seek("ärger"), 1);
  EXPECT_EQ(Seek("ARGER"), -1);
  EXPECT_EQ(Seek("a-B"), 2);
  EXPECT_EQ(Seek("AB"), -1);
  EXPECT_EQ(Seek("STRASSE"), 3);
  EXPECT_EQ(Seek("straße   "), 3) << "spaces at the end do not count";
  EXPECT_EQ(Seek(jet::Value()), 4);
  EXPECT_EQ(Seek("Ÿ"), 5);
  EXPECT_EQ(Seek("y"), -1);
  EXPECT_EQ(Seek(""), -1);
  EXPECT_EQ(Seek("a text longer than the field"), -1);
  EXPECT_EQ(Seek("Ж"), -1);
  EXPECT_EQ(Seek(1), -1);
}

TEST_F(SearchTest, AFailedSeekLeavesNoRecord) {
  Add(1, "a");
  ASSERT_THAT(records_->SetIndex("Num"), IsOk());
  ASSERT_THAT(records_->MoveFirst(), IsOk());
  EXPECT_EQ(Seek(2), -1);
  EXPECT_FALSE(records_->Bof());
  EXPECT_FALSE(records_->Eof());
  jet::Value value;
  EXPECT_THAT(records_->Get("Num", &value), Fails(3021, "There is no current record"));
  EXPECT_THAT(records_->MoveNext(), Fails(3021, "There is no current record"));
  EXPECT_EQ(Seek(1), 1);
}

TEST_F(SearchTest, FindLooksAtEachRecordInOrder) {
  Add(3, "x");
  Add(2, "y");
  Add(1, "X");
  EXPECT_EQ(Find("Name", "x"), 3);
  ASSERT_THAT(records_->SetIndex("Num"), IsOk());
  EXPECT_EQ(Find("name", "x"), 1);
  EXPECT_EQ(Find("Name", "z"), -1);
  EXPECT_EQ(Find("Free", jet::Value()), 1);
  EXPECT_THAT(records_->FindFirst("None", 1), Fails(3265, "Table \"T\" has no field \"None\""));
}

TEST_F(SearchTest, FindFindsMemosOfAnyLength) {
  Add(1, "a");
  Add(2, "b");
  const std::string longText(9000, 'q');
  ASSERT_THAT(records_->Edit(), IsOk());
  ASSERT_THAT(records_->Set("Note", longText), IsOk());
  ASSERT_THAT(records_->Update(), IsOk());
  EXPECT_EQ(Find("Note", longText), 2);
  EXPECT_EQ(Find("Note", std::string(8999, 'q')), -1);
}

TEST_F(SearchTest, OrderedByOneField) {
  AddFree(1, "Zoo");
  AddFree(2, "apple");
  AddFree(3, jet::Value());
  AddFree(4, "Äpfel");
  AddFree(5, "Apple");
  AddFree(6, "Жук");
  AddFree(7, "co-op");
  AddFree(8, "coop");
  EXPECT_EQ(Ints(*Ordered({"Free"}), "Num"), (Numbers{3, 4, 2, 5, 8, 7, 1, 6}))
      << "null first, equal ones in storage order, unknown characters last";
  EXPECT_EQ(Ints(*Ordered({"Num"}), "Num"), (Numbers{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST_F(SearchTest, OrderKeysOrderAsTheQueryDoes) {
  AddFree(1, "Zoo");
  AddFree(-2, "apple");
  AddFree(3, jet::Value());
  AddFree(4, "Äpfel");
  AddFree(5, "Apple");
  AddFree(6, "Жук");
  AddFree(7, "");
  const auto key = [this](int num, const char* field) {
    GoTo(num);
    std::string bytes;
    EXPECT_THAT(records_->OrderKey(field, &bytes), IsOk());
    return bytes;
  };
  EXPECT_LT(key(3, "Free"), key(7, "Free")) << "null before the empty text";
  EXPECT_LT(key(7, "Free"), key(4, "Free"));
  EXPECT_LT(key(4, "Free"), key(-2, "Free"));
  EXPECT_EQ(key(-2, "Free"), key(5, "Free"));
  EXPECT_LT(key(5, "Free"), key(1, "Free"));
  EXPECT_LT(key(1, "Free"), key(6, "Free"));
  EXPECT_LT(key(-2, "Num"), key(1, "Num"));
  EXPECT_LT(key(1, "Num"), key(7, "Num"));

  std::string bytes = "left over";
  EXPECT_THAT(records_->OrderKey("None", &bytes), Fails(3265, "Table \"T\" has no field \"None\""));
  EXPECT_EQ(bytes, "");
  ASSERT_THAT(records_->MoveLast(), IsOk());
  ASSERT_THAT(records_->MoveNext(), IsOk());
  EXPECT_THAT(records_->OrderKey("Num", &bytes), Fails(3021, "There is no current record"));
}

TEST_F(SearchTest, OrderedByTwoFields) {
  Add(-5, "b");
  Add(7, "a");
  Add(3, "b");
  Add(-9, "a");
  EXPECT_EQ(Ints(*Ordered({"Name", "Num"}), "Num"), (Numbers{-9, 7, -5, 3}));
  EXPECT_EQ(Ints(*Ordered({"Num", "Name"}), "Num"), (Numbers{-9, -5, 3, 7}));
}

TEST_F(SearchTest, OrderedMovesBothWays) {
  Add(2, "x");
  Add(1, "x");
  const auto records = Ordered({"Num"});
  EXPECT_EQ(Int(*records, "Num"), 1);
  ASSERT_THAT(records->MoveLast(), IsOk());
  EXPECT_EQ(Int(*records, "Num"), 2);
  ASSERT_THAT(records->MovePrevious(), IsOk());
  ASSERT_THAT(records->MovePrevious(), IsOk());
  EXPECT_TRUE(records->Bof());
  ASSERT_THAT(records->FindFirst("Num", 2), IsOk());
  EXPECT_EQ(Int(*records, "Num"), 2);
  ASSERT_THAT(records->MoveNext(), IsOk());
  EXPECT_TRUE(records->Eof());
}

TEST_F(SearchTest, OrderedIsAsOfItsOpening) {
  Add(1, "x");
  Add(2, "x");
  Add(3, "x");
  const auto records = Ordered({"Num"});
  GoTo(2);
  ASSERT_THAT(records_->Delete(), IsOk());
  Add(4, "x");
  EXPECT_EQ(Ints(*records, "Num"), (Numbers{1, 3}));
}

TEST_F(SearchTest, OrderedIsForReadingOnly) {
  Add(1, "x");
  const auto records = Ordered({"Num"});
  EXPECT_THAT(records->AddNew(), Fails(3027, "A sorted query can only be read"));
  EXPECT_THAT(records->Edit(), Fails(3027, "A sorted query can only be read"));
  EXPECT_THAT(records->Delete(), Fails(3027, "A sorted query can only be read"));
  EXPECT_THAT(records->SetIndex("Num"), Fails(3251, "A sorted query has no other order"));
  EXPECT_THAT(records->SetIndex(""), Fails(3251, "A sorted query has no other order"));
}

TEST_F(SearchTest, OrderedByAFieldThatIsNotThere) {
  std::unique_ptr<jet::RecordSet> records;
  EXPECT_THAT(database_->OpenOrdered("T", std::array<std::string_view, 1>{"None"}, &records),
              Fails(3265, "Table \"T\" has no field \"None\""));
  EXPECT_THAT(database_->OpenOrdered("U", std::array<std::string_view, 1>{"Num"}, &records),
              Fails(3078, "There is no table \"U\""));
}

// The labels of the sample are those of an edited system.
TEST(SearchInSamples, FindsEveryRecordByItsKey) {
  for (const char* sample : {"tesk_jet3", "tesk_jet4", "tesk_jet4_edited"}) {
    SCOPED_TRACE(sample);
    const auto database = test::OpenSample(sample);
    const auto records = test::OpenTable(*database, "Stations");
    const Strings labels = Texts(*records, "Label");
    const Numbers numbers = Ints(*records, "StationNum");
    ASSERT_THAT(records->SetIndex("Label"), IsOk());
    for (const std::string& label : labels) {
      ASSERT_THAT(records->Seek(label), IsOk());
      EXPECT_FALSE(records->NoMatch()) << label;
    }
    ASSERT_THAT(records->SetIndex("StationNum"), IsOk());
    for (const int number : numbers) {
      ASSERT_THAT(records->Seek(number), IsOk());
      ASSERT_FALSE(records->NoMatch()) << number;
      EXPECT_EQ(Int(*records, "StationNum"), number);
    }
    ASSERT_THAT(records->Seek(1000), IsOk());
    EXPECT_TRUE(records->NoMatch());
  }
}

}  // namespace
