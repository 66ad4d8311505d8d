// SPDX-License-Identifier: MIT
//
// Values to and from the content of a field: its bytes in the row or, of a Memo or OLE field,
// the bytes of its long value.

#ifndef DB_JET_VALUE_CODEC_H_
#define DB_JET_VALUE_CODEC_H_

#include "db/jet/bytes.h"
#include "db/jet/format.h"
#include "db/jet/status.h"
#include "db/jet/table_def.h"
#include "db/jet/value.h"

namespace jet {

// Content to value.  A content of the wrong size is null.  For a Boolean the content does not
// count: present is true.
void DecodeContent(const Format& format, const Column& column, ByteView content, Value* value);

// Appends the content of a value that is not null.  For a Boolean *isTrue is set instead.
// TypeMismatch when the value is not of the column's type or out of its range, ValueTooLong
// when it is longer than the column; Unsupported for columns that can only be kept.
Status EncodeContent(const Format& format, const Column& column, const Value& value, Bytes* content,
                     bool* isTrue);

// Like EncodeContent, for a value to be looked for: false when no record can hold it.  A text
// may be longer than the column.
bool EncodeSought(const Format& format, const Column& column, const Value& value, Bytes* content,
                  bool* isTrue);

// The decimal text of a stored Numeric or Currency amount: "-3.5000".
void AppendDecimal(std::uint64_t high, std::uint64_t low, bool negative, int scale,
                   std::string* text);

}  // namespace jet

#endif  // DB_JET_VALUE_CODEC_H_
