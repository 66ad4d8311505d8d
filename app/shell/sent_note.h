// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_SENT_NOTE_H_
#define APP_SHELL_SENT_NOTE_H_

#include <QObject>
#include <QStringList>

#include "switcher/table.h"

namespace app {

// Says in one note what a tool of a view has sent: one tool may send several tables.
class SentNote : public QObject {
  Q_OBJECT

 public:
  // A table was sent in so many messages.
  void Add(const switcher::TablePart& table, int messages);

 Q_SIGNALS:
  // What was sent, when nothing more of it comes.
  void NoteRequested(const QString& note);

 private:
  void Say();

  QStringList sent_;
};

}  // namespace app

#endif  // APP_SHELL_SENT_NOTE_H_
