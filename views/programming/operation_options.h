// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_OPERATION_OPTIONS_H_
#define VIEWS_PROGRAMMING_OPERATION_OPTIONS_H_

#include <QGroupBox>
#include <map>
#include <optional>

#include "views/updating_flag.h"

class QButtonGroup;
class QRadioButton;

namespace views {

// The options for the operation of a button or an opto, in a frame "Operation".  One that has
// the focus is gone from to its neighbour, which is thereby chosen, with the arrow keys.
class OperationOptions : public QGroupBox {
  Q_OBJECT

 public:
  // `name` is the fixed name of the frame; the option of code c is named `optionName`_c.
  OperationOptions(const QString& name, const QString& optionName, QWidget* parent = nullptr);

  // Takes over a note.  It stands beside the frame's caption, which is in sight in a narrow view,
  // too, and moves nothing under the pointer when it comes.
  void AddNote(QWidget& note);

  // Selects the option of this code, or none for a code outside the table.  Emits nothing.
  void Select(int code);

 Q_SIGNALS:
  // The operator has chosen the option of this code, by click or key; also the one that was
  // selected already.
  void Chosen(int code);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Connect(QRadioButton& option, int code);
  void KeepReachable();
  void PlaceNote();

  std::map<int, QRadioButton*> options_;
  QButtonGroup* group_;
  QWidget* note_ = nullptr;
  std::optional<int> announced_;  // told of by its tick; a click may follow
  UpdatingFlag selecting_;
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_OPERATION_OPTIONS_H_
