// SPDX-License-Identifier: MIT

#include "stations/channel_texts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "db/schema.h"
#include "stations/record.h"
#include "tests/support/damaged_file.h"
#include "tests/support/small_database.h"
#include "tests/support/temporary_folder.h"

namespace stations {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Has texts forget what changes touch, and keeps whether it was any.
class Forgetting : public ChangeObserver {
 public:
  Forgetting(Changes& changes, ChannelTexts& texts) : ChangeObserver(changes), texts_(texts) {}

  void Changed(std::span<const Change> changes) override {
    touched.push_back(texts_.Forget(changes));
  }

  std::vector<bool> touched;

 private:
  ChannelTexts& texts_;
};

class ChannelTextsTest : public testing::Test {
 protected:
  using Kind = ChannelTexts::Kind;

  ChannelTextsTest() {
    model_.ChannelCount = 3;
    database_.AddStation(1, {{"Label", "CAM 1"}, {"InLabel", "MIC 1"}, {"Inhibits", "100"}});
    database_.AddStation(2, {{"Label", "CAM 2"}, {"InLabel", "MIC 2"}, {"Inhibits", "010"}});
  }

  void Edit(int station, const char* field, const jet::Value& value) {
    database_.GoTo(station);
    Record record(*database_.Files().Stations());
    record.Set(field, value);
    ASSERT_TRUE(record.Commit({changes_, Origin::Operator}).ok());
  }

  // What has become of the texts of a kind: "2: MIC -> VISION".
  std::vector<std::string> Differences(Kind kind) {
    std::vector<std::string> lines;
    for (const ChannelTexts::Difference& one : texts_.TakeDifferences(kind)) {
      lines.push_back(std::to_string(one.channel) + ": " + one.before + " -> " + one.after);
    }
    return lines;
  }

  model::SystemModel model_;
  test::SmallDatabase database_;
  bool hasDatabase_ = true;
  Changes changes_;
  ChannelTexts texts_{{.model = model_, .database = [this] {
                         return hasDatabase_ ? database_.Files().Database() : nullptr;
                       }}};
  Forgetting forgetting_{changes_, texts_};
};

TEST_F(ChannelTextsTest, AreThoseOfTheRecords) {
  EXPECT_EQ(texts_.Label(2), "CAM 2");
  EXPECT_EQ(texts_.InLabel(1), "MIC 1");
  EXPECT_EQ(texts_.Label(3), "") << "a small table";
  EXPECT_EQ(texts_.Label(0), "");
  EXPECT_EQ(texts_.IsInhibited(1, 1), true);
  EXPECT_EQ(texts_.IsInhibited(1, 2), false);
  EXPECT_EQ(texts_.IsInhibited(4, 1), std::nullopt);
}

// Of a database that was salvaged, or that other software deleted a station from.
TEST_F(ChannelTextsTest, AMissingRecordMovesNobodyElses) {
  database_.AddStation(4, {{"Label", "CAM 4"}, {"InLabel", "MIC 4"}, {"Inhibits", "001"}});
  model_.ChannelCount = 5;
  EXPECT_EQ(texts_.Label(3), "");
  EXPECT_EQ(texts_.Label(4), "CAM 4");
  EXPECT_EQ(texts_.InLabel(4), "MIC 4");
  EXPECT_FALSE(texts_.ShowsInhibit(3, 3));
  EXPECT_TRUE(texts_.ShowsInhibit(4, 3));
  EXPECT_EQ(texts_.IsInhibited(3, 3), std::nullopt) << "nobody knows";
  EXPECT_EQ(texts_.IsInhibited(4, 3), true);
  EXPECT_EQ(texts_.IsInhibited(4, 1), false);
  EXPECT_EQ(texts_.IsInhibited(5, 1), false) << "a small table";
}

TEST_F(ChannelTextsTest, AChangeIsReadAndTold) {
  EXPECT_EQ(texts_.Label(2), "CAM 2");
  Edit(2, "Label", "VISION");
  EXPECT_EQ(texts_.Label(2), "VISION");
  Edit(2, "Label", "SOUND");
  EXPECT_THAT(Differences(Kind::Label), ElementsAre("2: CAM 2 -> SOUND"));
  EXPECT_THAT(Differences(Kind::Label), IsEmpty()) << "told once";
  EXPECT_THAT(Differences(Kind::InLabel), IsEmpty());
}

TEST_F(ChannelTextsTest, WhatNobodyAskedForHasNoDifferences) {
  Edit(2, "Label", "VISION");
  EXPECT_THAT(Differences(Kind::Label), IsEmpty());
}

TEST_F(ChannelTextsTest, OtherFieldsTouchNothing) {
  Edit(1, "Inhibits", "110");
  Edit(1, "Hidden", 1);
  EXPECT_THAT(forgetting_.touched, ElementsAre(true, false));
}

// The records behind a damage cannot be read: those before it can, and nobody tries again for
// words.
TEST(DamagedChannelTexts, AreThoseBeforeTheDamage) {
  const test::TemporaryFolder folder;
  const auto file = folder / "Tesk.mdb";
  ASSERT_TRUE(db::CreateDatabase(file).ok());
  std::unique_ptr<jet::Database> database;
  ASSERT_TRUE(jet::Database::Open(file, jet::Access::ReadOnly, &database).ok());
  test::ZeroPageOf(file, "Sta. 060");
  model::SystemModel model;
  model.ChannelCount = 64;
  int asked = 0;
  ChannelTexts texts({.model = model, .database = [&] {
                        ++asked;
                        return database.get();
                      }});
  EXPECT_EQ(texts.Label(1), "");
  EXPECT_EQ(texts.Label(64), "");
  EXPECT_EQ(asked, 1);
  EXPECT_FALSE(texts.ShowsInhibit(1, 1));
  EXPECT_FALSE(texts.ShowsInhibit(64, 1));
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(texts.IsInhibited(1, 1), std::nullopt) << "who acts needs them all";
  EXPECT_EQ(texts.IsInhibited(1, 1), std::nullopt);
  EXPECT_EQ(asked, 4) << "they may be readable by now";
}

// What cannot be read now is tried again, and what has become of it meanwhile is told then.
TEST_F(ChannelTextsTest, WithoutADatabaseNothingIsKnown) {
  EXPECT_EQ(texts_.IsInhibited(1, 1), true);
  Edit(1, "Inhibits", "000");
  hasDatabase_ = false;
  EXPECT_EQ(texts_.IsInhibited(1, 1), std::nullopt);
  EXPECT_THAT(Differences(Kind::Inhibits), IsEmpty());
  hasDatabase_ = true;
  EXPECT_EQ(texts_.IsInhibited(1, 1), false);
  EXPECT_THAT(Differences(Kind::Inhibits), ElementsAre("1: 100 -> 000"));
}

}  // namespace
}  // namespace stations
