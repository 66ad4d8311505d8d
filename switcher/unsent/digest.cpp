// SPDX-License-Identifier: MIT

#include "switcher/unsent/digest.h"

#include "switcher/load_tables.h"
#include "switcher/wire/message_table.h"

namespace switcher {
namespace {

using model::SystemModel;

// The selector of a table of labels.
int SelectorOf(Table table) { return table == Table::OutputLabels ? kOutputLabels : kInputLabels; }

model::Status LoadLabelDigest(jet::Database& database, const SystemModel& model, Table table,
                              std::optional<Digest>* digest) {
  LabelMessages messages;
  model::Status status = LoadLabels(database, model, SelectorOf(table), &messages);
  if (status.ok()) *digest = DigestOf(messages.texts, DigestOf(messages.order));
  return status;
}

model::Status LoadOptoDigest(jet::Database& database, const SystemModel& model,
                             std::optional<Digest>* digest) {
  Bytes message;
  model::Status status = LoadOptos(database, model, &message);
  if (status.ok()) *digest = DigestOf(message);
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

model::Status LoadDigest(jet::Database& database, const SystemModel& model, const TablePart& part,
                         std::optional<Digest>* digest) {
  digest->reset();
  switch (part.table) {
    case Table::Optos:
      return LoadOptoDigest(database, model, digest);
    case Table::OutputLabels:
    case Table::InputLabels:
      return LoadLabelDigest(database, model, part.table, digest);
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
  if (message) *digest = DigestOf(*message);
  return status;
}

std::map<TablePart, Digest> LoadDigests(jet::Database& database, const SystemModel& model) {
  std::map<TablePart, Digest> digests;
  for (const Table table : {Table::Optos, Table::OutputLabels, Table::InputLabels}) {
    const TablePart part{.table = table};
    std::optional<Digest> digest;
    (void)LoadDigest(database, model, part, &digest);  // what cannot be read has none
    if (digest) digests[part] = *digest;
  }
  (void)LoadRows(database, model, [&](const TablePart& part, const Bytes& message) {
    digests[part] = DigestOf(message);
  });
  return digests;
}

}  // namespace switcher
