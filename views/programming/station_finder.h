// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_STATION_FINDER_H_
#define VIEWS_PROGRAMMING_STATION_FINDER_H_

#include <QComboBox>
#include <QPointer>

#include <functional>
#include <vector>

#include "views/widgets/station_picker.h"

namespace views {

// The box "aidStation": goes to a station whose number or label, or a part of it, is typed, or that
// is chosen in the list.  Enter goes to the number that stands there, or to the first station whose
// label is the text, begins with it or has it, in this order; Escape gives back what stood there,
// and both give back the focus.  The arrows open the list.
class StationFinder : public QComboBox {
  Q_OBJECT

 public:
  // `stations` reads those that there are; it is asked whenever the operator comes to the box.
  explicit StationFinder(std::function<std::vector<PickableStation>()> stations,
                         QWidget* parent = nullptr);

  // Shows which station is the current one; 0 for none.
  void ShowStation(int number, const QString& label);

  // Takes the focus, ready for typing.
  void Begin();

  // The list beside itself, in as many columns as bring all stations into sight.
  void showPopup() override;

 Q_SIGNALS:
  // The operator goes to another station than the one that is shown.
  void Chosen(int station);
  // No station has this number or label.
  void NotFound(const QString& text);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void Fill();
  void FitColumns();
  void GoTo(int index);
  void GoToText();
  void Leave();
  // Of an item: the station's number is its data.
  int IndexOf(const QString& text) const;

  std::function<std::vector<PickableStation>()> read_;
  int shown_ = 0;
  QString current_;           // what stands there while nothing is typed
  QPointer<QWidget> backTo_;  // who had the focus before
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_STATION_FINDER_H_
