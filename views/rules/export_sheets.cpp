// SPDX-License-Identifier: MIT

#include "views/rules/export_sheets.h"

#include <algorithm>
#include <utility>

#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/button_program.h"
#include "stations/label_texts.h"
#include "stations/labels.h"
#include "stations/navigation.h"
#include "stations/operations.h"
#include "stations/target_labels.h"
#include "views/rules/label_headings.h"
#include "views/rules/target_list.h"

namespace rules {
namespace {

constexpr int kManyTargets = 10;

model::Status ReadLabelRow(const jet::RecordSet& stations, std::vector<std::string>* row) {
  for (std::size_t i = 0; i < stations::kLabelColumns.size(); ++i) {
    jet::Value value;
    if (const jet::Status read = stations.Get(stations::kLabelColumns[i].field, &value);
        !read.ok()) {
      return read;
    }
    row->push_back(stations::CellText(static_cast<stations::LabelColumn>(i), value));
  }
  return {};
}

const char* WordOf(Mark mark) {
  const auto* const found = std::ranges::find(kExportedMarks, mark, &ExportedMark::mark);
  return found == std::end(kExportedMarks) ? "" : found->word;
}

std::string Join(const std::string& flags, const std::vector<std::string>& labels) {
  std::string joined;
  int count = 0;
  for (std::size_t i = 0; i < labels.size(); ++i) {
    if (!model::FlagIsSet(flags, static_cast<int>(i) + 1)) continue;
    if (count++ != 0) joined += ", ";
    joined += labels[i];
  }
  // A key sheet has no room for many: the number tells that there are more.
  return count < kManyTargets ? joined : "(" + std::to_string(count) + ") " + joined;
}

void AppendCsv(const std::vector<std::string>& row, std::string* csv) {
  bool isFirst = true;
  for (const std::string& text : row) {
    if (!std::exchange(isFirst, false)) *csv += ',';
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
      *csv += text;
      continue;
    }
    *csv += '"';
    for (const char character : text) {
      if (character == '"') *csv += '"';
      *csv += character;
    }
    *csv += '"';
  }
  *csv += "\r\n";
}

}  // namespace

model::Status ReadLabelSheet(jet::RecordSet& stations, Sheet* sheet) {
  sheet->captions.clear();
  for (const LabelHeading& heading : kLabelHeadings) sheet->captions.emplace_back(heading.caption);
  sheet->rows.clear();
  if (const jet::Status moved = stations.MoveFirst(); !moved.ok()) return moved;
  while (!stations.Eof()) {
    std::vector<std::string> row;
    if (model::Status read = ReadLabelRow(stations, &row); !read.ok()) return read;
    sheet->rows.push_back(std::move(row));
    if (const jet::Status moved = stations.MoveNext(); !moved.ok()) return moved;
  }
  return {};
}

Sheet MapSheet(const XmapGrid& grid) {
  Sheet sheet;
  sheet.captions = {"Output", "Label"};
  for (int input = 1; input <= grid.ChannelCount(); ++input) {
    sheet.captions.push_back(grid.Number(input) + " " + grid.InputLabel(input));
  }
  for (int output = 1; output <= grid.ChannelCount(); ++output) {
    std::vector<std::string> row{grid.Number(output), grid.OutputLabel(output)};
    for (const Mark mark : grid.Marks(output)) row.emplace_back(WordOf(mark));
    sheet.rows.push_back(std::move(row));
  }
  return sheet;
}

model::Status ReadKeySheets(jet::RecordSet& stations, const model::SystemModel& model,
                            std::span<const int> wanted, std::vector<KeySheet>* sheets) {
  sheets->clear();
  const stations::TargetLabels labels(&stations);
  for (const int station : wanted) {
    if (model::Status found = stations::FindStation(stations, station); !found.ok()) return found;
    if (stations.NoMatch()) continue;
    KeySheet sheet{.station = station};
    jet::Value value;
    if (const jet::Status read = stations.Get(db::kLabelField, &value); !read.ok()) return read;
    sheet.label = value.Text();
    if (const jet::Status read = stations.Get(db::kInLabelField, &value); !read.ok()) return read;
    sheet.inputLabel = value.Text();
    for (int button = 1; button <= model.ButtonCount; ++button) {
      const stations::ButtonProgram program = stations::ReadButton(stations, button);
      if (!program.Outcome().ok()) return program.Outcome();
      const auto caption = stations::ChosenCaption(program, labels);
      if (!caption.status.ok()) return caption.status;
      const auto targets = labels.Captions(program.type.value, model.ChkBoxCount);
      if (!targets.status.ok()) return targets.status;
      sheet.keys.push_back({.type = program.type.value,
                            .caption = caption.value,
                            .targets = Join(program.targets.value, targets.value),
                            .list = WriteTargetList(program.targets.value, targets.value)});
    }
    sheets->push_back(std::move(sheet));
  }
  return {};
}

model::Status ReadKeySheets(jet::RecordSet& stations, const model::SystemModel& model,
                            std::vector<KeySheet>* sheets) {
  std::vector<int> all;
  for (int station = 1; station <= model.StationCount; ++station) all.push_back(station);
  return ReadKeySheets(stations, model, all, sheets);
}

std::string TitleOf(const KeySheet& sheet) {
  std::string title = std::to_string(sheet.station) + "  " + sheet.label;
  if (!sheet.inputLabel.empty()) title += "  (" + sheet.inputLabel + ")";
  return title;
}

std::string OperationCell(int code) {
  const std::string label = stations::OperationOf(code).label;
  return stations::IsOperation(code) ? label : label + " (" + std::to_string(code) + ")";
}

Sheet ProgrammingSheet(const std::vector<KeySheet>& sheets) {
  Sheet sheet;
  sheet.captions.assign(kProgrammingCaptions.begin(), kProgrammingCaptions.end());
  for (const KeySheet& station : sheets) {
    int button = 0;
    for (const KeyLegend& key : station.keys) {
      sheet.rows.push_back({std::to_string(station.station), station.label,
                            std::to_string(++button), OperationCell(key.type), key.caption,
                            key.list});
    }
  }
  return sheet;
}

std::string ToCsv(const Sheet& sheet) {
  std::string csv = "\xEF\xBB\xBF";
  AppendCsv(sheet.captions, &csv);
  for (const std::vector<std::string>& row : sheet.rows) AppendCsv(row, &csv);
  return csv;
}

}  // namespace rules
