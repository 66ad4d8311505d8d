// SPDX-License-Identifier: MIT

#ifndef APP_LOG_SWITCHER_REPORTS_H_
#define APP_LOG_SWITCHER_REPORTS_H_

#include "app/log/channel_labels.h"
#include "app/log/event_log.h"
#include "app/log/event_words.h"
#include "app/log/reported_rows.h"
#include "switcher/switcher_events.h"

namespace app {

// Writes what the switcher reports into the event log: what changed in the map, and what was
// refused.
class SwitcherReports : public switcher::SwitcherEvents {
 public:
  struct Services {
    const model::SystemModel& model;
    ChannelLabels& labels;
    EventLog& log;
  };

  // All must outlive the object.
  explicit SwitcherReports(const Services& services)
      : services_(services), crosspoints_(services.labels), rows_(services.model) {}

  void CrosspointRowChanged(int output, int mode) override;
  void MessageRefused(std::string_view description, switcher::DecodeStatus status) override;

 private:
  const Services services_;
  const CrosspointWords crosspoints_;
  ReportedRows rows_;
};

}  // namespace app

#endif  // APP_LOG_SWITCHER_REPORTS_H_
