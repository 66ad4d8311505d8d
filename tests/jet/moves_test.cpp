// SPDX-License-Identifier: MIT
//
// Where a record set stands and where moves take it.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/jet/record_fixture.h"

namespace {

using test::Fails;
using test::Int;
using test::Ints;
using test::IsOk;
using Numbers = std::vector<int>;

constexpr char kNoRecord[] = "There is no current record";

class MovesTest : public test::RecordTest {
 protected:
  // "bof", "eof", "bof eof", the current number, or "none".
  static std::string Place(jet::RecordSet& records) {
    std::string place = records.Bof() ? "bof" : "";
    if (records.Eof()) place += place.empty() ? "eof" : " eof";
    if (records.HasRecord()) place += std::to_string(Int(records, "Num"));
    return place.empty() ? "none" : place;
  }
  std::string Place() { return Place(*records_); }

  void AddThree() {
    Add(10, "c");
    Add(20, "a");
    Add(30, "b");
  }
};

TEST_F(MovesTest, AnEmptyTableIsAtBothEnds) {
  EXPECT_EQ(Place(), "bof eof");
  EXPECT_THAT(records_->MoveFirst(), IsOk());
  EXPECT_EQ(Place(), "bof eof");
  EXPECT_THAT(records_->MoveLast(), IsOk());
  EXPECT_EQ(Place(), "bof eof");
  EXPECT_THAT(records_->MoveNext(), Fails(3021, kNoRecord));
  EXPECT_THAT(records_->MovePrevious(), Fails(3021, kNoRecord));
  EXPECT_EQ(Place(), "bof eof");
  EXPECT_EQ(records_->RecordCount(), 0);
}

TEST_F(MovesTest, AFreshSetStandsOnTheFirstRecord) {
  AddThree();
  EXPECT_EQ(Place(*OpenT()), "10");
  EXPECT_EQ(records_->RecordCount(), 3);
}

TEST_F(MovesTest, ForwardPastTheEnd) {
  AddThree();
  ASSERT_THAT(records_->MoveFirst(), IsOk());
  EXPECT_EQ(Place(), "10");
  ASSERT_THAT(records_->MoveNext(), IsOk());
  EXPECT_EQ(Place(), "20");
  ASSERT_THAT(records_->MoveNext(), IsOk());
  EXPECT_EQ(Place(), "30");
  ASSERT_THAT(records_->MoveNext(), IsOk());
  EXPECT_EQ(Place(), "eof");
  EXPECT_THAT(records_->MoveNext(), Fails(3021, kNoRecord));
  EXPECT_EQ(Place(), "eof");
  ASSERT_THAT(records_->MovePrevious(), IsOk());
  EXPECT_EQ(Place(), "30");
}

TEST_F(MovesTest, BackwardPastTheBeginning) {
  AddThree();
  ASSERT_THAT(records_->MoveLast(), IsOk());
  EXPECT_EQ(Place(), "30");
  ASSERT_THAT(records_->MovePrevious(), IsOk());
  ASSERT_THAT(records_->MovePrevious(), IsOk());
  EXPECT_EQ(Place(), "10");
  ASSERT_THAT(records_->MovePrevious(), IsOk());
  EXPECT_EQ(Place(), "bof");
  EXPECT_THAT(records_->MovePrevious(), Fails(3021, kNoRecord));
  EXPECT_EQ(Place(), "bof");
  ASSERT_THAT(records_->MoveNext(), IsOk());
  EXPECT_EQ(Place(), "10");
}

TEST_F(MovesTest, InTheOrderOfAnIndex) {
  AddThree();
  ASSERT_THAT(records_->SetIndex("Name"), IsOk());
  EXPECT_EQ(records_->IndexName(), "Name");
  EXPECT_EQ(Ints(*records_, "Num"), (Numbers{20, 30, 10}));
  ASSERT_THAT(records_->MovePrevious(), IsOk());
  EXPECT_EQ(Place(), "10");
  ASSERT_THAT(records_->MovePrevious(), IsOk());
  EXPECT_EQ(Place(), "30");
  ASSERT_THAT(records_->MovePrevious(), IsOk());
  ASSERT_THAT(records_->MovePrevious(), IsOk());
  EXPECT_EQ(Place(), "bof");
}

TEST_F(MovesTest, AnIndexKeepsTheCurrentRecord) {
  AddThree();
  GoTo(30);
  ASSERT_THAT(records_->SetIndex("Name"), IsOk());
  EXPECT_EQ(Place(), "30");
  ASSERT_THAT(records_->MoveNext(), IsOk());
  EXPECT_EQ(Place(), "10");
  ASSERT_THAT(records_->SetIndex("num"), IsOk()) << "names in either case";
  EXPECT_EQ(Place(), "10");
  ASSERT_THAT(records_->MoveNext(), IsOk());
  EXPECT_EQ(Place(), "20");
  ASSERT_THAT(records_->SetIndex(""), IsOk());
  EXPECT_EQ(Place(), "20");
}

TEST_F(MovesTest, AnIndexKeepsBothEndsAndNoRecord) {
  AddThree();
  ASSERT_THAT(records_->MoveLast(), IsOk());
  ASSERT_THAT(records_->MoveNext(), IsOk());
  ASSERT_THAT(records_->SetIndex("Name"), IsOk());
  EXPECT_EQ(Place(), "eof");
  ASSERT_THAT(records_->MovePrevious(), IsOk());
  EXPECT_EQ(Place(), "10");
  ASSERT_THAT(records_->MoveFirst(), IsOk());
  ASSERT_THAT(records_->MovePrevious(), IsOk());
  ASSERT_THAT(records_->SetIndex("Num"), IsOk());
  EXPECT_EQ(Place(), "bof");
  ASSERT_THAT(records_->Seek(99), IsOk());
  ASSERT_THAT(records_->SetIndex("Name"), IsOk());
  EXPECT_EQ(Place(), "none");
}

TEST_F(MovesTest, AnUnknownIndexChangesNothing) {
  AddThree();
  ASSERT_THAT(records_->SetIndex("Name"), IsOk());
  ASSERT_THAT(records_->MoveFirst(), IsOk());
  EXPECT_THAT(records_->SetIndex("Other"), Fails(3265, "Table \"T\" has no index \"Other\""));
  EXPECT_EQ(records_->IndexName(), "Name");
  EXPECT_EQ(Place(), "20");
}

TEST_F(MovesTest, FromADeletedRecordToItsNeighbours) {
  for (const char* index : {"", "Num"}) {
    SCOPED_TRACE(index);
    Add(40, "d");
    AddThree();
    ASSERT_THAT(records_->SetIndex(index), IsOk());
    GoTo(20);
    ASSERT_THAT(records_->Delete(), IsOk());
    EXPECT_EQ(Place(), "none");
    jet::Value value;
    EXPECT_THAT(records_->Get("Num", &value), Fails(3021, kNoRecord));
    EXPECT_THAT(records_->Edit(), Fails(3021, kNoRecord));
    EXPECT_THAT(records_->Delete(), Fails(3021, kNoRecord));
    ASSERT_THAT(records_->MoveNext(), IsOk());
    EXPECT_EQ(Place(), "30");
    GoTo(30);
    ASSERT_THAT(records_->Delete(), IsOk());
    ASSERT_THAT(records_->MovePrevious(), IsOk());
    EXPECT_EQ(Place(), "10");
    ASSERT_THAT(records_->Delete(), IsOk());
    GoTo(40);
    ASSERT_THAT(records_->Delete(), IsOk());
    EXPECT_EQ(Place(), "none");
    ASSERT_THAT(records_->MoveNext(), IsOk());
    EXPECT_EQ(Place(), "bof eof") << "the last record is gone";
  }
}

TEST_F(MovesTest, DeletingTheLastLeavesTheEndBehindIt) {
  AddThree();
  ASSERT_THAT(records_->MoveLast(), IsOk());
  ASSERT_THAT(records_->Delete(), IsOk());
  ASSERT_THAT(records_->MoveNext(), IsOk());
  EXPECT_EQ(Place(), "eof");
  ASSERT_THAT(records_->MovePrevious(), IsOk());
  EXPECT_EQ(Place(), "20");
}

TEST_F(MovesTest, TwoSetsSeeOneTable) {
  AddThree();
  const auto other = OpenT();
  ASSERT_THAT(other->SetIndex("Num"), IsOk());
  ASSERT_THAT(other->Seek(20), IsOk());
  GoTo(20);
  ASSERT_THAT(records_->Edit(), IsOk());
  ASSERT_THAT(records_->Set("Free", "new"), IsOk());
  ASSERT_THAT(records_->Update(), IsOk());
  EXPECT_EQ(test::Text(*other, "Free"), "new");
  ASSERT_THAT(records_->Delete(), IsOk());
  EXPECT_EQ(Place(*other), "none");
  jet::Value value;
  EXPECT_THAT(other->Get("Num", &value), Fails(3021, kNoRecord));
  ASSERT_THAT(other->MovePrevious(), IsOk());
  EXPECT_EQ(Place(*other), "10");
  Add(15, "x");
  ASSERT_THAT(other->MoveNext(), IsOk());
  EXPECT_EQ(Place(*other), "15");
  EXPECT_EQ(other->RecordCount(), 3);
}

TEST_F(MovesTest, ANewRecordInADeletedOnesPlaceIsAnother) {
  AddThree();
  const auto other = OpenT();
  ASSERT_THAT(other->MoveLast(), IsOk());
  GoTo(30);
  ASSERT_THAT(records_->Delete(), IsOk());
  Add(40, "d");
  EXPECT_EQ(Place(), "40");
  EXPECT_EQ(Place(*other), "none");
}

// The set's own change moves its record in the order; the others' sets go on from where the
// record now stands.
TEST_F(MovesTest, AChangedKeyTakesItsRecordAlong) {
  AddThree();
  ASSERT_THAT(records_->SetIndex("Name"), IsOk());
  const auto other = OpenT();
  ASSERT_THAT(other->SetIndex("Name"), IsOk());
  ASSERT_THAT(other->Seek("a"), IsOk());
  ASSERT_THAT(records_->Seek("a"), IsOk());
  ASSERT_THAT(records_->Edit(), IsOk());
  ASSERT_THAT(records_->Set("Name", "bb"), IsOk());
  ASSERT_THAT(records_->Update(), IsOk());
  EXPECT_EQ(Place(), "20");
  EXPECT_EQ(Place(*other), "20");
  ASSERT_THAT(records_->MoveNext(), IsOk());
  EXPECT_EQ(Place(), "10");
  ASSERT_THAT(other->MovePrevious(), IsOk());
  EXPECT_EQ(Place(*other), "30");
}

TEST_F(MovesTest, BookmarksBringBackTheirRecord) {
  AddThree();
  GoTo(20);
  const jet::Bookmark mark = records_->Mark();
  EXPECT_EQ(mark, records_->Mark());
  ASSERT_THAT(records_->MoveNext(), IsOk());
  EXPECT_FALSE(mark == records_->Mark());
  ASSERT_THAT(records_->GoTo(mark), IsOk());
  EXPECT_EQ(Place(), "20");
  const auto other = OpenT();
  ASSERT_THAT(other->SetIndex("Name"), IsOk());
  ASSERT_THAT(other->GoTo(mark), IsOk()) << "in another set and another order";
  EXPECT_EQ(Place(*other), "20");
  ASSERT_THAT(other->MoveNext(), IsOk());
  EXPECT_EQ(Place(*other), "30");
}

TEST_F(MovesTest, BookmarksOfTheEndsAndOfNoRecord) {
  AddThree();
  ASSERT_THAT(records_->MoveFirst(), IsOk());
  ASSERT_THAT(records_->MovePrevious(), IsOk());
  const jet::Bookmark bof = records_->Mark();
  ASSERT_THAT(records_->MoveLast(), IsOk());
  ASSERT_THAT(records_->MoveNext(), IsOk());
  const jet::Bookmark eof = records_->Mark();
  ASSERT_THAT(records_->FindFirst("Num", 99), IsOk());
  const jet::Bookmark none = records_->Mark();
  ASSERT_THAT(records_->GoTo(bof), IsOk());
  EXPECT_EQ(Place(), "bof");
  ASSERT_THAT(records_->GoTo(eof), IsOk());
  EXPECT_EQ(Place(), "eof");
  ASSERT_THAT(records_->GoTo(none), IsOk());
  EXPECT_EQ(Place(), "none");
  EXPECT_THAT(records_->MoveNext(), Fails(3021, kNoRecord));
  EXPECT_THAT(records_->MovePrevious(), Fails(3021, kNoRecord));
  ASSERT_THAT(records_->GoTo(jet::Bookmark()), Fails(3021, "The bookmark is of another table"));
}

TEST_F(MovesTest, ABookmarkGoesStaleWithItsRecord) {
  AddThree();
  GoTo(20);
  const jet::Bookmark mark = records_->Mark();
  ASSERT_THAT(records_->Delete(), IsOk());
  ASSERT_THAT(records_->MoveFirst(), IsOk());
  EXPECT_THAT(records_->GoTo(mark), Fails(3021, kNoRecord));
  EXPECT_EQ(Place(), "none");
}

TEST_F(MovesTest, ABookmarkOfAnotherTableLeadsNowhere) {
  AddThree();
  ASSERT_THAT(database_->CreateTable({"U", {{.name = "N"}}}), IsOk());
  const auto other = test::OpenTable(*database_, "U");
  EXPECT_THAT(other->GoTo(records_->Mark()), Fails(3021, "The bookmark is of another table"));
  EXPECT_EQ(Place(*other), "none");
}

TEST_F(MovesTest, MovesDropABegunChange) {
  AddThree();
  GoTo(20);
  ASSERT_THAT(records_->Edit(), IsOk());
  ASSERT_THAT(records_->Set("Free", "x"), IsOk());
  ASSERT_THAT(records_->MoveNext(), IsOk());
  EXPECT_FALSE(records_->IsChanging());
  GoTo(20);
  EXPECT_TRUE(test::Read(*records_, "Free").IsNull());
}

TEST_F(MovesTest, OutliveTheDatabaseObject) {
  AddThree();
  database_.reset();
  EXPECT_EQ(Ints(*records_, "Num"), (Numbers{10, 20, 30}));
}

TEST_F(MovesTest, OverManyPagesInEveryOrder) {
  for (int i = 0; i < 500; ++i) Add((i * 7919) % 500, "n" + std::to_string(i % 250));
  Numbers expected(500);
  for (int i = 0; i < 500; ++i) expected[static_cast<std::size_t>(i)] = i;
  ASSERT_THAT(records_->SetIndex("Num"), IsOk());
  EXPECT_EQ(Ints(*records_, "Num"), expected);
  for (int i = 500; i-- > 0;) {
    ASSERT_THAT(records_->MovePrevious(), IsOk());
    ASSERT_EQ(Place(), std::to_string(i));
  }
  ASSERT_THAT(records_->SetIndex("Name"), IsOk());
  const auto names = test::Texts(*records_, "Name");
  EXPECT_EQ(names.size(), 500U);
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
  EXPECT_EQ(test::Problems(*database_), "");
}

}  // namespace
