// SPDX-License-Identifier: MIT

#ifndef TESTS_VIEWS_GALLERY_THEMES_H_
#define TESTS_VIEWS_GALLERY_THEMES_H_

#include <QString>

namespace test {

// Gives the application the colours of a theme, "dark" or "contrast"; any other name leaves them
// as they are.
void ApplyTheme(const QString& theme);

}  // namespace test

#endif  // TESTS_VIEWS_GALLERY_THEMES_H_
