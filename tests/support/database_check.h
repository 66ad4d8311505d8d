// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_DATABASE_CHECK_H_
#define TESTS_SUPPORT_DATABASE_CHECK_H_

#include <filesystem>
#include <string>

namespace test {

// What is wrong with a database file: why it cannot be opened, or what the look at every page of
// it finds, one a line; "" when it is whole.  Nothing is changed.
std::string WhatIsWrong(const std::filesystem::path& file);

}  // namespace test

#endif  // TESTS_SUPPORT_DATABASE_CHECK_H_
