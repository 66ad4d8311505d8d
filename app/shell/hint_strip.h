// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_HINT_STRIP_H_
#define APP_SHELL_HINT_STRIP_H_

#include <QFrame>
#include <QList>
#include <QString>
#include <cstdint>
#include <map>
#include <set>

class QAction;
class QHBoxLayout;
class QToolButton;

namespace views {
class ElidedLabel;
}  // namespace views

namespace app {

// What the strip has to say, the most urgent first.
enum class Hint : std::uint8_t {
  UnsavedRun,
  LocksLost,
  Blocked,
  PortDenied,
  PanelsClosed,
  PanelsNotYet,
  OpenGatewayClosed,
  JournalFails,
  PanelReport,
  NoBackup,
  SentFails,
  LocksFail,
  NoSwitcher,
  NeverSeen,
  ConnectionFlood,
  WindowRescued,
  LogFile,
  PlacesFail,
  OpenTakes,
  Demo
};

// One line under the child windows for what the operator should know and what is no error.  It
// shows the most urgent hint and goes away when there is none.
class HintStrip : public QFrame {
  Q_OBJECT

 public:
  explicit HintStrip(QWidget* parent = nullptr);

  // Gives a hint, unless one of that kind was closed and has held since.  The commands, which must
  // outlive the hint, are offered as buttons beside the text.
  void Give(Hint hint, const QString& text, const QList<QAction*>& commands = {});

  // The hint does not hold any more.
  void Withdraw(Hint hint);

  // Gives the focus to the first command of the hint that shows, for whoever works by keys.
  void TakeFocus();

  // Whether it was given, and not closed or withdrawn since; a more urgent one may show.
  bool Has(Hint hint) const { return hints_.contains(hint); }

 private:
  struct Content {
    QString text;
    QList<QAction*> commands;
  };

  void CloseCurrent();
  void ShowCurrent();
  void ShowCommands(const QList<QAction*>& commands);

  std::map<Hint, Content> hints_;
  std::set<Hint> closed_;
  views::ElidedLabel* text_;
  QList<QToolButton*> buttons_;  // as many as a hint had at most
  QHBoxLayout* row_;
  QToolButton* close_;
};

}  // namespace app

#endif  // APP_SHELL_HINT_STRIP_H_
