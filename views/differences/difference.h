// SPDX-License-Identifier: MIT

#ifndef VIEWS_DIFFERENCES_DIFFERENCE_H_
#define VIEWS_DIFFERENCES_DIFFERENCE_H_

#include <QString>

#include <span>
#include <string>
#include <vector>

#include "stations/change.h"

namespace views {

// One row of a list of differences: what stands on the one side and what on the other.
struct Difference {
  QString where;                    // "Station 12"
  QString what;                     // "Button 3"
  QString before;                   // "TALK 5"
  QString after;                    // "LISTEN 5"
  int station = 0;                  // what the rows are sorted by
  std::vector<std::string> fields;  // of its record; what a tick chooses
  QString obstacle;                 // why it cannot be ticked; empty when it can
};

// Of these changes those that the rows name: fields of the rows' stations.
std::vector<stations::Change> ChangesOf(std::span<const stations::Change> changes,
                                        std::span<const Difference> rows);

}  // namespace views

#endif  // VIEWS_DIFFERENCES_DIFFERENCE_H_
