// SPDX-License-Identifier: MIT

#include "app/kept/background_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSemaphore>
#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include "tests/app/patience.h"

namespace app {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class BackgroundWriterTest : public testing::Test {
 protected:
  // A file whose disk answers when told to.
  void BeginOneThatWaits(const char* name) {
    Begin(name, [answers = answers_] {
      answers->acquire();
      return model::Status();
    });
  }
  void Begin(const std::string& name, BackgroundWriter::Write write) {
    writer_.Begin(std::move(write), [this, name](const model::Status& status) {
      told_.push_back(name + ": " + (status.ok() ? "written" : status.Description()));
    });
  }

  std::shared_ptr<QSemaphore> answers_ = std::make_shared<QSemaphore>();
  std::vector<std::string> told_;
  BackgroundWriter writer_;
};

TEST_F(BackgroundWriterTest, WhatWasWrittenIsToldByTheEventLoopInItsOrder) {
  BeginOneThatWaits("one");
  Begin("two", [] { return model::Status(model::kFileAccess, "no room"); });
  answers_->release();
  EXPECT_THAT(told_, IsEmpty()) << "not in the handler";
  ASSERT_TRUE(QTest::qWaitFor([&] { return told_.size() == 2; }, kPatience));
  EXPECT_THAT(told_, ElementsAre("one: written", "two: no room"));
  Begin("three", [] { return model::Status(); });
  ASSERT_TRUE(QTest::qWaitFor([&] { return told_.size() == 3; }, kPatience));
}

TEST_F(BackgroundWriterTest, AtTheEndOfARunItIsToldWithoutAnEventLoop) {
  BeginOneThatWaits("one");
  Begin("two", [] { return model::Status(model::kFileAccess, "no room"); });
  answers_->release();
  writer_.Finish();
  EXPECT_THAT(told_, ElementsAre("one: written", "two: no room"));
  QCoreApplication::sendPostedEvents(&writer_);
  EXPECT_EQ(told_.size(), 2u) << "once";
}

TEST_F(BackgroundWriterTest, ADiskThatDoesNotAnswerIsGivenUpAndSaid) {
  BeginOneThatWaits("one");
  BeginOneThatWaits("two");
  writer_.Finish(QDeadlineTimer(1));
  EXPECT_THAT(told_, ElementsAre("one: The disk does not answer", "two: The disk does not answer"));
  told_.clear();
  Begin("three", [] { return model::Status(); });
  writer_.Finish();
  EXPECT_THAT(told_, ElementsAre("three: written")) << "it does not wait behind them";
  answers_->release(2);
  const auto AreWritten = [&] { return answers_.use_count() == 1; };
  ASSERT_TRUE(QTest::qWaitFor(AreWritten, kPatience)) << "what is given up is written all the same";
  EXPECT_EQ(told_.size(), 1u);
}

}  // namespace
}  // namespace app
