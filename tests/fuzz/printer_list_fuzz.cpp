// SPDX-License-Identifier: MIT
//
// Reads arbitrary bytes as what the printing system says of its printers.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "views/rules/printer_list.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const rules::PrinterList list =
      rules::ReadPrinterList({reinterpret_cast<const char*>(data), size});
  for (const std::string& name : list.names) {
    if (name.empty() || name.find_first_of(" \n") != std::string::npos) std::abort();
  }
  const bool isThere = std::ranges::find(list.names, list.usual) != list.names.end();
  if (!list.usual.empty() && !isThere) std::abort();
  return 0;
}
