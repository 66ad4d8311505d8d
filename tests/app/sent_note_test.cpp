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

TEST(SentNote, OneToolIsOneNote) {
  SentNote note;
  QSignalSpy said(&note, &SentNote::NoteRequested);
  note.Add({Table::Inhibits}, 64);
  QCoreApplication::processEvents();
  ASSERT_EQ(said.count(), 1);
  EXPECT_EQ(said[0][0].toString(), QStringLiteral("Sent: inhibits, 64 outputs"));

  note.Add({Table::OutputLabels}, 2);
  note.Add({Table::InputLabels}, 2);
  QCoreApplication::processEvents();
  ASSERT_EQ(said.count(), 2);
  EXPECT_EQ(said[1][0].toString(), QStringLiteral("Sent: station labels; input labels"));
  QCoreApplication::processEvents();
  EXPECT_EQ(said.count(), 2);
}

}  // namespace
}  // namespace app
