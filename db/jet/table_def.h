// SPDX-License-Identifier: MIT
//
// The definition of a table: its columns, indexes and maps.  It is one byte string, cut over a
// chain of pages.

#ifndef DB_JET_TABLE_DEF_H_
#define DB_JET_TABLE_DEF_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "db/jet/field_type.h"
#include "db/jet/format.h"
#include "db/jet/pager.h"
#include "db/jet/status.h"

namespace jet {

// Where the string goes on, on the second and further pages.
inline constexpr std::uint32_t kContinuedAt = 8;

// Stands in an index definition for a column that it does not have.
inline constexpr std::uint16_t kNoColumn = 0xFFFF;

struct Column {
  std::string name;
  FieldType type = FieldType::Text;  // any value of the byte: files have types not listed there
  std::uint8_t flags = 0;
  std::uint8_t extraFlags = 0;
  std::uint8_t precision = 0;  // Numeric
  std::uint8_t scale = 0;
  std::uint16_t number = 0;         // bit in the null mask
  std::uint16_t variableIndex = 0;  // variable columns: place in the row's offset table
  std::uint16_t fixedOffset = 0;    // fixed columns: place in the row's fixed area
  std::uint16_t length = 0;         // in bytes
  std::uint16_t sortOrder = 0;
  std::uint8_t sortVersion = 0;
  RowPointer ownedMap;  // long-value columns
  RowPointer freeMap;
  // Properties of the catalogue.
  bool allowZeroLength = false;
  bool hasAllowZeroLength = false;
  bool required = false;

  bool IsFixed() const { return (flags & kColumnFixed) != 0; }
  bool IsBoolean() const { return type == FieldType::Boolean; }
  bool IsLongValue() const { return type == FieldType::Memo || type == FieldType::Ole; }
  bool IsText() const { return type == FieldType::Text || type == FieldType::Memo; }
  bool IsAutoNumber() const { return (flags & kColumnAutoNumber) != 0; }
  bool MayCompress() const { return (extraFlags & kColumnCompressed) != 0; }
  // The bytes that the value takes in the fixed area, whatever the flag says; for types of no
  // fixed size the length field.
  std::uint32_t FixedSize() const;
};

struct IndexColumn {
  int column = 0;  // into TableDef::columns
  bool ascending = true;

  friend bool operator==(const IndexColumn&, const IndexColumn&) = default;
};

// An index tree.
struct RealIndex {
  std::vector<IndexColumn> columns;
  RowPointer pageMap;
  std::uint32_t root = 0;
  std::uint8_t flags = 0;
  std::uint32_t distinctKeysAt = 0;  // offset of the count on the first definition page

  bool IsUnique() const { return (flags & kIndexUnique) != 0; }
  bool IgnoresNulls() const { return (flags & kIndexIgnoreNulls) != 0; }
  bool IsRequired() const { return (flags & kIndexRequired) != 0; }

  friend bool operator==(const RealIndex&, const RealIndex&) = default;
};

// A name for an index tree; several may share one.
struct LogicalIndex {
  enum Kind : std::uint8_t { kOrdinary = 0, kPrimary = 1, kForeignKey = 2 };

  std::string name;
  std::uint32_t number = 0;
  std::uint32_t real = 0;
  std::uint32_t otherTable = 0;
  std::uint8_t kind = kOrdinary;
};

struct TableDef {
  std::uint32_t page = 0;
  std::vector<std::uint32_t> pages;  // the chain, beginning with `page`
  std::uint32_t length = 0;          // of the string
  std::uint8_t kind = 0;             // 'N' or 'S'
  std::uint16_t columnsEver = 0;
  std::uint16_t variableEver = 0;
  RowPointer ownedMap;
  RowPointer freeMap;
  std::vector<Column> columns;  // in the order of their numbers
  std::vector<RealIndex> realIndexes;
  std::vector<LogicalIndex> logicalIndexes;

  bool IsSystem() const { return kind == 'S'; }
  // The index of that name, ASCII letters in either case; null when there is none.
  const LogicalIndex* FindIndex(std::string_view name) const;
  // Into `columns`; -1 when there is none.
  int FindColumn(std::string_view name) const;
};

// Offsets of the parts of a definition string.
struct DefinitionParts {
  std::uint32_t statistics = 0;
  std::uint32_t columns = 0;
  std::uint32_t columnNames = 0;
  std::uint32_t realIndexes = 0;
  std::uint32_t logicalIndexes = 0;
  std::uint32_t indexNames = 0;
  std::uint32_t longValueMaps = 0;
};

// The string of the definition that begins at `page`, and the pages it is cut over.
Status ReadDefinitionString(Pager& pager, std::uint32_t page, Bytes* string,
                            std::vector<std::uint32_t>* pages);

// Finds the parts of a definition string and checks that they fit into it.
Status LocateParts(const Format& format, ByteView string, std::uint32_t page,
                   DefinitionParts* parts);

// Reads and checks the definition that begins at `page`.
Status ReadTableDef(Pager& pager, std::uint32_t page, TableDef* def);

bool EqualNoCase(std::string_view a, std::string_view b);

}  // namespace jet

#endif  // DB_JET_TABLE_DEF_H_
