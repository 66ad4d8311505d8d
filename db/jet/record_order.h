// SPDX-License-Identifier: MIT
//
// Values in the order of a sorted query, and values to be looked for without an index.

#ifndef DB_JET_RECORD_ORDER_H_
#define DB_JET_RECORD_ORDER_H_

#include <span>
#include <vector>

#include "db/jet/bytes.h"
#include "db/jet/format.h"
#include "db/jet/status.h"
#include "db/jet/table.h"
#include "db/jet/value.h"

namespace jet {

// Appends bytes that order as the values of the column do: null first, texts by the general
// sort order, numbers by value, anything else by its bytes.  `content` is nullptr for null; of
// a Boolean, nullptr is false.
void AppendOrder(const Format& format, const Column& column, const ByteView* content, Bytes* key);

// The rows of the table ordered by `columns`; equal ones in storage order.
Status SortRows(Table& table, std::span<const int> columns, std::vector<RowPointer>* rows);

// A value that fields are compared with.
class SoughtValue {
 public:
  SoughtValue(const Format& format, const Column& column, const Value& value);

  // False when no field of the column can equal it.
  bool IsPossible() const { return possible_; }
  // Its content, or nullptr for null (or false).
  const ByteView* Content() const { return isNull_ ? nullptr : &content_; }
  bool Equals(const ByteView* content) const;

 private:
  const Format& format_;
  const Column& column_;
  bool possible_ = true;
  bool isNull_ = false;
  Bytes bytes_;
  ByteView content_;
  Bytes order_;
};

}  // namespace jet

#endif  // DB_JET_RECORD_ORDER_H_
