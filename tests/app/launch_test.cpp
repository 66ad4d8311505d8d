// SPDX-License-Identifier: MIT

#include "app/launch.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QSettings>
#include <QTest>

#include "tests/support/temporary_folder.h"

namespace app {
namespace {

namespace fs = std::filesystem;

class LaunchTest : public testing::Test {
 protected:
  LaunchTest() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, Name(folder_ / "settings"));
  }

  static QString Name(const fs::path& path) { return QString::fromStdString(path.string()); }

  // The boxes that show: title and text.
  static std::vector<std::string> Boxes() {
    std::vector<std::string> boxes;
    for (const QWidget* const window : QApplication::topLevelWidgets()) {
      const auto* const box = qobject_cast<const QMessageBox*>(window);
      if (box == nullptr || !box->isVisible()) continue;
      boxes.push_back((box->windowTitle() + u'|' + box->text()).toStdString());
    }
    return boxes;
  }

  static bool HasMainWindow() {
    const auto windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [](const QWidget* window) {
      return window->objectName() == QLatin1String("frmMain") && window->isVisible();
    });
  }

  test::TemporaryFolder folder_;
  const fs::path program_ = folder_ / "program";
  const fs::path user_ = folder_ / "user";
};

// As on a network drive that is away for a while.
TEST_F(LaunchTest, AFolderThatCannotBeUsedIsSaidAndTriedAgain) {
  Launch launch(Name(program_), Name(user_));
  launch.Begin();
  const std::vector<std::string> expected{
      "Error Processing|Error in Opening Program Folder\rError # 75 - Cannot write in " +
      program_.string() + ": No such file or directory"};
  ASSERT_TRUE(QTest::qWaitFor([&] { return Boxes() == expected; }, 60000));
  EXPECT_FALSE(HasMainWindow());
  EXPECT_FALSE(fs::exists(user_));
  fs::create_directory(program_);
  ASSERT_TRUE(QTest::qWaitFor([] { return HasMainWindow(); }, 60000));
  EXPECT_TRUE(fs::exists(program_ / "WorkingDb.md$"));
  EXPECT_FALSE(fs::exists(user_));
  for (const std::string& box : Boxes()) EXPECT_EQ(box.find("Program Folder"), std::string::npos);
}

// Nobody can tell whether another console works there.
TEST_F(LaunchTest, WithoutALockNoConsoleStarts) {
  fs::create_directory(program_);
  fs::create_symlink("elsewhere", program_ / "WorkingDb.lock");
  Launch launch(Name(program_), Name(user_));
  launch.Begin();
  const std::vector<std::string> expected{
      "Error Processing|Error in Starting In This Folder\rError # 75 - Cannot lock "
      "WorkingDb.lock: It is no ordinary file"};
  ASSERT_TRUE(QTest::qWaitFor([&] { return Boxes() == expected; }, 60000));
  EXPECT_FALSE(HasMainWindow());
  EXPECT_FALSE(fs::exists(program_ / "Tesk.mdb"));
  EXPECT_FALSE(fs::exists(program_ / "elsewhere"));
}

}  // namespace
}  // namespace app
