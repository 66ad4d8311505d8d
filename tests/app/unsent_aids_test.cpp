// SPDX-License-Identifier: MIT

#include "app/transfer/unsent_aids.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QSignalSpy>

#include "stations/record.h"
#include "tests/support/hex.h"
#include "tests/views/gui_support.h"
#include "tests/views/view_console.h"
#include "views/words.h"

namespace app {
namespace {

class UnsentAidsTest : public testing::Test {
 protected:
  void Edit(std::string_view field, const jet::Value& value) {
    console_.GoToStation(3);
    stations::Record record(*console_.Stations());
    record.Set(field, value);
    ASSERT_TRUE(record.Commit({console_.changes, stations::Origin::Operator}).ok());
  }

  QLabel& Badge() { return test::Find<QLabel>(status_, "aidUnsent"); }
  QString HintText() { return test::Find<QLabel>(hints_, "aidHintText").text(); }

  test::ViewConsole console_{8};
  StatusBar status_;
  HintStrip hints_;
  QAction send_;
  UnsentAids aids_{{.model = console_.model,
                    .unsent = console_.unsent,
                    .status = status_,
                    .hints = hints_,
                    .sendChanges = send_}};
};

TEST_F(UnsentAidsTest, TheStatusBarSaysSinceWhen) {
  status_.resize(1600, 30);
  status_.show();
  console_.unsentMessages.Begin({});
  EXPECT_TRUE(Badge().isHidden());
  Edit("Inhibits", "10000000");
  const QString words =
      QStringLiteral("Unsent since %1: inhibits of output 3").arg(views::DayWords(test::kToday));
  EXPECT_EQ(Badge().text(), words);
  EXPECT_FALSE(Badge().isHidden());
  EXPECT_EQ(Badge().toolTip(),
            words + QStringLiteral("\nThe switcher was last known to hold something else."));
  Edit("Inhibits", "00000000");
  EXPECT_TRUE(Badge().isHidden());
}

TEST_F(UnsentAidsTest, ADatabaseThatTheSwitcherNeverSawIsSpokenOfWhenItIsThere) {
  console_.unsentMessages.Begin({});
  aids_.Update();
  EXPECT_TRUE(hints_.isHidden()) << "without a link there is nothing to say";
  console_.model.LinkStatus = {1, 1, 0};
  aids_.Update();
  EXPECT_FALSE(hints_.isHidden());
  EXPECT_EQ(HintText(),
            QStringLiteral("The switcher was never seen to hold this database. Send all of it, or "
                           "retrieve what the switcher holds."));
  const std::map<switcher::TablePart, switcher::MessagePrint> messages =
      switcher::LoadPrints(*console_.database, console_.model);
  const std::size_t count = messages.size();
  std::size_t seen = 0;
  for (const auto& [part, print] : messages) {
    EXPECT_FALSE(hints_.isHidden()) << "one that it holds says nothing of the others";
    console_.unsentMessages.NoteHeld(part, print.digest);
    if (++seen == count) break;
    EXPECT_EQ(HintText(),
              QStringLiteral("The switcher was never seen to hold all of this database: not known "
                             "are %1 of %2 messages. Send all of it, or retrieve what the switcher "
                             "holds.")
                  .arg(count - seen)
                  .arg(count));
  }
  EXPECT_TRUE(hints_.isHidden());
}

TEST_F(UnsentAidsTest, TheCommandHasABadgeWhileSomethingIsUnsent) {
  console_.unsentMessages.Begin({});
  const QImage before = send_.icon().pixmap(32).toImage();
  Edit("Inhibits", "10000000");
  EXPECT_NE(send_.icon().pixmap(32).toImage(), before);
  Edit("Inhibits", "00000000");
  EXPECT_EQ(send_.icon().pixmap(32).toImage(), before);
}

// The file is told of every message of a long table; to draw it all anew each time would take long.
TEST_F(UnsentAidsTest, WhatIsSentOfATableIsToldToTheFileAndDrawsNothing) {
  console_.unsentMessages.Begin({});
  console_.model.LinkStatus = {1, 1, 0};
  Edit("Inhibits", "10000000");
  const QSignalSpy held(&console_.unsent, &views::UnsentTables::HeldChanged);
  const QSignalSpy changed(&console_.unsent, &views::UnsentTables::Changed);
  console_.unsentMessages.TableMessageSent(test::FromHex("F5 02 00 01 00 03 FF"));
  EXPECT_EQ(held.size(), 1);
  EXPECT_EQ(changed.size(), 0);
  EXPECT_FALSE(Badge().isHidden());
}

}  // namespace
}  // namespace app
