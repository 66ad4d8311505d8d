// SPDX-License-Identifier: MIT

#ifndef VIEWS_RULES_PRINTER_LIST_H_
#define VIEWS_RULES_PRINTER_LIST_H_

#include <string>
#include <string_view>
#include <vector>

namespace rules {

// The printers of this computer.
struct PrinterList {
  std::vector<std::string> names = {};
  std::string usual = {};  // the one of `names` that is used unless another is named; or empty
};

// What `lpstat -e -d` has said: a line for each printer, whose name has no space, and a sentence
// that ends with the name of the usual one.  Other sentences tell of no printer.
PrinterList ReadPrinterList(std::string_view said);

}  // namespace rules

#endif  // VIEWS_RULES_PRINTER_LIST_H_
