// SPDX-License-Identifier: MIT
//
// Holds the example of docs/sent-format.md against the program.

#include <gtest/gtest.h>

#include <string>

#include "switcher/unsent/held_messages.h"
#include "tests/support/page_examples.h"

namespace switcher {
namespace {

TEST(SentPage, ItsLinesAreThoseOfTheProgram) {
  std::string text;
  for (const std::string& line : test::PageLines("sent-format.md", "sent")) text += line + "\n";
  const HeldMessages messages = ReadHeld(text);
  EXPECT_EQ(messages.size(), 6U);
  EXPECT_EQ(WriteHeld(messages), text);
}

}  // namespace
}  // namespace switcher
