// SPDX-License-Identifier: MIT

#ifndef APP_LOG_INHIBITED_CELLS_H_
#define APP_LOG_INHIBITED_CELLS_H_

#include <functional>
#include <optional>
#include <span>

#include "db/jet/database.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "stations/channel_texts.h"

namespace app {

// Which crosspoints the database inhibits.
class InhibitedCells : public stations::ChangeObserver {
 public:
  // What is referred to must outlive the object.
  struct Services {
    const model::SystemModel& model;
    std::function<jet::Database*()> database;  // the open one; null when there is none
    stations::Changes& changes;
  };
  explicit InhibitedCells(const Services& services)
      : ChangeObserver(services.changes),
        texts_({.model = services.model, .database = services.database}) {}

  // Whether a crosspoint (both channels from 1) is inhibited, for words about it: one that the
  // database does not have, or that cannot be read, is not.
  bool ShowsInhibit(int output, int input) { return texts_.ShowsInhibit(output, input); }

  // The same for who acts on it: nothing while not all can be read.
  std::optional<bool> IsInhibited(int output, int input) {
    return texts_.IsInhibited(output, input);
  }

  void Changed(std::span<const stations::Change> changes) override { texts_.Forget(changes); }

 private:
  stations::ChannelTexts texts_;
};

}  // namespace app

#endif  // APP_LOG_INHIBITED_CELLS_H_
