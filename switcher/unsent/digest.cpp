// SPDX-License-Identifier: MIT

#include "switcher/unsent/digest.h"

#include "switcher/load_tables.h"
#include "switcher/wire/message_table.h"

namespace switcher {
namespace {

using model::SystemModel;

// The selector of a table of labels.
int SelectorOf(Table table) { return table == Table::OutputLabels ? kOutputLabels : kInputLabels; }

MessagePrint PrintOf(const Bytes& message) {
  return {.digest = DigestOf(message), .size = SizeOf(message)};
}

model::Status LoadLabelPrint(jet::Database& database, const SystemModel& model, Table table,
                             std::optional<MessagePrint>* print) {
  LabelMessages messages;
  model::Status status = LoadLabels(database, model, SelectorOf(table), &messages);
  if (!status.ok()) return status;
  *print = MessagePrint{.digest = DigestOf(messages.texts, DigestOf(messages.order)),
                        .size = SizeOf(messages.order)};
  (*print)->size += SizeOf(messages.texts);
  return status;
}

model::Status LoadOptoPrint(jet::Database& database, const SystemModel& model,
                            std::optional<MessagePrint>* print) {
  Bytes message;
  model::Status status = LoadOptos(database, model, &message);
  if (status.ok()) *print = PrintOf(message);
  return status;
}

}  // namespace

Digest DigestOf(std::span<const std::uint8_t> bytes, Digest before) {
  constexpr Digest kPrime = 0x100000001B3;
  Digest digest = before;
  for (const std::uint8_t byte : bytes) digest = (digest ^ byte) * kPrime;
  return digest;
}

TablePart MessageOf(const TablePart& part) {
  switch (part.table) {
    case Table::Optos:
    case Table::OutputLabels:
    case Table::InputLabels:
      return {.table = part.table};
    case Table::Inhibits:
    case Table::Relays:
    case Table::Buttons:
      break;
  }
  return part;
}

model::Status LoadPrint(jet::Database& database, const SystemModel& model, const TablePart& part,
                        std::optional<MessagePrint>* print) {
  print->reset();
  switch (part.table) {
    case Table::Optos:
      return LoadOptoPrint(database, model, print);
    case Table::OutputLabels:
    case Table::InputLabels:
      return LoadLabelPrint(database, model, part.table, print);
    case Table::Inhibits:
    case Table::Relays:
    case Table::Buttons:
      break;
  }
  const bool isButtons = part.table == Table::Buttons;
  if (part.station < 1 || part.station > (isButtons ? model.StationCount : model.ChannelCount)) {
    return {};
  }
  const auto load = part.table == Table::Inhibits ? LoadInhibits
                    : isButtons                   ? LoadButtons
                                                  : LoadRelays;
  std::optional<Bytes> message;
  model::Status status = load(database, model, part.station, &message);
  if (message) *print = PrintOf(*message);
  return status;
}

std::map<TablePart, MessagePrint> LoadPrints(jet::Database& database, const SystemModel& model) {
  std::map<TablePart, MessagePrint> prints;
  for (const Table table : {Table::Optos, Table::OutputLabels, Table::InputLabels}) {
    const TablePart part{.table = table};
    std::optional<MessagePrint> print;
    (void)LoadPrint(database, model, part, &print);  // what cannot be read has none
    if (print) prints[part] = *print;
  }
  (void)LoadRows(database, model, [&](const TablePart& part, const Bytes& message) {
    prints[part] = PrintOf(message);
  });
  return prints;
}

}  // namespace switcher
