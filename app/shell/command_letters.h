// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_COMMAND_LETTERS_H_
#define APP_SHELL_COMMAND_LETTERS_H_

#include <QObject>

namespace app {

// A letter with Alt is a command and never text.  Without this one whose button is grey would be
// typed into the field that has the focus: into a filter, which then hides what was to be chosen.
//
// Fields are line edits, those of a grid's cells, too.  Spin boxes and editors of several lines are
// not watched; the console has none that a letter could be typed into.
class CommandLetters : public QObject {
  Q_OBJECT

 public:
  // Works in all windows for as long as it lives.  On macOS it does nothing: there Alt is the
  // Option key, with which characters are written.
  explicit CommandLetters(QObject* parent = nullptr);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace app

#endif  // APP_SHELL_COMMAND_LETTERS_H_
