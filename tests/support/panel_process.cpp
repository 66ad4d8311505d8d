// SPDX-License-Identifier: MIT

#include "tests/support/panel_process.h"

#include <QStringList>

#ifdef Q_OS_LINUX
#include <sys/prctl.h>

#include <csignal>

#include "tests/support/programs.h"
#endif

namespace test {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

PanelProcess::PanelProcess(int port, const std::vector<std::string>& arguments,
                           const std::string& outputFile) {
  QStringList words{QStringLiteral("--port"), QString::number(port)};
  for (const std::string& argument : arguments) words.append(QString::fromStdString(argument));
#ifdef Q_OS_LINUX
  // A test that is killed takes its panels along.
  process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
#endif
  if (!outputFile.empty()) process_.setStandardOutputFile(QString::fromStdString(outputFile));
  process_.start(QString::fromStdString(ProgramPath("teskpanel")), words);
  process_.waitForStarted();
}

PanelProcess::~PanelProcess() {
  if (process_.state() == QProcess::NotRunning) return;
  process_.kill();
  process_.waitForFinished();
}

int PanelProcess::Wait() {
  if (process_.state() != QProcess::NotRunning &&
      !process_.waitForFinished(static_cast<int>(kPatience.count()))) {
    return -1;
  }
  return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

std::optional<std::string> PanelProcess::WaitForLine(std::string_view text, milliseconds within) {
  const auto deadline = steady_clock::now() + within;
  for (;;) {
    while (process_.canReadLine()) {
      std::string line = process_.readLine().toStdString();
      line.pop_back();
      if (line.find(text) != std::string::npos) return line;
    }
    const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
    if (left.count() <= 0 || !process_.waitForReadyRead(static_cast<int>(left.count()))) {
      if (!process_.canReadLine()) return std::nullopt;
    }
  }
}

std::string PanelProcess::Output() { return process_.readAllStandardOutput().toStdString(); }

std::string PanelProcess::Errors() { return process_.readAllStandardError().toStdString(); }

}  // namespace test
