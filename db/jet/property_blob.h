// SPDX-License-Identifier: MIT
//
// The properties of a table and its columns, as the catalogue keeps them: a pool of names and
// blocks of values.

#ifndef DB_JET_PROPERTY_BLOB_H_
#define DB_JET_PROPERTY_BLOB_H_

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "db/jet/bytes.h"
#include "db/jet/format.h"

namespace jet {

struct Property {
  std::string owner;  // name of the column; "" for the table itself
  std::string name;
  std::uint8_t type = 0;  // code of a column type
  Bytes value;

  bool IsTrue() const { return !value.empty() && value[0] != 0; }
};

inline constexpr std::string_view kAllowZeroLength = "AllowZeroLength";
inline constexpr std::string_view kRequired = "Required";
inline constexpr std::string_view kAccessVersion = "AccessVersion";

// False, with no properties, when the blob is of an unknown kind or its lengths do not fit.
bool ParseProperties(const Format& format, ByteView blob, std::vector<Property>* properties);

// The blob of a table whose named columns may hold "".
Bytes BuildAllowZeroLength(const Format& format, std::span<const std::string> columns);

}  // namespace jet

#endif  // DB_JET_PROPERTY_BLOB_H_
