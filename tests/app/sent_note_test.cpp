// SPDX-License-Identifier: MIT
//
// What the status bar says when a tool of a view has sent its tables.

#include "app/shell/sent_note.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSignalSpy>

namespace app {
namespace {

using switcher::Table;
using views::UnsentTables;

TEST(SentNote, OneToolIsOneNote) {
  UnsentTables unsent;
  SentNote note(unsent);
  QSignalSpy said(&note, &SentNote::NoteRequested);
  unsent.NoteSent({Table::Inhibits}, 64, UnsentTables::Sender::Tool);
  QCoreApplication::processEvents();
  ASSERT_EQ(said.count(), 1);
  EXPECT_EQ(said[0][0].toString(), QStringLiteral("Sent: inhibits, 64 outputs"));

  unsent.NoteSent({Table::OutputLabels}, 2, UnsentTables::Sender::Tool);
  unsent.NoteSent({Table::InputLabels}, 2, UnsentTables::Sender::Tool);
  QCoreApplication::processEvents();
  ASSERT_EQ(said.count(), 2);
  EXPECT_EQ(said[1][0].toString(), QStringLiteral("Sent: station labels; input labels"));
  QCoreApplication::processEvents();
  EXPECT_EQ(said.count(), 2);
}

TEST(SentNote, ADownloadTellsOfItself) {
  UnsentTables unsent;
  SentNote note(unsent);
  const QSignalSpy said(&note, &SentNote::NoteRequested);
  unsent.NoteSent({Table::Inhibits}, 64, UnsentTables::Sender::Download);
  unsent.NoteFailed({Table::Relays});
  QCoreApplication::processEvents();
  EXPECT_EQ(said.count(), 0);
}

}  // namespace
}  // namespace app
