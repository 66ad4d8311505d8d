// SPDX-License-Identifier: MIT

#include "views/services.h"

#include <optional>
#include <vector>

#include "db/database_files.h"
#include "db/keep_position.h"

namespace views {
namespace {

using model::ErrorReporter;

constexpr std::string_view kErrorTitle = "Control Error";

void NoteSent(const Services& services, const switcher::TablePart& part, std::optional<int> sent) {
  if (sent) services.unsent.NoteSent(part, *sent, UnsentTables::Sender::Tool);
}

}  // namespace

model::Status WithStations(const Services& services,
                           const std::function<model::Status(jet::RecordSet&)>& work) {
  jet::RecordSet* const stations = services.stations();
  if (stations == nullptr) return db::NotOpen();
  const db::KeepPosition keep(*stations);
  return work(*stations);
}

void SendTables(const Services& services, std::initializer_list<switcher::TablePart> parts) {
  if (RefusedByLock(services)) return;
  std::vector<std::optional<int>> sent;
  {
    const switcher::PollPause pause(services.poll);
    for (const switcher::TablePart& part : parts) sent.push_back(services.tables.Send(part));
  }
  auto each = sent.begin();
  for (const switcher::TablePart& part : parts) NoteSent(services, part, *each++);
}

void SendTable(const Services& services, const switcher::TablePart& part) {
  if (RefusedByLock(services)) return;
  NoteSent(services, part, services.tables.Send(part));
}

bool RefusedByLock(const Services& services) {
  if (!services.locks.IsConsoleLocked()) return false;
  model::ShowConsoleLocked(services.reporter);
  return true;
}

void ShowFailure(const Services& services, std::string_view line, const model::Status& status) {
  if (status.Number() == model::kConsoleLocked) {
    model::ShowConsoleLocked(services.reporter);
    return;
  }
  services.reporter.Show(ErrorReporter::Icon::Critical, kErrorTitle,
                         model::ErrorText(line, status));
}

void ShowRefusal(const Services& services, std::string_view text) {
  services.reporter.Show(ErrorReporter::Icon::Exclamation, kErrorTitle, text);
}

}  // namespace views
