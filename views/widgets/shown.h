// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_SHOWN_H_
#define VIEWS_WIDGETS_SHOWN_H_

#include <QWidget>

namespace views {

// Whether a window that deletes itself when it is closed is still there: a closed one is hidden
// until then.
inline bool IsShown(const QWidget* window) { return window != nullptr && window->isVisible(); }

// Shows a window of its own before all others, also when it was minimised.
void BringUp(QWidget& window);

}  // namespace views

#endif  // VIEWS_WIDGETS_SHOWN_H_
