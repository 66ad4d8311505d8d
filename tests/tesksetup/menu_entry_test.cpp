// SPDX-License-Identifier: MIT

#include "tools/tesksetup/menu_entry.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace tesksetup {
namespace {

using test::ReadFile;
using test::WriteFile;

const QString kStarter = QStringLiteral("/usr/bin/tesksetup");

ConsolePlan Plan(const char* name, const char* folder) {
  return {.name = QString::fromUtf8(name), .folder = QString::fromUtf8(folder), .device = {}};
}

TEST(MenuEntry, StartsTheConsoleOfItsFolder) {
  EXPECT_EQ(MenuEntry(Plan("Studio A", "/home/op/Intercom/Studio A"), kStarter).toStdString(),
            "[Desktop Entry]\n"
            "Type=Application\n"
            "Name=Orvo Intercom Control - Studio A\n"
            "GenericName=Intercom Console\n"
            "Comment=/home/op/Intercom/Studio A\n"
            "TryExec=/usr/bin/tesksetup\n"
            "Exec=\"/usr/bin/tesksetup\" --start \"/home/op/Intercom/Studio A\"\n"
            "Icon=teskctl\n"
            "Terminal=false\n"
            "StartupNotify=true\n"
            "Categories=AudioVideo;Audio;\n");
}

TEST(MenuEntry, WhatTheDesktopWouldReadOtherwiseIsQuoted) {
  const std::string entry =
      MenuEntry(Plan("50% \\ \"Z\u00fcrich\"", "/srv/50% \\ $x `y` \"z\""), kStarter).toStdString();
  EXPECT_NE(entry.find("\nName=Orvo Intercom Control - 50% \\\\ \"Z\u00fcrich\"\n"),
            std::string::npos)
      << entry;
  // Once as an argument between quotes, and each backslash of that once more as a value.
  EXPECT_NE(entry.find(R"( --start "/srv/50%% \\\\ \\$x \\`y\\` \\"z\\"")"
                       "\n"),
            std::string::npos)
      << entry;
}

TEST(MenuEntry, EachFolderHasOneOfItsOwn) {
  const test::TemporaryFolder menu;
  const QString folder = QString::fromStdString(menu / "applications");
  const ConsolePlan one = Plan("One", "/srv/one");
  EXPECT_FALSE(IsInMenu(one.folder, folder));
  ASSERT_TRUE(AddToMenu(one, kStarter, folder).ok());
  EXPECT_TRUE(IsInMenu(one.folder, folder));
  EXPECT_FALSE(IsInMenu(QStringLiteral("/srv/two"), folder));
  ASSERT_TRUE(AddToMenu(Plan("Two", "/srv/two"), kStarter, folder).ok());
  EXPECT_NE(MenuEntryName(one.folder), MenuEntryName(QStringLiteral("/srv/two")));
  EXPECT_EQ(MenuEntryName(one.folder), MenuEntryName(QStringLiteral("/srv/one/")));

  ASSERT_TRUE(AddToMenu(Plan("Another name", "/srv/one"), kStarter, folder).ok());
  const auto file = menu / "applications" / MenuEntryName(one.folder).toStdString();
  EXPECT_NE(ReadFile(file).find("- Another name\n"), std::string::npos);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(menu / "applications"), {}), 2);
}

TEST(MenuEntry, OneThatCannotBeWrittenIsNamed) {
  const test::TemporaryFolder menu;
  WriteFile(menu / "applications", "a file");
  const model::Status status =
      AddToMenu(Plan("One", "/srv/one"), kStarter, QString::fromStdString(menu / "applications"));
  EXPECT_TRUE(
      status.Description().starts_with("Cannot write " + (menu / "applications/teskctl-").string()))
      << status.Description();
}

}  // namespace
}  // namespace tesksetup
