// SPDX-License-Identifier: MIT

#include "app/log/event_words.h"

#include <QCoreApplication>
#include <QStringList>

#include "switcher/wire/messages/take.h"
#include "views/words.h"

namespace app {
namespace {

using switcher::TakeAction;

QString Text(const char* text) { return QCoreApplication::translate("EventWords", text); }

}  // namespace

QString RefusalWords(std::string_view description, switcher::DecodeStatus status) {
  const std::string_view word = switcher::StatusWord(status);
  const QString reason = word.empty() ? Text("not stored") : QString::fromUtf8(word);
  return Text("Refused: %1, %2").arg(QString::fromUtf8(description), reason);
}

QString TimesWords(const QString& line, int times) {
  return times == 1 ? line : Text("%1 (%2 times)").arg(line).arg(times);
}

QString ActionWords(int action) {
  switch (static_cast<TakeAction>(action)) {
    case TakeAction::Take:
      return Text("Take");
    case TakeAction::MakeSum:
      return Text("Sum");
    case TakeAction::BreakSum:
      return Text("Sum off");
    case TakeAction::MakeCall:
      return Text("Call");
    case TakeAction::BreakCall:
      return Text("Call off");
    case TakeAction::MakePriorityListen:
      return Text("Priority listen");
    case TakeAction::BreakPriorityListen:
      return Text("Priority listen off");
  }
  return Text("Action %1").arg(views::ByteWords(static_cast<std::uint8_t>(action)));
}

QString CrosspointWords::Crosspoint(int output, int input) const {
  return QStringLiteral("%1 < %2").arg(labels_.Output(output), labels_.Input(input));
}

QString CrosspointWords::Command(int output, int input, int action) const {
  return QStringLiteral("%1: %2").arg(ActionWords(action), Crosspoint(output, input));
}

QString CrosspointWords::Report(const RowChange& change) const {
  QStringList changes;
  for (const int input : change.made) changes.append(QStringLiteral("+ ") + labels_.Input(input));
  for (const int input : change.broken) changes.append(QStringLiteral("− ") + labels_.Input(input));
  if (change.byPriority && !change.wasByPriority) changes.append(Text("by priority"));
  if (!change.byPriority && change.wasByPriority) changes.append(Text("no longer by priority"));
  if (changes.isEmpty()) {
    changes.append(change.isFirst ? Text("no crosspoint") : Text("no change"));
  }
  return QStringLiteral("%1: %2").arg(labels_.Output(change.output),
                                      changes.join(QStringLiteral(", ")));
}

}  // namespace app
