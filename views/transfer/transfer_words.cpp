// SPDX-License-Identifier: MIT

#include "views/transfer/transfer_words.h"

#include <QCoreApplication>

#include "views/words.h"

namespace views {

namespace {

QString Text(const char* text) { return QCoreApplication::translate("TransferWords", text); }

// "69 tables sent, 1 not sent: relays".
QString TableCounts(const switcher::DownloadResult& result) {
  const QString sent =
      result.sent == 1 ? Text("1 table sent") : Text("%1 tables sent").arg(result.sent);
  if (result.failed.empty()) return sent;
  const QString first = TableWords(result.failed.front());
  if (result.failed.size() == 1) return Text("%1, 1 not sent: %2").arg(sent, first);
  return Text("%1, %2 not sent, the first: %3").arg(sent).arg(result.failed.size()).arg(first);
}

QString MessageCounts(const switcher::RetrievalResult& result) {
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

QString DownloadWords(const switcher::DownloadResult& result) {
  if (!result.notSent.empty()) {
    return Text("Download cancelled, stages not sent: %1")
        .arg(QString::fromStdString(result.notSent));
  }
  return Text("Download finished: %1").arg(TableCounts(result));
}

QString SendingWords(const switcher::DownloadResult& result) {
  return (result.notSent.empty() ? Text("Changes sent: %1") : Text("Changes cancelled: %1"))
      .arg(TableCounts(result));
}

QString RetrievalSummary(const switcher::RetrievalResult& result) {
  const QString counts = MessageCounts(result);
  if (result.lineLost) {
    return Text("%1. The line was lost meanwhile: tables may be missing").arg(counts);
  }
  if (result.completed && !result.asked) {
    return Text("%1. The last came before the tables were asked for: retrieve again").arg(counts);
  }
  return counts;
}

QString RetrievalWords(const switcher::RetrievalResult& result) {
  return (result.completed ? Text("Retrieval finished: %1") : Text("Retrieval cancelled: %1"))
      .arg(RetrievalSummary(result));
}

}  // namespace views
