// SPDX-License-Identifier: MIT

#ifndef DB_KEEP_POSITION_H_
#define DB_KEEP_POSITION_H_

#include "db/jet/record_set.h"

namespace db {

// Remembers the current record of a shared record set and goes back to it at the end of the
// scope.  Every walk over the stations begins with one.  `records` must outlive the object.
class KeepPosition {
 public:
  explicit KeepPosition(jet::RecordSet& records) : records_(records), mark_(records.Mark()) {}

  // The record may have been deleted meanwhile; then there is no current record, and whoever
  // reads next is told so.
  ~KeepPosition() { (void)records_.GoTo(mark_); }

  KeepPosition(const KeepPosition&) = delete;
  KeepPosition& operator=(const KeepPosition&) = delete;

 private:
  jet::RecordSet& records_;
  const jet::Bookmark mark_;
};

}  // namespace db

#endif  // DB_KEEP_POSITION_H_
