// SPDX-License-Identifier: MIT

#include "views/unsent_tables.h"

#include <QStringList>

#include "views/words.h"

namespace views {

void UnsentTables::NoteEdited(const switcher::TablePart& part) {
  stations_[part.table].insert(part.station);
  Q_EMIT Edited(part);
  Q_EMIT Changed();
}

void UnsentTables::NoteSent(const switcher::TablePart& part, int messages, Sender sender) {
  if (const auto entry = stations_.find(part.table); entry != stations_.end()) {
    if (part.station == model::kAll) {
      entry->second.clear();
    } else {
      entry->second.erase(part.station);
    }
    if (entry->second.empty()) stations_.erase(entry);
  }
  Q_EMIT Sent(part, messages, sender);
  Q_EMIT Changed();
}

void UnsentTables::Clear() {
  stations_.clear();
  Q_EMIT Changed();
}

QString UnsentTables::Names() const {
  QStringList names;
  // Their order is that of a download.
  for (const auto& [table, stations] : stations_) names.append(TableName(table));
  return names.join(QStringLiteral(", "));
}

}  // namespace views
