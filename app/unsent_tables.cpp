// SPDX-License-Identifier: MIT

#include "app/unsent_tables.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>

#include "model/system_model.h"

namespace app {
namespace {

using switcher::Table;

struct TableName {
  Table table;
  const char* name;
};

// In the order of a download.
constexpr TableName kNames[] = {
    {Table::Optos, QT_TRANSLATE_NOOP("UnsentTables", "optos")},
    {Table::OutputLabels, QT_TRANSLATE_NOOP("UnsentTables", "station labels")},
    {Table::InputLabels, QT_TRANSLATE_NOOP("UnsentTables", "input labels")},
    {Table::Inhibits, QT_TRANSLATE_NOOP("UnsentTables", "inhibits")},
    {Table::Relays, QT_TRANSLATE_NOOP("UnsentTables", "relays")},
    {Table::Buttons, QT_TRANSLATE_NOOP("UnsentTables", "buttons")},
};

}  // namespace

void UnsentTables::Edited(Table table, int station) { stations_[table].insert(station); }

void UnsentTables::Sent(Table table, int station) {
  const auto entry = stations_.find(table);
  if (entry == stations_.end()) return;
  if (station == model::kAll) {
    entry->second.clear();
  } else {
    entry->second.erase(station);
  }
  if (entry->second.empty()) stations_.erase(entry);
}

QString UnsentTables::NameOf(Table table) {
  const auto* const found = std::ranges::find(kNames, table, &TableName::table);
  return QCoreApplication::translate("UnsentTables", found->name);
}

QString UnsentTables::Names() const {
  QStringList names;
  for (const TableName& each : kNames) {
    if (Has(each.table)) names.append(NameOf(each.table));
  }
  return names.join(QStringLiteral(", "));
}

}  // namespace app
