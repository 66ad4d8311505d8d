// SPDX-License-Identifier: MIT

#include "views/words.h"

#include <QCoreApplication>

namespace views {
namespace {

using switcher::Table;

struct Words {
  Q_DECLARE_TR_FUNCTIONS(Words)
};

}  // namespace

QString TableName(Table table) {
  switch (table) {
    case Table::Optos:
      return Words::tr("optos");
    case Table::OutputLabels:
      return Words::tr("station labels");
    case Table::InputLabels:
      return Words::tr("input labels");
    case Table::Inhibits:
      return Words::tr("inhibits");
    case Table::Relays:
      return Words::tr("relays");
    case Table::Buttons:
      return Words::tr("buttons");
  }
  return {};
}

QString TableWords(const switcher::TablePart& part) {
  const QString name = TableName(part.table);
  if (part.station == model::kAll) return name;
  return QStringLiteral("%1 %2").arg(name).arg(part.station);
}

QString SentTableWords(const switcher::TablePart& part, int messages) {
  if (part.station != model::kAll) return TableWords(part);
  switch (part.table) {
    case Table::Inhibits:
      return Words::tr("inhibits, %1 outputs").arg(messages);
    case Table::Relays:
      return Words::tr("relays, %1 outputs").arg(messages);
    case Table::Buttons:
      return Words::tr("buttons, %1 stations").arg(messages);
    case Table::Optos:
    case Table::OutputLabels:
    case Table::InputLabels:
      break;
  }
  return TableWords(part);
}

QString ByteWords(std::uint8_t byte) {
  return QStringLiteral("0x") + QString::number(byte, 16).toUpper().rightJustified(2, u'0');
}

}  // namespace views
