// SPDX-License-Identifier: MIT

#ifndef VIEWS_LABELS_LABEL_EDITORS_H_
#define VIEWS_LABELS_LABEL_EDITORS_H_

#include <QComboBox>
#include <QLineEdit>

class QLabel;

namespace views {

// The editor of a text in the grid of labels.  It takes no more characters than the column, and
// says at its right how many there are: "5/8".
class LabelTextEditor : public QLineEdit {
  Q_OBJECT

 public:
  // A text that is longer already may only get shorter.
  LabelTextEditor(const QString& text, int maxLength, QWidget* parent);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void ShowCount();

  const int maxLength_;
  QLabel* count_;
};

// The editor of the hidden flag: No or Yes.
class HiddenEditor : public QComboBox {
  Q_OBJECT

 public:
  explicit HiddenEditor(QWidget* parent);

 protected:
  // Leaves the wheel to the grid, which scrolls.
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace views

#endif  // VIEWS_LABELS_LABEL_EDITORS_H_
