// SPDX-License-Identifier: MIT

#include "switcher/unsent/digest.h"

#include <vector>

#include "switcher/load_tables.h"

namespace switcher {
namespace {

using model::SystemModel;

MessagePrint PrintOf(std::span<const Bytes> messages) {
  MessagePrint print;
  for (const Bytes& message : messages) {
    print.digest = DigestOf(message, print.digest);
    print.size += SizeOf(message);
  }
  return print;
}

}  // namespace

Digest DigestOf(std::span<const std::uint8_t> bytes, Digest before) {
  constexpr Digest kPrime = 0x100000001B3;
  Digest digest = before;
  for (const std::uint8_t byte : bytes) digest = (digest ^ byte) * kPrime;
  return digest;
}

model::Status LoadPrint(jet::Database& database, const SystemModel& model, const TablePart& part,
                        std::optional<MessagePrint>* print) {
  print->reset();
  std::vector<Bytes> messages;
  model::Status status = LoadMessages(database, model, part, &messages);
  if (status.ok() && !messages.empty()) *print = PrintOf(messages);
  return status;
}

std::map<TablePart, MessagePrint> LoadPrints(jet::Database& database, const SystemModel& model) {
  std::map<TablePart, MessagePrint> prints;
  for (const db::TableKind& kind : db::kTables) {
    if (kind.rows != db::Rows::None) continue;
    const TablePart part{.table = kind.table};
    std::optional<MessagePrint> print;
    (void)LoadPrint(database, model, part, &print);  // what cannot be read has none
    if (print) prints[part] = *print;
  }
  (void)LoadRows(database, model, [&](const TablePart& part, const Bytes& message) {
    prints[part] = PrintOf({&message, 1});
  });
  return prints;
}

}  // namespace switcher
