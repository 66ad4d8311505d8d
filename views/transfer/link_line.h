// SPDX-License-Identifier: MIT

#ifndef VIEWS_TRANSFER_LINK_LINE_H_
#define VIEWS_TRANSFER_LINK_LINE_H_

#include "model/system_model.h"
#include "views/widgets/link_warning.h"

namespace views {

// What a window says, before the operator confirms a transfer, of a link that is down.  The line
// comes and goes with the link, of which it is told, and nothing else moves for it.
class LinkLine : public LinkWarning {
  Q_OBJECT

 public:
  // `model` must outlive the line.
  LinkLine(const model::SystemModel& model, const QString& text, QWidget* parent = nullptr);

  // Whether the switcher answers, as the line has it.
  bool IsConnected() const { return isConnected_; }

  // The link is up or down.
  void LinkChanged();

  // There is nothing to confirm (any more): the line goes, and so does its room.
  void End();
  // There is something to confirm at any time from now on: the line comes and goes, and so does its
  // room.
  void Follow();

 Q_SIGNALS:
  void ConnectionChanged();

 private:
  void KeepRoom(bool keep);

  const model::SystemModel& model_;
  bool isConnected_ = false;
  bool isOver_ = false;  // there is nothing to confirm
};

}  // namespace views

#endif  // VIEWS_TRANSFER_LINK_LINE_H_
