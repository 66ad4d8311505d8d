// SPDX-License-Identifier: MIT

#ifndef APP_NETWORK_PANEL_ERRORS_H_
#define APP_NETWORK_PANEL_ERRORS_H_

#include <QObject>
#include <QString>
#include <chrono>
#include <functional>
#include <map>
#include <utility>

#include "app/shell/hint_strip.h"
#include "app/shell/message_boxes.h"
#include "model/error_reporter.h"

namespace app {

// Reports about network panels, as message boxes.  Whoever is on the network can cause them without
// end, so a report that equals one whose box was closed a moment ago opens no new one: it is
// counted in the hint strip.
class PanelErrors : public QObject, public model::ErrorReporter {
  Q_OBJECT

 public:
  // So long after its box was closed a report is only counted.
  static constexpr std::chrono::seconds kQuiet{10};

  using Time = std::chrono::steady_clock::time_point;

  // `boxes` and `hints` must outlive the object.
  PanelErrors(MessageBoxes& boxes, HintStrip& hints,
              std::function<Time()> now = &std::chrono::steady_clock::now);

  void Show(Icon icon, std::string_view title, std::string_view text) override;

 private:
  using Report = std::pair<QString, QString>;  // title and text

  struct Closed {
    Time at;
    int counted = 0;  // how often it has come since
  };

  Closed* JustClosed(const Report& report);
  void OnClosed(const Report& report);

  MessageBoxes& boxes_;
  HintStrip& hints_;
  const std::function<Time()> now_;
  std::map<Report, Closed> closed_;
};

}  // namespace app

#endif  // APP_NETWORK_PANEL_ERRORS_H_
