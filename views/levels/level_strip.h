// SPDX-License-Identifier: MIT

#ifndef VIEWS_LEVELS_LEVEL_STRIP_H_
#define VIEWS_LEVELS_LEVEL_STRIP_H_

#include <QLabel>
#include <QWidget>

#include "views/levels/level_slider.h"
#include "views/levels/strip_text.h"

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

  // Sets the input's label; the next Fit() shows it.
  void SetLabel(const QString& label) { fullLabel_ = label; }
  const QString& FullLabel() const { return fullLabel_; }

  // Draws the texts as `text` says.  A label that does not fit is cut; its tip has all of it.
  void Fit(const StripText& text);

  // Writes the level that the slider stands at below it and into its tip.
  void ShowLevel();

 Q_SIGNALS:
  // The level was double-clicked: another one is to be entered.
  void EntryRequested();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  LevelSlider* slider_;
  QLabel* level_;
  QLabel* label_;
  QString fullLabel_;
};

}  // namespace views

#endif  // VIEWS_LEVELS_LEVEL_STRIP_H_
