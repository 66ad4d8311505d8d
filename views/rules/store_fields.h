// SPDX-License-Identifier: MIT

#ifndef VIEWS_RULES_STORE_FIELDS_H_
#define VIEWS_RULES_STORE_FIELDS_H_

#include <initializer_list>
#include <string>

#include "db/jet/record_set.h"
#include "db/jet/value.h"
#include "model/status.h"

namespace rules {

struct FieldValue {
  std::string field;
  jet::Value value;
};

// Stores the values into the current record in one change: all of them, or on a failure none.
// Where the record has all of them already nothing is written, and *stored is false, as it is
// after a failure.
model::Status StoreFields(jet::RecordSet& stations, std::initializer_list<FieldValue> fields,
                          bool* stored = nullptr);

}  // namespace rules

#endif  // VIEWS_RULES_STORE_FIELDS_H_
