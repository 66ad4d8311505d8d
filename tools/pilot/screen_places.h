// SPDX-License-Identifier: MIT

#ifndef TOOLS_PILOT_SCREEN_PLACES_H_
#define TOOLS_PILOT_SCREEN_PLACES_H_

#include <QJsonObject>
#include <QObject>
#include <QRect>
#include <QWidget>

#include <optional>

namespace pilot {

// Where something stands that can be clicked: a widget, a command (its tool button, or its entry in
// the menu that is open), the cell "row", "column" of a list (with "check" its box), the tab "tab",
// with "accept" the button of a row of buttons that does what the window is for. In pixels of the
// screen; nothing when it is not in sight, or something else is over its middle.
std::optional<QRect> PlaceOnScreen(QObject& object, const QJsonObject& request);

// A top-level window with what the window manager put around it, in pixels of the screen.
QRect FrameOnScreen(const QWidget& window);

// Who has the keyboard: the object names of the widget, of the active window, of an open menu.
QJsonObject KeyboardFocus();

}  // namespace pilot

#endif  // TOOLS_PILOT_SCREEN_PLACES_H_
