// SPDX-License-Identifier: MIT
//
// What the programs that draw windows into PNG files, for looking at, have in common.

#ifndef TESTS_VIEWS_GALLERY_H_
#define TESTS_VIEWS_GALLERY_H_

#include <QPixmap>
#include <QString>
#include <QWidget>

namespace test {

// The whole of such a program: `PROGRAM FOLDER [light|dark|contrast [POINTS]]` makes the folder,
// gives the application the theme, light without one, and the size of its font, the desktop's
// without one, and calls `draw`.  Without a folder it ends with a message.
void RunGallery(int argc, char** argv, void (*draw)());

// The file FOLDER/THEME-NAME.png.  A file that cannot be written ends the program.
void Save(const QPixmap& picture, const QString& name);

// What a window, or a part of one, shows once the events that wait have come.
void Save(QWidget& widget, const QString& name);

// The window and what stands over it, as on a screen.
void SaveWithPopup(QWidget& window, QWidget& popup, const QString& name);

}  // namespace test

#endif  // TESTS_VIEWS_GALLERY_H_
