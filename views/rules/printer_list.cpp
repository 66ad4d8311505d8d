// SPDX-License-Identifier: MIT

#include "views/rules/printer_list.h"

#include <algorithm>

namespace rules {
namespace {

constexpr std::string_view kUsual = "system default destination: ";

}  // namespace

PrinterList ReadPrinterList(std::string_view said) {
  PrinterList printers;
  std::string usual;
  while (!said.empty()) {
    const std::size_t end = said.find('\n');
    const std::string_view line = said.substr(0, end);
    said.remove_prefix(end == std::string_view::npos ? said.size() : end + 1);
    if (line.starts_with(kUsual)) {
      usual = line.substr(kUsual.size());
    } else if (!line.empty() && line.find_first_of(" \t\r") == std::string_view::npos) {
      printers.names.emplace_back(line);
    }
  }
  if (std::ranges::find(printers.names, usual) != printers.names.end()) printers.usual = usual;
  return printers;
}

}  // namespace rules
