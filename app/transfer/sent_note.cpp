// SPDX-License-Identifier: MIT

#include "app/transfer/sent_note.h"

#include <QMetaObject>
#include <utility>

#include "views/words.h"

namespace app {

SentNote::SentNote(const views::UnsentTables& unsent) {
  connect(&unsent, &views::UnsentTables::Sent, this, &SentNote::Add);
}

void SentNote::Add(const switcher::TablePart& part, int messages,
                   views::UnsentTables::Sender sender) {
  // A download tells of itself.
  if (sender != views::UnsentTables::Sender::Tool) return;
  // A tool sends its tables in one turn of the event loop.
  if (sent_.isEmpty()) QMetaObject::invokeMethod(this, &SentNote::Say, Qt::QueuedConnection);
  sent_.append(views::SentTableWords(part, messages));
}

void SentNote::Say() {
  Q_EMIT NoteRequested(tr("Sent: %1").arg(std::exchange(sent_, {}).join(QStringLiteral("; "))));
}

}  // namespace app
