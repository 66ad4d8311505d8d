// SPDX-License-Identifier: MIT
//
// Changes of the stations' records in words: for the journal, its window, the undo commands and the
// lists of differences.

#ifndef VIEWS_CHANGE_WORDS_H_
#define VIEWS_CHANGE_WORDS_H_

#include <QString>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "db/jet/value.h"
#include "stations/carry_out.h"
#include "stations/change.h"

namespace views {

// One thing that got another value: a text, a row of inhibits, the whole programming of a button.
struct ChangeRow {
  int station = 0;
  std::vector<std::string> fields;  // those of the change that the row is about
  QString where;                    // "Station 12", "Output 3"
  QString what;                     // "Button 3", "Label", "Inhibits"
  QString before;                   // "TALK 5"
  QString after;
  // Where it was found, all from 0: the number of its change, and of the first of its fields there
  // and of the one behind the last.
  std::size_t change = 0;
  std::size_t firstField = 0;
  std::size_t endField = 0;
};

// What a field holds that was not changed itself: the targets of a button whose operation was.
using FieldLookup = std::function<jet::Value(int station, std::string_view field)>;

// The changes row by row: station by station in their order, the fields of each in the order of the
// views.  Without a `lookup` (null) a row says no more than what was changed.
std::vector<ChangeRow> ChangeRows(std::span<const stations::Change> changes,
                                  const FieldLookup& lookup = nullptr);

// The same rows without the texts `before` and `after`, for a list of thousands of which a few are
// seen: SayValues() makes these.
std::vector<ChangeRow> ChangeOutline(std::span<const stations::Change> changes);

// Makes the two texts of a row of ChangeOutline().  REQUIRES: it is one of these changes.
void SayValues(std::span<const stations::Change> changes, const FieldLookup& lookup,
               ChangeRow* row);

// How many rows these are.
std::size_t CountRows(std::span<const stations::Change> changes);

// Of the changes only what one of the rows is about.
std::vector<stations::Change> Chosen(std::span<const stations::Change> changes,
                                     std::span<const ChangeRow> rows);

// Takes those rows out of *rows, whole, any field of which is in conflict, and returns them: half a
// button is none.
std::vector<ChangeRow> TakeOut(std::span<const stations::Conflict> conflicts,
                               std::vector<ChangeRow>* rows);

// The first of the rows by name, for there can be hundreds: "Station 5 Label, Output 3 Inhibits",
// "… and 12 more".
QString RowNames(std::span<const ChangeRow> rows);

// Who made a change: "operator", "switcher", "undo".
QString OriginWords(stations::Origin origin);

// What was done, in one line: "Label of station 17", "Inhibits of 12 outputs",
// "Undo: Button 3 of station 12".  REQUIRES: at least one change; the first one's origin counts.
QString ActTitle(std::span<const stations::Change> changes);

}  // namespace views

#endif  // VIEWS_CHANGE_WORDS_H_
