// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_PROGRAMS_H_
#define TESTS_SUPPORT_PROGRAMS_H_

#include <string>
#include <string_view>

namespace test {

// The folder of the programs under test: those of the same build, or those of the folder that the
// environment variable TESK_PROGRAMS names.  So the programs as they are shipped can be tested
// without building their tests once more.
std::string ProgramFolder();

// The path of one of them.
std::string ProgramPath(std::string_view name);

// Whether they are built with the sanitizers, which make them several times slower.
bool ProgramsAreSanitized();

}  // namespace test

#endif  // TESTS_SUPPORT_PROGRAMS_H_
