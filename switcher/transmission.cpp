// SPDX-License-Identifier: MIT

#include "switcher/transmission.h"

namespace switcher {

bool Transmission::Step() {
  if (ended_) return false;
  parts_.line.Begin();
  Bytes message;
  bool more = false;
  model::Status status = Read(&message, &more);
  if (status.ok() && !message.empty()) {
    status = parts_.line.WriteTable(message);
    if (status.ok()) ++messages_;
  }
  if (status.ok() && more) return true;

  ended_ = true;
  failed_ = !parts_.line.End(status, parts_.failureLine);
  return false;
}

model::Status Transmission::Read(Bytes* message, bool* more) {
  jet::Database* const database = parts_.files.Database();
  if (database == nullptr) return db::NotOpen();
  if (!checked_) {
    checked_ = true;
    if (model::Status status = parts_.check(); !status.ok()) return status;
  }
  return parts_.readNext(*database, message, more);
}

}  // namespace switcher
