// SPDX-License-Identifier: MIT

#include "views/services.h"

#include "db/database_files.h"
#include "db/keep_position.h"

namespace views {
namespace {

using model::ErrorReporter;

constexpr std::string_view kErrorTitle = "Control Error";

}  // namespace

model::Status WithStations(const Services& services,
                           const std::function<model::Status(jet::RecordSet&)>& work) {
  jet::RecordSet* const stations = services.stations();
  if (stations == nullptr) return db::NotOpen();
  const db::KeepPosition keep(*stations);
  return work(*stations);
}

void SendTable(const Services& services, const switcher::TablePart& part) {
  if (const auto sent = services.tables.Send(part)) {
    services.unsent.NoteSent(part, *sent, UnsentTables::Sender::Tool);
  }
}

void ShowFailure(const Services& services, std::string_view line, const model::Status& status) {
  services.reporter.Show(ErrorReporter::Icon::Critical, kErrorTitle,
                         model::ErrorText(line, status));
}

void ShowRefusal(const Services& services, std::string_view text) {
  services.reporter.Show(ErrorReporter::Icon::Exclamation, kErrorTitle, text);
}

}  // namespace views
