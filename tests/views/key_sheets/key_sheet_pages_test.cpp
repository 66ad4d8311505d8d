// SPDX-License-Identifier: MIT

#include "views/export/key_sheet_pages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/views/key_sheets/recording_pages.h"

namespace views {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

constexpr int kTalkCode = 0;
constexpr int kGroupCode = 255;

// A station with one key.
rules::KeySheet SheetWith(const std::string& caption, const std::string& targets, int type) {
  return {.station = 3,
          .label = "SOUND 1",
          .inputLabel = "",
          .keys = {{.type = type, .caption = caption, .targets = targets}}};
}

class KeySheetPagesTest : public testing::Test {
 protected:
  // The texts of the page with this sheet.
  const std::vector<std::string>& Draw(const rules::KeySheet& sheet) {
    test::RecordingPages document(drawn_);
    KeySheetPages pages(document);
    EXPECT_TRUE(pages.Draw(sheet));
    EXPECT_TRUE(pages.End());
    return drawn_.pages.back();
  }

  // All texts of the page, one after the other.
  std::string Text(const rules::KeySheet& sheet) {
    std::string all;
    for (const std::string& text : Draw(sheet)) all += text;
    return all;
  }

  test::Drawn drawn_;
};

TEST_F(KeySheetPagesTest, AKeySaysWhatItDoes) {
  const std::vector<std::string> texts = Draw(SheetWith("CAM 1", "CAM 1, CAM 2", kTalkCode));
  EXPECT_THAT(texts, Contains("3  SOUND 1"));
  EXPECT_THAT(texts, Contains("Btn - 01"));
  EXPECT_THAT(texts, Contains("CAM 1"));
  EXPECT_THAT(texts, Contains("TALK"));
  EXPECT_THAT(texts, Contains("CAM 1, CAM 2"));
}

TEST_F(KeySheetPagesTest, ALabelOfTheWidestLettersIsWhole) {
  EXPECT_THAT(Draw(SheetWith("WWWWWWWW", "", kTalkCode)), Contains("WWWWWWWW"));
}

TEST_F(KeySheetPagesTest, OfTooManyTargetsWholeLabelsStandThere) {
  std::string targets = "(64) STUDIO01";
  for (int n = 2; n <= 64; ++n) targets += ", STUDIO" + std::to_string(100 + n).substr(1);
  const std::string text = Text(SheetWith("STUDIO01", targets, kGroupCode));
  EXPECT_THAT(text, HasSubstr("(64) STUDIO01, STUDIO02,STUDIO03"));  // in two lines
  EXPECT_THAT(text, HasSubstr(", …"));
  EXPECT_THAT(text, Not(HasSubstr("STUDIO64")));
  const std::string before = text.substr(0, text.find(", …"));
  EXPECT_THAT(before.substr(before.size() - 8), StartsWith("STUDIO")) << "a whole label";
}

TEST_F(KeySheetPagesTest, ALineEndsBetweenLabels) {
  std::vector<std::string> texts =
      Draw(SheetWith("A", "SOUND 1, SOUND 2, SOUND 3, SOUND 4, SOUND 5, SOUND 6", kTalkCode));
  ASSERT_THAT(texts, Not(Contains(HasSubstr("SOUND 1, SOUND 2, SOUND 3, SOUND 4, SOUND 5, "))))
      << "in several lines";
  for (const std::string& text : texts) EXPECT_THAT(text, Not(testing::EndsWith("SOUND")));
}

// Wherever a text could be broken: at a space, a hyphen or a stroke.
TEST_F(KeySheetPagesTest, ALabelIsNotBrokenInItself) {
  for (const std::string label : {"TX-1/2", "A-B-C-D", "1/2/3/4", "OB 1-2"}) {
    std::string targets = label;
    for (int n = 2; n <= 9; ++n) targets += ", " + label;
    std::vector<std::string> lines = Draw(SheetWith("", targets, kTalkCode));
    std::erase_if(lines, [](const std::string& text) {
      return text.find_first_of("-/") == std::string::npos || text.starts_with("Btn");
    });
    EXPECT_GT(lines.size(), 1U) << label;
    std::string all;
    for (const std::string& line : lines) {
      EXPECT_THAT(line, StartsWith(label));
      all += line + (&line == &lines.back() ? "" : " ");
    }
    EXPECT_EQ(all, targets);
  }
}

TEST_F(KeySheetPagesTest, TargetsThatHaveRoomAllStandThere) {
  const std::string text =
      Text(SheetWith("A", "AAAAAAAA, BBBBBBBB, CCCCCCCC, DDDDDDDD, EEEEEEEE", kTalkCode));
  EXPECT_THAT(text, HasSubstr("EEEEEEEE"));
  EXPECT_THAT(text, Not(HasSubstr("…")));
}

TEST_F(KeySheetPagesTest, ADocumentThatFailsIsNoticed) {
  test::RecordingPages document(drawn_, 2);
  KeySheetPages pages(document);
  EXPECT_TRUE(pages.Draw(SheetWith("A", "", kTalkCode)));
  EXPECT_FALSE(pages.Draw(SheetWith("B", "", kTalkCode)));
  EXPECT_FALSE(pages.End());
  EXPECT_THAT(drawn_.pages, SizeIs(1));
}

TEST_F(KeySheetPagesTest, KeysAreAllOnAPaperThatIsTooLowForThem) {
  rules::KeySheet sheet = SheetWith("CAM 1", "CAM 1", kTalkCode);
  sheet.keys.resize(32, sheet.keys.front());
  drawn_.height = 364;
  EXPECT_THAT(Draw(sheet), Contains("Btn - 32"));
  EXPECT_LE(drawn_.lowest, 364);
}

}  // namespace
}  // namespace views
