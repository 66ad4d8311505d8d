// SPDX-License-Identifier: MIT

#ifndef VIEWS_XMAP_TAKE_UNDO_H_
#define VIEWS_XMAP_TAKE_UNDO_H_

#include <QObject>
#include <QWidget>

#include "views/rules/last_take.h"
#include "views/rules/xmap_grid.h"
#include "views/services.h"

namespace views {

// Undo Last Take: asks whether the output of the last take is to hear again what it heard before,
// and sends what brings that back.  It says why when it cannot.
class TakeUndo : public QObject {
  Q_OBJECT

 public:
  // `view` becomes the parent; all else must outlive the object.
  TakeUndo(const Services& services, const rules::XmapGrid& grid, QWidget& view);

  // The take that was made last and may be taken back.
  rules::LastTake& Last() { return last_; }

  // The command: asks, or says why not.  Nothing is sent before the answer.
  void AskBack();

 Q_SIGNALS:
  void NoteRequested(const QString& note);
  // A command for a crosspoint, both from 1, was handed to the line.
  void CommandSent(int output, int input, int action);

 private:
  // Says why nothing can be taken back now; empty when something can.
  QString Refusal(const rules::TakeBack& back) const;
  void SendBack(int output);

  const Services services_;
  const rules::XmapGrid& grid_;
  QWidget& view_;
  rules::LastTake last_;
};

}  // namespace views

#endif  // VIEWS_XMAP_TAKE_UNDO_H_
