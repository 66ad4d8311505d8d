// SPDX-License-Identifier: MIT

#ifndef VIEWS_WINDOW_PLACE_KEPT_PLACE_H_
#define VIEWS_WINDOW_PLACE_KEPT_PLACE_H_

#include <QObject>
#include <QString>
#include <QWidget>

namespace views {

// Lets a window of its own that is an aid stand where it stood when it was closed last.  Its place
// is in the section "Aids" of the user's settings store; one that was never closed stays where it
// is, and one that would be on no screen comes up on the primary one.
class KeptPlace : public QObject {
  Q_OBJECT

 public:
  // Puts `window` in its place; it becomes the parent.  `prefix` begins its keys ("EventLog").
  KeptPlace(QWidget& window, const QString& prefix);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Restore();
  void Save();

  QWidget& window_;
  const QString prefix_;
};

}  // namespace views

#endif  // VIEWS_WINDOW_PLACE_KEPT_PLACE_H_
