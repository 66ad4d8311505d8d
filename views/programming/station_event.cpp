// SPDX-License-Identifier: MIT

#include "views/programming/station_event.h"

#include "db/database_files.h"
#include "model/error_reporter.h"

namespace views {

StationEvent::~StationEvent() {
  if (failure_.ok()) {
    shown_.lastReport.clear();
    return;
  }
  std::string report = model::ErrorText(line_, failure_);
  if (cause_ == Cause::Refresh && report == shown_.lastReport) return;
  shown_.lastReport = std::move(report);
  ShowFailure(shown_.services, line_, failure_);
}

bool StationEvent::Do(std::string_view line,
                      const std::function<model::Status(jet::RecordSet&)>& work) {
  snapshot_.reset();
  jet::RecordSet* const stations = shown_.services.stations();
  const model::Status status = stations != nullptr ? work(*stations) : db::NotOpen();
  Note(line, status);
  return status.ok();
}

const stations::StationSnapshot& StationEvent::Station() {
  if (!snapshot_) snapshot_.emplace(shown_.services.stations(), shown_.services.model.ButtonCount);
  return *snapshot_;
}

void StationEvent::Note(std::string_view line, const model::Status& status) {
  if (status.ok() || !failure_.ok()) return;
  line_ = line;
  failure_ = status;
}

}  // namespace views
