// SPDX-License-Identifier: MIT

#include "app/kept/lock_keeper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <optional>

#include "config/lock_text.h"
#include "files/whole_file.h"
#include "tests/support/another_user.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using model::Locks;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

// While the object lives nothing in the folder can be made, renamed or removed.
class ReadOnlyFolder {
 public:
  explicit ReadOnlyFolder(const std::filesystem::path& folder) : folder_(folder) {
    std::filesystem::permissions(folder_, std::filesystem::perms(0555));
    user_.emplace();
  }
  ~ReadOnlyFolder() {
    user_.reset();
    std::filesystem::permissions(folder_, std::filesystem::perms::owner_all);
  }
  ReadOnlyFolder(const ReadOnlyFolder&) = delete;
  ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

 private:
  const std::filesystem::path folder_;
  std::optional<test::AnotherUser> user_;
};

class LockKeeperTest : public testing::Test {
 protected:
  // A console that starts; what happens is kept.
  struct Run {
    explicit Run(const std::filesystem::path& path)
        : keeper({.locks = locks, .file = path, .window = window, .storeEdits = [this] {
                    return mayLock;
                  }}) {
      QObject::connect(&keeper, &LockKeeper::NoteRequested,
                       [this](const QString& note) { notes.push_back(note.toStdString()); });
      window.show();
      keeper.Begin();
    }

    bool HasBadge() { return test::Find<QLabel>(window, "aidLocked").isVisible(); }
    bool Hints() { return window.Hints().Has(Hint::LocksFail); }
    void Toggle() { window.LockConsoleCommand().trigger(); }
    QMessageBox* Question() {
      const auto boxes = test::ShownDialogs(window, "aidUnlockQuestion");
      return boxes.isEmpty() ? nullptr : qobject_cast<QMessageBox*>(boxes.front());
    }

    bool mayLock = true;
    std::vector<std::string> notes;
    model::Locks locks;
    CommandTable commands;
    MainWindow window{commands};
    LockKeeper keeper;
  };

  std::string Content() { return Content(path_); }
  static std::string Content(const std::filesystem::path& path) {
    std::string text;
    (void)files::ReadWhole(path, 1000, &text);
    return text;
  }
  // What is kept of damaged files, the eldest first.
  std::vector<std::filesystem::path> Kept() {
    std::vector<std::filesystem::path> kept;
    for (const auto& file : std::filesystem::directory_iterator(folder_.Path())) {
      if (file.path().filename().string().starts_with("Locks-damaged-20")) kept.push_back(file);
    }
    std::ranges::sort(kept, {}, [](const auto& path) { return path.stem(); });
    return kept;
  }
  void Write(const std::string& text) { ASSERT_TRUE(files::Replace(path_, text).ok()); }
  static void End(Run& run) { run.keeper.Finish(QDeadlineTimer(QDeadlineTimer::Forever)); }

  test::TemporaryFolder folder_;
  std::filesystem::path path_ = folder_ / "Locks.json";
};

TEST_F(LockKeeperTest, WithoutLocksThereIsNoFile) {
  Run run(path_);
  End(run);
  EXPECT_FALSE(std::filesystem::exists(path_));
  EXPECT_FALSE(run.HasBadge());
  EXPECT_FALSE(run.Hints());
}

TEST_F(LockKeeperTest, BothKindsSurviveTheRun) {
  {
    Run run(path_);
    run.locks.LockOutput(6, Locks::Against::ConsoleAndPanels);
    run.Toggle();
    EXPECT_TRUE(run.HasBadge());
    End(run);
  }
  Run run(path_);
  EXPECT_TRUE(run.locks.IsLockedForPanels(6));
  EXPECT_TRUE(run.locks.IsConsoleLocked());
  EXPECT_TRUE(run.HasBadge());
  run.locks.UnlockOutput(6);
  End(run);
  EXPECT_EQ(Content(), "{\n  \"console\": true,\n  \"outputs\": []\n}\n");
}

TEST_F(LockKeeperTest, UnlockingTheConsoleTakesASecondStep) {
  Run run(path_);
  EXPECT_EQ(run.window.LockConsoleCommand().text(), QStringLiteral("Loc&k Console"));
  run.Toggle();
  EXPECT_TRUE(run.locks.IsConsoleLocked());
  EXPECT_EQ(run.window.LockConsoleCommand().text(), QStringLiteral("Unloc&k Console…"));
  run.Toggle();
  ASSERT_NE(run.Question(), nullptr);
  EXPECT_TRUE(run.locks.IsConsoleLocked());
  QTest::keyClick(run.Question(), Qt::Key_Return);
  QCoreApplication::processEvents();
  EXPECT_TRUE(run.locks.IsConsoleLocked()) << "Enter keeps it locked";
  ASSERT_EQ(run.Question(), nullptr);
  run.Toggle();
  ASSERT_NE(run.Question(), nullptr);
  test::Find<QPushButton>(*run.Question(), "aidUnlock").click();
  QCoreApplication::processEvents();
  EXPECT_FALSE(run.locks.IsConsoleLocked());
  EXPECT_FALSE(run.HasBadge());
  EXPECT_THAT(run.notes, ElementsAre("Console locked", "Console unlocked"));
}

