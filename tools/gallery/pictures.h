// SPDX-License-Identifier: MIT
//
// The files that the gallery writes.

#ifndef TOOLS_GALLERY_PICTURES_H_
#define TOOLS_GALLERY_PICTURES_H_

#include <QPixmap>
#include <QString>
#include <QWidget>

namespace gallery {

// Makes the folder.  The files from now on are FOLDER/THEME-NAME.
void SetFolder(const QString& folder, const QString& theme);

// Where a file of this name goes.
QString FileFor(const QString& name);

// The picture as NAME.png.  A file that cannot be written ends the program.
void Save(const QPixmap& picture, const QString& name);

// A window, or a part of one, after its pending events.
void Save(QWidget& widget, const QString& name);

// The window and the menu or list that is open over it, as on a screen; closes what is open.
void SaveWithPopup(QWidget& window, const QString& name);

}  // namespace gallery

#endif  // TOOLS_GALLERY_PICTURES_H_
