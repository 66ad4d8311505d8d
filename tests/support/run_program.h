// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_RUN_PROGRAM_H_
#define TESTS_SUPPORT_RUN_PROGRAM_H_

#include <string>
#include <vector>

namespace test {

struct ProgramResult {
  int exitCode = -1;  // -1: it did not start, crashed or did not end in time
  std::string output;
  std::string errors;
};

// Runs a program, by its path or by its name on PATH, with `input` as its standard input, and
// waits for its end.
ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& input = "");

}  // namespace test

#endif  // TESTS_SUPPORT_RUN_PROGRAM_H_
