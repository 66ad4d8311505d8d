// SPDX-License-Identifier: MIT

#ifndef MODEL_PADDED_H_
#define MODEL_PADDED_H_

#include <cstdio>
#include <string>

namespace model {

// A number as people see it in a row of others: Padded(7, 3) is "007".
inline std::string Padded(int number, int digits) {
  char text[16];
  std::snprintf(text, sizeof text, "%0*d", digits, number);
  return text;
}

}  // namespace model

#endif  // MODEL_PADDED_H_
