// SPDX-License-Identifier: MIT

#ifndef VIEWS_UNSENT_TABLES_H_
#define VIEWS_UNSENT_TABLES_H_

#include <QObject>
#include <QString>
#include <map>
#include <set>

#include "switcher/table.h"

namespace views {

// Which tables were edited in this run and not sent to the switcher since.  Whoever stores an edit
// or sends a table says so here; whoever shows or logs it listens.
class UnsentTables : public QObject {
  Q_OBJECT

 public:
  // Who handed a table to the line: a tool of a view, or a download.
  enum class Sender { Tool, Download };

  // What `part` names was edited: it is stored in the database and not in the switcher yet.
  void NoteEdited(const switcher::TablePart& part);

  // The same was handed to the line, in so many messages.
  void NoteSent(const switcher::TablePart& part, int messages, Sender sender);

  // The same could not be sent, which has been reported.
  void NoteFailed(const switcher::TablePart& part) { Q_EMIT Failed(part); }

  // The database holds what the switcher holds.
  void Clear();

  bool Has(switcher::Table table) const { return stations_.contains(table); }

  // The tables in words, separated by commas, in the order in which a download sends them;
  // empty for none.
  QString Names() const;

 Q_SIGNALS:
  // Each time that something was noted, once it counts.
  void Edited(const switcher::TablePart& part);
  void Sent(const switcher::TablePart& part, int messages, UnsentTables::Sender sender);
  void Failed(const switcher::TablePart& part);
  // Has() and Names() may have changed.
  void Changed();

 private:
  std::map<switcher::Table, std::set<int>> stations_;  // no empty sets
};

}  // namespace views

#endif  // VIEWS_UNSENT_TABLES_H_
