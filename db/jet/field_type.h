// SPDX-License-Identifier: MIT

#ifndef DB_JET_FIELD_TYPE_H_
#define DB_JET_FIELD_TYPE_H_

#include <cstdint>

namespace jet {

// The types of a field, numbered as in the file.  Tables are created with Integer, Text and
// Memo fields; fields of every type are read, and kept when their record is rewritten.
enum class FieldType : std::uint8_t {
  Boolean = 1,
  Byte = 2,
  Integer = 3,   // 16 bits, signed
  Long = 4,      // 32 bits, signed
  Currency = 5,  // 64 bits, in 1/10000
  Single = 6,
  Double = 7,
  DateTime = 8,  // days since 1899-12-30
  Binary = 9,    // at most 510 bytes (Jet 3: 255)
  Text = 10,     // at most 255 characters
  Ole = 11,      // bytes of any length
  Memo = 12,     // text of any length
  Guid = 15,
  Numeric = 16,  // decimal, at most 28 digits
};

}  // namespace jet

#endif  // DB_JET_FIELD_TYPE_H_
