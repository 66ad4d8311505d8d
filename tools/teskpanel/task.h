// SPDX-License-Identifier: MIT

#ifndef TESKPANEL_TASK_H_
#define TESKPANEL_TASK_H_

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tools/teskpanel/exit_code.h"
#include "tools/teskpanel/session.h"

namespace teskpanel {

// How a task ended.
struct Outcome {
  ExitCode code = ExitCode::Done;
  std::string problem;  // for the user; empty when there is none

  bool operator==(const Outcome&) const = default;
};

// Problems of more than one task.
inline constexpr char kNoLink[] = "the console has no switcher connected";
inline std::string NoSuchNumber(std::string_view what, int number, int last) {
  return "there is no " + std::string(what) + " " + std::to_string(number) + "; the last one is " +
         std::to_string(last);
}

// One command of the program: what it does with a session that is served.
class Task : public SessionEvents {
 public:
  // How it ended; nothing while it goes on.
  const std::optional<Outcome>& Result() const { return result_; }

  // How it ends when its answer does not come in time.
  virtual Outcome TimeIsOver() const { return {ExitCode::NoAnswer, "the console does not answer"}; }

  // Whether it goes on until the program is ended, with a new connection when one is lost.
  virtual bool Stays() const { return false; }

  void OnMap(Session&, const CrosspointMap&) override {}
  void OnLabels(Session&, const LabelTable&) override {}
  void OnProgramming(Session&, const std::vector<StationButtons>&) override {}

 protected:
  void End(ExitCode code, std::string problem = {}) {
    if (!result_.has_value()) result_ = Outcome{code, std::move(problem)};
  }

 private:
  std::optional<Outcome> result_;
};

// The answer to the request for the whole map, rather than one row that has changed.
inline bool IsWholeMap(const CrosspointMap& map) { return map.rows.size() != 1; }

}  // namespace teskpanel

#endif  // TESKPANEL_TASK_H_
