// SPDX-License-Identifier: MIT

#ifndef APP_LOG_INHIBITED_CELLS_H_
#define APP_LOG_INHIBITED_CELLS_H_

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "db/jet/database.h"
#include "db/station_fields.h"
#include "model/system_model.h"
#include "stations/change.h"

namespace app {

// Which crosspoints the database inhibits.  The inhibits are read when one is
// asked for, and kept until some change.
class InhibitedCells : public stations::ChangeObserver {
 public:
  // What is referred to must outlive the object.
  struct Services {
    const model::SystemModel& model;
    std::function<jet::Database*()> database;  // the open one; null when there is none
    stations::Changes& changes;
  };
  explicit InhibitedCells(Services services)
      : ChangeObserver(services.changes), services_(std::move(services)) {}

  // Whether a crosspoint (both channels from 1) is inhibited.  One that the database does not have,
  // or that cannot be read, is not.
  bool Contain(int output, int input);

  // The same for who acts on it: nothing when it cannot be read.
  std::optional<bool> Find(int output, int input);

  void Changed(std::span<const stations::Change> changes) override {
    if (Touches(changes, db::kInhibitsField)) read_ = false;
  }

 private:
  void Read();

  const Services services_;
  bool read_ = false;
  bool isKnown_ = false;                           // what was read is all that there is
  std::vector<std::optional<std::string>> flags_;  // of each output
};

}  // namespace app

#endif  // APP_LOG_INHIBITED_CELLS_H_
