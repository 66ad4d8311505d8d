// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_INACTIVE_NOTE_H_
#define VIEWS_PROGRAMMING_INACTIVE_NOTE_H_

#include <QLabel>

namespace views {

// The note beside the options of an operation that what is shown is not what is stored: a button
// or an opto that has lost its last target is stored as inactive at once, while its options and
// captions stay as they were.  It stands there until both are the same again.
class InactiveNote : public QLabel {
  Q_OBJECT

 public:
  explicit InactiveNote(const QString& name, QWidget* parent = nullptr);

  // Shows it for that button or opto ("Button 5").
  void ShowFor(const QString& what);
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_INACTIVE_NOTE_H_
