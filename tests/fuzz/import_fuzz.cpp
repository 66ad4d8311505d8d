// SPDX-License-Identifier: MIT
//
// Imports arbitrary bytes as a file of labels or programming.  What a plan stores is what the
// fields take, a plan with faults stores nothing, and a plan that was carried out has no
// differences left.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "model/flag_string.h"
#include "stations/carry_out.h"
#include "stations/label_texts.h"
#include "tests/support/small_database.h"
#include "views/rules/csv.h"
#include "views/rules/import_file.h"

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

// Made once: each input finds what the ones before it have stored.
struct System {
  System() {
    model.StationCount = 4;
    model.ButtonCount = 2;
    model.ChkBoxCount = 64;
    for (int station = 1; station <= 4; ++station) {
      database.AddStation(station, {{"Label", "OUT " + std::to_string(station)},
                                    {"InLabel", station == 4 ? "IN 1" : "IN 2"},
                                    {"Hidden", 0},
                                    {"B1 Type", 0},
                                    {"B1 Prog", "01"},
                                    {"B2 Type", 77}});
    }
  }

  model::SystemModel model;
  test::SmallDatabase database;
};

void CheckChange(const stations::FieldChange& field) {
  for (int i = 1; i < stations::kLabelColumnCount; ++i) {
    const auto column = static_cast<stations::LabelColumn>(i);
    if (field.field != stations::Spec(column).field) continue;
    Require(!stations::Spec(column).IsText() ||
            stations::CheckText(column, field.after.Text()).ok());
  }
  if (field.field.ends_with("First")) Require(field.after.Int() >= 1 && field.after.Int() <= 64);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static System system;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  if (const auto text = rules::TextOfFile(bytes)) {
    for (const rules::CsvRow& row : rules::ParseCsv(*text, {.rows = 100}).rows)
      Require(!row.cells.empty());
  }
  jet::RecordSet& stations = *system.database.Files().Stations();
  rules::ImportPlan plan;
  Require(rules::PlanImport(bytes, stations, system.model, &plan).ok());
  Require(plan.faultCount == 0 || plan.changes.empty());
  Require(plan.faults.size() <= static_cast<std::size_t>(plan.faultCount));
  for (const stations::Change& change : plan.changes) {
    Require(!change.fields.empty());
    std::ranges::for_each(change.fields, CheckChange);
  }
  if (plan.changes.empty()) return 0;
  stations::Changes changes;
  Require(stations::CarryOut(stations, plan.changes, stations::Direction::Again,
                             {changes, stations::Origin::File})
              .ok());
  Require(rules::PlanImport(bytes, stations, system.model, &plan).ok());
  // A list by labels means other targets once these labels are others; labels name none.
  Require(plan.faultCount == 0 && plan.changes.empty());
  return 0;
}
