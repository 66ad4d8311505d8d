// SPDX-License-Identifier: MIT
//
// usage: make_system FILE CHANNELS
//
// Creates the database of a system of so many channels in which every output is inhibited from
// itself and from nothing else.

#include <cstdio>
#include <cstdlib>
#include <string>

#include "db/station_fields.h"
#include "tests/end_to_end/system_database.h"

int main(int argc, char** argv) {
  const int channels = argc == 3 ? std::atoi(argv[2]) : 0;
  if (channels < 8 || channels > 256) {
    std::fprintf(stderr, "usage: make_system FILE CHANNELS\n");
    return 2;
  }
  test::CreateSystem(argv[1], channels, 1);
  for (int output = 1; output <= channels; ++output) {
    std::string flags(static_cast<std::size_t>(channels), '0');
    flags[static_cast<std::size_t>(output - 1)] = '1';
    test::SetField(argv[1], output, db::kInhibitsField, jet::Value(flags));
  }
  return 0;
}
