// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_ICON_H_
#define VIEWS_WIDGETS_ICON_H_

#include <QIcon>
#include <QString>
#include <QStringList>

namespace views {

// One of the program's own drawings, by the name of its file in views/icons without ".svg".
// Its lines follow the palette's ButtonText, also when the palette changes later; all of it is
// in HighlightedText where it is selected.  It is sharp at every size and device pixel ratio, and
// stands undistorted in the middle of a size that is not square.  `badge`, when given, names a
// second drawing laid over it ("unsent-badge").  A name that is not there gives a null icon.
QIcon Icon(const QString& name, const QString& badge = QString());

// All names, for a test or a gallery.
QStringList IconNames();

}  // namespace views

#endif  // VIEWS_WIDGETS_ICON_H_
