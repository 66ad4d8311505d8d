// SPDX-License-Identifier: MIT
//
// A look at every page of a file: does each agree with the others?

#ifndef DB_JET_AUDIT_H_
#define DB_JET_AUDIT_H_

#include "db/jet/finding.h"
#include "db/jet/status.h"
#include "db/jet/store.h"

namespace jet {

// Inspects the whole database and says what is wrong where.  Nothing is changed.  An error
// only when there is nothing to inspect: the catalogue cannot be read.
//
// Checked are: that each page has one owner, the usage maps against the pages, page types and
// counts of free bytes, slot tables, the tables inside rows, moved rows, long values and their
// chains, and each index: shape, links, order, keys against rows, uniqueness.
Status Audit(Store& store, Findings* findings);

}  // namespace jet

#endif  // DB_JET_AUDIT_H_
