// SPDX-License-Identifier: MIT

#include "db/station_fields.h"

namespace db {

std::string ButtonField(int button, const char* suffix) {
  return "B" + std::to_string(button) + " " + suffix;
}

}  // namespace db
