// SPDX-License-Identifier: MIT

#include "app/log/event_words.h"

#include <gtest/gtest.h>

#include "app/log/repeated_lines.h"

namespace app {
namespace {

using switcher::DecodeStatus;

TEST(EventWords, RefusalsHaveTheirReason) {
  EXPECT_EQ(RefusalWords("Output 12 Crosspoint Map", DecodeStatus::ChecksumFailed),
            QStringLiteral("Refused: Output 12 Crosspoint Map, Failed Csum"));
  EXPECT_EQ(RefusalWords("Alpha Labels", DecodeStatus::NotStored),
            QStringLiteral("Refused: Alpha Labels, not stored"));
}

TEST(EventWords, LinesThatStandForSeveralHaveTheirCount) {
  const QString line = QStringLiteral("Refused: Alpha Labels, not stored");
  EXPECT_EQ(TimesWords(line, 1), line);
  EXPECT_EQ(TimesWords(line, 7), QStringLiteral("Refused: Alpha Labels, not stored (7 times)"));
}

// Panels ask for actions that no tool has.
TEST(EventWords, AnActionWithoutANameHasItsByte) {
  const model::SystemModel model;
  stations::Changes changes;
  ChannelLabels labels({.model = model, .database = [] { return nullptr; }, .changes = changes});
  const CrosspointWords words(labels);
  EXPECT_EQ(words.Command(3, 12, 0x05), QStringLiteral("Action 0x05: Out 3 < In 12"));
  EXPECT_EQ(words.Command(3, 12, 0x03), QStringLiteral("Take: Out 3 < In 12"));
}

TEST(RepeatedLines, TheSameOneIsWrittenOnceAMinuteWithItsCount) {
  RepeatedLines lines;
  const QDateTime start(QDate(2026, 1, 2), QTime(12, 0));
  const auto count = [&](const char* line, int seconds) {
    return lines.Count(QLatin1String(line), start.addSecs(seconds));
  };
  EXPECT_EQ(count("Refused: Output 1, Size Error", 0), 1);
  EXPECT_EQ(count("Refused: Output 1, Size Error", 1), 0);
  EXPECT_EQ(count("Refused: Output 1, Failed Csum", 1), 1);
  EXPECT_EQ(count("Refused: Output 2, Size Error", 1), 1);
  EXPECT_EQ(count("Refused: Output 1, Size Error", 59), 0);
  EXPECT_EQ(count("Refused: Output 1, Size Error", 60), 3);
  EXPECT_EQ(count("Refused: Output 1, Size Error", 61), 0);
}

TEST(RepeatedLines, NoiseOfAnyKindIsRememberedWithinBounds) {
  RepeatedLines lines;
  const QDateTime now(QDate(2026, 1, 2), QTime(12, 0));
  int written = 0;
  for (int i = 0; i < 100'000; ++i) {
    written += lines.Count(QStringLiteral("Output %1").arg(i), now);
  }
  EXPECT_EQ(written, 300);
  EXPECT_EQ(lines.TakeLeftOut(now), 0) << "the minute is not over";
  EXPECT_EQ(lines.Count(QStringLiteral("Output 99999"), now.addSecs(60)), 1);
  EXPECT_EQ(lines.TakeLeftOut(now.addSecs(60)), 99'700);
  EXPECT_EQ(lines.TakeLeftOut(now.addSecs(60)), 0);
}

// What is known is counted as before, however many strange ones come.
TEST(RepeatedLines, NoiseDoesNotHideWhatIsKnown) {
  RepeatedLines lines;
  const QDateTime now(QDate(2026, 1, 2), QTime(12, 0));
  const QString known = QStringLiteral("Panel 1, 192.0.2.7: gone");
  EXPECT_EQ(lines.Count(known, now), 1);
  for (int i = 0; i < 1000; ++i) (void)lines.Count(QStringLiteral("Output %1").arg(i), now);
  EXPECT_EQ(lines.Count(known, now.addSecs(60)), 1);
}

TEST(RepeatedLines, WhatIsKnownStaysKnownForAsLongAsNoiseComes) {
  RepeatedLines lines;
  const QDateTime start(QDate(2026, 1, 2), QTime(12, 0));
  const QString known = QStringLiteral("Panel 1, 192.0.2.7: gone");
  int written = 0;
  int happened = 0;
  for (int second = 0; second < 600; ++second) {
    const QDateTime now = start.addSecs(second);
    const int times = lines.Count(known, now);
    if (times > 0) ++written;
    happened += times;
    for (int i = 0; i < 100; ++i) {
      (void)lines.Count(QStringLiteral("Output %1, %2").arg(second).arg(i), now);
    }
  }
  EXPECT_EQ(written, 10);
  EXPECT_EQ(happened, 541);  // up to the last minute's line
}

TEST(RepeatedLines, AClockThatIsPutBackSilencesNothing) {
  RepeatedLines lines;
  const QDateTime now(QDate(2026, 1, 2), QTime(12, 0));
  const QString known = QStringLiteral("Panel 1, 192.0.2.7: gone");
  EXPECT_EQ(lines.Count(known, now), 1);
  EXPECT_EQ(lines.Count(known, now), 0);
  for (int i = 0; i < 1000; ++i) (void)lines.Count(QStringLiteral("Output %1").arg(i), now);
  const QDateTime before = now.addDays(-1);
  EXPECT_EQ(lines.Count(known, before), 2);
  EXPECT_EQ(lines.Count(QStringLiteral("Panel 2, 192.0.2.8: gone"), before), 1);
  EXPECT_EQ(lines.TakeLeftOut(before), 701);
}

}  // namespace
}  // namespace app
