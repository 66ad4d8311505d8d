// SPDX-License-Identifier: MIT

#ifndef VIEWS_XMAP_TAKE_UNDO_H_
#define VIEWS_XMAP_TAKE_UNDO_H_

#include <QObject>
#include <QTimer>
#include <QWidget>

#include "views/rules/last_take.h"
#include "views/rules/xmap_grid.h"
#include "views/services.h"

namespace views {

// Undo Last Take: asks whether the output of the last take is to hear again what it heard before,
// and sends what brings that back, each step when the switcher has reported the one before.  It
// says why when it cannot, and what is open when it comes to a stop between two steps; the take can
// then be asked about again.
class TakeUndo : public QObject {
  Q_OBJECT

 public:
  // `view` becomes the parent; all else must outlive the object.
  TakeUndo(const Services& services, const rules::XmapGrid& grid, QWidget& view);

  // A take of a crosspoint, both from 1, goes to the line.
  void Sent(int output, int input);

  // The grid shows the row of this output, or of all with model::kAll, as it was reported.
  void Reported(int output);

  // The command: asks, or says why not.  Nothing is sent before the answer.
  void AskBack();

 Q_SIGNALS:
  void NoteRequested(const QString& note);
  // A command for a crosspoint, both from 1, was handed to the line.
  void CommandSent(int output, int input, int action);

 private:
  // Says why nothing can be taken back now; empty when something can.
  QString Refusal(const rules::TakeBack& back) const;
  void Begin(int output);
  void SendStep(const rules::TakeBack& back);
  // No step is sent any more.  `refusal` says why, unless the operator was told.
  void Stop(const rules::TakeBack& back, const QString& refusal);
  void Lapse();

  const Services services_;
  const rules::XmapGrid& grid_;
  QWidget& view_;
  rules::LastTake last_;
  QTimer patience_;
  bool isUnderWay_ = false;
  bool isPartDone_ = false;
};

}  // namespace views

#endif  // VIEWS_XMAP_TAKE_UNDO_H_
