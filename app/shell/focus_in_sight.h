// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_FOCUS_IN_SIGHT_H_
#define APP_SHELL_FOCUS_IN_SIGHT_H_

#include <QMdiArea>
#include <QObject>
#include <QPointer>
#include <QRect>
#include <QWidget>

namespace app {

// Scrolls the area of the child windows where keys lead out of it.  The windows may be larger than
// the area: without this a control or a cell could have the focus where nobody sees it.  What the
// mouse does moves nothing: the target would slip away from under the pointer.
class FocusInSight : public QObject {
  Q_OBJECT

 public:
  // Works for as long as it lives, which `area` must outlive.
  explicit FocusInSight(QMdiArea& area, QObject* parent = nullptr);

 private:
  void Follow(QWidget* focus);
  // The current cell when it is a grid.
  void ShowFocus();
  // Brings `part` of the widget in sight, unless the mouse is at work.
  void Show(const QWidget& widget, const QRect& part);

  QMdiArea& area_;
  QPointer<QMdiSubWindow> window_;  // in which the focus was last
  QPointer<QWidget> focus_;         // what had it there
  QMetaObject::Connection cells_;   // of the grid that has the focus
};

}  // namespace app

#endif  // APP_SHELL_FOCUS_IN_SIGHT_H_
