// SPDX-License-Identifier: MIT

#ifndef TESTS_DESKTOP_HAND_H_
#define TESTS_DESKTOP_HAND_H_

#include <QPoint>
#include <QRect>
#include <QStringList>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "tests/desktop/desktop.h"
#include "tests/end_to_end/console_process.h"

namespace desktop {

// What is pointed at: a widget or a command by its object name, or a part of it.
struct Target {
  const char* object = "";
  const char* window = "";  // whose it is, where several have one of that name
  int row = -1;             // of a list, from 0
  int column = 0;
  bool check = false;   // the box of that cell
  int tab = -1;         // of a tab bar, from 0
  bool accept = false;  // of a row of buttons the one that does it
  bool end = false;     // where the arrow of a box with a list stands
};

// The operator's hands.  Where something stands is asked of the console; what is done goes through
// the window manager.  Each movement is one step: a click or a double click, a drag, a turn of the
// wheel, a key with its modifiers, a word that is typed.
class Hand {
 public:
  // Both must outlive it.
  Hand(const Desktop& desktop, test::ConsoleProcess& console);

  // From now on the steps of another task are counted.
  void Begin() { steps_ = notches_ = 0; }
  int Steps() const { return steps_; }
  // How far the wheel was turned in these steps.
  int Notches() const { return notches_; }
  // What could not be done first; empty while everything could.
  const std::string& Failure() const { return failure_; }

  void Click(const Target& target);
  // With the other button, for the menu of what is clicked.
  void RightClick(const Target& target);
  // With the Shift key held.
  void ShiftClick(const Target& target);
  void DoubleClick(const Target& target);
  void Drag(const Target& from, const Target& to);
  // On the title of a window, which makes it as large as the screen.
  void DoubleClickTitle(const char* window);
  // Turns the wheel over it until that is in sight: one step, however many notches.
  void Turn(const Target& over, const Target& wanted);
  // A key as xdotool names it: "ctrl+f".
  void Key(const char* keys);
  void Type(std::string_view word);

  // Looking is no step.  A window with what the window manager put around it, in pixels of the
  // screen.
  QRect Frame(const char* window);
  // Waits until a window has the keyboard, or the widget.
  void See(const char* window);
  void SeeFocus(const char* widget);
  // Waits until a button is no longer grey.
  void SeeReady(const char* button);
  // Waits until something holds, and says what was waited for when it does not.
  void Until(const std::string& what, const std::function<bool()>& holds);

 private:
  std::optional<QPoint> Find(const Target& target);
  std::optional<QPoint> Look(const Target& target);
  void ClickTwice(const QPoint& at);
  void Press(const Target& target, const char* button);
  void Move(const QPoint& to);
  void Do(const QStringList& arguments);
  // The same, also after something has failed: what is held down would be for all that comes.
  void LetGo(const QStringList& arguments);
  void Fail(const std::string& why);
  // The name of the "widget" or "window" that has the keyboard.
  std::string Focused(const char* what);

  const Desktop& desktop_;
  test::ConsoleProcess& console_;
  int steps_ = 0;
  int notches_ = 0;
  std::string failure_;
};

}  // namespace desktop

#endif  // TESTS_DESKTOP_HAND_H_
