// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_STATION_NAVIGATOR_H_
#define VIEWS_PROGRAMMING_STATION_NAVIGATOR_H_

#include <QGroupBox>
#include <array>

#include "stations/navigation.h"

class QComboBox;
class QLabel;
class QToolButton;

namespace views {

// The frame "frNavControls": six commands that go from station to station, and between them the
// selector of what is edited of it.  Page Up and Page Down go to the previous and the next
// station while the focus is in the frame.
class StationNavigator : public QGroupBox {
  Q_OBJECT

 public:
  // What there is to select.
  enum class Selector : std::uint8_t { None, Button, OptoChannel };

  // With a selector of the station's buttons, "cmbButton", of which the first is selected.  The
  // selector of the optos' channels becomes part of the frame.
  StationNavigator(int buttonCount, QComboBox& optoChannels, QWidget* parent = nullptr);

  // Selects a button (from 1), without a signal.
  void SelectButton(int button);

  // Shows a selector and the frame's caption.
  void Show(Selector selector, const QString& caption);

 Q_SIGNALS:
  void MoveRequested(stations::Movement movement);
  // The operator has selected a button (from 1), which may be the one that was selected.
  void ButtonSelected(int button);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void AddCommand(int index);
  void AddButtons(int count);
  void LayOut();

  static constexpr int kCommands = 6;

  std::array<QToolButton*, kCommands> commands_{};
  QLabel* prompt_;
  QComboBox* buttons_;
  QComboBox& optoChannels_;
  bool isTold_ = false;  // of the button that is being selected
  Selector selector_ = Selector::None;
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_STATION_NAVIGATOR_H_
