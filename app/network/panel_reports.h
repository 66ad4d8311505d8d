// SPDX-License-Identifier: MIT

#ifndef APP_NETWORK_PANEL_REPORTS_H_
#define APP_NETWORK_PANEL_REPORTS_H_

#include <QObject>
#include <QString>
#include <QStringList>
#include <map>

#include "app/log/event_words.h"
#include "app/log/inhibited_cells.h"
#include "gateway/panel_events.h"

namespace app {

// What the operator is told of network panels, in words: which are connected, what happens to them
// and what they do.
class PanelReports : public QObject, public gateway::PanelEvents {
  Q_OBJECT

 public:
  // All must outlive the object.
  PanelReports(ChannelLabels& labels, InhibitedCells& inhibits)
      : crosspoints_(labels), inhibits_(inhibits) {}

  // Panels are served from now on.
  void Begin() { TellPanels(); }

  void PanelConnected(const gateway::PanelName& panel) override;
  void PanelIdentified(const gateway::PanelName& panel, int type) override;
  void PanelTook(const gateway::PanelName& panel, const gateway::PanelTake& take) override;
  void PanelMayNotTake(const gateway::PanelName& panel, const gateway::PanelTake& take) override;
  void PanelTakeIgnored(const gateway::PanelName& panel, const gateway::PanelTake& take) override;
  void PanelDropped(const gateway::PanelName& panel, gateway::DropReason reason) override;
  void PanelGone(const gateway::PanelName& panel) override;

 Q_SIGNALS:
  // The panels that are connected, a line each.
  void PanelsChanged(const QStringList& panels);
  // Something to say in passing.
  void NoteRequested(const QString& note);
  // "Panel 2, 192.0.2.7: take CAM 4 < MIC ANCH (Take)"
  void Happened(const QString& text);
  // The same for what may happen many times a second: what the panel at an address does, or, with
  // no address, the coming and going, which is within the power of any stranger.
  void HappenedAgain(const QString& text, const QString& address = {});

 private:
  void TellPanels();
  // Takes of a panel in words: "take CAM 4 < MIC ANCH (Take)".
  QString TakeWords(const gateway::PanelTake& take) const;
  static QString Line(const gateway::PanelName& panel, const QString& what);
  void Tell(const gateway::PanelName& panel, const QString& what);
  void TellAgain(const gateway::PanelName& panel, const QString& what);

  CrosspointWords crosspoints_;
  InhibitedCells& inhibits_;
  std::map<int, QString> panels_;  // those that are connected, by slot: address and kind
};

}  // namespace app

#endif  // APP_NETWORK_PANEL_REPORTS_H_
