// SPDX-License-Identifier: MIT

#include "app/run/instance_lock.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
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

// Another user of the folder must not take the file that he may not write for a folder that
// cannot be locked.
TEST(InstanceLock, KeepsAnotherUserOut) {
  const QTemporaryDir folder;
  ASSERT_EQ(chmod(folder.path().toLocal8Bit().constData(), 0777), 0);
  const mode_t umaskBefore = umask(077);
  InstanceLock first;
  const InstanceLock::Result taken = first.Take(folder.path());
  umask(umaskBefore);
  ASSERT_EQ(taken, InstanceLock::Result::Taken);
  const QString file = folder.filePath(QStringLiteral("WorkingDb.lock"));
  for (const mode_t mode : {0666, 0444}) {
    if (mode != 0666) {
      ASSERT_EQ(chmod(file.toLocal8Bit().constData(), mode), 0);
    }
    const pid_t child = fork();
    if (child == 0) {
      // The superuser may write everything and becomes somebody else for this.
      if (geteuid() == 0 && seteuid(65534) != 0) _exit(99);
      InstanceLock second;
      _exit(static_cast<int>(second.Take(folder.path())));
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), static_cast<int>(InstanceLock::Result::HeldByAnother)) << mode;
  }
}

TEST(InstanceLock, AFolderThatDoesNotExistHasNone) {
  InstanceLock lock;
  EXPECT_EQ(lock.Take(QStringLiteral("/no/such/folder")), InstanceLock::Result::Failed);
  EXPECT_EQ(lock.Reason(), "Cannot lock WorkingDb.lock: No such file or directory");
}

// Whoever made it a link to another file must not have that one made, opened or changed.
TEST(InstanceLock, IsNotTakenThroughALink) {
  const QTemporaryDir folder;
  const QString victim = folder.filePath(QStringLiteral("victim"));
  ASSERT_EQ(symlink("victim",
                    folder.filePath(QStringLiteral("WorkingDb.lock")).toLocal8Bit().constData()),
            0);
  InstanceLock lock;
  EXPECT_EQ(lock.Take(folder.path()), InstanceLock::Result::Failed);
  EXPECT_EQ(lock.Reason(), "Cannot lock WorkingDb.lock: It is no ordinary file");
  EXPECT_FALSE(QFile::exists(victim));
  QFile file(victim);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
  EXPECT_EQ(lock.Take(folder.path()), InstanceLock::Result::Failed);
  EXPECT_EQ(file.permissions() & QFile::WriteOther, QFile::Permissions());
}

TEST(InstanceLock, APipeInItsPlaceIsNotWaitedFor) {
  const QTemporaryDir folder;
  const QByteArray name = folder.filePath(QStringLiteral("WorkingDb.lock")).toLocal8Bit();
  ASSERT_EQ(mkfifo(name.constData(), 0666), 0);
  InstanceLock lock;
  EXPECT_EQ(lock.Take(folder.path()), InstanceLock::Result::Failed);
}

// Not even where everybody may write in the folder.
TEST(InstanceLock, IsNeverEverybodysToWrite) {
  const QTemporaryDir folder;
  ASSERT_EQ(chmod(folder.path().toLocal8Bit().constData(), 01777), 0);
  const mode_t umaskBefore = umask(0);
  InstanceLock lock;
  const InstanceLock::Result taken = lock.Take(folder.path());
  umask(umaskBefore);
  ASSERT_EQ(taken, InstanceLock::Result::Taken);
  EXPECT_EQ(
      QFile::permissions(folder.filePath(QStringLiteral("WorkingDb.lock"))) & QFile::WriteOther,
      QFile::Permissions());
}

}  // namespace
}  // namespace app
