// SPDX-License-Identifier: MIT

#ifndef VIEWS_LEVELS_LEVEL_STRIP_H_
#define VIEWS_LEVELS_LEVEL_STRIP_H_

#include <QLabel>
#include <QWidget>

#include "views/levels/level_slider.h"

namespace views {

// The slider of one input with its number above, and its level and label below.
class LevelStrip : public QWidget {
  Q_OBJECT

 public:
  // `index` counts the inputs from 0.
  LevelStrip(int index, QWidget* parent);

  LevelSlider& Slider() { return *slider_; }
  // What shows the level.
  const QWidget& Level() const { return *level_; }

  // Shows the input's label, cut where it does not fit.
  void SetLabel(const QString& label);

  // Writes the level that the slider stands at below it and into its tip.
  void ShowLevel();

  // The width that shows its texts whole.  A narrower one cuts them.
  int NeededWidth() const;

 Q_SIGNALS:
  // The level was double-clicked: another one is to be entered.
  void EntryRequested();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QFont LabelFont() const;
  void ElideLabel();

  LevelSlider* slider_;
  QLabel* level_;
  QLabel* label_;
  QString fullLabel_;
};

}  // namespace views

#endif  // VIEWS_LEVELS_LEVEL_STRIP_H_
