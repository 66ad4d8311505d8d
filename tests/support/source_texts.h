// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_SOURCE_TEXTS_H_
#define TESTS_SUPPORT_SOURCE_TEXTS_H_

#include <string>
#include <string_view>
#include <vector>

namespace test {

// A text that stands in a program's source.
struct SourceText {
  std::string text;  // as it is at run time; literals that stand side by side are one
  bool translated;   // it is handed to the translation, hence meant to be read
};

// The string literals of C++ code, in their order: without comments and includes, with what
// escapes stand for.
std::vector<SourceText> TextsOf(std::string_view code);

// Whether a text is meant for people: it is translated and has a letter, or it has two words.
bool IsForPeople(const SourceText& text);

}  // namespace test

#endif  // TESTS_SUPPORT_SOURCE_TEXTS_H_
