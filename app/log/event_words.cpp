// SPDX-License-Identifier: MIT

#include "app/log/event_words.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>

#include "app/shell/command_table.h"
#include "app/unsent_tables.h"
#include "switcher/wire/messages/take.h"
#include "views/transfer/retrieval_summary.h"

namespace app {
namespace {

using switcher::Table;
using switcher::TablePart;
using switcher::TakeAction;

QString Text(const char* text) { return QCoreApplication::translate("EventWords", text); }

// "69 tables sent, 1 not sent: relays".
QString TableCounts(const switcher::DownloadResult& result) {
  const QString sent =
      result.sent == 1 ? Text("1 table sent") : Text("%1 tables sent").arg(result.sent);
  if (result.failed.empty()) return sent;
  const QString first = TableWords(result.failed.front());
  if (result.failed.size() == 1) return Text("%1, 1 not sent: %2").arg(sent, first);
  return Text("%1, %2 not sent, the first: %3").arg(sent).arg(result.failed.size()).arg(first);
}

}  // namespace

QString CommandWords(const QString& id) {
  const auto commands = AllCommands();
  const auto command = std::ranges::find_if(
      commands, [&](const Command& each) { return id == QLatin1String(each.id); });
  if (command == commands.end()) return id;
  // Without its mnemonic, and without the sign that it asks first.
  QString caption = QString::fromUtf8(command->caption).remove(u'&');
  if (caption.endsWith(u'…')) caption.chop(1);
  return caption;
}

QString TableWords(const TablePart& table) {
  const QString name = UnsentTables::NameOf(table.table);
  if (table.station == model::kAll) return name;
  return QStringLiteral("%1 %2").arg(name).arg(table.station);
}

QString SentTableWords(const TablePart& table, int messages) {
  if (table.station != model::kAll) return TableWords(table);
  switch (table.table) {
    case Table::Inhibits:
      return Text("inhibits, %1 outputs").arg(messages);
    case Table::Relays:
      return Text("relays, %1 outputs").arg(messages);
    case Table::Buttons:
      return Text("buttons, %1 stations").arg(messages);
    case Table::Optos:
    case Table::OutputLabels:
    case Table::InputLabels:
      break;
  }
  return TableWords(table);
}

QString DownloadWords(const switcher::DownloadResult& result) {
  if (!result.notSent.empty()) {
    return Text("Download cancelled, stages not sent: %1")
        .arg(QString::fromStdString(result.notSent));
  }
  return Text("Download finished: %1").arg(TableCounts(result));
}

QString RetrievalWords(const switcher::RetrievalResult& result) {
  return (result.completed ? Text("Retrieval finished: %1") : Text("Retrieval cancelled: %1"))
      .arg(views::RetrievalSummary(result));
}

QString RefusalWords(std::string_view description, switcher::DecodeStatus status) {
  const std::string_view word = switcher::StatusWord(status);
  const QString reason = word.empty() ? Text("not stored") : QString::fromUtf8(word);
  return Text("Refused: %1, %2").arg(QString::fromUtf8(description), reason);
}

QString TimesWords(const QString& line, int times) {
  return times == 1 ? line : Text("%1 (%2 times)").arg(line).arg(times);
}

QString ByteWords(std::uint8_t byte) {
  return QStringLiteral("0x") + QString::number(byte, 16).toUpper().rightJustified(2, u'0');
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
  return Text("Action %1").arg(ByteWords(static_cast<std::uint8_t>(action)));
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
