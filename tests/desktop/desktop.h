// SPDX-License-Identifier: MIT

#ifndef TESTS_DESKTOP_DESKTOP_H_
#define TESTS_DESKTOP_DESKTOP_H_

#include <QProcess>
#include <QSize>
#include <QString>
#include <QStringList>
#include <filesystem>
#include <string>
#include <vector>

namespace desktop {

// An X server of its own, without a monitor, and a window manager on it.
class Desktop {
 public:
  // A screen of so many pixels.
  explicit Desktop(QSize screen);
  ~Desktop();

  // Whether both run.
  bool IsUp() const { return isUp_; }
  QSize Pixels() const { return screen_; }

  // The command that starts a program here, with `settings` as "NAME=value" in its environment.
  std::vector<std::string> Prefix(const std::vector<std::string>& settings = {}) const;

  // Has xdotool do this: what it does goes through the server and the window manager, as what is
  // done with a mouse and a keyboard.  Whether it could.
  bool Do(const QStringList& arguments) const;

  // Saves a picture of the whole screen.
  bool Picture(const std::filesystem::path& file) const;

 private:
  bool StartServer();
  bool StartWindowManager();

  const QSize screen_;
  QString display_;
  QProcess server_;
  QProcess windowManager_;
  bool isUp_ = false;
};

}  // namespace desktop

#endif  // TESTS_DESKTOP_DESKTOP_H_
