// SPDX-License-Identifier: MIT

#include "app/network/network.h"

#include <memory>
#include <string>
#include <utility>

namespace app {

Network::Network(Services services)
    : services_(std::move(services)),
      flood_(services_.hints),
      reports_(services_.labels, services_.inhibits),
      errors_(services_.boxes, services_.hints),
      commands_({.model = services_.model, .port = services_.port, .reporter = errors_}),
      panels_({.model = services_.model,
               .locks = services_.locks,
               .files = services_.files,
               .commands = commands_,
               .line = services_.line,
               .timer = pause_,
               .decodeTimer = services_.decodeTimer,
               .events = reports_,
               .reporter = errors_,
               .mayTake =
                   [this](const std::string& address) {
                     return services_.access.panels.takesFrom.Contains(address);
                   }}),
      admission_({.access = services_.access.panels,
                  .model = services_.model,
                  .hints = services_.hints,
                  .flood = flood_,
                  .admit =
                      [this](std::unique_ptr<gateway::ClientSocket> client) {
                        panels_.Accept(std::move(client));
                      }}),
      openGateway_({.access = services_.access.openGateway,
                    .model = services_.model,
                    .database = [this] { return services_.files.Database(); },
                    .changes = services_.changes,
                    .locks = services_.locks,
                    .port = services_.port,
                    .knownMap = services_.knownMap,
                    .line = services_.line,
                    .labels = services_.labels,
                    .hints = services_.hints,
                    .flood = flood_,
                    .reporter = errors_,
                    .gainsChanged = services_.gainsChanged}) {
  connect(&flood_, &ConnectionFlood::Happened, this, &Network::Happened);
  connect(&reports_, &PanelReports::PanelsChanged, this, &Network::PanelsChanged);
  connect(&reports_, &PanelReports::NoteRequested, this, &Network::NoteRequested);
  connect(&reports_, &PanelReports::Happened, this, &Network::Happened);
  connect(&reports_, &PanelReports::HappenedAgain, this, &Network::HappenedAgain);
  connect(&admission_, &PanelAdmission::Listening, this, [this] { reports_.Begin(); });
  connect(&admission_, &PanelAdmission::Happened, this, &Network::Happened);
  connect(&admission_, &PanelAdmission::HappenedAgain, this,
          [this](const QString& text) { Q_EMIT HappenedAgain(text); });
  connect(&openGateway_, &OpenGateway::PeersChanged, this, &Network::ControllersChanged);
  connect(&openGateway_, &OpenGateway::Happened, this, &Network::Happened);
  connect(&openGateway_, &OpenGateway::HappenedAgain, this, &Network::HappenedAgain);
}

void Network::TellAccess() {
  for (const QString& section : services_.access.inForce) {
    Q_EMIT Happened(tr("In force: %1").arg(section));
  }
}

void Network::Begin() {
  admission_.Update();
  openGateway_.Begin();
}

}  // namespace app
