// SPDX-License-Identifier: MIT

#ifndef VIEWS_TRANSFER_HELD_ENTER_H_
#define VIEWS_TRANSFER_HELD_ENTER_H_

#include <QDialog>
#include <QObject>
#include <QPushButton>

namespace views {

// Keeps an Enter that is held down from pressing a dialog's button for cancelling.  The Enter that
// opened the dialog, or that pressed its other button and so left the focus to this one, would
// cancel at once what it began.
class HeldEnter : public QObject {
  Q_OBJECT

 public:
  // `dialog`, which owns the object, presses `cancel` for keys that nobody in it takes.
  HeldEnter(QDialog& dialog, QPushButton& cancel);

  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace views

#endif  // VIEWS_TRANSFER_HELD_ENTER_H_
