// SPDX-License-Identifier: MIT

#include "views/transfer/transfer_words.h"

#include <gtest/gtest.h>

namespace views {
namespace {

using switcher::Table;

TEST(TransferWords, ADownloadSaysWhatGotThroughAndWhatDidNot) {
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

TEST(TransferWords, ARetrievalSaysWhatCame) {
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

}  // namespace
}  // namespace views
