// SPDX-License-Identifier: MIT

#ifndef TESKPANEL_WATCH_TASK_H_
#define TESKPANEL_WATCH_TASK_H_

#include <map>
#include <string>
#include <utility>

#include "tools/teskpanel/printer.h"
#include "tools/teskpanel/task.h"

namespace teskpanel {

// Prints tables and then every change in them, also those made while there was no connection.
class WatchTask : public Task {
 public:
  // `mask` is what to watch, kAskMap and the like; `where` names the console.  `printer` must
  // outlive the task.
  WatchTask(int mask, std::string where, Printer& printer)
      : mask_(mask), where_(std::move(where)), printer_(printer) {}

  bool Stays() const override { return true; }
  void OnServed(Session& session, bool linkUp) override;
  void OnLinkAnswer(Session& session, bool linkUp) override;
  void OnMap(Session& session, const CrosspointMap& map) override;
  void OnLabels(Session& session, const LabelTable& table) override;
  void OnProgramming(Session& session, const std::vector<StationButtons>& stations) override;

 private:
  const int mask_;
  const std::string where_;
  Printer& printer_;
  bool linkUp_ = false;

  // What has been printed, or was not worth a line.
  std::map<int, MapRow> rows_;                               // by output
  std::map<std::pair<LabelKind, int>, std::string> labels_;  // by kind and station
  std::map<std::pair<int, int>, Button> buttons_;            // by station and button
};

}  // namespace teskpanel

#endif  // TESKPANEL_WATCH_TASK_H_
