// SPDX-License-Identifier: MIT
//
// What came of a comparison, row by row and in one line.

#ifndef VIEWS_COMPARE_COMPARE_ROWS_H_
#define VIEWS_COMPARE_COMPARE_ROWS_H_

#include <QString>

#include <span>
#include <vector>

#include "db/jet/database.h"
#include "stations/change.h"
#include "switcher/comparison/comparison.h"
#include "switcher/table.h"
#include "views/differences/difference.h"

namespace views {

// The differences by station, then what is not known because the switcher did not report it or was
// not understood; these rows cannot be ticked.  `reported` has the values of fields that do not
// differ; null for none.
std::vector<Difference> CompareRows(const switcher::ComparisonResult& result,
                                    jet::Database* reported);

// "12 differences in 195 tables", and what makes it an incomplete comparison.
QString CompareSummary(const switcher::ComparisonResult& result);

// The tables that are sent to take these changes to the switcher, in the order of a download: of
// labels and optos the whole table, else the row of the output or station.
std::vector<switcher::TablePart> PartsOf(std::span<const stations::Change> changes);

}  // namespace views

#endif  // VIEWS_COMPARE_COMPARE_ROWS_H_
