// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_ICON_H_
#define VIEWS_WIDGETS_ICON_H_

#include <QIcon>
#include <QString>
#include <QStringList>

namespace views {

// One of the program's own drawings, by the name of its file in views/icons without ".svg".  Its
// lines have the palette's ButtonText, also when the palette changes later; a selected one is
// HighlightedText throughout.  It is sharp at every size and device pixel ratio, and is not
// distorted by a size that is not square.  `badge` names a second drawing laid over it
// ("unsent-badge").  An unknown name gives a null icon.
QIcon Icon(const QString& name, const QString& badge = QString());

// All names.
QStringList IconNames();

}  // namespace views

#endif  // VIEWS_WIDGETS_ICON_H_
