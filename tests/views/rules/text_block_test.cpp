// SPDX-License-Identifier: MIT

#include "views/rules/text_block.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace rules {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Block, TabsAndLineEnds) {
  EXPECT_THAT(ParseBlock(""), IsEmpty());
  EXPECT_THAT(ParseBlock("MIC"), ElementsAre(ElementsAre("MIC")));
  EXPECT_THAT(ParseBlock("a\tb\r\nc\td\r\n"),
              ElementsAre(ElementsAre("a", "b"), ElementsAre("c", "d")));
  EXPECT_THAT(ParseBlock("a\nb\rc"),
              ElementsAre(ElementsAre("a"), ElementsAre("b"), ElementsAre("c")));
  EXPECT_THAT(ParseBlock("\ta\t\n\n"), ElementsAre(ElementsAre("", "a", ""), ElementsAre("")));
}

TEST(Block, CellsInQuotes) {
  EXPECT_THAT(ParseBlock("\"two\nlines\"\tb\n"), ElementsAre(ElementsAre("two\nlines", "b")));
  EXPECT_THAT(ParseBlock("\"a\tb\""), ElementsAre(ElementsAre("a\tb")));
  EXPECT_THAT(ParseBlock("\"say \"\"so\"\"\""), ElementsAre(ElementsAre("say \"so\"")));
  EXPECT_THAT(ParseBlock("\"\""), ElementsAre(ElementsAre("")));
}

TEST(Block, QuotesThatAreText) {
  EXPECT_THAT(ParseBlock("5\" reel\tx"), ElementsAre(ElementsAre("5\" reel", "x")));
  EXPECT_THAT(ParseBlock("\"A\" desk\tx"), ElementsAre(ElementsAre("\"A\" desk", "x")));
  EXPECT_THAT(ParseBlock("\"open\tx\ny"),
              ElementsAre(ElementsAre("\"open", "x"), ElementsAre("y")));
  EXPECT_THAT(ParseBlock("\""), ElementsAre(ElementsAre("\"")));
}

TEST(Block, IsWrittenAsItIsRead) {
  EXPECT_EQ(WriteBlock({{"5", "Sta. 005"}, {"6", ""}}), "5\tSta. 005\n6\t\n");
  EXPECT_EQ(WriteBlock({{"two\nlines", "\"A\""}}), "\"two\nlines\"\t\"\"\"A\"\"\"\n");
  EXPECT_EQ(WriteBlock({{"5\" reel"}}), "5\" reel\n");
}

}  // namespace
}  // namespace rules
