// SPDX-License-Identifier: MIT

#include "views/compare/compare_rows.h"

#include <QCoreApplication>

#include <algorithm>
#include <memory>
#include <numeric>
#include <set>
#include <string_view>
#include <utility>

#include "db/jet/record_set.h"
#include "db/station_list.h"
#include "stations/open_stations.h"
#include "stations/record.h"
#include "switcher/unsent/edited_parts.h"

namespace views {
namespace {

using switcher::Table;
using switcher::TablePart;

struct CompareText {
  Q_DECLARE_TR_FUNCTIONS(CompareRows)
};

// Reads fields of stations; the rows ask for those of one station after the other.
class StationLookup {
 public:
  explicit StationLookup(jet::Database& database) {
    if (!stations::OpenStations(database, &stations_).ok()) stations_.reset();
  }

  jet::Value operator()(int station, std::string_view field) {
    if (stations_ == nullptr) return {};
    if (station != station_) {
      station_ = 0;
      if (!stations_->Seek(station).ok() || stations_->NoMatch()) return {};
      station_ = station;
    }
    return stations::Record(*stations_).Get(field);
  }

 private:
  std::unique_ptr<jet::RecordSet> stations_;
  int station_ = 0;  // where the set stands; 0 for nowhere
};

QString TableHeading(Table table) {
  switch (table) {
    case Table::Optos:
      return CompareText::tr("Optos");
    case Table::OutputLabels:
      return CompareText::tr("Labels");
    case Table::InputLabels:
      return CompareText::tr("Input labels");
    case Table::Inhibits:
      return CompareText::tr("Inhibits");
    case Table::Relays:
      return CompareText::tr("Relays");
    case Table::Buttons:
      return CompareText::tr("Buttons");
  }
  return {};
}

// "Output 5", or "Outputs 5 to 9".
QString Where(Table table, int first, int last) {
  if (first == model::kAll) return CompareText::tr("All stations");
  const bool ofOutputs = db::RowsOf(table) == db::Rows::Outputs;
  if (first == last) {
    return (ofOutputs ? CompareText::tr("Output %1") : CompareText::tr("Station %1")).arg(first);
  }
  std::vector<int> each(static_cast<std::size_t>(last - first + 1));
  std::iota(each.begin(), each.end(), first);
  return (ofOutputs ? CompareText::tr("Outputs %1") : CompareText::tr("Stations %1"))
      .arg(QString::fromStdString(db::StationList(each)));
}

Difference UnknownRow(const TablePart& first, int last, const QString& after,
                      const QString& obstacle) {
  Difference row({.station = first.station,
                  .fields = {},
                  .where = Where(first.table, first.station, last),
                  .what = TableHeading(first.table),
                  .before = {},
                  .after = after},
                 obstacle);
  row.last = last;
  if (first.station == model::kAll) row.first = 1;
  return row;
}

Difference RefusedRow(const switcher::RefusedPart& refused) {
  const QString word = QString::fromUtf8(switcher::StatusWord(refused.status));
  const QString after =
      word.isEmpty() ? CompareText::tr("refused") : CompareText::tr("refused: %1").arg(word);
  return UnknownRow(refused.part, refused.part.station, after,
                    CompareText::tr("What the switcher reported was refused."));
}

// Rows of one table that follow each other are one row.
void AddMissingRows(std::span<const TablePart> missing, std::vector<Difference>* rows) {
  for (std::size_t i = 0; i < missing.size();) {
    const TablePart& first = missing[i];
    std::size_t end = i + 1;
    while (end < missing.size() && missing[end].table == first.table &&
           missing[end].station == missing[end - 1].station + 1) {
      ++end;
    }
    rows->push_back(UnknownRow(first, missing[end - 1].station, CompareText::tr("not reported"),
                               CompareText::tr("The switcher did not report it.")));
    i = end;
  }
}

}  // namespace

std::vector<Difference> CompareRows(const switcher::ComparisonResult& result,
                                    jet::Database* reported) {
  FieldLookup lookup;
  if (reported != nullptr) {
    lookup = [fields = std::make_shared<StationLookup>(*reported)](
                 int station, std::string_view field) { return (*fields)(station, field); };
  }
  const std::vector<ChangeRow> changed = ChangeRows(result.differences, lookup);
  std::vector<Difference> rows(changed.begin(), changed.end());
  for (const switcher::RefusedPart& refused : result.refused) rows.push_back(RefusedRow(refused));
  AddMissingRows(result.missing, &rows);
  return rows;
}

QString CompareSummary(const switcher::ComparisonResult& result) {
  const std::size_t compared = result.accepted.size();
  const QString tables =
      compared == 1 ? CompareText::tr("1 table") : CompareText::tr("%1 tables").arg(compared);
  const std::size_t differing = CountRows(result.differences);
  QString words;
  if (compared == 0) {
    words = CompareText::tr("No table came");
  } else if (differing == 0) {
    words = CompareText::tr("No difference in %1").arg(tables);
  } else if (differing == 1) {
    words = CompareText::tr("1 difference in %1").arg(tables);
  } else {
    words = CompareText::tr("%1 differences in %2").arg(differing).arg(tables);
  }
  if (!result.completed) words = CompareText::tr("Cancelled. %1").arg(words);
  if (!result.refused.empty()) {
    words = CompareText::tr("%1, %2 refused").arg(words).arg(result.refused.size());
  }
  if (!result.missing.empty() && compared > 0) {
    words = CompareText::tr("%1, %2 not reported").arg(words).arg(result.missing.size());
  }
  if (result.lineLost) words = CompareText::tr("%1. The line was lost meanwhile").arg(words);
  return words;
}

std::vector<TablePart> PartsOf(std::span<const stations::Change> changes) {
  std::set<TablePart> parts;
  for (const stations::Change& change : changes) {
    for (const TablePart& part : switcher::EditedParts(change)) {
      parts.insert(switcher::MessageOf(part));
    }
  }
  return {parts.begin(), parts.end()};
}

}  // namespace views
