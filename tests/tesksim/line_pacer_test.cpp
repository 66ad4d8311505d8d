// SPDX-License-Identifier: MIT

#include "tools/tesksim/line_pacer.h"

#include <gtest/gtest.h>

#include <limits>

#include "tools/tesksim/random.h"

namespace tesksim {
namespace {

using std::chrono::hours;
using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();

TEST(LinePacer, AByteHasPassedAfterTenBits) {
  LinePacer pacer(57600);
  const Time start{};
  pacer.Begin(start);
  EXPECT_EQ(pacer.Take(start, kAll), 0u);
  EXPECT_EQ(pacer.Take(start + microseconds(173), kAll), 0u);
  EXPECT_EQ(pacer.Take(start + microseconds(174), kAll), 1u);
  EXPECT_EQ(pacer.Take(start + microseconds(347), kAll), 0u);
  EXPECT_EQ(pacer.Take(start + microseconds(348), kAll), 1u);
}

TEST(LinePacer, ASecondCarriesATenthOfTheBaudRate) {
  for (const int baud : {300, 9600, 57600, 115200}) {
    SCOPED_TRACE(baud);
    LinePacer pacer(baud);
    pacer.Begin(Time{});
    EXPECT_EQ(pacer.Take(Time{} + seconds(1), kAll), static_cast<std::size_t>(baud / 10));
  }
}

TEST(LinePacer, NeverAheadAndNeverBehindHoweverOftenItIsAsked) {
  LinePacer pacer(57600);
  Random random(7);
  Time now{};
  pacer.Begin(now);
  std::int64_t carried = 0;
  while (now < Time{} + seconds(60)) {
    now += microseconds(random.Between(1, 20000));
    carried += static_cast<std::int64_t>(pacer.Take(now, kAll));
    const std::int64_t exact = std::chrono::nanoseconds(now.time_since_epoch()).count() * 5760;
    ASSERT_LE(carried * 1'000'000'000, exact);
    ASSERT_GT((carried + 1) * 1'000'000'000, exact);
  }
}

TEST(LinePacer, ALineThatIsBusyForADayKeepsItsPace) {
  LinePacer pacer(57600);
  Time now{};
  pacer.Begin(now);
  std::size_t carried = 0;
  while (now < Time{} + hours(24)) {
    now += milliseconds(500);
    carried += pacer.Take(now, kAll);
  }
  EXPECT_EQ(carried, 24u * 3600 * 5760);
}

TEST(LinePacer, GivesNoMoreThanIsWantedAndKeepsTheRest) {
  LinePacer pacer(57600);
  pacer.Begin(Time{});
  EXPECT_EQ(pacer.Take(Time{} + milliseconds(100), 100), 100u);
  EXPECT_EQ(pacer.Take(Time{} + milliseconds(100), kAll), 476u);
  EXPECT_EQ(pacer.Take(Time{} + milliseconds(100), kAll), 0u);
}

TEST(LinePacer, CatchesUpByASecondAtMost) {
  LinePacer pacer(57600);
  pacer.Begin(Time{});
  EXPECT_EQ(pacer.Take(Time{} + seconds(30), kAll), 5760u);
  EXPECT_EQ(pacer.Take(Time{} + seconds(30), kAll), 0u);
  EXPECT_EQ(pacer.Take(Time{} + seconds(31), kAll), 5760u);
  EXPECT_EQ(pacer.Take(Time{} + hours(20), kAll), 5760u);
  EXPECT_EQ(pacer.Take(Time{} + hours(20) + seconds(1), kAll), 5760u);
}

TEST(LinePacer, IdleTimeEarnsNothing) {
  LinePacer pacer(57600);
  EXPECT_EQ(pacer.Take(Time{} + seconds(5), kAll), 0u);
  pacer.Begin(Time{} + seconds(5));
  pacer.Begin(Time{});  // busy already: no effect
  EXPECT_EQ(pacer.Take(Time{} + seconds(5) + milliseconds(1), kAll), 5u);
  pacer.End();
  pacer.Begin(Time{} + seconds(9));
  EXPECT_EQ(pacer.Take(Time{} + seconds(9) + milliseconds(1), kAll), 5u);
}

TEST(LinePacer, SaysWhenBytesWillHavePassed) {
  LinePacer pacer(57600);
  pacer.Begin(Time{});
  for (int i = 0; i < 100'000; ++i) {
    const Time when = pacer.When(3);
    ASSERT_EQ(pacer.Take(when - std::chrono::nanoseconds(1), 2), 2u);
    ASSERT_EQ(pacer.Take(when - std::chrono::nanoseconds(1), 1), 0u);
    ASSERT_EQ(pacer.Take(when, 1), 1u);
  }
}

TEST(LinePacer, AboutAMillisecondAtATime) {
  EXPECT_EQ(LinePacer(57600).Portion(), 5u);
  EXPECT_EQ(LinePacer(300).Portion(), 1u);
}

TEST(LinePacer, WithoutAPaceEverythingPassesAtOnce) {
  LinePacer pacer(0);
  pacer.Begin(Time{});
  EXPECT_EQ(pacer.Take(Time{}, 100000), 100000u);
  EXPECT_EQ(pacer.When(100000), Time{});
}

}  // namespace
}  // namespace tesksim
