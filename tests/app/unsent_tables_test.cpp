// SPDX-License-Identifier: MIT

#include "app/unsent_tables.h"

#include <gtest/gtest.h>

namespace app {
namespace {

using switcher::Table;

TEST(UnsentTables, AreNamedInTheOrderOfADownload) {
  UnsentTables unsent;
  EXPECT_EQ(unsent.Names(), QString());
  for (const Table table : {Table::Buttons, Table::Relays, Table::Inhibits, Table::InputLabels,
                            Table::OutputLabels, Table::Optos}) {
    unsent.Edited(table, 1);
  }
  EXPECT_EQ(unsent.Names(),
            QStringLiteral("optos, station labels, input labels, inhibits, relays, buttons"));
  unsent.Clear();
  EXPECT_EQ(unsent.Names(), QString());
}

TEST(UnsentTables, AreSentWhenEveryStationIs) {
  UnsentTables unsent;
  unsent.Edited(Table::Buttons, 3);
  unsent.Edited(Table::Buttons, 3);
  unsent.Edited(Table::Buttons, 7);
  unsent.Sent(Table::Buttons, 3);
  unsent.Sent(Table::Relays, 7);
  EXPECT_TRUE(unsent.Has(Table::Buttons));
  unsent.Sent(Table::Buttons, 7);
  EXPECT_FALSE(unsent.Has(Table::Buttons));
  unsent.Edited(Table::Inhibits, 3);
  unsent.Edited(Table::Inhibits, 64);
  unsent.Sent(Table::Inhibits, 9999);
  EXPECT_FALSE(unsent.Has(Table::Inhibits));
}

}  // namespace
}  // namespace app
