// SPDX-License-Identifier: MIT

#ifndef CONFIG_PROFILE_NUMBER_H_
#define CONFIG_PROFILE_NUMBER_H_

#include <cstdint>
#include <string_view>

namespace config {

// The number that `text` begins with, as a whole number: white space before it is skipped, a
// sign, a fraction and an exponent are understood, what follows it is ignored, halves go to the
// even neighbour, and what is beyond [least, greatest] becomes the nearer of the two.  A text
// that does not begin with a number is 0 (or the nearer limit).
std::int64_t ProfileNumber(std::string_view text, std::int64_t least, std::int64_t greatest);

}  // namespace config

#endif  // CONFIG_PROFILE_NUMBER_H_
