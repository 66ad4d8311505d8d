// SPDX-License-Identifier: MIT
//
// Flag strings: the Memo fields "Inhibits", "Relays", "B1 Prog" to "B32 Prog" and
// "OptoStations" hold one character per member, "1" for set and anything else for clear.  A
// member beyond the end of the text is clear.  Members are numbered from 1.
//
// A stored text is UTF-8 and may have been written by another program and hold longer characters:
// one counts as the UTF-16 units that the database keeps of it.  A plain text holds "1" and "0"
// alone, so that a member is a byte.

#ifndef MODEL_FLAG_STRING_H_
#define MODEL_FLAG_STRING_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace model {

// One element for each member of a stored text: 1 for set, 0 for clear.
std::vector<std::uint8_t> FlagMembers(std::string_view text);

// A stored text as a plain one.
std::string PlainFlags(std::string_view text);

// Whether a member of a plain text is set.  Members below 1 and beyond the text are clear.
bool FlagIsSet(std::string_view flags, int member);

// The lowest member that is set among the first `count` of a plain text; 0 when there is none.
int FirstFlag(std::string_view flags, int count);

// The value of the group of eight members that begins at `first` (1, 9, 17, ...) of a plain text:
// bit 0 is member `first`, bit 7 member `first` + 7.  Result 0..255.  REQUIRES: first >= 1
int FlagGroup(std::string_view flags, int first);

// What is stored.

// `text` with its first members replaced by `flags`; what stands behind them is kept.  A text
// that is shorter becomes as long as `flags`.
std::string WithFirstFlags(std::string_view text, std::span<const std::uint8_t> flags);

// `text` with one member set or cleared: its first `count` members are "0" or "1" and are all
// there; what stands behind them is kept.  REQUIRES: 1 <= member <= count
std::string WithFlag(std::string_view text, int member, bool set, int count);

// `text` filled up with "0" to `length` characters; a longer one as it is.
std::string FilledFlags(std::string text, std::size_t length);

}  // namespace model

#endif  // MODEL_FLAG_STRING_H_
