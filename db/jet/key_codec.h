// SPDX-License-Identifier: MIT
//
// Values as byte strings that order as the values do: the keys of index entries.

#ifndef DB_JET_KEY_CODEC_H_
#define DB_JET_KEY_CODEC_H_

#include <cstdint>
#include <string_view>

#include "db/jet/bytes.h"
#include "db/jet/format.h"
#include "db/jet/row_codec.h"
#include "db/jet/table_def.h"

namespace jet {

// Whether keys of the column can be made here at all: not for Binary, OLE, GUID and Numeric
// columns, and not for text under another sort order.
bool HasKnownKeys(const Column& column);

// Appends the key of one column of an index, its flag byte included.  `content` is the raw
// field, of a Memo column its whole text as stored; nullptr is null.  A Boolean is true when
// `content` is not nullptr.
// False, with nothing appended, when a character of the text has no known weight or the
// column has no known keys; null always has a key.
bool AppendKey(const Format& format, const Column& column, bool ascending, const ByteView* content,
               Bytes* key);

// Appends bytes that order text as an index would, and texts with characters that no index
// can hold after those without, by code point.  The text is not cut.
void AppendTextOrder(const Format& format, ByteView stored, Bytes* key);

}  // namespace jet

#endif  // DB_JET_KEY_CODEC_H_
