// SPDX-License-Identifier: MIT

#include "tests/support/programs.h"

#include <cstdlib>

namespace test {
namespace {

#ifdef TESK_SANITIZED
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

// The folder of programs that were built in another way, as they are shipped; null for none.
const char* OtherFolder() { return std::getenv("TESK_PROGRAMS"); }

}  // namespace

std::string ProgramFolder() { return OtherFolder() != nullptr ? OtherFolder() : TESK_PROGRAMS; }

bool ProgramsAreSanitized() { return kSanitized && OtherFolder() == nullptr; }

std::string ProgramPath(std::string_view name) { return ProgramFolder().append("/").append(name); }

}  // namespace test
