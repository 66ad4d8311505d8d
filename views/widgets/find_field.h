// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_FIND_FIELD_H_
#define VIEWS_WIDGETS_FIND_FIELD_H_

#include <QColor>
#include <QFrame>
#include <QString>

class QLabel;
class QLineEdit;

namespace views {

// Matches of a search have these colours in every theme.
inline constexpr QColor kMatchGround{0xFF, 0xD5, 0x4F};
inline constexpr QColor kMatchInk{0x00, 0x00, 0x00};

// A small field "aidFind" over a grid, for finding something in it: typing highlights what matches,
// Enter goes to the next match and Shift+Enter to the one before, Escape closes the field.  The
// derived class knows what matches and highlights it.
class FindField : public QFrame {
  Q_OBJECT

 public:
  // Closes the field and takes the highlights away; does nothing when it is closed.
  void Close();

  // Call after the texts have changed: highlights what matches now.  The grid does not scroll.
  void Refresh();

 Q_SIGNALS:
  // The field has closed; the focus goes back to the grid.
  void Closed();

 protected:
  // The field is hidden until it is opened.  `widestCount` is the longest text beside it.
  explicit FindField(const QString& widestCount, QWidget* parent = nullptr);

  // Opens with `text` and takes the focus.
  void Open(const QString& text, const QString& prompt);

  QString Text() const;

  // Collects and highlights what matches Text(), and returns how many there are; none without a
  // text.
  virtual int Highlight() = 0;
  virtual void ClearHighlights() = 0;
  // Brings the first match of a new search into sight, without going there.
  virtual void ShowFirst() = 0;
  // Goes to a match, from 0.
  virtual void GoToMatch(int match) = 0;

  // Enter, or Shift+Enter with `back`.
  virtual void Enter(bool back) { Step(back ? -1 : 1); }
  // What stands beside the field.
  virtual QString CountText() const;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Search();
  void Step(int by);
  void ShowCount();

  QLineEdit* field_;
  QLabel* count_;
  int matchCount_ = 0;
  int at_ = -1;  // the match that Enter went to last
};

}  // namespace views

#endif  // VIEWS_WIDGETS_FIND_FIELD_H_
