// SPDX-License-Identifier: MIT
//
// Page 0: what kind of file this is.  Part of it is masked with a fixed RC4 key stream.

#ifndef DB_JET_HEADER_H_
#define DB_JET_HEADER_H_

#include <cstdint>

#include "db/jet/bytes.h"
#include "db/jet/format.h"
#include "db/jet/page_file.h"
#include "db/jet/status.h"

namespace jet {

// The longest header needed to tell what a file is.
inline constexpr std::size_t kHeaderBytes = 0x9C;

struct Header {
  const Format* format = nullptr;
  std::uint16_t codePage = 0;
  std::uint32_t pageCount = 0;  // whole pages
  bool hasPartialPage = false;  // the file's length is not a multiple of the page size
};

// XORs the masked region of a header that begins at bytes[0]; its own inverse.
// REQUIRES: kHeaderBytes bytes.
void MaskHeader(const Format& format, std::uint8_t* bytes);

// Reads and judges the header.  UnknownFormat for anything but Jet 3 and 4, Unsupported for
// an encoded file or, in Jet 3, another code page than 1252, Password for one that has a password,
// Damaged for one that is cut off.
Status ReadHeader(PageFile& file, Header* header);

// The whole page 0 of a new Jet 4 database.
Bytes BuildHeaderPage();

}  // namespace jet

#endif  // DB_JET_HEADER_H_
