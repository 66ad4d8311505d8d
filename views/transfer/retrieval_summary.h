// SPDX-License-Identifier: MIT

#ifndef VIEWS_TRANSFER_RETRIEVAL_SUMMARY_H_
#define VIEWS_TRANSFER_RETRIEVAL_SUMMARY_H_

#include <QString>

#include "switcher/retrieval.h"

namespace views {

// What came of a retrieval in one line: "197 messages, 1 refused: Output 12 Relay Assignments".
// It also says what makes a retrieval without refusals an incomplete one; that it was cancelled
// is left to the caller.
QString RetrievalSummary(const switcher::RetrievalResult& result);

}  // namespace views

#endif  // VIEWS_TRANSFER_RETRIEVAL_SUMMARY_H_
