// SPDX-License-Identifier: MIT

#include "config/lock_text.h"

#include <gtest/gtest.h>

#include <string>

namespace config {
namespace {

using Against = model::Locks::Against;

constexpr char kText[] =
    "{\n"
    "  \"console\": true,\n"
    "  \"outputs\": [\n"
    "    {\"output\": 6, \"panels\": true},\n"
    "    {\"output\": 256, \"panels\": false}\n"
    "  ]\n"
    "}\n";

TEST(LockText, HasALineForEachOutput) {
  const LockState state{.isConsoleLocked = true,
                        .outputs = {{6, Against::ConsoleAndPanels}, {256, Against::Console}}};
  EXPECT_EQ(WriteLocks(state), kText);
  LockState read;
  ASSERT_TRUE(ReadLocks(kText, &read));
  EXPECT_EQ(read, state);
}

TEST(LockText, OfNothingThatIsLocked) {
  EXPECT_EQ(WriteLocks({}), "{\n  \"console\": false,\n  \"outputs\": []\n}\n");
  LockState read{.isConsoleLocked = true, .outputs = {{1, Against::Console}}};
  ASSERT_TRUE(ReadLocks(WriteLocks({}), &read));
  EXPECT_EQ(read, LockState());
}

TEST(LockText, AnythingElseIsRefusedAsAWhole) {
  for (
      const char* const text : {
          "",
          "[]",
          "{}",
          R"({"console": true})",
          R"({"console": 1, "outputs": []})",
          R"({"console": true, "outputs": {}})",
          R"({"console": true, "outputs": [], "more": 1})",
          R"({"console": true, "outputs": []} more)",
          R"({"console": true, "outputs": [6]})",
          R"({"console": true, "outputs": [{"output": 6}]})",
          R"({"console": true, "outputs": [{"output": 6, "panels": 0}]})",
          R"({"console": true, "outputs": [{"output": 0, "panels": true}]})",
          R"({"console": true, "outputs": [{"output": 257, "panels": true}]})",
          R"({"console": true, "outputs": [{"output": 4294967302, "panels": true}]})",
          R"({"console": true, "outputs": [{"output": -1, "panels": true}]})",
          R"({"console": true, "outputs": [{"output": 6.0, "panels": true}]})",
          R"({"console": true, "outputs": [{"output": 6, "panels": true}, {"output": 6, "panels": true}]})",
      }) {
    LockState read{.isConsoleLocked = true, .outputs = {{1, Against::Console}}};
    EXPECT_FALSE(ReadLocks(text, &read)) << text;
    EXPECT_EQ(read, LockState()) << text;
  }
}

TEST(LockText, ALongOneIsRefused) {
  LockState read;
  EXPECT_FALSE(ReadLocks(WriteLocks({}) + std::string(kMostLockText, ' '), &read));
}

}  // namespace
}  // namespace config
