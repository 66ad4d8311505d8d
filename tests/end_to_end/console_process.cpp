// SPDX-License-Identifier: MIT

#include "tests/end_to_end/console_process.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QProcessEnvironment>
#include <QThread>

#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

#include <sys/wait.h>

#include <csignal>
#include <fstream>
#include <string_view>

#include "tests/support/programs.h"

namespace test {

namespace {

// What stands under a box's text, without the line that every box has which the manual explains.
std::string CountLine(const std::string& more) {
  constexpr std::string_view kKeyLine = "F1 explains it";
  if (!more.ends_with(kKeyLine)) return more;
  const std::string count = more.substr(0, more.size() - kKeyLine.size());
  return count.ends_with('\n') ? count.substr(0, count.size() - 1) : count;
}

constexpr int kStartMilliseconds = 120000;
constexpr int kEndMilliseconds = 120000;

QString ToQString(const std::filesystem::path& path) {
  return QString::fromStdString(path.string());
}

QJsonObject Request(const char* command, const char* object) {
  return {{QStringLiteral("do"), QLatin1String(command)},
          {QStringLiteral("object"), QLatin1String(object)}};
}

}  // namespace

ConsoleFolder::ConsoleFolder() {
  namespace fs = std::filesystem;
  for (const auto& folder : {Program(), Home()}) fs::create_directories(folder);
  // Also for consoles that run as another user.
  fs::permissions(root_.Path(),
                  fs::perms::owner_all | fs::perms::group_exec | fs::perms::others_exec);
  fs::permissions(Home(), fs::perms::all);
  fs::copy_file(ProgramPath("teskctl"), Program() / "teskctl");
}

void ConsoleFolder::WriteSettings(const std::string& device, const std::string& more) const {
  WriteFile(Program() / "Orvotesk.ini", "[CONFIGURATION]\r\nCOM Port=1\r\n" + more +
                                            "\r\n[SERIAL DEVICES]\r\nCOM1=" + device + "\r\n");
}

ConsoleProcess::ConsoleProcess(const ConsoleFolder& folder,
                               const std::vector<std::string>& prefix) {
  static int started = 0;
  socket_ = folder.Home() / ("pilot" + std::to_string(++started));
  const QString socket = ToQString(socket_);
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const char* const name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"}) {
    environment.insert(QLatin1String(name), ToQString(folder.Home()));
  }
  environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
  environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QString::fromStdString(ProgramFolder()));
  environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"),
                     QStringLiteral("teskpilot:") + socket);
  process_.setProcessEnvironment(environment);
  process_.setProcessChannelMode(QProcess::ForwardedChannels);
#ifdef Q_OS_LINUX
  // A test that is killed takes its consoles along.
  process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
#endif
  QStringList command;
  for (const std::string& word : prefix) command.append(QString::fromStdString(word));
  command.append(ToQString(folder / "teskctl"));
  const QString program = command.takeFirst();
  process_.start(program, command);
  // The first answer comes from the event loop: by then the start-up is through.
  up_ = process_.waitForStarted() && Connect(socket) &&
        Ask({{QStringLiteral("do"), QStringLiteral("boxes")}}).value(QLatin1String("ok")).toBool();
}

// A console that dies at its start will never listen.
bool ConsoleProcess::Connect(const QString& socket) {
  constexpr int kStep = 100;
  const QDeadlineTimer deadline(kStartMilliseconds);
  while (!deadline.hasExpired() && Lives()) {
    if (pilot_.Connect(socket, kStep)) return true;
  }
  return false;
}

ConsoleProcess::~ConsoleProcess() {
  if (process_.state() != QProcess::NotRunning) Kill();
}

bool ConsoleProcess::Lives() {
  if (process_.state() == QProcess::NotRunning) return false;
  // Nobody runs an event loop here, so the state is as of the last look.  It is only looked at:
  // the end stays for who waits for it.
  siginfo_t ended{};
  return waitid(P_PID, static_cast<id_t>(Id()), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 &&
         ended.si_pid == 0;
}

double ConsoleProcess::ResidentMegabytes() const {
  std::ifstream status("/proc/" + std::to_string(Id()) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) return std::stod(line.substr(6)) / 1024;
  }
  return 0;
}

QJsonObject ConsoleProcess::Ask(const QJsonObject& request) { return pilot_.Ask(request); }

QJsonValue ConsoleProcess::Property(const char* object, const char* property) {
  QJsonObject request = Request("get", object);
  request.insert(QStringLiteral("property"), QLatin1String(property));
  return Ask(request).value(QLatin1String("value"));
}

void ConsoleProcess::Set(const char* object, const char* property, const QJsonValue& value) {
  QJsonObject request = Request("set", object);
  request.insert(QStringLiteral("property"), QLatin1String(property));
  request.insert(QStringLiteral("value"), value);
  Ask(request);
}

