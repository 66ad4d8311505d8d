// SPDX-License-Identifier: MIT

#ifndef APP_UNSENT_TABLES_H_
#define APP_UNSENT_TABLES_H_

#include <QString>
#include <map>
#include <set>

#include "switcher/table.h"

namespace app {

// Which tables were edited in this run and not sent to the switcher since.
class UnsentTables {
 public:
  // What a table holds of a station or output (from 1), or of all with model::kAll, was edited.
  void Edited(switcher::Table table, int station);

  // The same was handed to the line.
  void Sent(switcher::Table table, int station);

  // Nothing is unsent any more.
  void Clear() { stations_.clear(); }

  bool Has(switcher::Table table) const { return stations_.contains(table); }

  // A table in words.
  static QString NameOf(switcher::Table table);

  // The tables in words, separated by commas, in the order in which a download sends them;
  // empty for none.
  QString Names() const;

 private:
  std::map<switcher::Table, std::set<int>> stations_;  // no empty sets
};

}  // namespace app

#endif  // APP_UNSENT_TABLES_H_
