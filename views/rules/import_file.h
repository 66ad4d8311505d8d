// SPDX-License-Identifier: MIT
//
// Labels and button programming from a file, as the export writes them and spreadsheets change
// them.

#ifndef VIEWS_RULES_IMPORT_FILE_H_
#define VIEWS_RULES_IMPORT_FILE_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "db/jet/record_set.h"
#include "model/status.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "stations/label_texts.h"

namespace rules {

// Why a file is not imported, and where in it that is.
struct ImportFault {
  enum class Reason : std::uint8_t {
    NotText,           // the file
    NoRows,            // the file: nothing stands in it, or captions alone
    OpenQuotes,        // the line: its quotes are never closed
    TooManyCells,      // the line has more than `expected`
    TooManyRows,       // the file has more than `expected`, beginning with that line
    UnknownCaption,    // a column that is neither of labels nor of programming
    RepeatedCaption,   // a column that is there twice
    MissingCaption,    // `text` is the one that is missing
    CellCount,         // the line has `number` cells, not `expected`
    NoStation,         // no station of the system has that number
    RepeatedStation,   // the station, or its button, stood in an earlier line
    NoButton,          // no button of the `expected` of a station
    NotAChoice,        // neither No nor Yes
    LabelText,         // `check` is the problem of the text
    Unreadable,        // what is stored there cannot be read
    UnknownOperation,  // ... or one that only the switcher can have brought
    UnknownTarget,     // `text` is the target
    AmbiguousTarget,
  };

  Reason reason = Reason::NotText;
  int line = 0;              // from 1; 0 for the file as a whole
  int column = 0;            // the cell in its row, from 1; 0 for the line as a whole
  std::string caption = {};  // of the column
  std::string text = {};     // what stands there
  int number = 0;
  int expected = 0;
  stations::LabelColumn label = stations::LabelColumn::Station;
  stations::TextCheck check{};
};

// A cell in a column that is only there to be read, and says something else than it could.
struct ReadOnlyCell {
  int line = 0;
  std::string caption;
  std::string text;
};

// What importing a file comes to.
struct ImportPlan {
  // The first kMostFaults in their order, and how many there are.  With any there are no changes.
  std::vector<ImportFault> faults;
  int faultCount = 0;
  int rows = 0;                           // below the captions
  int readOnlyCount = 0;                  // cells that are not imported though they differ
  ReadOnlyCell readOnly;                  // the first of them
  std::vector<stations::Change> changes;  // one of each station that gets another value
};

inline constexpr std::size_t kMostFaults = 100;

// Looks through a whole file before anything is said of its contents, and stores nothing.
//
// The captions in its first row tell what it has: "Station" and any of the label grid's other
// captions, or "Station", "Button", "Operation" and "Targets" as the export of the programming
// writes them, in any order and case; "First Target" and, for programming, "Station Label" are
// there to be read by people.  A column that is not there leaves its field as it is, and so does a
// station or button that has no row.  A button that would get an operation without a target
// becomes inactive; one that has what its row says stays as it is.
//
// It moves in `stations`: the caller holds a db::KeepPosition.  A failure is one of the database.
model::Status PlanImport(std::string_view bytes, jet::RecordSet& stations,
                         const model::SystemModel& model, ImportPlan* plan);

}  // namespace rules

#endif  // VIEWS_RULES_IMPORT_FILE_H_
