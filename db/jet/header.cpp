// SPDX-License-Identifier: MIT

#include "db/jet/header.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <string>

namespace jet {
namespace {

constexpr std::size_t kMaskedFrom = 0x18;
constexpr std::size_t kMaskedBytes4 = 128;
constexpr std::size_t kMaskedBytes3 = 126;

constexpr char kSignature[] = "\0\1\0\0Standard Jet DB";  // with the closing 0: 20 bytes
constexpr std::size_t kSignatureBytes = 0x13;

constexpr std::size_t kVersionAt = 0x14;
constexpr std::size_t kCodePageAt = 0x3C;
constexpr std::size_t kEncodingKeyAt = 0x3E;
constexpr std::size_t kPasswordAt = 0x42;
constexpr std::size_t kPasswordBytes4 = 40;
constexpr std::size_t kPasswordBytes3 = 20;
constexpr std::size_t kBuildAt = 0x6A;
constexpr std::size_t kSortOrder4At = 0x6E;
constexpr std::size_t kCreatedAt = 0x72;

std::array<std::uint8_t, kMaskedBytes4> MakeMask() {
  constexpr std::uint8_t kKey[4] = {0xC7, 0xDA, 0x39, 0x6B};
  std::array<std::uint8_t, 256> state;
  for (unsigned i = 0; i < 256; ++i) state[i] = static_cast<std::uint8_t>(i);
  std::uint8_t j = 0;
  for (unsigned i = 0; i < 256; ++i) {
    j = static_cast<std::uint8_t>(j + state[i] + kKey[i % 4]);
    std::swap(state[i], state[j]);
  }
  std::array<std::uint8_t, kMaskedBytes4> mask;
  std::uint8_t i = 0;
  j = 0;
  for (std::uint8_t& byte : mask) {
    ++i;
    j = static_cast<std::uint8_t>(j + state[i]);
    std::swap(state[i], state[j]);
    byte = state[static_cast<std::uint8_t>(state[i] + state[j])];
  }
  return mask;
}

// What stands in each four bytes of the password area when there is no password: in Jet 4 the day
// on which the file was created, which a password is masked with.
std::uint32_t NoPassword(const Format& format, const std::uint8_t* header) {
  if (!format.IsJet4()) return 0;
  const double created = std::bit_cast<double>(GetU64(header + kCreatedAt));
  constexpr double kDays = 4294967296.0;
  // A header without a sensible date has to agree with itself.
  if (!(created >= 0 && created < kDays)) return GetU32(header + kPasswordAt);
  return static_cast<std::uint32_t>(created);
}

// `header` is unmasked.
bool HasPassword(const Format& format, const std::uint8_t* header) {
  const std::uint32_t none = NoPassword(format, header);
  const std::size_t end = kPasswordAt + (format.IsJet4() ? kPasswordBytes4 : kPasswordBytes3);
  for (std::size_t at = kPasswordAt; at < end; at += 4) {
    if (GetU32(header + at) != none) return true;
  }
  return false;
}

}  // namespace

void MaskHeader(const Format& format, std::uint8_t* bytes) {
  static const std::array<std::uint8_t, kMaskedBytes4> mask = MakeMask();
  const std::size_t count = format.IsJet4() ? kMaskedBytes4 : kMaskedBytes3;
  for (std::size_t i = 0; i < count; ++i) bytes[kMaskedFrom + i] ^= mask[i];
}

Status ReadHeader(PageFile& file, Header* header) {
  std::uint64_t size = 0;
  Status status = file.Size(&size);
  if (!status.ok()) return status;
  std::array<std::uint8_t, kHeaderBytes> bytes{};
  const std::size_t available = std::min<std::uint64_t>(size, bytes.size());
  status = file.Read(0, {bytes.data(), available});
  if (!status.ok()) return status;
  if (available <= kVersionAt || std::memcmp(bytes.data(), kSignature, kSignatureBytes) != 0) {
    return Status(ErrorNumber::UnknownFormat, "The file is not a Jet database", 0);
  }
  const int version = bytes[kVersionAt];
  if (version > 1) {
    return Status(ErrorNumber::UnknownFormat,
                  "The file is of a newer database format (" + std::to_string(version) +
                      "); formats 0 (Jet 3) and 1 (Jet 4) are known",
                  0);
  }
  const Format& format = version == 0 ? kJet3 : kJet4;
  if (size < 4 * format.pageSize) {
    return Status(ErrorNumber::Damaged,
                  "The file is cut off: " + std::to_string(size) + " bytes are no database", 0);
  }
  if (size > format.maxFileSize) {
    return Status(ErrorNumber::Damaged, "The file is larger than its format allows", 0);
  }
  MaskHeader(format, bytes.data());
  header->format = &format;
  header->codePage = GetU16(&bytes[kCodePageAt]);
  header->pageCount = static_cast<std::uint32_t>(size / format.pageSize);
  header->hasPartialPage = size % format.pageSize != 0;
  if (GetU32(&bytes[kEncodingKeyAt]) != 0) {
    return Status(ErrorNumber::Unsupported, "The database is encoded", 0);
  }
  if (!format.IsJet4() && header->codePage != kWesternCodePage) {
    return Status(ErrorNumber::Unsupported,
                  "The database has code page " + std::to_string(header->codePage) +
                      "; only 1252 is supported",
                  0);
  }
  if (HasPassword(format, bytes.data())) {
    return Status(ErrorNumber::Password, "The database has a password", 0);
  }
  return {};
}

Bytes BuildHeaderPage() {
  // The creation date is also the key of the security ids in the catalogue, by a rule that is
  // not known.  This date's ids are, so every new file bears it; the date shown to users is
  // that of the catalogue rows.
  constexpr std::uint8_t kCreated[8] = {0xBC, 0x72, 0x1F, 0x7D, 0xF1, 0x9F, 0xE2, 0x40};
  constexpr std::uint32_t kCreatedDays = 0x94FF;
  constexpr std::uint32_t kBuild = 0x21AA;
  constexpr std::size_t kCommitBytes = 512;

  Bytes page(kJet4.pageSize);
  std::memcpy(page.data(), kSignature, kSignatureBytes);
  PutU32(&page[kVersionAt], 1);
  PutU32(&page[0x18], RowPointer{kGlobalMapPage, 0}.Packed());
  PutU32(&page[0x1C], RowPointer{kGlobalMapPage, 1}.Packed());
  for (std::uint32_t i = 0; i < 4; ++i) PutU32(&page[0x20 + 4 * i], kCatalogPage + i);
  PutU16(&page[kCodePageAt], kWesternCodePage);
  for (std::size_t i = 0; i < kPasswordBytes4; i += 4) PutU32(&page[kPasswordAt + i], kCreatedDays);
  PutU32(&page[kBuildAt], kBuild);
  PutU16(&page[kSortOrder4At], kGeneralSortOrder);
  std::memcpy(&page[kCreatedAt], kCreated, sizeof kCreated);
  MaskHeader(kJet4, page.data());
  PutU32(&page[0x98], 0x654);
  std::memcpy(&page[0x9C], "4.0", 3);
  for (std::size_t at = page.size() - kCommitBytes; at < page.size(); at += 2) page[at + 1] = 1;
  return page;
}

}  // namespace jet
