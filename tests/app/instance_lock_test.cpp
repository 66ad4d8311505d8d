// SPDX-License-Identifier: MIT

#include "app/instance_lock.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <csignal>
#include <memory>

namespace app {
namespace {

TEST(InstanceLock, KeepsASecondOneOut) {
  const QTemporaryDir folder;
  InstanceLock first;
  ASSERT_EQ(first.Take(folder.path()), InstanceLock::Result::Taken);
  InstanceLock second;
  EXPECT_EQ(second.Take(folder.path()), InstanceLock::Result::HeldByAnother);
}

TEST(InstanceLock, AnotherFolderIsAnotherLock) {
  const QTemporaryDir folder;
  const QTemporaryDir other;
  InstanceLock first;
  ASSERT_EQ(first.Take(folder.path()), InstanceLock::Result::Taken);
  InstanceLock second;
  EXPECT_EQ(second.Take(other.path()), InstanceLock::Result::Taken);
}

TEST(InstanceLock, IsGivenBack) {
  const QTemporaryDir folder;
  auto first = std::make_unique<InstanceLock>();
  ASSERT_EQ(first->Take(folder.path()), InstanceLock::Result::Taken);
  first.reset();
  InstanceLock second;
  EXPECT_EQ(second.Take(folder.path()), InstanceLock::Result::Taken);
}

TEST(InstanceLock, DiesWithAKilledProcess) {
  const QTemporaryDir folder;
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t child = fork();
  if (child == 0) {
    InstanceLock lock;
    const char taken = lock.Take(folder.path()) == InstanceLock::Result::Taken ? 'y' : 'n';
    (void)!write(ready[1], &taken, 1);
    pause();
    _exit(0);
  }
  char taken = 0;
  ASSERT_EQ(read(ready[0], &taken, 1), 1);
  ASSERT_EQ(taken, 'y');
  InstanceLock second;
  EXPECT_EQ(second.Take(folder.path()), InstanceLock::Result::HeldByAnother);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  InstanceLock third;
  EXPECT_EQ(third.Take(folder.path()), InstanceLock::Result::Taken);
  close(ready[0]);
  close(ready[1]);
}

TEST(InstanceLock, AFolderThatDoesNotExistHasNone) {
  InstanceLock lock;
  EXPECT_EQ(lock.Take(QStringLiteral("/no/such/folder")), InstanceLock::Result::NoLocks);
}

}  // namespace
}  // namespace app
