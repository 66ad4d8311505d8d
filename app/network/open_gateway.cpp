// SPDX-License-Identifier: MIT

#include "app/network/open_gateway.h"

#include <chrono>
#include <utility>

#include "app/shell/version.h"
#include "views/rules/levels.h"

namespace app {
namespace {

QString PeerWords(const ember::PeerName& peer) {
  return OpenGateway::tr("Controller %1, %2")
      .arg(QString::number(peer.number), QString::fromStdString(peer.address));
}

QString RefusalWords(ember::Refusal why) {
  using ember::Refusal;
  switch (why) {
    case Refusal::ReadOnly:
      return OpenGateway::tr("only reading is allowed");
    case Refusal::LinkDown:
      return OpenGateway::tr("the switcher does not answer");
    case Refusal::MapNotComplete:
      return OpenGateway::tr("the map is not complete yet");
    case Refusal::MapNotKnown:
      return OpenGateway::tr("the map is from before the link was lost: Refresh Map");
    case Refusal::OutputLocked:
      return OpenGateway::tr("the output is locked");
    case Refusal::Inhibited:
      return OpenGateway::tr("the crosspoint is inhibited");
    case Refusal::InhibitsUnknown:
      return OpenGateway::tr("the inhibits cannot be read");
    case Refusal::PriorityRow:
      return OpenGateway::tr("a call or priority listen stands on the output");
    case Refusal::NoSuchChannel:
      return OpenGateway::tr("there is no such channel");
    case Refusal::BadValue:
      return OpenGateway::tr("the value is of another type or out of range");
    case Refusal::TooMany:
      return OpenGateway::tr("too many of its takes wait");
    case Refusal::LineBusy:
      return OpenGateway::tr("the line had no room for it in time");
    case Refusal::LineFailed:
      return OpenGateway::tr("it could not be sent");
    case Refusal::Replaced:
      return OpenGateway::tr("another controller has set it since");
    case Refusal::Closing:
      return OpenGateway::tr("the console ends");
  }
  return {};
}

QString ActWords(const ember::Wanted& wanted) {
  using Act = ember::Wanted::Act;
  switch (wanted.act) {
    case Act::Absolute:
      return OpenGateway::tr("take");
    case Act::Connect:
      return OpenGateway::tr("connect");
    case Act::Disconnect:
      return OpenGateway::tr("disconnect");
    case Act::Call:
      return wanted.on ? OpenGateway::tr("call") : OpenGateway::tr("end call");
    case Act::PriorityListen:
      return wanted.on ? OpenGateway::tr("priority listen")
                       : OpenGateway::tr("end priority listen");
  }
  return {};
}

}  // namespace

OpenGateway::OpenGateway(Services services)
    : services_(std::move(services)),
      crosspoints_(services_.labels),
      again_(listener_),
      commands_({.model = services_.model, .port = services_.port, .reporter = services_.reporter}),
      provider_({.model = services_.model,
                 .database = services_.database,
                 .changes = services_.changes,
                 .locks = services_.locks,
                 .commands = commands_,
                 .knownMap = services_.knownMap,
                 .line = services_.line,
                 .takeTimer = takeTimer_,
                 .newsTimer = newsTimer_,
                 .secondTimer = secondTimer_,
                 .workTimer = workTimer_,
                 .now = std::chrono::steady_clock::now,
                 .events = *this,
                 .version = kVersion,
                 .mayTake = services_.access.mayTake,
                 .gainsChanged = services_.gainsChanged}) {
  listener_.SetAcceptHandler(
      [this](std::unique_ptr<gateway::ClientSocket> client) { Accept(std::move(client)); });
}

void OpenGateway::LinkChanged() {
  model::SystemModel& model = services_.model;
  const bool answers = model.LinkStatus[0] == 1;
  if (IsListening() && services_.access.mayTake && answers && model.XmapComplete &&
      !services_.knownMap.IsKnown()) {
    model.XmapComplete = false;
    Q_EMIT Happened(tr("The map is asked for, so that controllers may take again"));
  }
  provider_.LinkChanged();
}

void OpenGateway::Begin() {
  const OpenGatewayAccess& access = services_.access;
  if (!access.isWanted) return;
  if (!access.problem.isEmpty()) {
    const QString text =
        tr("The open gateway admits nobody: OPEN GATEWAY in Orvotesk.ini is not understood (%1).")
            .arg(access.problem);
    services_.hints.Give(Hint::OpenGatewayClosed, text);
    Q_EMIT Happened(text);
    return;
  }
  listener_.SetAddress(access.listen);
  connect(&again_, &ListenAgain::Listening, this, [this] {
    services_.hints.Withdraw(Hint::OpenGatewayClosed);
    Q_EMIT Happened(tr("The open gateway listens on port %1 now").arg(services_.access.port));
    TellPeers();
  });
  Listen();
  if (access.TakesFromElsewhere()) {
    services_.hints.Give(
        Hint::OpenTakes,
        tr("Controllers on other computers may take crosspoints (port %1).").arg(access.port));
  }
}

void OpenGateway::Listen() {
  const int port = services_.access.port;
  const model::Status status = listener_.Start(port);
  if (status.ok()) return TellPeers();
  again_.Begin(port);
  const QString text =
      tr("The open gateway cannot listen on port %1: %2. It is tried again.")
          .arg(QString::number(port), QString::fromStdString(status.Description()));
  services_.hints.Give(Hint::OpenGatewayClosed, text);
  Q_EMIT Happened(text);
}

void OpenGateway::Close() {
  again_.Stop();
  listener_.Stop();
  provider_.CloseAll();
}

void OpenGateway::Accept(std::unique_ptr<gateway::ClientSocket> client) {
  const std::string address = client->PeerAddress();
  services_.flood.Note(address);
  if (services_.access.allow.Contains(address)) {
    provider_.Accept(std::move(client));
  } else {
    Q_EMIT HappenedAgain(tr("Controller %1 was not admitted").arg(QString::fromStdString(address)));
  }
}

void OpenGateway::PeerConnected(const ember::PeerName& peer) {
  peers_[peer.number] = QString::fromStdString(peer.address);
  TellPeers();
  Q_EMIT HappenedAgain(tr("%1: connected").arg(PeerWords(peer)));
}

void OpenGateway::PeerTurnedAway(const std::string& address, ember::TurnedAway why) {
  const QString text =
      why == ember::TurnedAway::AddressHasMany
          ? tr("Controller %1 was turned away: it has %2 connections already")
                .arg(QString::fromStdString(address), QString::number(ember::Peers::kMostOfAddress))
          : tr("Controller %1 was turned away: all connections are taken")
                .arg(QString::fromStdString(address));
  Q_EMIT HappenedAgain(text);
}

void OpenGateway::PeerTook(const ember::PeerName& peer, const switcher::Take& take) {
  Q_EMIT Happened(tr("%1: take %2 (%3)")
                      .arg(PeerWords(peer), crosspoints_.Crosspoint(take.destination, take.source),
                           ActionWords(take.action)));
}

void OpenGateway::PeerSetGain(const ember::PeerName& peer, int input, int decibels) {
  // All at once: a label may look like a place of the text.
  Q_EMIT HappenedAgain(
      tr("%1: gain of %2 set to %3")
          .arg(PeerWords(peer), services_.labels.Input(input),
               QString::fromStdString(rules::LevelText(rules::SliderValueOfLevel(decibels)))),
      QString::fromStdString(peer.address));
}

void OpenGateway::TakeRefused(const ember::PeerName& peer, const ember::Wanted& wanted,
                              ember::Refusal why) {
  Q_EMIT HappenedAgain(
      tr("%1: %2 refused, %3").arg(PeerWords(peer), WantedWords(wanted), RefusalWords(why)),
      QString::fromStdString(peer.address));
}

void OpenGateway::TakeStopped(const ember::PeerName& peer, const ember::Wanted& wanted,
                              ember::Refusal why) {
  Q_EMIT Happened(tr("%1: %2 carried out in part, %3")
                      .arg(PeerWords(peer), WantedWords(wanted), RefusalWords(why)));
}

void OpenGateway::NumbersRefused(const ember::PeerName& peer, ember::Wanted::Act act, int target,
                                 const std::vector<int>& sources) {
  constexpr std::size_t kMostNamed = 8;
  QStringList numbers;
  for (const int source : sources) {
    if (static_cast<std::size_t>(numbers.size()) == kMostNamed) {
      numbers.append(QStringLiteral("…"));
      break;
    }
    numbers.append(QString::number(source));
  }
  Q_EMIT HappenedAgain(
      tr("%1: %2 of target %3 and sources %4, counted from 0, refused, there is no such channel")
          .arg(PeerWords(peer), ActWords({.act = act}), QString::number(target),
               numbers.join(QStringLiteral(", "))),
      QString::fromStdString(peer.address));
}

void OpenGateway::ValueRefused(const ember::PeerName& peer, const ember::Path& path,
                               ember::Refusal why) {
  QStringList numbers;
  for (const int number : path) numbers.append(QString::number(number));
  Q_EMIT HappenedAgain(tr("%1: setting %2 refused, %3")
                           .arg(PeerWords(peer), numbers.join(QLatin1Char('.')), RefusalWords(why)),
                       QString::fromStdString(peer.address));
}

void OpenGateway::PeerDropped(const ember::PeerName& peer, ember::PeerDrop why) {
  QString text;
  switch (why) {
    case ember::PeerDrop::TooLong:
      text = tr("%1: dropped, it sent a frame or a message that does not end");
      break;
    case ember::PeerDrop::DoesNotRead:
      text = tr("%1: dropped, it does not read what it is sent");
      break;
    case ember::PeerDrop::Silent:
      text = tr("%1: dropped, it does not answer");
      break;
    case ember::PeerDrop::MadeRoom:
      text = tr("%1: dropped, it said nothing and another one needs its place");
      break;
  }
  Q_EMIT HappenedAgain(text.arg(PeerWords(peer)));
}

void OpenGateway::PeerGone(const ember::PeerName& peer) {
  peers_.erase(peer.number);
  TellPeers();
  Q_EMIT HappenedAgain(tr("%1: gone").arg(PeerWords(peer)));
}

QString OpenGateway::WantedWords(const ember::Wanted& wanted) const {
  if (wanted.output == 0) return ActWords(wanted);
  QStringList inputs;
  for (const int input : wanted.inputs) inputs.append(services_.labels.Input(input));
  return QStringLiteral("%1 %2 < %3")
      .arg(ActWords(wanted), services_.labels.Output(wanted.output),
           inputs.isEmpty() ? tr("nothing") : inputs.join(QStringLiteral(", ")));
}

void OpenGateway::TellPeers() {
  QStringList lines;
  for (const auto& [number, address] : peers_) {
    lines.append(tr("Controller %1, %2").arg(number).arg(address));
  }
  Q_EMIT PeersChanged(lines);
}

}  // namespace app
