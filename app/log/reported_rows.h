// SPDX-License-Identifier: MIT

#ifndef APP_LOG_REPORTED_ROWS_H_
#define APP_LOG_REPORTED_ROWS_H_

#include <vector>

#include "model/one_based.h"
#include "model/system_model.h"

namespace app {

// What a report of one row of the map changed.
struct RowChange {
  int output = 0;                // from 1
  bool isFirst = false;          // nothing was known of the row before
  std::vector<int> made = {};    // inputs that are heard now, and were not
  std::vector<int> broken = {};  // inputs that were heard, and are not any more
  bool byPriority = false;       // what is heard now is heard by priority
  bool wasByPriority = false;

  bool operator==(const RowChange&) const = default;
};

// The rows of the map as the switcher last reported them.  The map of the model is not quite that:
// a refused report may have changed it, and in demo mode so may the operator.
class ReportedRows {
 public:
  // `model` must outlive the object.
  explicit ReportedRows(const model::SystemModel& model) : model_(model) {}

  // The model's map holds an accepted report of row `output` with the status value `mode`.  Before
  // the first one no crosspoint counts as made.
  RowChange Report(int output, int mode);

 private:
  const model::SystemModel& model_;
  model::OneBasedMatrix<std::uint8_t> made_;
  model::OneBasedArray<std::uint8_t> byPriority_;
  model::OneBasedArray<std::uint8_t> known_;  // 1 behind the first report of a row
};

}  // namespace app

#endif  // APP_LOG_REPORTED_ROWS_H_
