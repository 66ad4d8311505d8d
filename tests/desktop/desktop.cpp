// SPDX-License-Identifier: MIT

#include "tests/desktop/desktop.h"

#include <sys/prctl.h>
#include <QProcessEnvironment>
#include <csignal>

#include "tests/end_to_end/console_process.h"

namespace desktop {
namespace {

constexpr int kPatience = 30000;  // milliseconds

// What is killed takes its server and its window manager along.
void DieWithParent(QProcess& process) {
  process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

void End(QProcess& process) {
  process.terminate();
  if (!process.waitForFinished(kPatience)) process.kill();
}

}  // namespace

Desktop::Desktop(QSize screen) : screen_(screen) { isUp_ = StartServer() && StartWindowManager(); }

Desktop::~Desktop() {
  End(windowManager_);
  End(server_);
}

// It chooses a number that nobody uses, and says which.  An X server begins anew when its last
// client leaves, and shuts out who comes meanwhile.  Each look whether the window manager is there
// is such a client, and the manager may come just then: -noreset keeps the server from it.
bool Desktop::StartServer() {
  DieWithParent(server_);
  server_.start(
      QStringLiteral("Xvfb"),
      {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-noreset"),
       QStringLiteral("-nolisten"), QStringLiteral("tcp"), QStringLiteral("-screen"),
       QStringLiteral("0"), QStringLiteral("%1x%2x24").arg(screen_.width()).arg(screen_.height())});
  if (!server_.waitForStarted(kPatience)) return false;
  QByteArray number;
  while (!number.endsWith('\n') && server_.waitForReadyRead(kPatience)) {
    number += server_.readAllStandardOutput();
  }
  display_ = u':' + QString::fromLatin1(number.trimmed());
  return number.endsWith('\n');
}

bool Desktop::StartWindowManager() {
  DieWithParent(windowManager_);
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("DISPLAY"), display_);
  windowManager_.setProcessEnvironment(environment);
  windowManager_.start(QStringLiteral("openbox"), QStringList());
  if (!windowManager_.waitForStarted(kPatience)) return false;
  // It is one when it answers for the desktops that it keeps.
  return test::ConsoleProcess::WaitFor([this] { return Do({QStringLiteral("get_desktop")}); });
}

std::vector<std::string> Desktop::Prefix(const std::vector<std::string>& settings) const {
  std::vector<std::string> prefix{"env", "DISPLAY=" + display_.toStdString(),
                                  "QT_QPA_PLATFORM=xcb"};
  prefix.insert(prefix.end(), settings.begin(), settings.end());
  return prefix;
}

bool Desktop::Do(const QStringList& arguments) const {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("DISPLAY"), display_);
  process.setProcessEnvironment(environment);
  process.start(QStringLiteral("xdotool"), arguments);
  return process.waitForFinished(kPatience) && process.exitStatus() == QProcess::NormalExit &&
         process.exitCode() == 0;
}

bool Desktop::Picture(const std::filesystem::path& file) const {
  return QProcess::execute(QStringLiteral("import"),
                           {QStringLiteral("-display"), display_, QStringLiteral("-window"),
                            QStringLiteral("root"), QString::fromStdString(file.string())}) == 0;
}

}  // namespace desktop
