// SPDX-License-Identifier: MIT
//
// Flag strings: the Memo fields "Inhibits", "Relays", "B1 Prog" to "B32 Prog" and
// "OptoStations" hold one character per member, "1" for set and anything else for clear.  A
// member beyond the end of the text is clear.  Members are numbered from 1.
//
// The flags here are plain: ASCII, one byte per member.  A stored text may have been written by
// another program and hold longer characters; switcher::PlainFlags() makes it plain.

#ifndef MODEL_FLAG_STRING_H_
#define MODEL_FLAG_STRING_H_

#include <string_view>

namespace model {

// Whether member `member` (from 1) is set.  Members below 1 and beyond the text are clear.
bool FlagIsSet(std::string_view flags, int member);

// The value of the group of eight members that begins at `first` (1, 9, 17, ...): bit 0 is
// member `first`, bit 7 member `first` + 7.  Result 0..255.  REQUIRES: first >= 1
int FlagGroup(std::string_view flags, int first);

}  // namespace model

#endif  // MODEL_FLAG_STRING_H_
