// SPDX-License-Identifier: MIT

#include "switcher/table_senders.h"

#include <algorithm>
#include <utility>

#include "switcher/load_tables.h"
#include "switcher/wire/messages/label_order.h"

namespace switcher {

namespace {

constexpr std::string_view kLabelsFailed = "Error Sending Alpha Table";
// The relays fail with the same words: operators know this text for both.
constexpr std::string_view kRowsFailed = "Error Sending Inhibits Table";
constexpr std::string_view kButtonsFailed = "Error Sending Button Table";
constexpr std::string_view kOptosFailed = "Error Sending Opto Programming Data";

}  // namespace

Transmission TableSenders::Make(const TablePart& part) const {
  switch (part.table) {
    case Table::Optos:
      return Optos();
    case Table::OutputLabels:
      return Labels("Output Alphas", part.table, kOutputLabels);
    case Table::InputLabels:
      return Labels("Input Alphas", part.table, kInputLabels);
    case Table::Inhibits:
      return Rows("Inhibits", kRowsFailed, part, model_.ChannelCount, LoadInhibits);
    case Table::Relays:
      return Rows("Relays", kRowsFailed, part, model_.ChannelCount, LoadRelays);
    case Table::Buttons:
      break;
  }
  return Rows("Button Programming Sta", kButtonsFailed, part, model_.StationCount, LoadButtons);
}

Transmission TableSenders::Optos() const {
  return Send("Optos", kOptosFailed, Table::Optos, 1, model_.OptoCount,
              [this](jet::Database& database, Bytes* message, bool* more) {
                *more = false;
                return LoadOptos(database, model_, message);
              });
}

Transmission TableSenders::Labels(const char* name, Table table, int selector) const {
  return Send(name, kLabelsFailed, table, 1, model_.LabelCount,
              [this, selector, texts = Bytes()](jet::Database& database, Bytes* message,
                                                bool* more) mutable -> model::Status {
                if (!texts.empty()) {
                  *message = std::move(texts);
                  *more = false;
                  return {};
                }
                LabelMessages messages;
                model::Status status = LoadLabels(database, model_, selector, &messages);
                *message = std::move(messages.order);
                texts = std::move(messages.texts);
                *more = status.ok();
                return status;
              });
}

Transmission TableSenders::Rows(std::string name, std::string_view failureLine,
                                const TablePart& part, int last, ReadStation read) const {
  const bool all = part.station == model::kAll;
  const int first = all ? 1 : part.station;
  if (!all) {
    last = first;
    name += " " + std::to_string(part.station);
  }
  return Send(std::move(name), failureLine, part.table, first, last,
              [this, next = first, last, read](jet::Database& database, Bytes* message,
                                               bool* more) mutable -> model::Status {
                while (next <= last && message->empty()) {
                  std::optional<Bytes> row;
                  if (model::Status status = read(database, model_, next, &row); !status.ok()) {
                    return status;
                  }
                  if (row) *message = *std::move(row);
                  ++next;
                }
                *more = next <= last;
                return {};
              });
}

Transmission TableSenders::Send(std::string name, std::string_view failureLine, Table table,
                                int first, int last, Transmission::ReadNext readNext) const {
  // What has no record in a sound database either is skipped.
  const int lastRecord = std::min<int>(last, model_.LabelCount);
  return Transmission(
      {.sender = sender_,
       .files = files_,
       .name = std::move(name),
       .failureLine = failureLine,
       .check = [this, table, first,
                 lastRecord] { return files_.CheckTable(table, first, lastRecord); },
       .readNext = std::move(readNext)});
}

}  // namespace switcher
