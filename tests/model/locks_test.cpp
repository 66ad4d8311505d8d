// SPDX-License-Identifier: MIT

#include "model/locks.h"

#include <gtest/gtest.h>

namespace {

using model::Locks;

class Changes : public model::LockObserver {
 public:
  void LocksChanged() override { ++count; }
  int count = 0;
};

TEST(Locks, AnOutputIsLockedAgainstTheConsoleAlone) {
  Locks locks;
  locks.LockOutput(6, Locks::Against::Console);
  EXPECT_TRUE(locks.IsLocked(6));
  EXPECT_FALSE(locks.IsLockedForPanels(6));
  EXPECT_FALSE(locks.IsLocked(7));
  locks.UnlockOutput(6);
  EXPECT_FALSE(locks.IsLocked(6));
}

TEST(Locks, AnOutputIsLockedAgainstPanelsToo) {
  Locks locks;
  locks.LockOutput(256, Locks::Against::ConsoleAndPanels);
  EXPECT_TRUE(locks.IsLocked(256));
  EXPECT_TRUE(locks.IsLockedForPanels(256));
  locks.LockOutput(256, Locks::Against::Console);
  EXPECT_TRUE(locks.IsLocked(256));
  EXPECT_FALSE(locks.IsLockedForPanels(256));
}

TEST(Locks, AChangeIsToldAndNothingElse) {
  Locks locks;
  Changes changes;
  locks.AddObserver(changes);
  locks.LockOutput(1, Locks::Against::Console);
  locks.LockOutput(1, Locks::Against::Console);
  EXPECT_EQ(changes.count, 1);
  locks.LockOutput(1, Locks::Against::ConsoleAndPanels);
  EXPECT_EQ(changes.count, 2);
  locks.UnlockOutput(2);
  EXPECT_EQ(changes.count, 2);
  locks.UnlockOutput(1);
  EXPECT_EQ(changes.count, 3);
  locks.LockConsole(false);
  EXPECT_EQ(changes.count, 3);
  locks.LockConsole(true);
  EXPECT_EQ(changes.count, 4);
  EXPECT_TRUE(locks.IsConsoleLocked());
  locks.RemoveObserver(changes);
  locks.LockConsole(false);
  EXPECT_EQ(changes.count, 4);
}

}  // namespace
