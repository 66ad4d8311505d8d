// SPDX-License-Identifier: MIT
//
// Texts of the database and what of them travels.  Stored texts are UTF-8; a character counts as
// the UTF-16 units that the database keeps of it.

#ifndef SWITCHER_STORED_FORMS_H_
#define SWITCHER_STORED_FORMS_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace switcher {

// The first character of a hidden station's label on the wire.
inline constexpr char kHiddenMark = '{';

// The eight bytes of a label, in code page 1252: left-aligned, filled with spaces, cut at eight.
// A hidden station's label has its first character replaced by kHiddenMark; an empty one
// becomes the mark and seven spaces.  A character that the code page does not have travels as
// the low byte of its code.
std::string WireLabel(std::string_view label, bool hidden);

// The label that eight received bytes are stored as: without its trailing spaces.
std::string LabelFromWire(std::string_view bytes);

// One element for each character of a flag string: 1 for "1", 0 for anything else.
std::vector<std::uint8_t> FlagMembers(std::string_view text);

// The same as a text of "1" and "0".
std::string PlainFlags(std::string_view text);

// `text` with its first members replaced by `flags`; what stands behind them is kept.  A text
// that is shorter becomes as long as `flags`.
std::string WithFirstFlags(std::string_view text, std::span<const std::uint8_t> flags);

// `text` filled up with "0" to `length` characters; a longer one as it is.
std::string FilledFlags(std::string text, std::size_t length);

}  // namespace switcher

#endif  // SWITCHER_STORED_FORMS_H_
