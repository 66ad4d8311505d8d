// SPDX-License-Identifier: MIT

#ifndef STATIONS_JOURNAL_FOLD_ACTS_H_
#define STATIONS_JOURNAL_FOLD_ACTS_H_

#include <vector>

#include "stations/journal/act.h"

namespace stations {

// What these acts come to: what was edited as one act, and behind it what came from the switcher
// and was not edited again, leading on from there, so that neither takes back the other.  Each has
// the words and the time of the last act of its kind; there are two at most, and one at least.
// REQUIRES: at least one act
std::vector<Act> FoldActs(std::vector<Act> acts);

}  // namespace stations

#endif  // STATIONS_JOURNAL_FOLD_ACTS_H_
