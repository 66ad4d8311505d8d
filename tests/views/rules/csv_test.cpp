// SPDX-License-Identifier: MIT

#include "views/rules/csv.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace rules {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using CellRows = std::vector<std::vector<std::string>>;

constexpr CsvBounds kBounds{.rows = 1000};

CellRows Cells(std::string_view text) {
  CellRows rows;
  for (const CsvRow& row : ParseCsv(text, kBounds).rows) rows.push_back(row.cells);
  return rows;
}

TEST(Csv, CellsAreSeparatedByWhatTheFirstLineHasMostOf) {
  EXPECT_EQ(Cells("a,b\r\n1,2;3\r\n"), (CellRows{{"a", "b"}, {"1", "2;3"}}));
  EXPECT_EQ(Cells("a;b\n1;2,5\n"), (CellRows{{"a", "b"}, {"1", "2,5"}}));
  EXPECT_EQ(Cells("a\tb,c\td\n1\t2\t3"), (CellRows{{"a", "b,c", "d"}, {"1", "2", "3"}}));
  EXPECT_EQ(Cells("\"a;b;c\",d\n1,2"), (CellRows{{"a;b;c", "d"}, {"1", "2"}})) << "not in quotes";
}

TEST(Csv, RowsEndInEveryWayAndEmptyLinesAreNone) {
  EXPECT_EQ(Cells("a,b\r\n\r\nc,d\re,f\n\ng,h"),
            (CellRows{{"a", "b"}, {"c", "d"}, {"e", "f"}, {"g", "h"}}));
  EXPECT_THAT(Cells(""), IsEmpty());
  EXPECT_THAT(Cells("\r\n\n"), IsEmpty());
  EXPECT_EQ(Cells("a,\n,"), (CellRows{{"a", ""}, {"", ""}}));
}

TEST(Csv, ACellInQuotesHoldsEverything) {
  EXPECT_EQ(Cells("\"a,b\",\"say \"\"on air\"\"\"\r\n\"two\r\nlines\",x\r\n"),
            (CellRows{{"a,b", "say \"on air\""}, {"two\r\nlines", "x"}}));
  EXPECT_EQ(Cells("\"\",b"), (CellRows{{"", "b"}}));
  EXPECT_EQ(Cells("a \"b\",\"c\" d"), (CellRows{{"a \"b\"", "c d"}}));
}

TEST(Csv, RowsKnowTheLineInWhichTheyBegin) {
  std::vector<int> lines;
  for (const CsvRow& row : ParseCsv("a,b\r\n\r\n\"x\r\ny\",1\r\nc,d", kBounds).rows)
    lines.push_back(row.line);
  EXPECT_THAT(lines, ElementsAre(1, 3, 5));
}

TEST(Csv, QuotesThatAreNeverClosedAreFound) {
  EXPECT_EQ(ParseCsv("a,b\n1,\"2\n3,4\n", kBounds).openQuotes, 2);
  EXPECT_EQ(ParseCsv("a,\"b\"\n", kBounds).openQuotes, 0);
  EXPECT_EQ(ParseCsv("\"", kBounds).openQuotes, 1);
}

TEST(Csv, TheReadingEndsWhereAFileIsNoneOfOurs) {
  const CsvBounds bounds{.cells = 3, .rows = 2};
  EXPECT_EQ(ParseCsv("a,b,c\n1,2,3\n\n", bounds).rows.size(), 2u);
  EXPECT_EQ(ParseCsv("a,b,c\n1,2,3\n\n", bounds).tooManyRows, 0);
  EXPECT_EQ(ParseCsv("a,b,c\n1,2,3\n\n4\n5\n", bounds).tooManyRows, 4);
  const Csv wide = ParseCsv("a,b,c\n1,2,3," + std::string(1 << 20, ','), bounds);
  EXPECT_EQ(wide.tooManyCells, 2);
  EXPECT_EQ(wide.rows.size(), 1u);
}

TEST(Csv, AFileIsUtf8OrCodePage1252) {
  EXPECT_EQ(TextOfFile("\xEF\xBB\xBFR\xC3\xA9gie"), "R\xC3\xA9gie");
  EXPECT_EQ(TextOfFile("R\xC3\xA9gie"), "R\xC3\xA9gie");
  EXPECT_EQ(TextOfFile("R\xE9gie \x80"), "R\xC3\xA9gie \xE2\x82\xAC");
  EXPECT_EQ(TextOfFile(std::string_view("S\0t\0", 4)), std::nullopt);
  EXPECT_EQ(TextOfFile(""), "");
}

}  // namespace
}  // namespace rules
