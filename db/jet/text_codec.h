// SPDX-License-Identifier: MIT
//
// Text as it is stored: UTF-16LE, plain or compressed, in Jet 4; code page 1252 in Jet 3.

#ifndef DB_JET_TEXT_CODEC_H_
#define DB_JET_TEXT_CODEC_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "db/jet/bytes.h"
#include "db/jet/format.h"

namespace jet {

// Appends stored text as UTF-8.  What is no character (half a surrogate pair, half a unit)
// becomes U+FFFD.
void DecodeText(const Format& format, ByteView stored, std::string* text);

// The same as UTF-16 units, unpaired surrogates kept as they are; in Jet 3 one unit per byte,
// as Windows maps it.
void DecodeUnits(const Format& format, ByteView stored, std::u16string* units);

enum class EncodeResult {
  Ok,
  NotUtf8,        // `text` is not valid UTF-8
  NotInCodePage,  // Jet 3: a character that code page 1252 does not have
};

// Appends `text`, which is UTF-8, in stored form.  *characters is its length in the units that
// limit a Text field.  `mayCompress` is the column's flag and means nothing in Jet 3.
EncodeResult EncodeText(const Format& format, std::string_view text, bool mayCompress,
                        Bytes* stored, std::size_t* characters);

// Appends UTF-16LE units as UTF-8, and back (false when `text` is not valid UTF-8).
void AppendUtf8(std::u16string_view units, std::string* text);
bool AppendUnits(std::string_view text, std::u16string* units);

// The character of a code page 1252 byte, and back (-1 when there is none).  The five codes
// that the code page leaves open are the control characters of the same number.
char16_t UnitOfByte(std::uint8_t byte);
int ByteOfUnit(char16_t unit);

}  // namespace jet

#endif  // DB_JET_TEXT_CODEC_H_
