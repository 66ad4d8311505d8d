// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_HINT_STRIP_H_
#define APP_SHELL_HINT_STRIP_H_

#include <QFrame>
#include <QString>
#include <cstdint>
#include <map>
#include <set>

class QAction;
class QToolButton;

namespace views {
class ElidedLabel;
}  // namespace views

namespace app {

// What the strip has to say, the most urgent first.
enum class Hint : std::uint8_t {
  Blocked,
  PortDenied,
  PanelReport,
  SentFails,
  NoBackup,
  NoSwitcher,
  NeverSeen,
  WindowRescued,
  LogFile,
  Demo
};

// One line under the child windows for what the operator should know and what is no error.  It
// shows the most urgent hint and goes away when there is none.
class HintStrip : public QFrame {
  Q_OBJECT

 public:
  explicit HintStrip(QWidget* parent = nullptr);

  // Gives a hint, unless one of that kind was closed and has held since.  `command`, which must
  // outlive the hint, is offered as a button beside the text; null for none.
  void Give(Hint hint, const QString& text, QAction* command = nullptr);

  // The hint does not hold any more.
  void Withdraw(Hint hint);

 private:
  struct Content {
    QString text;
    QAction* command;
  };

  void CloseCurrent();
  void ShowCurrent();
  void ShowCommand(QAction* command);

  std::map<Hint, Content> hints_;
  std::set<Hint> closed_;
  views::ElidedLabel* text_;
  QToolButton* command_;
  QToolButton* close_;
};

}  // namespace app

#endif  // APP_SHELL_HINT_STRIP_H_
