// SPDX-License-Identifier: MIT

#include "app/shell/command_table.h"

#include <gtest/gtest.h>

namespace app {
namespace {

TEST(CommandTable, EveryCommandIsNamedAsTheOperatorKnowsIt) {
  EXPECT_EQ(CommandWords(QStringLiteral("ID_SendData")), QStringLiteral("Send Data To Switcher"));
  EXPECT_EQ(CommandWords(QStringLiteral("ID_QDVStatus")), QStringLiteral("QDV Status"));
  EXPECT_EQ(CommandWords(QStringLiteral("ID_Exit")), QStringLiteral("Exit"));
  for (const Command& command : AllCommands()) {
    const QString words = CommandWords(QLatin1String(command.id));
    EXPECT_FALSE(words.contains(QLatin1String("ID_")) || words.contains(u'&')) << command.id;
  }
}

}  // namespace
}  // namespace app
