// SPDX-License-Identifier: MIT

#include "app/shell/sent_note.h"

#include <QMetaObject>
#include <utility>

#include "app/log/event_words.h"

namespace app {

void SentNote::Add(const switcher::TablePart& table, int messages) {
  // A tool sends its tables in one turn of the event loop.
  if (sent_.isEmpty()) QMetaObject::invokeMethod(this, &SentNote::Say, Qt::QueuedConnection);
  sent_.append(SentTableWords(table, messages));
}

void SentNote::Say() {
  Q_EMIT NoteRequested(tr("Sent: %1").arg(std::exchange(sent_, {}).join(QStringLiteral("; "))));
}

}  // namespace app
