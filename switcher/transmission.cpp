// SPDX-License-Identifier: MIT

#include "switcher/transmission.h"

#include <utility>

#include "switcher/send.h"
#include "switcher/table_senders.h"
#include "switcher/wire/frame.h"

namespace switcher {

namespace {

// Writes a message of tables, telling of each value.
model::Status WriteTable(SerialPort& port, std::span<const std::uint8_t> message,
                         SendProgress* progress) {
  constexpr std::size_t kBehindValues = 2;  // checksum and end byte
  const std::size_t width = message.front() == kAlphaLabelsCode ? 1 : 2;
  const std::size_t end = message.size() - kBehindValues;
  if (model::Status status = WriteMessage(port, message.first(1)); !status.ok()) return status;
  for (std::size_t value = 1; value < end; value += width) {
    if (model::Status status = WriteMessage(port, message.subspan(value, width)); !status.ok()) {
      return status;
    }
    if (progress != nullptr) progress->UpdateStatus();
  }
  return WriteMessage(port, message.subspan(end));
}

}  // namespace

bool Transmission::Step() {
  if (ended_) return false;
  senders_->model_.SendBusy = true;
  Bytes message;
  bool more = false;
  model::Status status = Read(&message, &more);
  if (status.ok() && !message.empty()) {
    status = WriteTable(senders_->port_, message, senders_->progress_);
    if (status.ok()) ++messages_;
  }
  if (status.ok() && more) return true;

  ended_ = true;
  failed_ = !status.ok();
  AskForSendEvent(senders_->port_);
  if (failed_) {
    senders_->reporter_.Show(model::ErrorReporter::Icon::Critical, kSendErrorTitle,
                             ErrorText(failureLine_, status));
  }
  return false;
}

model::Status Transmission::Read(Bytes* message, bool* more) {
  jet::Database* const database = senders_->files_.Database();
  if (database == nullptr) return db::NotOpen();
  if (const Check check = std::exchange(check_, nullptr); check != nullptr) {
    if (model::Status status = check(); !status.ok()) return status;
  }
  return readNext_(*database, message, more);
}

}  // namespace switcher
