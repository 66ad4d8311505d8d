// SPDX-License-Identifier: MIT

#ifndef APP_LOG_PANEL_REPORTS_H_
#define APP_LOG_PANEL_REPORTS_H_

#include <QObject>
#include <QString>
#include <map>

#include "app/log/event_words.h"
#include "app/log/inhibited_cells.h"
#include "app/shell/status_bar.h"
#include "gateway/panel_events.h"

namespace app {

// What the operator is told of network panels: how many are connected and which, in the status bar;
// and what happens to them and what they do, in words.
class PanelReports : public QObject, public gateway::PanelEvents {
  Q_OBJECT

 public:
  // All must outlive the object.
  PanelReports(StatusBar& status, ChannelLabels& labels, InhibitedCells& inhibits)
      : status_(status), crosspoints_(labels), inhibits_(inhibits) {}

  // Panels are served: the status bar counts them from now on.
  void Begin() { ShowPanels(); }

  void PanelConnected(const gateway::PanelName& panel) override;
  void PanelIdentified(const gateway::PanelName& panel, int type) override;
  void PanelTook(const gateway::PanelName& panel, const gateway::PanelTake& take) override;
  void PanelDropped(const gateway::PanelName& panel, gateway::DropReason reason) override;
  void PanelGone(const gateway::PanelName& panel) override;

 Q_SIGNALS:
  // "Panel 2, 192.0.2.7: connected"
  void Happened(const QString& text);

 private:
  void ShowPanels();
  void Tell(const gateway::PanelName& panel, const QString& what);

  StatusBar& status_;
  CrosspointWords crosspoints_;
  InhibitedCells& inhibits_;
  std::map<int, QString> panels_;  // those that are connected, by slot: address and kind
};

}  // namespace app

#endif  // APP_LOG_PANEL_REPORTS_H_
