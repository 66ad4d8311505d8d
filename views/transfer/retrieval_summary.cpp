// SPDX-License-Identifier: MIT

#include "views/transfer/retrieval_summary.h"

#include <QCoreApplication>

namespace views {

namespace {

QString Text(const char* text) { return QCoreApplication::translate("RetrievalSummary", text); }

QString Counts(const switcher::RetrievalResult& result) {
  const QString first = QString::fromStdString(result.firstRefused);
  if (result.messages == 0) return Text("No message came");
  if (result.messages == 1) {
    return result.refused == 0 ? Text("1 message, none refused")
                               : Text("1 message, refused: %1").arg(first);
  }
  const QString messages = QString::number(result.messages);
  if (result.refused == 0) return Text("%1 messages, none refused").arg(messages);
  if (result.refused == 1) return Text("%1 messages, 1 refused: %2").arg(messages, first);
  return Text("%1 messages, %2 refused, the first: %3")
      .arg(messages, QString::number(result.refused), first);
}

}  // namespace

QString RetrievalSummary(const switcher::RetrievalResult& result) {
  const QString counts = Counts(result);
  if (result.lineLost) {
    return Text("%1. The line was lost meanwhile: tables may be missing").arg(counts);
  }
  if (result.completed && !result.asked) {
    return Text("%1. The last came before the tables were asked for: retrieve again").arg(counts);
  }
  return counts;
}

}  // namespace views
