// SPDX-License-Identifier: MIT

#ifndef VIEWS_XMAP_INHIBIT_TOOL_H_
#define VIEWS_XMAP_INHIBIT_TOOL_H_

#include <QObject>
#include <QWidget>

#include "model/status.h"
#include "views/rules/inhibit_block.h"
#include "views/rules/xmap_grid.h"
#include "views/services.h"
#include "views/xmap/xmap_model.h"
#include "views/xmap/xmap_painter.h"

namespace views {

// What "ID_ToggleInhibit" does: of one cell at once, of several after a question and as one act.
class InhibitTool : public QObject {
  Q_OBJECT

 public:
  // `view` becomes the parent; all else must outlive the tool.
  InhibitTool(const Services& services, rules::XmapGrid& grid, XmapModel& cells, QWidget& view);

  // Sets the inhibits of all cells of `block` to the opposite of that of `current`, which is one of
  // them.
  void Toggle(const Crosspoint& current, const rules::CellBlock& block);

 Q_SIGNALS:
  // Several cells were changed.
  void NoteRequested(const QString& note);

 private:
  void ToggleOne(const Crosspoint& cell);
  void AskForBlock(const Crosspoint& current, const rules::CellBlock& block);
  // Whether the cell is inhibited, and what setting or clearing the block comes to now.
  model::Status ReadFlag(jet::RecordSet& stations, const Crosspoint& cell, bool* isInhibited);
  model::Status Plan(jet::RecordSet& stations, const rules::CellBlock& block, bool inhibit,
                     rules::InhibitPlan* plan);
  void StoreBlock(const rules::CellBlock& block, bool inhibit);

  const Services services_;
  rules::XmapGrid& grid_;
  XmapModel& cells_;
  QWidget& view_;
};

}  // namespace views

#endif  // VIEWS_XMAP_INHIBIT_TOOL_H_
