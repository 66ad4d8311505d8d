// SPDX-License-Identifier: MIT
//
// Labels as they are stored and as they travel.

#ifndef SWITCHER_STORED_LABELS_H_
#define SWITCHER_STORED_LABELS_H_

#include <string>
#include <string_view>

namespace switcher {

// The first character of a hidden station's label on the wire.
inline constexpr char kHiddenMark = '{';

// The eight bytes of a stored label, in code page 1252: left-aligned, filled with spaces, cut at
// eight UTF-16 units.  A hidden station's label has its first character replaced by kHiddenMark;
// an empty one becomes the mark and seven spaces.  A character that the code page does not have
// travels as the low byte of its code.
std::string WireLabel(std::string_view label, bool hidden);

// The label that eight received bytes are stored as: UTF-8, without its trailing spaces.
std::string LabelFromWire(std::string_view bytes);

// The field of a label table: that of the input labels for selector kInputLabels, that of the
// output labels for any other.
const char* LabelFieldOf(int selector);

}  // namespace switcher

#endif  // SWITCHER_STORED_LABELS_H_
