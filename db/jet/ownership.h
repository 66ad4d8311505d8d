// SPDX-License-Identifier: MIT
//
// Which pages of a file are in use, seen from the tables rather than from the global map.

#ifndef DB_JET_OWNERSHIP_H_
#define DB_JET_OWNERSHIP_H_

#include <vector>

#include "db/jet/status.h"

namespace jet {

class Store;

// Marks the pages that the tables of the catalogue are made of.  What cannot be read of a
// damaged table is left out.
Status CollectUsedPages(Store& store, std::vector<bool>* used);

}  // namespace jet

#endif  // DB_JET_OWNERSHIP_H_
