// SPDX-License-Identifier: MIT
//
// The blocks of bytes in the documents, so that a test can hold the program against them.

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

}  // namespace test

#endif  // TESTS_SUPPORT_PAGE_EXAMPLES_H_
