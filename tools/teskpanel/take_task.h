// SPDX-License-Identifier: MIT

#ifndef TESKPANEL_TAKE_TASK_H_
#define TESKPANEL_TAKE_TASK_H_

#include "tools/teskpanel/printer.h"
#include "tools/teskpanel/take_action.h"
#include "tools/teskpanel/task.h"

namespace teskpanel {

// Makes or breaks a crosspoint and waits until the switcher reports it.
//
// A take is not answered: when the switcher has done it, a row of the map comes.  So the map is
// asked for first, which tells whether the channels exist and whether the crosspoint is made.  When
// it already is as asked, no row may come, and the task ends when the console has read the take.
class TakeTask : public Task {
 public:
  // Channels count from 1.  `printer` must outlive the task.
  TakeTask(int output, int input, const TakeAction& action, Printer& printer)
      : output_(output), input_(input), action_(action), printer_(printer) {}

  void OnServed(Session& session, bool linkUp) override;
  void OnLinkAnswer(Session& session, bool linkUp) override;
  void OnMap(Session& session, const CrosspointMap& map) override;
  Outcome TimeIsOver() const override;

 private:
  bool HasChannels(const CrosspointMap& map);
  bool StandsAsAsked(const MapRow& row) const;
  void EndConfirmed();

  const int output_;
  const int input_;
  const TakeAction action_;
  Printer& printer_;
  bool sent_ = false;
  bool stoodBefore_ = false;
};

}  // namespace teskpanel

#endif  // TESKPANEL_TAKE_TASK_H_
