// SPDX-License-Identifier: MIT

#include "app/log/event_words.h"

#include <gtest/gtest.h>

#include "app/log/repeated_lines.h"
#include "app/shell/command_table.h"

namespace app {
namespace {

using switcher::DecodeStatus;
using switcher::Table;

TEST(EventWords, EveryCommandIsNamedAsTheOperatorKnowsIt) {
  EXPECT_EQ(CommandWords(QStringLiteral("ID_SendData")), QStringLiteral("Send Data To Switcher"));
  EXPECT_EQ(CommandWords(QStringLiteral("ID_QDVStatus")), QStringLiteral("QDV Status"));
  EXPECT_EQ(CommandWords(QStringLiteral("ID_Exit")), QStringLiteral("Exit"));
  for (const Command& command : AllCommands()) {
    const QString words = CommandWords(QLatin1String(command.id));
    EXPECT_FALSE(words.contains(QLatin1String("ID_")) || words.contains(u'&')) << command.id;
  }
}

TEST(EventWords, TablesThatWereSentAreCounted) {
  EXPECT_EQ(SentTableWords({Table::Inhibits}, 64), QStringLiteral("inhibits, 64 outputs"));
  EXPECT_EQ(SentTableWords({Table::Relays}, 16), QStringLiteral("relays, 16 outputs"));
  EXPECT_EQ(SentTableWords({Table::Buttons}, 63), QStringLiteral("buttons, 63 stations"));
  EXPECT_EQ(SentTableWords({Table::Buttons, 12}, 1), QStringLiteral("buttons 12"));
  EXPECT_EQ(SentTableWords({Table::OutputLabels}, 2), QStringLiteral("station labels"));
  EXPECT_EQ(SentTableWords({Table::Optos}, 1), QStringLiteral("optos"));
}

TEST(EventWords, ADownloadSaysWhatGotThroughAndWhatDidNot) {
  switcher::DownloadResult result{.sent = 69, .failed = {}, .notSent = {}};
  EXPECT_EQ(DownloadWords(result), QStringLiteral("Download finished: 69 tables sent"));
  result = {.sent = 68, .failed = {{Table::Relays}}, .notSent = {}};
  EXPECT_EQ(DownloadWords(result),
            QStringLiteral("Download finished: 68 tables sent, 1 not sent: relays"));
  result = {.sent = 1, .failed = {{Table::Buttons, 2}, {Table::Buttons, 3}}, .notSent = {}};
  EXPECT_EQ(DownloadWords(result),
            QStringLiteral("Download finished: 1 table sent, 2 not sent, the first: buttons 2"));
  result = {.sent = 1, .failed = {}, .notSent = "Relays"};
  EXPECT_EQ(DownloadWords(result), QStringLiteral("Download cancelled, stages not sent: Relays"));
}

TEST(EventWords, ARetrievalSaysWhatCame) {
  switcher::RetrievalResult result{.completed = true, .asked = true, .messages = 197};
  EXPECT_EQ(RetrievalWords(result),
            QStringLiteral("Retrieval finished: 197 messages, none refused"));
  result.completed = false;
  result.refused = 2;
  result.firstRefused = "Alpha Labels";
  EXPECT_EQ(
      RetrievalWords(result),
      QStringLiteral("Retrieval cancelled: 197 messages, 2 refused, the first: Alpha Labels"));
}

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
  ChannelLabels labels(
      model, [] { return nullptr; }, changes);
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
  EXPECT_EQ(written, 100'000);
}

}  // namespace
}  // namespace app
