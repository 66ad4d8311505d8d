// SPDX-License-Identifier: MIT
//
// The blocks of bytes and the tables in the documents, so that a test can hold the program against
// them.

#ifndef TESTS_SUPPORT_PAGE_EXAMPLES_H_
#define TESTS_SUPPORT_PAGE_EXAMPLES_H_

#include <string>
#include <string_view>
#include <vector>

namespace test {

// The lines of all fenced blocks of that kind (```hex) in a page of docs/, in their order, without
// the fences and without empty lines.  Throws std::runtime_error when the page cannot be read or
// has no such block.
std::vector<std::string> PageLines(std::string_view page, std::string_view kind);

// The cells of the first table below that heading ("## Lengths") of a page of docs/, row by row,
// without its head.  Throws std::runtime_error when there is none.
std::vector<std::vector<std::string>> PageTable(std::string_view page, std::string_view heading);

}  // namespace test

#endif  // TESTS_SUPPORT_PAGE_EXAMPLES_H_
