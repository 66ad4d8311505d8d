// SPDX-License-Identifier: MIT

#ifndef STATIONS_FOLD_H_
#define STATIONS_FOLD_H_

#include <span>
#include <vector>

#include "stations/change.h"

namespace stations {

// What many changes come to: every field that they leave with another value than they found, with
// its value before the first of them and after the last.  One change for each station, in the order
// of their numbers, its fields in the order in which they were changed first; its origin is that of
// the last one.
std::vector<Change> Fold(std::span<const Change> changes);

}  // namespace stations

#endif  // STATIONS_FOLD_H_
