// SPDX-License-Identifier: MIT

#ifndef GATEWAY_EMBER_PROVIDER_H_
#define GATEWAY_EMBER_PROVIDER_H_

#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "db/jet/database.h"
#include "gateway/client_socket.h"
#include "gateway/ember/glow.h"
#include "gateway/ember/news.h"
#include "gateway/ember/peer_events.h"
#include "gateway/ember/peers.h"
#include "gateway/ember/takes.h"
#include "gateway/ember/tree.h"
#include "gateway/pause_timer.h"
#include "model/locks.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "stations/channel_texts.h"
#include "switcher/known_map.h"
#include "switcher/line_share.h"
#include "switcher/live_commands.h"
#include "switcher/switcher_events.h"

namespace ember {

// The open gateway: shows the system to consumers, answers what they ask, tells them what changes
// of that, and carries out what they take, where that is allowed.
//
// A consumer is told of nothing that it did not ask for, and nothing is built for it.
class Provider : public switcher::SwitcherEvents,
                 public stations::ChangeObserver,
                 private TakeAnswers {
 public:
  using Time = Takes::Time;

  // All must outlive the object.
  struct Services {
    model::SystemModel& model;
    std::function<jet::Database*()> database;  // the open one; null when there is none
    stations::Changes& changes;
    const model::Locks& locks;
    switcher::LiveCommands& commands;
    const switcher::KnownMap& knownMap;
    const switcher::LineShare& line;
    gateway::PauseTimer& takeTimer;
    gateway::PauseTimer& newsTimer;
    gateway::PauseTimer& secondTimer;
    gateway::PauseTimer& workTimer;
    std::function<Time()> now;
    PeerEvents& events;
    std::string version;   // of the program
    bool mayTake = false;  // else all is for reading
    // A gain was set: whoever shows it.
    std::function<void()> gainsChanged;
  };
  explicit Provider(Services services);
  Provider(const Provider&) = delete;
  Provider& operator=(const Provider&) = delete;

  // Serves a new connection, if there is room for it.
  void Accept(std::unique_ptr<gateway::ClientSocket> socket);

  // Closes all connections.
  void CloseAll();

  int PeerCount() const { return peers_.Count(); }

  // The link to the switcher may be in another state.
  void LinkChanged();

  void CrosspointRowChanged(int output, int mode) override;
  void GainsChanged() override { news_.LevelsChanged(); }
  void TallyChanged() override { news_.LevelsChanged(); }

  void Changed(std::span<const stations::Change> changes) override {
    news_.RecordsChanged(changes);
  }

 private:
  void PeerEnded(int peer);
  void EverySecond();
  void Serve(int peer, const Request& request);
  void AnswerDirectory(int peer, const Path& path);
  void SetValue(int peer, const Request& request);
  std::optional<Refusal> WhyNotSet(const Request& request) const;
  void RefuseValue(const PeerName& peer, const Path& path, Refusal why);
  void Connect(int peer, const Request& request);
  void Take(int peer, const Connection& connection);
  void Refuse(int peer, const Wanted& wanted, Refusal why);
  void Invoke(int peer, const Request& request);
  bool Call(int peer, const Request& request);

  void AnswerRow(int peer, int output) override;
  void AnswerRefusal(int peer, const Wanted& wanted, std::optional<int> invocation) override;
  void AnswerInvocation(int peer, std::optional<int> invocation, bool done) override;
  void CommandSent(const PeerName& peer, const switcher::Take& take) override;
  void TakeRefused(const PeerName& peer, const Wanted& wanted, Refusal why) override;
  void TakeStopped(const PeerName& peer, const Wanted& wanted, Refusal why) override;
  void GainSent(const PeerName& peer, int input, int step) override;
  void GainRefused(const PeerName& peer, int input, Refusal why) override;

  const Services services_;
  stations::ChannelTexts texts_;
  Tree tree_;
  Takes takes_;
  Peers peers_;
  News news_;
};

}  // namespace ember

#endif  // GATEWAY_EMBER_PROVIDER_H_
