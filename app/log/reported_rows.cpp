// SPDX-License-Identifier: MIT

#include "app/log/reported_rows.h"

namespace app {

RowChange ReportedRows::Report(int output, int mode) {
  RowChange change{.output = output};
  const int count = model_.CrosspointMap.Size();
  if (output < 1 || output > count) return change;
  if (made_.Size() != count) {
    made_ = model::OneBasedMatrix<std::uint8_t>(count);
    byPriority_ = model::OneBasedArray<std::uint8_t>(count);
    known_ = model::OneBasedArray<std::uint8_t>(count);
  }
  change.isFirst = known_[output] == 0;
  known_[output] = 1;
  for (int input = 1; input <= count; ++input) {
    std::uint8_t& before = made_.At(output, input);
    const std::uint8_t now = model_.CrosspointMap.At(output, input);
    if (now != before) (now == 1 ? change.made : change.broken).push_back(input);
    before = now;
  }
  change.wasByPriority = byPriority_[output] != 0;
  change.byPriority = mode == 1;
  byPriority_[output] = change.byPriority ? 1 : 0;
  return change;
}

}  // namespace app
