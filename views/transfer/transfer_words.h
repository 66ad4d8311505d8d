// SPDX-License-Identifier: MIT
//
// What came of a download or a retrieval, in one line.

#ifndef VIEWS_TRANSFER_TRANSFER_WORDS_H_
#define VIEWS_TRANSFER_TRANSFER_WORDS_H_

#include <QString>

#include "switcher/download.h"
#include "switcher/retrieval.h"

namespace views {

// How a download ended: "Download finished: 69 tables sent, 1 not sent: relays".
QString DownloadWords(const switcher::DownloadResult& result);

// The same of messages that were chosen.
QString SendingWords(const switcher::DownloadResult& result);

// What a retrieval brought: "197 messages, 1 refused: Output 12 Relay Assignments".  It also says
// what makes a retrieval without refusals an incomplete one; that it was cancelled is left to the
// caller.
QString RetrievalSummary(const switcher::RetrievalResult& result);

// How it ended: "Retrieval finished: 197 messages, none refused".
QString RetrievalWords(const switcher::RetrievalResult& result);

}  // namespace views

#endif  // VIEWS_TRANSFER_TRANSFER_WORDS_H_
