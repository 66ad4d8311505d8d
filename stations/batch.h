// SPDX-License-Identifier: MIT

#ifndef STATIONS_BATCH_H_
#define STATIONS_BATCH_H_

#include "db/jet/database.h"
#include "model/status.h"
#include "stations/change.h"

namespace stations {

// Records that are stored together: all of them, or none.  One batch at a time.  Their changes are
// announced when all are stored.
class Batch {
 public:
  // `where` is the database or a record set in it.  Without Commit() nothing is stored.
  template <typename Where>
  Batch(Where& where, Changes& changes) : batch_(where), changes_(changes) {
    changes_.Hold();
  }
  ~Batch() { changes_.Drop(); }
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;

  model::Status Commit() {
    model::Status status = batch_.Commit();
    if (status.ok()) changes_.Release();
    return status;
  }

 private:
  jet::Database::Batch batch_;
  Changes& changes_;
};

}  // namespace stations

#endif  // STATIONS_BATCH_H_
