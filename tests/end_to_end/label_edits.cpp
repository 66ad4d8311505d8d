// SPDX-License-Identifier: MIT

#include "tests/end_to_end/label_edits.h"

#include <algorithm>
#include <filesystem>
#include <string>

#include "tests/support/temporary_folder.h"

namespace test {

namespace {

// The columns of the grid, from 0.
enum Column { kStation, kLabel, kInLabel, kHidden };

constexpr int kFarthestRow = 20;

// What a cell shows; "" when there is no such row, or no console any more.
std::string Cell(ConsoleProcess& console, int row, int column) {
  const auto rows = console.Rows("jgAlphas");
  if (row < 0 || row >= static_cast<int>(rows.size())) return "";
  const std::string& cells = rows[static_cast<std::size_t>(row)];
  std::size_t at = 0;
  for (; column > 0; --column) at = cells.find('|', at) + 1;
  return cells.substr(at, cells.find('|', at) - at);
}

// Goes to a row by chance, near either end of the grid, and returns it; -1 when the grid does
// not show.
int GoToRow(ConsoleProcess& console, std::mt19937& random, int column) {
  console.Trigger("ID_StationAlphas");
  if (!console.LivesUntil([&] { return console.IsShown("jgAlphas"); })) return -1;
  const int rows = static_cast<int>(console.Rows("jgAlphas").size());
  if (rows == 0) return -1;
  const bool fromTop = random() % 2 == 0;
  const int steps =
      static_cast<int>(random() % static_cast<unsigned>(std::min(rows, kFarthestRow)));
  console.Keys("jgAlphas", fromTop ? "Ctrl+Home" : "Ctrl+End");
  console.Keys("jgAlphas", "Home");
  for (int i = 0; i < steps; ++i) console.Keys("jgAlphas", fromTop ? "Down" : "Up");
  for (int i = 0; i < column; ++i) console.Keys("jgAlphas", "Right");
  return fromTop ? steps : rows - 1 - steps;
}

// What was typed is stored with Enter.
bool Store(ConsoleProcess& console, int row, int column, const std::string& shown) {
  console.Keys("jgAlphas", "Return");
  return console.LivesUntil([&] { return Cell(console, row, column) == shown; });
}

bool TypeLabel(ConsoleProcess& console, std::mt19937& random, StoredTables& tables, int column,
               const char* field) {
  const int row = GoToRow(console, random, column);
  const std::string station = Cell(console, row, kStation);
  if (station.empty()) return false;
  const std::string text = "L" + std::to_string(random() % 10000000);
  console.Keys("jgAlphas", "F2");
  console.Keys("edtLabel", "Ctrl+A");
  console.Type("edtLabel", text);
  if (!Store(console, row, column, text)) return false;
  tables.at(station + " " + field) = text;
  return true;
}

}  // namespace

bool TypeStationLabel(ConsoleProcess& console, std::mt19937& random, StoredTables& tables) {
  return TypeLabel(console, random, tables, kLabel, "Label");
}

bool TypeInputLabel(ConsoleProcess& console, std::mt19937& random, StoredTables& tables) {
  return TypeLabel(console, random, tables, kInLabel, "InLabel");
}

bool ToggleHidden(ConsoleProcess& console, std::mt19937& random, StoredTables& tables) {
  const int row = GoToRow(console, random, kHidden);
  const std::string station = Cell(console, row, kStation);
  if (station.empty()) return false;
  std::string& hidden = tables.at(station + " Hidden");
  const bool hide = hidden == "0";
  console.Type("jgAlphas", hide ? "Y" : "N");
  if (!Store(console, row, kHidden, hide ? "Yes" : "No")) return false;
  hidden = hide ? "1" : "0";
  return true;
}

bool ImportLabels(ConsoleProcess& console, std::mt19937& random, StoredTables& tables) {
  StoredTables after = tables;
  std::string text = "Station,Station Label,Input Label\r\n";
  for (int station = 1 + static_cast<int>(random() % 8); station <= kFarthestRow; station += 5) {
    const std::string number = std::to_string(station);
    const std::string label = "I" + std::to_string(random() % 10000000);
    text += number + "," + label + "," + label + "\r\n";
    after.at(number + " Label") = after.at(number + " InLabel") = label;
  }
  const std::filesystem::path file = console.Socket().parent_path() / "labels.csv";
  WriteFile(file, text);
  console.Trigger("aidImportProgramming");
  if (!console.LivesUntil([&] { return console.IsShown("aidImportDialog"); })) return false;
  console.Set("fileNameEdit", "text", QString::fromStdString(file.string()));
  console.Keys("fileNameEdit", "Return");
  if (!console.LivesUntil([&] { return console.IsShown("frmImport"); })) return false;
  console.Click("cmdOkImport");
  if (!console.LivesUntil([&] { return !console.IsShown("frmImport"); })) return false;
  tables = after;
  return true;
}

}  // namespace test