TEST_F(LockKeeperTest, WhatIsTypedIsStoredFirst) {
  Run run(path_);
  run.mayLock = false;
  run.Toggle();
  EXPECT_FALSE(run.locks.IsConsoleLocked());
}

TEST_F(LockKeeperTest, ADamagedFileCostsAHintAndIsKept) {
  Write("{\"console\": true");
  Run run(path_);
  EXPECT_FALSE(run.locks.IsConsoleLocked());
  EXPECT_TRUE(run.window.Hints().Has(Hint::LocksLost));
  const auto kept = Kept();
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_THAT(run.notes,
              ElementsAre("What was locked is not locked any more: Locks.json is damaged; it is "
                          "kept as " +
                          kept[0].filename().string()));
  End(run);
  EXPECT_FALSE(std::filesystem::exists(path_)) << "nothing is written unasked";
  run.locks.LockOutput(2, Locks::Against::Console);
  End(run);
  EXPECT_EQ(Content(),
            "{\n  \"console\": false,\n  \"outputs\": [\n"
            "    {\"output\": 2, \"panels\": false}\n  ]\n}\n");
  EXPECT_EQ(Content(kept[0]), "{\"console\": true");
}

TEST_F(LockKeeperTest, ASecondDamagedFileLeavesTheFirstAsItIs) {
  for (const char* const text : {"{\"outputs\": [1", "{\"outputs\": [2"}) {
    Write(text);
    Run run(path_);
    EXPECT_TRUE(run.window.Hints().Has(Hint::LocksLost));
    End(run);
  }
  const auto kept = Kept();
  ASSERT_EQ(kept.size(), 2U);
  EXPECT_EQ(Content(kept[0]), "{\"outputs\": [1");
  EXPECT_EQ(Content(kept[1]), "{\"outputs\": [2");
}

TEST_F(LockKeeperTest, AFileThatCannotBeReadIsKept) {
  const std::string tooLong(config::kMostLockText + 1, ' ');
  Write(tooLong);
  Run run(path_);
  EXPECT_TRUE(run.window.Hints().Has(Hint::LocksLost));
  const auto kept = Kept();
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_EQ(std::filesystem::file_size(kept[0]), tooLong.size());
  EXPECT_THAT(run.notes,
              ElementsAre(AllOf(StartsWith("What was locked is not locked any more: "),
                                EndsWith("; the file is kept as " + kept[0].filename().string()))));
  run.locks.LockOutput(2, Locks::Against::Console);
  End(run);
  EXPECT_THAT(Content(), HasSubstr("\"output\": 2"));
  EXPECT_EQ(std::filesystem::file_size(kept[0]), tooLong.size());
}

TEST_F(LockKeeperTest, WhatCouldNotBeKeptIsNotWrittenOver) {
  Write("{\"console\": true");
  std::optional<Run> run;
  {
    const ReadOnlyFolder readOnly(folder_.Path());
    run.emplace(path_);
    EXPECT_THAT(run->notes,
                ElementsAre("What was locked is not locked any more: Locks.json is damaged"));
    run->locks.LockOutput(2, Locks::Against::Console);
    End(*run);
    EXPECT_TRUE(run->Hints());
  }
  EXPECT_EQ(Content(), "{\"console\": true");
  run->locks.LockOutput(3, Locks::Against::Console);
  End(*run);
  EXPECT_FALSE(run->Hints());
  EXPECT_THAT(Content(), HasSubstr("\"output\": 3"));
  const auto kept = Kept();
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_EQ(Content(kept[0]), "{\"console\": true");
}

TEST_F(LockKeeperTest, AFailingDiskCostsAHint) {
  Run run(path_);
  std::filesystem::create_directory(path_);
  run.locks.LockOutput(2, Locks::Against::Console);
  End(run);
  EXPECT_TRUE(run.Hints());
  EXPECT_TRUE(run.locks.IsLocked(2));
  std::filesystem::remove(path_);
  run.locks.LockOutput(3, Locks::Against::Console);
  End(run);
  EXPECT_FALSE(run.Hints());
}

TEST_F(LockKeeperTest, AFileThatCannotBeWrittenIsTriedAgainByItself) {
  Run run(path_);
  std::filesystem::create_directory(path_);
  run.locks.LockOutput(2, Locks::Against::Console);
  ASSERT_TRUE(QTest::qWaitFor([&] { return run.Hints(); }, 30000));
  std::filesystem::remove(path_);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !run.Hints(); }, 30000));
  EXPECT_EQ(Content(),
            "{\n  \"console\": false,\n  \"outputs\": [\n"
            "    {\"output\": 2, \"panels\": false}\n  ]\n}\n");
}

}  // namespace
}  // namespace app
