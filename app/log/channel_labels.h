// SPDX-License-Identifier: MIT

#ifndef APP_LOG_CHANNEL_LABELS_H_
#define APP_LOG_CHANNEL_LABELS_H_

#include <QString>
#include <functional>
#include <span>

#include "db/jet/database.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "stations/channel_texts.h"

namespace app {

// The labels of the channels, for words about them.
class ChannelLabels : public stations::ChangeObserver {
 public:
  // What is referred to must outlive the object.
  struct Services {
    const model::SystemModel& model;
    std::function<jet::Database*()> database;  // the open one; null when there is none
    stations::Changes& changes;
  };
  explicit ChannelLabels(const Services& services)
      : ChangeObserver(services.changes),
        texts_({.model = services.model, .database = services.database}) {}

  // The label of an output or an input (from 1); where it is empty or cannot be read, its number:
  // "Out 12", "In 12".
  QString Output(int output);
  QString Input(int input);

  void Changed(std::span<const stations::Change> changes) override { texts_.Forget(changes); }

 private:
  stations::ChannelTexts texts_;
};

}  // namespace app

#endif  // APP_LOG_CHANNEL_LABELS_H_
