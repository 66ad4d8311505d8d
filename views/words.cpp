// SPDX-License-Identifier: MIT

#include "views/words.h"

#include <QCoreApplication>
#include <QDate>
#include <QLocale>
#include <QStringList>
#include <string>
#include <vector>

#include "db/station_list.h"

namespace views {
namespace {

using switcher::Table;

struct Words {
  Q_DECLARE_TR_FUNCTIONS(Words)
};

// A table's messages, of outputs or stations where it has one for each: "inhibits of outputs 3, 5".
QString StationsWords(Table table, const std::vector<int>& stations) {
  if (stations.front() == model::kAll) return TableName(table);
  const QString list = QString::fromStdString(db::StationList(stations));
  const bool isOne = stations.size() == 1;
  const QString name = TableName(table);
  switch (db::RowsOf(table)) {
    case db::Rows::None:
      break;
    case db::Rows::Outputs:
      return (isOne ? Words::tr("%1 of output %2") : Words::tr("%1 of outputs %2")).arg(name, list);
    case db::Rows::Stations:
      return (isOne ? Words::tr("%1 of station %2") : Words::tr("%1 of stations %2"))
          .arg(name, list);
  }
  return name;
}

}  // namespace

QString TableName(Table table) {
  switch (table) {
    case Table::Optos:
      return Words::tr("optos");
    case Table::OutputLabels:
      return Words::tr("station labels");
    case Table::InputLabels:
      return Words::tr("input labels");
    case Table::Inhibits:
      return Words::tr("inhibits");
    case Table::Relays:
      return Words::tr("relays");
    case Table::Buttons:
      return Words::tr("buttons");
  }
  return {};
}

QString TableWords(const switcher::TablePart& part) {
  const QString name = TableName(part.table);
  if (part.station == model::kAll) return name;
  return QStringLiteral("%1 %2").arg(name).arg(part.station);
}

QString SentTableWords(const switcher::TablePart& part, int messages) {
  if (part.station != model::kAll) return TableWords(part);
  const QString name = TableName(part.table);
  switch (db::RowsOf(part.table)) {
    case db::Rows::None:
      break;
    case db::Rows::Outputs:
      return Words::tr("%1, %2 outputs").arg(name).arg(messages);
    case db::Rows::Stations:
      return Words::tr("%1, %2 stations").arg(name).arg(messages);
  }
  return name;
}

QString PartWords(std::span<const switcher::TablePart> parts) {
  QStringList words;
  for (std::size_t first = 0; first < parts.size();) {
    const Table table = parts[first].table;
    std::vector<int> stations;
    for (; first < parts.size() && parts[first].table == table; ++first) {
      stations.push_back(parts[first].station);
    }
    words.append(StationsWords(table, stations));
  }
  return words.join(QStringLiteral(", "));
}

QString DayWords(const std::chrono::year_month_day& day) {
  const QDate date(static_cast<int>(day.year()),
                   static_cast<int>(static_cast<unsigned>(day.month())),
                   static_cast<int>(static_cast<unsigned>(day.day())));
  const bool isThisYear = date.year() == QDate::currentDate().year();
  return QLocale::c().toString(date,
                               isThisYear ? QStringLiteral("d MMM") : QStringLiteral("d MMM yyyy"));
}

QString ByteWords(std::uint8_t byte) {
  return QStringLiteral("0x") + QString::number(byte, 16).toUpper().rightJustified(2, u'0');
}

}  // namespace views
