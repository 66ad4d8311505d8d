// SPDX-License-Identifier: MIT

#ifndef VIEWS_LEVELS_INPUT_LEVEL_DIALOG_H_
#define VIEWS_LEVELS_INPUT_LEVEL_DIALOG_H_

#include <QDateTime>
#include <QDialog>
#include <QLabel>
#include <array>

#include "model/system_model.h"
#include "views/levels/level_entry.h"
#include "views/levels/level_strip.h"
#include "views/services.h"
#include "views/widgets/notch_scroll_bar.h"

namespace views {

class LevelScale;

// The input levels "frmInptLevel": a slider for the gain of each of the 64 inputs, in four bands
// of which two show, and more in a larger window.  Every change by the operator is sent to the
// switcher at once.
//
// Keys: Tab walks through the sliders, Ctrl and an arrow goes to the neighbour in that direction;
// arrows and page keys move the slider; digits and signs, or a double click on the level, open a
// field for another level, which Enter sends.  While no slider has the focus they scroll the bands.
class InputLevelDialog : public QDialog {
  Q_OBJECT

 public:
  // `lastReport` is when the switcher reported the gains that the model holds; a null time for
  // never.
  InputLevelDialog(const Services& services, const QDateTime& lastReport,
                   QWidget* parent = nullptr);
  ~InputLevelDialog() override;

  // Makes the dialog no wider than `width`, unless its narrowest sliders need more.  All sliders
  // are as wide as the widest label; where there is no room for that, the letters of all become
  // narrower and smaller, and what has no room even so is cut.
  void FitInto(int width);

  // Shows all gains from the model.  Sends nothing.  A slider that the operator holds stays where
  // it is; when it is released, it shows what the model holds.
  void Update_GainMap();

  // Says when the switcher reported the gains.  A null time stands for never: the sliders are
  // hatched.
  void ShowReported(const QDateTime& at);

  // Shows the input labels from the database; a failure is reported, and the labels that could
  // not be read are empty.
  void UpdateLabels();

 Q_SIGNALS:
  // The operator has set a gain; the model holds it.
  void GainSet();

 protected:
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  // `index` counts inputs and sliders from 0.
  LevelStrip& Strip(int index) { return *strips_[static_cast<std::size_t>(index)]; }
  QWidget* MakeSliders();
  void FitSliders();
  void LayOut(QWidget* sliders);
  void ShowGain(int index);
  void Moved(int index);
  void LetGo(int index);
  void ScrollTo(int index);
  // How many bands show whole.
  int VisibleBands() const;
  void OpenEntry(int index, const QString& text);
  void Enter(int decibels);
  // Moves the focus from a slider to the one `distance` further on, if there is one.
  void GoToNeighbour(int distance);

  const Services services_;
  std::array<LevelStrip*, model::kLevelCount> strips_{};
  QWidget* panel_ = nullptr;  // holds the sliders, and moves within its parent
  int largestWidth_ = QWIDGETSIZE_MAX;
  QWidget* sliders_ = nullptr;  // what shows of the panel
  LevelEntry* entry_ = nullptr;
  int entered_ = 0;              // the slider that it is for
  LevelScale* scale_ = nullptr;  // one of its bands
  NotchScrollBar* scroll_ = nullptr;
  QLabel* reported_ = nullptr;
};

}  // namespace views

#endif  // VIEWS_LEVELS_INPUT_LEVEL_DIALOG_H_
