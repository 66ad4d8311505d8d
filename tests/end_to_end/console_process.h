// SPDX-License-Identifier: MIT

#ifndef TESTS_END_TO_END_CONSOLE_PROCESS_H_
#define TESTS_END_TO_END_CONSOLE_PROCESS_H_

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QProcess>
#include <QString>
#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"
#include "tools/pilot/pilot_client.h"

namespace test {

// What the console says of the line while the switcher answers.
inline constexpr char kConnected[] = "Connected - COM 1  (57600, 8, N, 1)";

// The number of the mark of an ordinary crosspoint.
inline constexpr int kCrosspoint = 1;

// A message box as the operator sees it.
struct Box {
  std::string icon;  // "critical" or "exclamation"
  std::string title;
  std::string text;
  std::string more;  // the line that counts

  bool operator==(const Box&) const = default;
};

// Where consoles live: a program folder with a copy of the executable, and the home of a user.
class ConsoleFolder {
 public:
  ConsoleFolder();

  std::filesystem::path Program() const { return root_ / "program"; }
  std::filesystem::path Home() const { return root_ / "home"; }
  std::filesystem::path operator/(std::string_view name) const { return Program() / name; }

  // Writes Orvotesk.ini: COM1 is `device`; `more` are further lines of CONFIGURATION.
  void WriteSettings(const std::string& device, const std::string& more = "") const;

 private:
  TemporaryFolder root_;
};

// The real console, driven from outside.  Every wait has a deadline and ends as soon as what it
// waits for happens.
class ConsoleProcess {
 public:
  // Starts it in the folder; `prefix` is a command that starts it, such as one that changes the
  // user.
  explicit ConsoleProcess(const ConsoleFolder& folder, const std::vector<std::string>& prefix = {});

  // Kills it if it still runs.
  ~ConsoleProcess();

  // Whether the console came up and answers.
  bool IsUp() const { return up_; }
  // Whether its process is still there.
  bool Lives();

  std::string LinkText() { return Property("sbStatusBar_1", "text").toString().toStdString(); }
  QJsonValue Property(const char* object, const char* property);
  void Set(const char* object, const char* property, const QJsonValue& value);
  void SetSize(const char* object, int width, int height);

  // Cells of the map in the grid's own coordinates: output + 1, input + 1.
  int Mark(int output, int input);
  std::string CellText(int row, int column);

  // Chooses a crosspoint of the map.
  void Choose(int output, int input);
  // The same, and triggers a tool of the map.
  void Use(const char* tool, int output, int input);
  void Trigger(const char* action, const char* window = "frmMain");
  void Keys(const char* object, const char* sequence);
  void Type(const char* object, const std::string& text);
  void Click(const char* object);
  // One after the other, with nothing in between.
  void ClickTogether(const std::vector<const char*>& objects);
  void CloseWindow(const char* object);
  // Gives a widget the focus, in a window that is the active one then.
  void Focus(const char* object);
  // Asks the console to save what there is, as the desktop does when its user logs out.
  void LogOut();

  // Whether a widget of that name is there and shows.
  bool IsShown(const char* object);
  // The rows of a list, their cells separated by "|".
  std::vector<std::string> Rows(const char* list);

  std::vector<Box> Boxes();
  void CloseBox();

  // Saves a picture of a window.
  void Grab(const char* object, const std::string& file);

  QJsonObject Ask(const QJsonObject& request);

  // Waits until `condition` holds; whether it did in time.
  static bool WaitFor(const std::function<bool()>& condition,
                      std::chrono::milliseconds within = std::chrono::seconds(60));

  // The same, for a console that may be killed meanwhile: false at once when it was.  Who dies is
  // there for another moment, but shows nothing any more: a condition that finds something not
  // shown may then hold for want of an answer, and does not count.
  bool LivesUntil(const std::function<bool()>& condition) {
    return WaitFor([&] { return !Answers() || condition(); }) && Answers();
  }

  // Asks it to end as the system does, and waits.  Its exit code; nothing when it did not end.
  std::optional<int> Terminate();

  // Waits for it to end by itself.
  std::optional<int> WaitForEnd();

  void Kill();
  qint64 Id() const { return process_.processId(); }

  // What it has in memory now; 0 where the system does not tell, and when it has ended.
  double ResidentMegabytes() const;

  // Where its pilot listens.
  std::filesystem::path Socket() const { return socket_; }

 private:
  bool Connect(const QString& socket);
  bool Answers() { return Lives() && pilot_.IsOpen(); }

  std::filesystem::path socket_;
  QProcess process_;
  pilot::Client pilot_;
  bool up_ = false;
};

}  // namespace test

#endif  // TESTS_END_TO_END_CONSOLE_PROCESS_H_
