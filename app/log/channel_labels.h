// SPDX-License-Identifier: MIT

#ifndef APP_LOG_CHANNEL_LABELS_H_
#define APP_LOG_CHANNEL_LABELS_H_

#include <QString>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "db/jet/database.h"
#include "model/system_model.h"
#include "stations/change.h"

namespace app {

// The labels of the channels, for words about them.  They are read when one is asked for, and
// kept until one changes.
class ChannelLabels : public stations::ChangeObserver {
 public:
  // What is referred to must outlive the object.
  struct Services {
    const model::SystemModel& model;
    std::function<jet::Database*()> database;  // the open one; null when there is none
    stations::Changes& changes;
  };
  explicit ChannelLabels(Services services)
      : ChangeObserver(services.changes), services_(std::move(services)) {}

  // The label of an output or an input (from 1); where it is empty or cannot be read, its number:
  // "Out 12", "In 12".
  QString Output(int output);
  QString Input(int input);

  void Changed(std::span<const stations::Change> changes) override;

 private:
  using Labels = std::vector<std::optional<std::string>>;

  void Read();
  static QString Label(const Labels& labels, int channel);

  const Services services_;
  bool read_ = false;
  Labels outputs_;
  Labels inputs_;
};

}  // namespace app

#endif  // APP_LOG_CHANNEL_LABELS_H_
