// SPDX-License-Identifier: MIT

#include "db/file_status.h"

#include "db/jet/status.h"
#include "db/jet/system_error.h"

namespace db {

model::Status StatusOf(const files::Outcome& outcome) {
  if (outcome.ok()) return {};
  return jet::Status(jet::NumberOf(outcome.error), outcome.text);
}

}  // namespace db
