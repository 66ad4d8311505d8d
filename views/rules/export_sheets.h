// SPDX-License-Identifier: MIT
//
// What is exported for people and spreadsheets: labels, crosspoint map, button programming.
//
// All texts are UTF-8.  The readers move in `stations`: the caller holds a db::KeepPosition.  On a
// failure a sheet holds what was read before it.

#ifndef VIEWS_RULES_EXPORT_SHEETS_H_
#define VIEWS_RULES_EXPORT_SHEETS_H_

#include <array>
#include <span>
#include <string>
#include <vector>

#include "db/jet/record_set.h"
#include "model/status.h"
#include "model/system_model.h"
#include "views/rules/xmap_grid.h"

namespace rules {

// Rows of texts; every row has as many as there are captions.
struct Sheet {
  std::vector<std::string> captions;
  std::vector<std::vector<std::string>> rows;
};

// A row for every record, in the set's order, with the columns and texts of the grid of station
// labels.
model::Status ReadLabelSheet(jet::RecordSet& stations, Sheet* sheet);

// The marks that an exported map has, with their words in a cell of a sheet and in a legend.
struct ExportedMark {
  Mark mark;
  const char* word;
  const char* legend;
};
inline constexpr ExportedMark kExportedMarks[] = {
    {Mark::Crosspoint, "crosspoint", "crosspoint"},
    {Mark::Priority, "priority", "priority crosspoint"},
    {Mark::Inhibit, "inhibit", "inhibit"},
};

// A row for every output, a column for every input after the two for the output itself.  A cell
// has the word of its mark, or nothing.
Sheet MapSheet(const XmapGrid& grid);

// The captions of the exported programming.
inline constexpr char kButtonCaption[] = "Button";
inline constexpr char kOperationCaption[] = "Operation";
inline constexpr char kTargetsCaption[] = "Targets";
inline constexpr std::array<const char*, 6> kProgrammingCaptions = {
    "Station", "Station Label", kButtonCaption, kOperationCaption, "First Target", kTargetsCaption};

// What a cell says of an operation: "TALK"; of a code outside the table "NULL (77)".
std::string OperationCell(int code);

// What a button does, in words.
struct KeyLegend {
  int type = 0;              // the operation's code
  std::string caption = {};  // the label of its first target, as ReadChosenCaption() has it
  // The labels of all targets, separated by ", "; from ten targets on, "(10) " stands before them.
  std::string targets = {};
  std::string list = {};  // the targets as WriteTargetList() has them
};

// The keys of a station's panel; element k is button k + 1.
struct KeySheet {
  int station = 0;
  std::string label = {};
  std::string inputLabel = {};
  std::vector<KeyLegend> keys = {};
};

// The keys of the stations with these numbers, in their order; a station without a record has no
// sheet.
model::Status ReadKeySheets(jet::RecordSet& stations, const model::SystemModel& model,
                            std::span<const int> wanted, std::vector<KeySheet>* sheets);

// Those of stations 1 to StationCount.
model::Status ReadKeySheets(jet::RecordSet& stations, const model::SystemModel& model,
                            std::vector<KeySheet>* sheets);

// What stands at the head of a station's sheet: its number, its label and, in brackets, that of
// its input.
std::string TitleOf(const KeySheet& sheet);

// A row for every key: station, its label, button, operation, first target, all targets.
Sheet ProgrammingSheet(const std::vector<KeySheet>& sheets);

// The sheet as comma-separated values, which spreadsheets open: lines end in CR LF, a text with
// a comma, a quote or a line break stands in quotes, a byte order mark tells that it is UTF-8.
std::string ToCsv(const Sheet& sheet);

}  // namespace rules

#endif  // VIEWS_RULES_EXPORT_SHEETS_H_
