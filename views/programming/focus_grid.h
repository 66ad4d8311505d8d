// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_FOCUS_GRID_H_
#define VIEWS_PROGRAMMING_FOCUS_GRID_H_

#include <QObject>
#include <functional>
#include <utility>
#include <vector>

class QKeyEvent;
class QWidget;

namespace views {

// Makes a block of controls, in rows, one stop of the Tab key: the arrow keys go from one to the
// next, Home and End to the ends of a row, and Tab comes to the one that was used last.
class FocusGrid : public QObject {
 public:
  // `block` gets the focus for its members.
  FocusGrid(int columns, QWidget& block);

  // Adds a control behind the others.
  void Add(QWidget& member);

  // Shift and an arrow key go to the next control as well; then `carry` gives it what the one
  // before has.  Both are counted from 0.
  void SetCarry(std::function<void(int from, int to)> carry) { carry_ = std::move(carry); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  int Count() const { return static_cast<int>(members_.size()); }
  int IndexOf(const QObject* member) const;
  // Where a key leads from a member, which may be there already; -1 for other keys.
  int Target(int index, int key) const;
  bool Carries(const QKeyEvent& keys) const;
  void MakeTabStop(int index);

  const int columns_;
  QWidget& block_;
  std::vector<QWidget*> members_;
  int tabStop_ = -1;
  std::function<void(int from, int to)> carry_;
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_FOCUS_GRID_H_
