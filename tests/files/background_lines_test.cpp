// SPDX-License-Identifier: MIT

#include "files/background_lines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

namespace files {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

Outcome Failed() {
  return {.error = std::make_error_code(std::errc::no_space_on_device), .text = "full"};
}

std::string Gap(std::size_t lines) { return "missing " + std::to_string(lines); }

TEST(BackgroundLines, WhatCouldNotBeWrittenIsCounted) {
  std::vector<std::string> written;
  int calls = 0;
  {
    BackgroundLines lines(
        [&](std::string_view line) {
          ++calls;
          if (calls == 2 || calls == 3) return Failed();
          written.emplace_back(line);
          return Outcome();
        },
        Gap, [](const Outcome&) {});
    for (int line = 1; line <= 5; ++line) EXPECT_TRUE(lines.Add(std::to_string(line)));
  }
  EXPECT_THAT(written, ElementsAre("1", "missing 2", "4", "5"));
}

TEST(BackgroundLines, AreWrittenInTheirOrderAndAllBeforeTheEnd) {
  std::vector<std::string> written;
  {
    BackgroundLines lines(
        [&](std::string_view line) {
          written.emplace_back(line);
          return Outcome();
        },
        Gap, [](const Outcome&) {});
    for (int line = 0; line < 500; ++line) EXPECT_TRUE(lines.Add(std::to_string(line)));
  }
  ASSERT_THAT(written, SizeIs(500));
  for (int line = 0; line < 500; ++line) {
    EXPECT_EQ(written[static_cast<std::size_t>(line)], std::to_string(line));
  }
}

TEST(BackgroundLines, ADiskThatDoesNotAnswerHoldsUpNobodyAndCostsLinesOnly) {
  std::promise<void> begun;
  std::promise<void> answer;
  const std::shared_future<void> answered = answer.get_future().share();
  std::vector<std::string> written;
  {
    BackgroundLines lines(
        [&](std::string_view line) {
          if (written.empty()) begun.set_value();
          answered.wait();
          written.emplace_back(line);
          return Outcome();
        },
        Gap, [](const Outcome&) {});
    ASSERT_TRUE(lines.Add("first"));
    begun.get_future().wait();
    for (std::size_t line = 0; line < BackgroundLines::kWaiting; ++line) {
      ASSERT_TRUE(lines.Add("waits"));
    }
    EXPECT_FALSE(lines.Add("too many"));
    EXPECT_THAT(written, SizeIs(0));
    answer.set_value();
  }
  ASSERT_THAT(written, SizeIs(BackgroundLines::kWaiting + 1));
  EXPECT_EQ(written.back(), "waits");
}

// A share that has gone: whoever ends the program does not wait for it, and a line that it takes
// after all is the last.
TEST(BackgroundLines, ADiskThatNeverAnswersIsGivenUpAtTheEnd) {
  struct Disk {
    std::promise<void> begun;
    std::promise<void> answer;
    std::promise<void> left;
    std::atomic<int> written = 0;
  };
  const auto disk = std::make_shared<Disk>();
  bool isTold = false;
  {
    BackgroundLines lines(
        [disk](std::string_view) {
          disk->begun.set_value();
          disk->answer.get_future().wait();
          ++disk->written;
          return Failed();
        },
        [left = std::shared_ptr<void>(nullptr, [disk](void*) { disk->left.set_value(); })](
            std::size_t) { return std::string(); },
        [&](const Outcome&) { isTold = true; }, std::chrono::milliseconds(50));
    ASSERT_TRUE(lines.Add("first"));
    ASSERT_TRUE(lines.Add("second"));
    disk->begun.get_future().wait();
  }
  EXPECT_EQ(disk->written, 0);
  disk->answer.set_value();
  disk->left.get_future().wait();  // the thread has gone, with what it held
  EXPECT_EQ(disk->written, 1);
  EXPECT_FALSE(isTold);
}

TEST(BackgroundLines, TheFirstOfSeveralFailuresIsToldAndThatItIsOver) {
  std::vector<std::string> told;
  std::vector<bool> fails = {false, true, true, false, false, false, true};
  std::size_t at = 0;
  {
    BackgroundLines lines([&](std::string_view) { return fails[at++] ? Failed() : Outcome(); }, Gap,
                          [&](const Outcome& outcome) {
                            told.push_back(std::to_string(at) + (outcome.ok() ? "" : outcome.text));
                          });
    for (int line = 0; line < 6; ++line) EXPECT_TRUE(lines.Add("line"));
  }
  EXPECT_THAT(told, ElementsAre("2full", "5", "7full"));
}

}  // namespace
}  // namespace files
