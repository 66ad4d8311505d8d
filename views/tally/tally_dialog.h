// SPDX-License-Identifier: MIT

#ifndef VIEWS_TALLY_TALLY_DIALOG_H_
#define VIEWS_TALLY_TALLY_DIALOG_H_

#include <QDateTime>
#include <QDialog>
#include <QLabel>
#include <QStringList>
#include <array>

#include "model/system_model.h"
#include "views/tally/lamp.h"

namespace views {

// The tally "frmQdvTally": a lamp for each of the 64 QDV tally points, in four frames of sixteen.
class TallyDialog : public QDialog {
  Q_OBJECT

 public:
  // `lastReport` is when the switcher reported the tally that the model holds; a null time for
  // never.  `model` must outlive the dialog.
  TallyDialog(const model::SystemModel& model, const QDateTime& lastReport,
              QWidget* parent = nullptr);

  // The labels of the stations, from the first one; the tips of their lamps name them.
  void ShowStations(const QStringList& labels);

  // Colours all lamps from the model, which was reported at `reportedAt`.
  void UpdateTally(const QDateTime& reportedAt);

 private:
  QWidget* MakeFrame(int number);
  void LayOut();
  void ShowLamp(int index);
  void ShowTip(int index);

  const model::SystemModel& model_;
  std::array<Lamp*, model::kLevelCount> lamps_{};
  QStringList stations_;
  QLabel* reported_;
};

}  // namespace views

#endif  // VIEWS_TALLY_TALLY_DIALOG_H_
