// SPDX-License-Identifier: MIT

#ifndef VIEWS_DIFFERENCES_DIFFERENCE_H_
#define VIEWS_DIFFERENCES_DIFFERENCE_H_

#include <QString>

#include <utility>

#include "views/change_words.h"

namespace views {

// One row of a list of differences: what stands on the one side and what on the other.
struct Difference {
  ChangeRow row;
  QString obstacle;  // why it cannot be ticked; empty when it can
  int first;         // the stations, or outputs, that it is about: that of the row, unless it
  int last;          // speaks of several

  // NOLINTNEXTLINE(google-explicit-constructor): any change can be listed.
  Difference(ChangeRow change, QString why = {})
      : row(std::move(change)), obstacle(std::move(why)), first(row.station), last(row.station) {}
};

}  // namespace views

#endif  // VIEWS_DIFFERENCES_DIFFERENCE_H_
