// SPDX-License-Identifier: MIT

#include "views/rules/import_file.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <utility>

#include "db/station_fields.h"
#include "stations/button_program.h"
#include "stations/labels.h"
#include "stations/navigation.h"
#include "stations/operations.h"
#include "stations/planned_fields.h"
#include "stations/target_labels.h"
#include "views/rules/csv.h"
#include "views/rules/export_sheets.h"
#include "views/rules/label_headings.h"
#include "views/rules/target_list.h"

namespace rules {
namespace {

using Why = ImportFault::Reason;
using stations::LabelColumn;

constexpr char kStationCaption[] = "Station";
constexpr char kStationLabelCaption[] = "Station Label";
constexpr char kFirstTargetCaption[] = "First Target";

// A file of a system has a row for each of its buttons, or for each of its records, and may have
// some more that a spreadsheet left.
constexpr std::size_t kFurtherRows = 2000;

bool IsSame(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::ranges::equal(a, b, {}, lower, lower);
}

std::optional<int> NumberOf(std::string_view text) {
  text = Trimmed(text);
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

// The code that an operation's word stands for; `stored` for the words of one outside the table.
std::optional<int> OperationIn(std::string_view word, int stored) {
  if (!stations::IsOperation(stored) && word == OperationCell(stored)) return stored;
  for (const stations::Operation& operation : stations::AllOperations()) {
    if (IsSame(word, operation.label) || IsSame(word, operation.option)) return operation.code;
  }
  return std::nullopt;
}

// A file on its way into a plan.
class Import {
 public:
  Import(jet::RecordSet& stations, const model::SystemModel& model, ImportPlan* plan)
      : stations_(stations), model_(model), plan_(plan), targets_(&stations) {}

  model::Status Read(std::string_view bytes) {
    const std::optional<std::string> text = TextOfFile(bytes);
    const CsvBounds bounds{
        .rows = static_cast<std::size_t>(std::max(0, model_.StationCount * model_.ButtonCount)) +
                kFurtherRows};
    const Csv csv = text ? ParseCsv(*text, bounds) : Csv();
    if (!text) {
      Refuse({.reason = Why::NotText});
    } else if (csv.tooManyCells != 0) {
      Refuse({.reason = Why::TooManyCells,
              .line = csv.tooManyCells,
              .expected = static_cast<int>(bounds.cells)});
    } else if (csv.tooManyRows != 0) {
      Refuse({.reason = Why::TooManyRows,
              .line = csv.tooManyRows,
              .expected = static_cast<int>(bounds.rows)});
    } else if (csv.openQuotes != 0) {
      Refuse({.reason = Why::OpenQuotes, .line = csv.openQuotes});
    } else if (csv.rows.size() < 2) {
      Refuse({.reason = Why::NoRows});
    } else if (ReadCaptions(csv.rows.front())) {
      return ReadRows(std::span(csv.rows).subspan(1));
    }
    return {};
  }

 private:
  // A cell of a row, and where it stands.
  struct Cell {
    int line;
    int column;
    std::string caption;
    const std::string& text;
  };

  model::Status ReadRows(std::span<const CsvRow> rows) {
    plan_->rows = static_cast<int>(rows.size());
    for (const CsvRow& row : rows) {
      if (model::Status read = ReadRow(row); !read.ok()) return read;
    }
    if (plan_->faultCount == 0) CollectChanges();
    return {};
  }

  void Refuse(ImportFault fault) {
    ++plan_->faultCount;
    if (plan_->faults.size() < kMostFaults) plan_->faults.push_back(std::move(fault));
  }
  void Refuse(Why reason, const Cell& cell, int expected = 0) {
    Refuse({.reason = reason,
            .line = cell.line,
            .column = cell.column,
            .caption = cell.caption,
            .text = cell.text,
            .expected = expected});
  }

  bool ReadCaptions(const CsvRow& row) {
    std::set<std::string> known{kProgrammingCaptions.begin(), kProgrammingCaptions.end()};
    for (const LabelHeading& heading : kLabelHeadings) known.insert(heading.caption);
    std::vector<std::string> cells = row.cells;
    while (!cells.empty() && cells.back().empty()) cells.pop_back();
    for (std::size_t i = 0; i < cells.size(); ++i) {
      const auto caption = std::ranges::find_if(
          known, [&](const std::string& each) { return IsSame(each, Trimmed(cells[i])); });
      const Cell cell{row.line, static_cast<int>(i) + 1, cells[i], cells[i]};
      if (caption == known.end()) {
        Refuse(Why::UnknownCaption, cell);
      } else if (!columns_.try_emplace(*caption, i).second) {
        Refuse(Why::RepeatedCaption, cell);
      }
    }
    columnCount_ = cells.size();
    isProgramming_ = columns_.contains(kButtonCaption);
    std::vector<std::string> needed{kStationCaption};
    if (isProgramming_) {
      needed.insert(needed.end(), {kOperationCaption, kTargetsCaption});
    } else if (columns_.size() == 1 && columns_.contains(kStationCaption)) {
      needed.emplace_back(kStationLabelCaption);  // there is nothing to import
    }
    for (const std::string& caption : needed) {
      if (columns_.contains(caption)) continue;
      Refuse({.reason = Why::MissingCaption, .line = row.line, .text = caption});
    }
    // What belongs to the other kind of file.
    for (const auto& [caption, index] : columns_) {
      if (BelongsHere(caption)) continue;
      Refuse(Why::UnknownCaption, {row.line, static_cast<int>(index) + 1, caption, cells[index]});
    }
    return plan_->faultCount == 0;
  }

  bool BelongsHere(const std::string& caption) const {
    if (isProgramming_) {
      return std::ranges::find(kProgrammingCaptions, caption) != kProgrammingCaptions.end();
    }
    return std::ranges::find(kLabelHeadings, caption, [](const LabelHeading& each) {
             return std::string(each.caption);
           }) != kLabelHeadings.end();
  }

  // REQUIRES: there is such a column.
  Cell At(const CsvRow& row, const std::string& caption) const {
    const std::size_t index = columns_.at(caption);
    return {row.line, static_cast<int>(index) + 1, caption, row.cells[index]};
  }

  model::Status ReadRow(const CsvRow& row) {
    const auto isEmpty = [](const std::string& cell) { return cell.empty(); };
    if (std::ranges::all_of(row.cells, isEmpty)) return {};
    const bool fits = row.cells.size() >= columnCount_ &&
                      std::all_of(row.cells.begin() + static_cast<std::ptrdiff_t>(columnCount_),
                                  row.cells.end(), isEmpty);
    if (!fits) {
      Refuse({.reason = Why::CellCount,
              .line = row.line,
              .number = static_cast<int>(row.cells.size()),
              .expected = static_cast<int>(columnCount_)});
      return {};
    }
    const Cell station = At(row, kStationCaption);
    const std::optional<int> number = NumberOf(station.text);
    if (!number || *number < 1 || (isProgramming_ && *number > model_.StationCount)) {
      Refuse(Why::NoStation, station);
      return {};
    }
    if (model::Status found = stations::FindStation(stations_, *number); !found.ok()) return found;
    if (stations_.NoMatch()) {
      Refuse(Why::NoStation, station);
      return {};
    }
    if (isProgramming_) {
      ReadButtonRow(row, *number);
    } else if (!seen_.insert({*number, 0}).second) {
      Refuse(Why::RepeatedStation, station);
    } else {
      ReadLabelRow(row, *number);
    }
    return {};
  }

  void ReadLabelRow(const CsvRow& row, int station) {
    stations::PlannedFields planned(stations_);
    for (int i = 1; i < stations::kLabelColumnCount; ++i) {
      const auto column = static_cast<LabelColumn>(i);
      if (columns_.contains(Heading(column).caption)) {
        PlanLabel(At(row, Heading(column).caption), column, &planned);
      }
    }
    Keep(station, std::move(planned.changes));
  }

  void PlanLabel(const Cell& cell, LabelColumn column, stations::PlannedFields* planned) {
    jet::Value stored;
    if (!stations_.Get(Spec(column).field, &stored).ok()) {
      return Refuse(Why::Unreadable, cell);
    }
    if (cell.text == stations::CellText(column, stored)) return;
    if (column == LabelColumn::Hidden) {
      const std::optional<int> hidden = stations::ParseHidden(Trimmed(cell.text));
      if (!hidden) return Refuse(Why::NotAChoice, cell);
      if (stations::HiddenText(*hidden) == stations::HiddenText(stored)) return;
      return planned->Add(Spec(column).field, *hidden);
    }
    const stations::TextCheck check = stations::CheckText(column, cell.text);
    if (check.ok()) return planned->Add(Spec(column).field, cell.text);
    Refuse({.reason = Why::LabelText,
            .line = cell.line,
            .column = cell.column,
            .caption = cell.caption,
            .text = cell.text,
            .label = column,
            .check = check});
  }

  void ReadButtonRow(const CsvRow& row, int station) {
    const Cell buttonCell = At(row, kButtonCaption);
    const std::optional<int> button = NumberOf(buttonCell.text);
    if (!button || *button < 1 || *button > model_.ButtonCount) {
      return Refuse(Why::NoButton, buttonCell, model_.ButtonCount);
    }
    if (!seen_.insert({station, *button}).second) return Refuse(Why::RepeatedStation, buttonCell);
    const stations::ButtonProgram stored = stations::ReadButton(stations_, *button);
    if (!stored.Outcome().ok()) return Refuse(Why::Unreadable, buttonCell);
    const Cell operation = At(row, kOperationCaption);
    const std::optional<int> type = OperationIn(Trimmed(operation.text), stored.type.value);
    if (!type) return Refuse(Why::UnknownOperation, operation);
    const Cell list = At(row, kTargetsCaption);
    const auto& labels = targets_.Captions(*type, model_.ChkBoxCount);
    if (!labels.status.ok()) return Refuse(Why::Unreadable, list);
    std::string targets;
    const TargetListFault fault = ReadTargetList(list.text, labels.value, &targets);
    if (fault.problem != TargetListProblem::None) {
      Refuse({.reason = fault.problem == TargetListProblem::Unknown ? Why::UnknownTarget
                                                                    : Why::AmbiguousTarget,
              .line = list.line,
              .column = list.column,
              .caption = list.caption,
              .text = fault.target});
      return;
    }
    CompareReadOnly(row, stored, *type, targets);
    std::string present = stored.targets.value;
    present.resize(targets.size(), '0');
    if (*type == stored.type.value && targets == present) return;
    stations::PlannedFields planned(stations_);
    planned.AddButton(*button, *type, targets);
    Keep(station, std::move(planned.changes));
  }

  // What stands in the columns that are only there to be read is what is stored, or what the row
  // makes of it.
  void CompareReadOnly(const CsvRow& row, const stations::ButtonProgram& stored, int type,
                       const std::string& targets) {
    if (columns_.contains(kStationLabelCaption)) {
      jet::Value label;
      const bool isRead = stations_.Get(db::kLabelField, &label).ok();
      const Cell cell = At(row, kStationLabelCaption);
      if (isRead && cell.text != label.Text()) NoteReadOnly(cell);
    }
    if (columns_.contains(kFirstTargetCaption)) {
      stations::ButtonProgram meant = stored;
      meant.type.value = type;
      meant.targets.value = targets;
      meant.first.value = static_cast<int>(targets.find('1') + 1);
      const auto before = stations::ChosenCaption(stored, targets_);
      const auto after = stations::ChosenCaption(meant, targets_);
      const Cell cell = At(row, kFirstTargetCaption);
      if (before.status.ok() && after.status.ok() && cell.text != before.value &&
          cell.text != after.value) {
        NoteReadOnly(cell);
      }
    }
  }

  void NoteReadOnly(const Cell& cell) {
    if (plan_->readOnlyCount++ == 0) plan_->readOnly = {cell.line, cell.caption, cell.text};
  }

  void Keep(int station, std::vector<stations::FieldChange> fields) {
    auto& all = fields_[station];
    std::ranges::move(fields, std::back_inserter(all));
  }

  void CollectChanges() {
    for (auto& [station, fields] : fields_) {
      if (fields.empty()) continue;
      plan_->changes.push_back(
          {.origin = stations::Origin::File, .station = station, .fields = std::move(fields)});
    }
  }

  jet::RecordSet& stations_;
  const model::SystemModel& model_;
  ImportPlan* const plan_;
  const stations::TargetLabels targets_;
  std::map<std::string, std::size_t> columns_;  // by the export's caption
  std::size_t columnCount_ = 0;
  bool isProgramming_ = false;
  std::set<std::pair<int, int>> seen_;  // station and button, or station and 0
  std::map<int, std::vector<stations::FieldChange>> fields_;
};

}  // namespace

model::Status PlanImport(std::string_view bytes, jet::RecordSet& stations,
                         const model::SystemModel& model, ImportPlan* plan) {
  *plan = {};
  return Import(stations, model, plan).Read(bytes);
}

}  // namespace rules
