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

Transmission TableSenders::Labels(int selector) const {
  const Table table = selector == kOutputLabels ? Table::OutputLabels : Table::InputLabels;
  return Send(kLabelsFailed, table, 1, model_.LabelCount,
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

Transmission TableSenders::Inhibits(int station) const {
  const bool all = station == model::kAll;
  return Rows(kRowsFailed, Table::Inhibits, all ? 1 : station, all ? model_.ChannelCount : station,
              LoadInhibits);
}

Transmission TableSenders::Relays(int station) const {
  const bool all = station == model::kAll;
  return Rows(kRowsFailed, Table::Relays, all ? 1 : station, all ? model_.ChannelCount : station,
              LoadRelays);
}

Transmission TableSenders::Buttons(int station) const {
  const bool all = station == model::kAll;
  return Rows(kButtonsFailed, Table::Buttons, all ? 1 : station,
              all ? model_.StationCount : station, LoadButtons);
}

Transmission TableSenders::Optos() const {
  return Send(kOptosFailed, Table::Optos, 1, model_.OptoCount,
              [this](jet::Database& database, Bytes* message, bool* more) {
                *more = false;
                return LoadOptos(database, model_, message);
              });
}

Transmission TableSenders::Send(std::string_view failureLine, Table table, int first, int last,
                                Transmission::ReadNext readNext) const {
  // What has no record in a sound database either is skipped.
  const int lastRecord = std::min<int>(last, model_.LabelCount);
  return Transmission(
      {.line = line_,
       .files = files_,
       .failureLine = failureLine,
       .check = [this, table, first,
                 lastRecord] { return files_.CheckTable(table, first, lastRecord); },
       .readNext = std::move(readNext)});
}

Transmission TableSenders::Rows(std::string_view failureLine, Table table, int first, int last,
                                ReadStation read) const {
  return Send(failureLine, table, first, last,
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

std::optional<int> TableSenders::Run(Transmission transmission) {
  while (transmission.Step()) {
  }
  if (transmission.Failed()) return std::nullopt;
  return transmission.Messages();
}

}  // namespace switcher
