// SPDX-License-Identifier: MIT

#ifndef TESTS_APP_MANUAL_TEXT_H_
#define TESTS_APP_MANUAL_TEXT_H_

#include <QString>

namespace test {

// A page of the manual as it is read: its words, with single blanks between them.
QString PageText(const QString& page);

// All pages.
QString ManualText();

// Whether `text` has a text of the program, word for word: blanks and line breaks are one,
// mnemonics are left out, and for a place to be filled in ("%1") something stands there.
bool Says(const QString& text, const QString& ofTheProgram);

}  // namespace test

#endif  // TESTS_APP_MANUAL_TEXT_H_
