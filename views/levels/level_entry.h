// SPDX-License-Identifier: MIT

#ifndef VIEWS_LEVELS_LEVEL_ENTRY_H_
#define VIEWS_LEVELS_LEVEL_ENTRY_H_

#include <QLineEdit>

namespace views {

// aidLevelEntry: a small field over a slider's level, to type another one in decibels.  Enter takes
// it, Escape and leaving the field drop it; nothing acts while it is typed.
class LevelEntry : public QLineEdit {
  Q_OBJECT

 public:
  explicit LevelEntry(QWidget* parent);

  // Opens over `level`, which shows what the field is to set, with `text` to begin with; without
  // one with the level that is shown, chosen whole.
  void OpenOver(const QWidget& level, int decibels, const QString& text);

 Q_SIGNALS:
  // A level was typed, -100 to 27; the field is closed.
  void Chosen(int decibels);
  // The field was closed by the keyboard: the focus goes back.
  void Closed();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
};

}  // namespace views

#endif  // VIEWS_LEVELS_LEVEL_ENTRY_H_
