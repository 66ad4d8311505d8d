// SPDX-License-Identifier: MIT

#ifndef TOOLS_GALLERY_THEMES_H_
#define TOOLS_GALLERY_THEMES_H_

#include <QString>

namespace gallery {

// Gives the application the colours of a theme, "dark" or "contrast"; any other name leaves them
// as they are.
void ApplyTheme(const QString& theme);

}  // namespace gallery

#endif  // TOOLS_GALLERY_THEMES_H_
