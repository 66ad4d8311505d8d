// SPDX-License-Identifier: MIT
//
// Holds the example of docs/journal-format.md against the program.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "stations/journal/act.h"
#include "stations/journal/line.h"
#include "tests/support/page_examples.h"

namespace stations {
namespace {

TEST(JournalPage, ItsLinesAreThoseOfTheProgram) {
  const std::vector<std::string> lines = test::PageLines("journal-format.md", "journal");
  ASSERT_EQ(lines.size(), 3u);
  for (const std::string& text : lines) {
    JournalLine line;
    ASSERT_TRUE(ReadLine(text, &line)) << text;
    EXPECT_EQ(WriteLine(line), text + "\n");
    if (line.kind != JournalLine::Kind::Act) continue;
    Act act;
    ASSERT_TRUE(ReadAct(line.content, &act)) << text;
    EXPECT_EQ(WriteAct(act), line.content);
  }
}

}  // namespace
}  // namespace stations
