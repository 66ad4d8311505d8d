// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_COMMAND_TABLE_H_
#define APP_SHELL_COMMAND_TABLE_H_

#include <QObject>
#include <QString>
#include <functional>
#include <map>
#include <span>

namespace app {

// A command of the main window.  Identifiers are exact and case-sensitive, and some are spelt
// the way the tool bar's definition spells them; they are not to be corrected.
struct Command {
  const char* id;
  const char* caption;   // with mnemonic
  const char* tip;       // empty: the caption
  const char* icon;      // name of the drawing, empty for none
  const char* shortcut;  // empty for none
};

// All commands, in no particular order.
std::span<const Command> AllCommands();

// The command with that identifier in words: its caption without mnemonic, and without the sign
// that it asks first.
QString CommandWords(const QString& id);

// What the commands do.
class CommandTable : public QObject {
  Q_OBJECT

 public:
  using Operation = std::function<void()>;

  // Gives a command its operation.
  void Set(const QString& id, Operation operation);

  // Whether the command does anything.
  bool Has(const QString& id) const { return operations_.contains(id); }

  // Runs a command.  A heading and any unknown identifier do nothing.
  void Run(const QString& id) const;

 Q_SIGNALS:
  // The command is about to be run.
  void Runs(const QString& id) const;

 private:
  std::map<QString, Operation> operations_;
};

}  // namespace app

#endif  // APP_SHELL_COMMAND_TABLE_H_
