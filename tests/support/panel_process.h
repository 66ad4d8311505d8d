// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_PANEL_PROCESS_H_
#define TESTS_SUPPORT_PANEL_PROCESS_H_

#include <QProcess>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace test {

// A running teskpanel.  Every wait has a deadline and ends as soon as what it waits for happens.
// REQUIRES: a QCoreApplication
class PanelProcess {
 public:
  static constexpr std::chrono::milliseconds kPatience = std::chrono::seconds(60);

  // Starts it with "--port" and the port in front of the arguments.  Its output goes to
  // `outputFile` when one is given.
  PanelProcess(int port, const std::vector<std::string>& arguments,
               const std::string& outputFile = {});

  // Kills it if it still runs.
  ~PanelProcess();
  PanelProcess(const PanelProcess&) = delete;
  PanelProcess& operator=(const PanelProcess&) = delete;

  // Waits for its end.  The exit status; -1 when it does not end, or was killed.
  int Wait();

  // Waits for a line of its output that contains `text`, and returns it.  Looks at each line
  // once.  Nothing when none comes in time.
  std::optional<std::string> WaitForLine(std::string_view text,
                                         std::chrono::milliseconds within = kPatience);

  // What it has printed and nobody has looked at; of its errors, everything.
  std::string Output();
  std::string Errors();

 private:
  QProcess process_;
};

}  // namespace test

#endif  // TESTS_SUPPORT_PANEL_PROCESS_H_
