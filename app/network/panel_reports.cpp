// SPDX-License-Identifier: MIT

#include "app/network/panel_reports.h"

#include <string>

#include "gateway/connection_type.h"

namespace app {
namespace {

QString TypeName(int type) {
  return QString::fromStdString(std::string(gateway::ConnectionTypeName(type)));
}

}  // namespace

void PanelReports::PanelConnected(const gateway::PanelName& panel) {
  panels_[panel.slot] = QString::fromStdString(panel.address);
  TellPanels();
  Q_EMIT HappenedAgain(Line(panel, tr("connected")));
}

void PanelReports::PanelIdentified(const gateway::PanelName& panel, int type) {
  const QString address = QString::fromStdString(panel.address);
  const bool served = gateway::IsAcceptedType(type);
  panels_[panel.slot] = served ? QStringLiteral("%1  %2").arg(address, TypeName(type)) : address;
  TellPanels();
  Q_EMIT HappenedAgain(
      Line(panel, served ? TypeName(type) : tr("type %1, which is not served").arg(type)));
}

void PanelReports::PanelTook(const gateway::PanelName& panel, const gateway::PanelTake& take) {
  const QString what = TakeWords(take);
  const bool inhibited = inhibits_.ShowsInhibit(take.destination, take.source);
  Tell(panel, inhibited ? tr("%1, inhibited here").arg(what) : what);
}

void PanelReports::PanelTakeIgnored(const gateway::PanelName& panel,
                                    const gateway::PanelTake& take) {
  TellAgain(panel, tr("%1 ignored, the output is locked").arg(TakeWords(take)));
}

QString PanelReports::TakeWords(const gateway::PanelTake& take) const {
  return tr("take %1 (%2)")
      .arg(crosspoints_.Crosspoint(take.destination, take.source), ActionWords(take.action));
}

void PanelReports::PanelMayNotTake(const gateway::PanelName& panel,
                                   const gateway::PanelTake& take) {
  TellAgain(panel, tr("%1 ignored, it may not take").arg(TakeWords(take)));
}

void PanelReports::PanelDropped(const gateway::PanelName& panel, gateway::DropReason reason) {
  QString text;
  switch (reason) {
    case gateway::DropReason::Unidentified:
      text = tr("Panel %1 was dropped: it did not say what it is, and all connections are taken");
      break;
    case gateway::DropReason::EndlessFrame:
      text = tr("Panel %1 was dropped: it sent a frame that does not end");
      break;
    case gateway::DropReason::UnfinishedTake:
      text = tr("Panel %1 was dropped: it began a take and did not end it");
      break;
    case gateway::DropReason::DoesNotRead:
      text = tr("Panel %1 was dropped: it does not read what it is sent");
      break;
  }
  const QString note = text.arg(QString::fromStdString(panel.address));
  Q_EMIT NoteRequested(note);
  Q_EMIT HappenedAgain(note);
}

void PanelReports::PanelGone(const gateway::PanelName& panel) {
  panels_.erase(panel.slot);
  TellPanels();
  Q_EMIT HappenedAgain(Line(panel, tr("gone")));
}

void PanelReports::TellPanels() {
  QStringList lines;
  for (const auto& [slot, line] : panels_) lines.append(line);
  Q_EMIT PanelsChanged(lines);
}

QString PanelReports::Line(const gateway::PanelName& panel, const QString& what) {
  const QString name =
      tr("Panel %1, %2").arg(panel.slot).arg(QString::fromStdString(panel.address));
  return QStringLiteral("%1: %2").arg(name, what);
}

void PanelReports::Tell(const gateway::PanelName& panel, const QString& what) {
  Q_EMIT Happened(Line(panel, what));
}

void PanelReports::TellAgain(const gateway::PanelName& panel, const QString& what) {
  Q_EMIT HappenedAgain(Line(panel, what), QString::fromStdString(panel.address));
}

}  // namespace app
