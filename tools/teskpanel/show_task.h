// SPDX-License-Identifier: MIT

#ifndef TESKPANEL_SHOW_TASK_H_
#define TESKPANEL_SHOW_TASK_H_

#include <string>
#include <utility>
#include <vector>

#include "tools/teskpanel/printer.h"
#include "tools/teskpanel/task.h"

namespace teskpanel {

// Asks for tables and prints them: the map, labels or the button programming.
class ShowTask : public Task {
 public:
  // `mask` is what to ask for, kAskMap and the like.  `numbers` are the outputs, or stations, to
  // print; all when empty.  `printer` must outlive the task.
  ShowTask(int mask, std::vector<int> numbers, Printer& printer)
      : missing_(mask), numbers_(std::move(numbers)), printer_(printer) {}

  void OnServed(Session& session, bool linkUp) override;
  void OnLinkAnswer(Session& session, bool linkUp) override;
  void OnMap(Session& session, const CrosspointMap& map) override;
  void OnLabels(Session& session, const LabelTable& table) override;
  void OnProgramming(Session& session, const std::vector<StationButtons>& stations) override;

 private:
  bool Wants(int number) const;
  bool HasAllNumbers(int count, const char* what);
  void HasCome(int bit);
  void Fail(ExitCode code, std::string problem);

  int missing_;  // tables asked for and not printed yet; 0 after a failure
  const std::vector<int> numbers_;
  Printer& printer_;
};

}  // namespace teskpanel

#endif  // TESKPANEL_SHOW_TASK_H_
