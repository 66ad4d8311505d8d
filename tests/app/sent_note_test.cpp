// SPDX-License-Identifier: MIT
//
// What the status bar says when a tool of a view has sent its tables.

#include "app/transfer/sent_note.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSignalSpy>

#include "tests/support/one_day.h"

namespace app {
namespace {

using switcher::Table;
using views::UnsentTables;

class SentNoteTest : public testing::Test {
 protected:
  model::SystemModel model_;
  stations::Changes changes_;
  switcher::UnsentMessages messages_{{.model = model_,
                                      .database = [] { return nullptr; },
                                      .changes = changes_,
                                      .today = [] { return test::kToday; }}};
  UnsentTables unsent_{messages_};
};

TEST_F(SentNoteTest, OneToolIsOneNote) {
  SentNote note(unsent_);
  QSignalSpy said(&note, &SentNote::NoteRequested);
  unsent_.NoteSent({Table::Inhibits}, 64, UnsentTables::Sender::Tool);
  QCoreApplication::processEvents();
  ASSERT_EQ(said.count(), 1);
  EXPECT_EQ(said[0][0].toString(), QStringLiteral("Sent: inhibits, 64 outputs"));

  unsent_.NoteSent({Table::OutputLabels}, 2, UnsentTables::Sender::Tool);
  unsent_.NoteSent({Table::InputLabels}, 2, UnsentTables::Sender::Tool);
  QCoreApplication::processEvents();
  ASSERT_EQ(said.count(), 2);
  EXPECT_EQ(said[1][0].toString(), QStringLiteral("Sent: station labels; input labels"));
  QCoreApplication::processEvents();
  EXPECT_EQ(said.count(), 2);
}

TEST_F(SentNoteTest, ADownloadTellsOfItself) {
  SentNote note(unsent_);
  const QSignalSpy said(&note, &SentNote::NoteRequested);
  unsent_.NoteSent({Table::Inhibits}, 64, UnsentTables::Sender::Download);
  unsent_.NoteFailed({Table::Relays});
  QCoreApplication::processEvents();
  EXPECT_EQ(said.count(), 0);
}

}  // namespace
}  // namespace app
