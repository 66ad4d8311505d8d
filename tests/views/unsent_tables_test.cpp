// SPDX-License-Identifier: MIT

#include "views/unsent_tables.h"

#include <gtest/gtest.h>

#include "views/words.h"

namespace views {
namespace {

using switcher::Table;

TEST(UnsentTables, AreNamedInTheOrderOfADownload) {
  UnsentTables unsent;
  EXPECT_EQ(unsent.Names(), QString());
  for (const Table table : {Table::Buttons, Table::Relays, Table::Inhibits, Table::InputLabels,
                            Table::OutputLabels, Table::Optos}) {
    unsent.NoteEdited({table, 1});
  }
  EXPECT_EQ(unsent.Names(),
            QStringLiteral("optos, station labels, input labels, inhibits, relays, buttons"));
  unsent.Clear();
  EXPECT_EQ(unsent.Names(), QString());
}

TEST(UnsentTables, AreSentWhenEveryStationIs) {
  UnsentTables unsent;
  unsent.NoteEdited({Table::Buttons, 3});
  unsent.NoteEdited({Table::Buttons, 3});
  unsent.NoteEdited({Table::Buttons, 7});
  unsent.NoteSent({Table::Buttons, 3}, 1, UnsentTables::Sender::Tool);
  unsent.NoteSent({Table::Relays, 7}, 1, UnsentTables::Sender::Tool);
  EXPECT_TRUE(unsent.Has(Table::Buttons));
  unsent.NoteSent({Table::Buttons, 7}, 1, UnsentTables::Sender::Tool);
  EXPECT_FALSE(unsent.Has(Table::Buttons));
  unsent.NoteEdited({Table::Inhibits, 3});
  unsent.NoteEdited({Table::Inhibits, 64});
  unsent.NoteSent({Table::Inhibits, 9999}, 1, UnsentTables::Sender::Tool);
  EXPECT_FALSE(unsent.Has(Table::Inhibits));
}

TEST(UnsentTables, TellsWhatIsNotedOnceItCounts) {
  UnsentTables unsent;
  QStringList told;
  const auto tell = [&](const char* what) {
    return [&told, &unsent, what](const switcher::TablePart& part) {
      told.append(QStringLiteral("%1 %2; unsent: %3")
                      .arg(QLatin1String(what), TableWords(part), unsent.Names()));
    };
  };
  QObject::connect(&unsent, &UnsentTables::Edited, tell("edited"));
  QObject::connect(&unsent, &UnsentTables::Sent, tell("sent"));
  QObject::connect(&unsent, &UnsentTables::Failed, tell("failed"));
  QObject::connect(&unsent, &UnsentTables::Changed,
                   [&] { told.append(QStringLiteral("unsent: ") + unsent.Names()); });
  unsent.NoteEdited({Table::Buttons, 3});
  unsent.NoteFailed({Table::Buttons, 3});
  unsent.NoteSent({Table::Buttons, 3}, 1, UnsentTables::Sender::Download);
  unsent.Clear();
  EXPECT_EQ(told, QStringList({QStringLiteral("edited buttons 3; unsent: buttons"),
                               QStringLiteral("unsent: buttons"),
                               QStringLiteral("failed buttons 3; unsent: buttons"),
                               QStringLiteral("sent buttons 3; unsent: "),
                               QStringLiteral("unsent: "), QStringLiteral("unsent: ")}));
}

}  // namespace
}  // namespace views
