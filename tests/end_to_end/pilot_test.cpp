// SPDX-License-Identifier: MIT
//
// The pilot that drives a console for tests and pictures, and how it ends.

#include <gtest/gtest.h>

#include "tests/end_to_end/console_process.h"

namespace test {
namespace {

TEST(PilotTest, LeavesAndNobodyDrivesTheConsoleAnyMore) {
  const ConsoleFolder folder;
  folder.WriteSettings("/dev/null/none");
  ConsoleProcess console(folder);
  ASSERT_TRUE(console.IsUp());
  const std::filesystem::path socket = console.Socket();
  EXPECT_TRUE(std::filesystem::exists(socket));

  EXPECT_TRUE(console.Ask({{QStringLiteral("do"), QStringLiteral("leave")}})
                  .value(QLatin1String("ok"))
                  .toBool());
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return !std::filesystem::exists(socket); }));
  pilot::Client another;
  EXPECT_FALSE(another.Connect(QString::fromStdString(socket.string()), 100));
  EXPECT_FALSE(console
                   .Ask({{QStringLiteral("do"), QStringLiteral("find")},
                         {QStringLiteral("object"), QStringLiteral("frmMain")}})
                   .value(QLatin1String("ok"))
                   .toBool());
  EXPECT_TRUE(console.Lives());
}

// As of one that is being killed: its windows were not closed.
TEST(PilotTest, WhatAConsoleDoesNotShowIsUnknownWhenItDoesNotAnswer) {
  const ConsoleFolder folder;
  folder.WriteSettings("/dev/null/none");
  ConsoleProcess console(folder);
  ASSERT_TRUE(console.IsUp());
  const auto isClosed = [&] { return !console.IsShown("frmXmap"); };
  EXPECT_TRUE(console.LivesUntil([&] { return !isClosed(); }));
  console.Ask({{QStringLiteral("do"), QStringLiteral("leave")}});
  EXPECT_FALSE(console.LivesUntil(isClosed));
  EXPECT_TRUE(console.Lives());
}

}  // namespace
}  // namespace test
