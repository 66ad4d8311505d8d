// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_HELD_ENTER_H_
#define VIEWS_WIDGETS_HELD_ENTER_H_

#include <QDialog>
#include <QObject>
#include <QPushButton>

namespace views {

// Keeps an Enter that is held down from pressing a dialog's Cancel button.  That Enter may have
// opened the dialog, or pressed its other button: it must not cancel at once what it began.
class HeldEnter : public QObject {
  Q_OBJECT

 public:
  // `dialog` owns the object, and presses `cancel` for an Enter that no other widget in it takes.
  HeldEnter(QDialog& dialog, QPushButton& cancel);

  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace views

#endif  // VIEWS_WIDGETS_HELD_ENTER_H_