void ConsoleProcess::SetSize(const char* object, int width, int height) {
  Set(object, "size", QJsonArray{width, height});
}

int ConsoleProcess::Mark(int output, int input) {
  QJsonObject request = Request("invoke", "msfgXmap");
  request.insert(QStringLiteral("method"), QStringLiteral("cellMark"));
  request.insert(QStringLiteral("args"), QJsonArray{output + 1, input + 1});
  return Ask(request).value(QLatin1String("value")).toInt(-1);
}

std::string ConsoleProcess::CellText(int row, int column) {
  QJsonObject request = Request("invoke", "msfgXmap");
  request.insert(QStringLiteral("method"), QStringLiteral("cellText"));
  request.insert(QStringLiteral("args"), QJsonArray{row, column});
  return Ask(request).value(QLatin1String("value")).toString().toStdString();
}

void ConsoleProcess::Choose(int output, int input) {
  QJsonObject request = Request("invoke", "msfgXmap");
  request.insert(QStringLiteral("method"), QStringLiteral("selectCell"));
  request.insert(QStringLiteral("args"), QJsonArray{output + 1, input + 1});
  Ask(request);
}

void ConsoleProcess::Use(const char* tool, int output, int input) {
  Choose(output, input);
  Trigger(tool, "frmXmap");
}

void ConsoleProcess::Trigger(const char* action, const char* window) {
  QJsonObject request = Request("trigger", action);
  request.insert(QStringLiteral("window"), QLatin1String(window));
  Ask(request);
}

void ConsoleProcess::Keys(const char* object, const char* sequence) {
  QJsonObject request = Request("keys", object);
  request.insert(QStringLiteral("sequence"), QLatin1String(sequence));
  Ask(request);
}

void ConsoleProcess::Type(const char* object, const std::string& text) {
  QJsonObject request = Request("keys", object);
  request.insert(QStringLiteral("text"), QString::fromStdString(text));
  Ask(request);
}

void ConsoleProcess::Click(const char* object) { Ask(Request("click", object)); }

void ConsoleProcess::ClickTogether(const std::vector<const char*>& objects) {
  std::vector<QJsonObject> requests;
  for (const char* const object : objects) requests.push_back(Request("click", object));
  pilot_.AskTogether(requests);
}

bool ConsoleProcess::IsShown(const char* object) {
  return Ask(Request("find", object))
      .value(QLatin1String("value"))
      .toObject()
      .value(QLatin1String("visible"))
      .toBool();
}

std::vector<std::string> ConsoleProcess::Rows(const char* list) {
  std::vector<std::string> rows;
  const QJsonArray all = Ask(Request("rows", list)).value(QLatin1String("value")).toArray();
  for (const QJsonValue& row : all) {
    QStringList cells;
    for (const QJsonValue& cell : row.toArray()) cells.append(cell.toString());
    rows.push_back(cells.join(QLatin1Char('|')).toStdString());
  }
  return rows;
}

void ConsoleProcess::CloseWindow(const char* object) { Ask(Request("close", object)); }

void ConsoleProcess::Focus(const char* object) { Ask(Request("focus", object)); }

void ConsoleProcess::LogOut() { Ask({{QStringLiteral("do"), QStringLiteral("logOut")}}); }

std::vector<Box> ConsoleProcess::Boxes() {
  std::vector<Box> boxes;
  const QJsonArray shown = Ask({{QStringLiteral("do"), QStringLiteral("boxes")}})
                               .value(QLatin1String("value"))
                               .toArray();
  for (const QJsonValue& box : shown) {
    const auto text = [&box](const char* key) {
      return box.toObject().value(QLatin1String(key)).toString().toStdString();
    };
    boxes.push_back({text("icon"), text("title"), text("text"), CountLine(text("more"))});
  }
  return boxes;
}

void ConsoleProcess::CloseBox() { Ask({{QStringLiteral("do"), QStringLiteral("closeBox")}}); }

void ConsoleProcess::Grab(const char* object, const std::string& file) {
  QJsonObject request = Request("grab", object);
  request.insert(QStringLiteral("file"), QString::fromStdString(file));
  Ask(request);
}

bool ConsoleProcess::WaitFor(const std::function<bool()>& condition,
                             std::chrono::milliseconds within) {
  const auto deadline = std::chrono::steady_clock::now() + within;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    QThread::msleep(10);
  }
  return true;
}

std::optional<int> ConsoleProcess::Terminate() {
  process_.terminate();
  return WaitForEnd();
}

std::optional<int> ConsoleProcess::WaitForEnd() {
  if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(kEndMilliseconds)) {
    return std::nullopt;
  }
  if (process_.exitStatus() != QProcess::NormalExit) return std::nullopt;
  return process_.exitCode();
}

void ConsoleProcess::Kill() {
  process_.kill();
  process_.waitForFinished(kEndMilliseconds);
}

}  // namespace test
