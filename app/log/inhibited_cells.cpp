// SPDX-License-Identifier: MIT

#include "app/log/inhibited_cells.h"

#include <memory>

#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/open_stations.h"
#include "stations/texts.h"

namespace app {

bool InhibitedCells::Contain(int output, int input) {
  Read();
  if (output < 1 || static_cast<std::size_t>(output) > flags_.size()) return false;
  const std::optional<std::string>& flags = flags_[static_cast<std::size_t>(output - 1)];
  return flags.has_value() && model::FlagIsSet(model::PlainFlags(*flags), input);
}

// What could not be read may be readable by now.
std::optional<bool> InhibitedCells::Find(int output, int input) {
  if (!isKnown_) read_ = false;
  const bool isInhibited = Contain(output, input);
  return isKnown_ ? std::optional(isInhibited) : std::nullopt;
}

// Words are not worth a report.
void InhibitedCells::Read() {
  if (read_) return;
  flags_.clear();
  isKnown_ = false;
  jet::Database* const database = services_.database();
  if (database == nullptr) return;
  read_ = true;
  std::unique_ptr<jet::RecordSet> stations;
  if (!stations::OpenStations(*database, &stations).ok()) return;
  isKnown_ = stations::ReadAvailableTexts(*stations, db::kInhibitsField,
                                          services_.model.ChannelCount, &flags_)
                 .ok();
}

}  // namespace app
