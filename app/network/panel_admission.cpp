// SPDX-License-Identifier: MIT

#include "app/network/panel_admission.h"

#include <string>
#include <utility>

namespace app {

PanelAdmission::PanelAdmission(Services services)
    : services_(std::move(services)), again_(listener_) {
  listener_.SetAddress(services_.access.listen);
  listener_.SetAcceptHandler(
      [this](std::unique_ptr<gateway::ClientSocket> client) { Accept(std::move(client)); });
  connect(&again_, &ListenAgain::Listening, this, &PanelAdmission::ListensAtLast);
}

void PanelAdmission::Update() {
  again_.Stop();
  services_.hints.Withdraw(Hint::PanelsNotYet);
  if (AdmitsNobody()) services_.hints.Give(Hint::PanelsClosed, ClosedWords());
  if (listener_.IsListening()) {
    Q_EMIT Listening();
    return;
  }
  if (!services_.model.SoftpanelSupport || !services_.access.hasListen) return;
  const int port = services_.model.IpPort;
  again_.Begin(port);
  // Both at once: an address may have a place of the text in it.
  const QString text =
      tr("No network panel can connect yet: %1 is no address of this computer, or its port %2 is "
         "taken. It is tried again.")
          .arg(services_.access.listen.toString(), QString::number(port));
  services_.hints.Give(Hint::PanelsNotYet, text);
  Q_EMIT Happened(text);
}

void PanelAdmission::ListensAtLast() {
  services_.hints.Withdraw(Hint::PanelsNotYet);
  Q_EMIT Happened(
      AdmitsNobody() ? ClosedWords()
                     : tr("Network panels can connect to port %1 now").arg(services_.model.IpPort));
  Q_EMIT Listening();
}

QString PanelAdmission::ClosedWords() const {
  return tr("No network panel is admitted: PANEL ACCESS in Orvotesk.ini is not understood (%1).")
      .arg(services_.access.problem);
}

void PanelAdmission::Accept(std::unique_ptr<gateway::ClientSocket> client) {
  const std::string address = client->PeerAddress();
  services_.flood.Note(address);
  if (!AdmitsNobody() && services_.access.allow.Contains(address)) {
    services_.admit(std::move(client));
  } else {
    Q_EMIT HappenedAgain(tr("Panel %1 was not admitted").arg(QString::fromStdString(address)));
  }
}

}  // namespace app
