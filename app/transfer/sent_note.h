// SPDX-License-Identifier: MIT

#ifndef APP_TRANSFER_SENT_NOTE_H_
#define APP_TRANSFER_SENT_NOTE_H_

#include <QObject>
#include <QStringList>

#include "views/unsent_tables.h"

namespace app {

// Says in one note what a tool of a view has sent: one tool may send several tables.
class SentNote : public QObject {
  Q_OBJECT

 public:
  // Listens to `unsent`, which must outlive the object.
  explicit SentNote(const views::UnsentTables& unsent);

 Q_SIGNALS:
  // What was sent, when nothing more of it comes.
  void NoteRequested(const QString& note);

 private:
  void Add(const switcher::TablePart& part, int messages, views::UnsentTables::Sender sender);
  void Say();

  QStringList sent_;
};

}  // namespace app

#endif  // APP_TRANSFER_SENT_NOTE_H_
