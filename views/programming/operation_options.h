// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_OPERATION_OPTIONS_H_
#define VIEWS_PROGRAMMING_OPERATION_OPTIONS_H_

#include <QGroupBox>
#include <optional>

class QButtonGroup;
class QRadioButton;

namespace views {

// The options for the operation of a button or an opto, in a frame "Operation".  The arrow keys
// go from the option that has the focus to its neighbour, and choose it.
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
  // The code of the selected option; stations::kNoType for none.
  int Selected() const;

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

  QButtonGroup* group_;
  QWidget* note_ = nullptr;
  std::optional<int> announced_;  // told of by its tick; a click may follow
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_OPERATION_OPTIONS_H_
