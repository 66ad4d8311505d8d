// SPDX-License-Identifier: MIT

#include "app/transfer/table_tools.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/download_system.h"

namespace app {
namespace {

using switcher::Table;

class TableToolsTest : public test::DownloadSystem {
 protected:
  // How many messages of a table are said to have been sent.
  int Send(const switcher::TablePart& part) { return tools_.Send(part).value_or(-1); }

  // The first bytes of each message that was written since the last call.
  std::string Begins(int bytes) {
    std::string begins;
    const std::string written = port_.TakeWritten();
    int shown = 0;
    for (std::size_t at = 0; at < written.size(); at += 3) {
      const std::string byte = written.substr(at, 2);
      if (shown < bytes) begins += (begins.empty() ? "" : " ") + byte;
      shown = byte == "FF" ? 0 : shown + 1;
    }
    return begins;
  }

  TableTools tools_{senders_};
};

TEST_F(TableToolsTest, LabelsAreTheirOrderAndTheirTexts) {
  EXPECT_EQ(Send({.table = Table::OutputLabels}), 2);
  EXPECT_EQ(Begins(2), "F7 14 F9 14");
  EXPECT_EQ(Send({.table = Table::InputLabels}), 2);
  EXPECT_EQ(Begins(2), "F7 0A F9 0A");
}

TEST_F(TableToolsTest, InhibitsOfAllOutputsAndOfOne) {
  EXPECT_EQ(Send({.table = Table::Inhibits}), 16);
  EXPECT_EQ(Begins(2),
            "F5 00 F5 01 F5 02 F5 03 F5 04 F5 05 F5 06 F5 07 "
            "F5 08 F5 09 F5 0A F5 0B F5 0C F5 0D F5 0E F5 0F");
  EXPECT_EQ(Send({.table = Table::Inhibits, .station = 3}), 1);
  EXPECT_EQ(Begins(2), "F5 02");
}

TEST_F(TableToolsTest, RelaysOfAnOutput) {
  EXPECT_EQ(Send({.table = Table::Relays, .station = 3}), 1);
  EXPECT_EQ(Begins(2), "F4 02");
}

TEST_F(TableToolsTest, ButtonsOfAStation) {
  EXPECT_EQ(Send({.table = Table::Buttons, .station = 2}), 1);
  EXPECT_EQ(Begins(2), "FB 01");
}

TEST_F(TableToolsTest, Optos) {
  EXPECT_EQ(Send({.table = Table::Optos}), 1);
  EXPECT_EQ(Begins(1), "E1");
}

TEST_F(TableToolsTest, NothingIsSentThroughAPortThatIsClosed) {
  port_.Close();
  for (const db::TableKind& kind : db::kTables) {
    const Table table = kind.table;
    EXPECT_EQ(tools_.Send({.table = table}), std::nullopt) << static_cast<int>(table);
  }
  EXPECT_EQ(port_.TakeWritten(), "");
}

}  // namespace
}  // namespace app
