// SPDX-License-Identifier: MIT

#include "views/words.h"

#include <gtest/gtest.h>

namespace views {
namespace {

using switcher::Table;

TEST(Words, TablesThatWereSentAreCounted) {
  EXPECT_EQ(SentTableWords({Table::Inhibits}, 64), QStringLiteral("inhibits, 64 outputs"));
  EXPECT_EQ(SentTableWords({Table::Relays}, 16), QStringLiteral("relays, 16 outputs"));
  EXPECT_EQ(SentTableWords({Table::Buttons}, 63), QStringLiteral("buttons, 63 stations"));
  EXPECT_EQ(SentTableWords({Table::Buttons, 12}, 1), QStringLiteral("buttons 12"));
  EXPECT_EQ(SentTableWords({Table::OutputLabels}, 2), QStringLiteral("station labels"));
  EXPECT_EQ(SentTableWords({Table::Optos}, 1), QStringLiteral("optos"));
}

}  // namespace
}  // namespace views
