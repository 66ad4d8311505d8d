// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_FOCUS_GRID_H_
#define VIEWS_PROGRAMMING_FOCUS_GRID_H_

#include <QObject>
#include <functional>
#include <utility>
#include <vector>

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

  // With Shift an arrow goes to the next control, too, and `carry` takes along what the last one
  // has: both are told by their places, from 0.
  void SetCarry(std::function<void(int from, int to)> carry) { carry_ = std::move(carry); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  int Count() const { return static_cast<int>(members_.size()); }
  int IndexOf(const QObject* member) const;
  // Where a key leads from a member, which may be there already; -1 for other keys.
  int Target(int index, int key) const;
  void MakeTabStop(int index);

  const int columns_;
  QWidget& block_;
  std::vector<QWidget*> members_;
  int tabStop_ = -1;
  std::function<void(int from, int to)> carry_;
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_FOCUS_GRID_H_
