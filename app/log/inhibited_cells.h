// SPDX-License-Identifier: MIT

#ifndef APP_LOG_INHIBITED_CELLS_H_
#define APP_LOG_INHIBITED_CELLS_H_

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "db/jet/database.h"
#include "model/system_model.h"

namespace app {

// Which crosspoints the database inhibits, for words about them.  The inhibits are read when one is
// asked for, and kept until they are forgotten.
class InhibitedCells {
 public:
  // The open database; null when there is none.
  using Database = std::function<jet::Database*()>;

  // `model` must outlive the object.
  InhibitedCells(const model::SystemModel& model, Database database)
      : model_(model), database_(std::move(database)) {}

  // Whether a crosspoint (both channels from 1) is inhibited.  One that the database does not have,
  // or that cannot be read, is not.
  bool Contain(int output, int input);

  // The inhibits have changed.
  void Forget() { read_ = false; }

 private:
  void Read();

  const model::SystemModel& model_;
  const Database database_;
  bool read_ = false;
  std::vector<std::optional<std::string>> flags_;  // of each output
};

}  // namespace app

#endif  // APP_LOG_INHIBITED_CELLS_H_
