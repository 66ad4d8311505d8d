// SPDX-License-Identifier: MIT
//
// Constants of the file format: where things stand on a page, in Jet 3 and in Jet 4.

#ifndef DB_JET_FORMAT_H_
#define DB_JET_FORMAT_H_

#include <cstdint>

namespace jet {

// Byte 0 of a page.
enum PageType : std::uint8_t {
  kDataPage = 1,
  kDefinitionPage = 2,
  kNodePage = 3,
  kLeafPage = 4,
  kMapPage = 5,
  kFreedOtherPage = 8,
  kFreedDataPage = 9,
};

inline constexpr std::uint32_t kGlobalMapPage = 1;
inline constexpr std::uint32_t kCatalogPage = 2;              // definition of MSysObjects
inline constexpr std::uint32_t kLongValueOwner = 0x4C41564C;  // "LVAL"
inline constexpr std::uint32_t kMaxSlots = 255;
inline constexpr std::uint32_t kMaxColumns = 255;
inline constexpr std::uint32_t kMaxIndexColumns = 10;
inline constexpr std::uint32_t kMaxRealIndexes = 32;
inline constexpr std::uint32_t kMaxNameLength = 64;
inline constexpr std::uint32_t kMaxTextLength = 255;

// Slot flags and the bits that are the offset.
inline constexpr std::uint16_t kSlotDeleted = 0x8000;
inline constexpr std::uint16_t kSlotOverflow = 0x4000;
inline constexpr std::uint16_t kSlotOffset = 0x1FFF;

// Column flags.
inline constexpr std::uint8_t kColumnFixed = 0x01;
inline constexpr std::uint8_t kColumnNullable = 0x02;
inline constexpr std::uint8_t kColumnAutoNumber = 0x04;
inline constexpr std::uint8_t kColumnAutoGuid = 0x40;
inline constexpr std::uint8_t kColumnCompressed = 0x01;  // of the extra flags

// Flags of a real index.
inline constexpr std::uint8_t kIndexUnique = 0x01;
inline constexpr std::uint8_t kIndexIgnoreNulls = 0x02;
inline constexpr std::uint8_t kIndexRequired = 0x08;
inline constexpr std::uint8_t kIndexJet4 = 0x80;

inline constexpr std::uint16_t kGeneralSortOrder = 0x0409;
inline constexpr std::uint16_t kWesternCodePage = 1252;
inline constexpr std::uint32_t kDefinitionMark = 0x659;
inline constexpr std::uint32_t kRealIndexMark = 0x783;

// Where one version differs from the other.  Offsets and sizes in bytes.
struct Format {
  int version;
  std::uint32_t pageSize;
  std::uint64_t maxFileSize;

  // Data pages.
  std::uint32_t slotCountAt;
  std::uint32_t slotsAt;
  std::uint32_t maxRowSize;
  std::uint32_t maxBinary;

  // Usage maps: size of a fresh map row, pages that one bitmap page covers.
  std::uint32_t mapRowSize;
  std::uint32_t pagesPerMapPage;

  // Index pages.
  std::uint32_t previousAt;
  std::uint32_t nextAt;
  std::uint32_t tailAt;
  std::uint32_t prefixAt;  // Jet 4: two bytes, Jet 3: one
  std::uint32_t levelAt;
  std::uint32_t maskAt;
  std::uint32_t entriesAt;

  // Long values: largest content inline, in one row, and in one part of a chain.
  std::uint32_t inlineLimit;
  std::uint32_t singleLimit;
  std::uint32_t chainPart;

  // Table definition: its header fields.
  std::uint32_t rowCountAt;
  std::uint32_t autoNumberAt;
  std::uint32_t tableKindAt;
  std::uint32_t columnsEverAt;
  std::uint32_t variableEverAt;
  std::uint32_t columnCountAt;
  std::uint32_t logicalCountAt;
  std::uint32_t realCountAt;
  std::uint32_t ownedMapAt;
  std::uint32_t freeMapAt;
  std::uint32_t definitionHeader;
  // ... and its records.
  std::uint32_t statisticsSize;
  std::uint32_t columnSize;
  std::uint32_t realIndexSize;
  std::uint32_t logicalIndexSize;

  bool IsJet4() const { return version == 4; }
  std::uint32_t EntryArea() const { return pageSize - entriesAt; }
  // Bytes per character of uncompressed text.
  std::uint32_t CharSize() const { return IsJet4() ? 2 : 1; }
};

inline constexpr Format kJet4 = {
    .version = 4,
    .pageSize = 4096,
    .maxFileSize = std::uint64_t{1} << 31,
    .slotCountAt = 12,
    .slotsAt = 14,
    .maxRowSize = 4060,
    .maxBinary = 510,
    .mapRowSize = 69,
    .pagesPerMapPage = (4096 - 4) * 8,
    .previousAt = 12,
    .nextAt = 16,
    .tailAt = 20,
    .prefixAt = 24,
    .levelAt = 26,
    .maskAt = 27,
    .entriesAt = 480,
    .inlineLimit = 64,
    .singleLimit = 4076,
    .chainPart = 4072,
    .rowCountAt = 16,
    .autoNumberAt = 20,
    .tableKindAt = 40,
    .columnsEverAt = 41,
    .variableEverAt = 43,
    .columnCountAt = 45,
    .logicalCountAt = 47,
    .realCountAt = 51,
    .ownedMapAt = 55,
    .freeMapAt = 59,
    .definitionHeader = 63,
    .statisticsSize = 12,
    .columnSize = 25,
    .realIndexSize = 52,
    .logicalIndexSize = 28,
};

inline constexpr Format kJet3 = {
    .version = 3,
    .pageSize = 2048,
    .maxFileSize = std::uint64_t{1} << 30,
    .slotCountAt = 8,
    .slotsAt = 10,
    .maxRowSize = 2012,
    .maxBinary = 255,
    .mapRowSize = 133,
    .pagesPerMapPage = (2048 - 4) * 8,
    .previousAt = 8,
    .nextAt = 12,
    .tailAt = 16,
    .prefixAt = 20,
    .levelAt = 21,
    .maskAt = 22,
    .entriesAt = 248,
    .inlineLimit = 32,
    .singleLimit = 2032,
    .chainPart = 2028,
    .rowCountAt = 12,
    .autoNumberAt = 16,
    .tableKindAt = 20,
    .columnsEverAt = 21,
    .variableEverAt = 23,
    .columnCountAt = 25,
    .logicalCountAt = 27,
    .realCountAt = 31,
    .ownedMapAt = 35,
    .freeMapAt = 39,
    .definitionHeader = 43,
    .statisticsSize = 8,
    .columnSize = 18,
    .realIndexSize = 39,
    .logicalIndexSize = 20,
};

// The place of a row: its page and its slot there.
struct RowPointer {
  std::uint32_t page = 0;
  std::uint8_t slot = 0;

  // From and to the form it has in a definition or a long value.
  static RowPointer Unpack(std::uint32_t packed) {
    return {packed >> 8, static_cast<std::uint8_t>(packed)};
  }
  std::uint32_t Packed() const { return (page << 8) | slot; }

  explicit operator bool() const { return page != 0; }
  friend bool operator==(const RowPointer&, const RowPointer&) = default;
  friend auto operator<=>(const RowPointer&, const RowPointer&) = default;
};

}  // namespace jet

#endif  // DB_JET_FORMAT_H_
