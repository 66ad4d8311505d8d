// SPDX-License-Identifier: MIT

#include "switcher/transmission.h"

namespace switcher {

bool Transmission::Step(const SendProgress& progress) {
  if (ended_) return false;
  services_.sender.Begin();
  Bytes message;
  bool more = false;
  model::Status status = Read(&message, &more);
  if (status.ok() && !message.empty()) {
    status = services_.sender.WriteTable(message, progress);
    if (status.ok()) ++messages_;
  }
  if (status.ok() && more) return true;

  ended_ = true;
  failed_ = !services_.sender.End(status, services_.failureLine);
  return false;
}

std::optional<int> Transmission::Run() {
  while (Step()) continue;
  if (failed_) return std::nullopt;
  return messages_;
}

model::Status Transmission::Read(Bytes* message, bool* more) {
  jet::Database* const database = services_.files.Database();
  if (database == nullptr) return db::NotOpen();
  if (!checked_) {
    checked_ = true;
    if (model::Status status = services_.check(); !status.ok()) return status;
  }
  return services_.readNext(*database, message, more);
}

}  // namespace switcher
