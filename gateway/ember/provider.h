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
#include "gateway/ember/channel_texts.h"
#include "gateway/ember/glow.h"
#include "gateway/ember/peer_events.h"
#include "gateway/ember/s101.h"
#include "gateway/ember/takes.h"
#include "gateway/ember/tree.h"
#include "gateway/pause_timer.h"
#include "model/locks.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "switcher/known_map.h"
#include "switcher/line_share.h"
#include "switcher/live_commands.h"
#include "switcher/switcher_events.h"

namespace ember {

// The open gateway: shows the system to consumers, answers what they ask, tells them what changes
// of that, and carries out what they take, where that is allowed.
//
// A consumer is told of nothing that it did not ask for, and nothing is built for it.
class Provider : public gateway::ClientSocketEvents,
                 public switcher::SwitcherEvents,
                 public stations::ChangeObserver,
                 private TakeAnswers {
 public:
  using Time = Takes::Time;

  static constexpr int kMostPeers = 32;

  // The most that waits in a socket for a consumer that does not read.
  static constexpr std::size_t kMostUnsent = std::size_t{1} << 20;

  // What a consumer has news of; beyond it is answered and has no news.
  static constexpr std::size_t kMostSubscriptions = 8192;

  // A consumer that has been quiet so long is asked whether it is there, and one that still is,
  // dropped.
  static constexpr std::chrono::seconds kAskAfter{10};
  static constexpr std::chrono::seconds kDropAfter{30};

  // News of the records are gathered so long: a table of the switcher changes many.
  static constexpr std::chrono::milliseconds kGather{50};

  // So long consumers are served in one turn of the event loop: the operator and the switcher come
  // between, however much they ask at once.
  static constexpr std::chrono::milliseconds kTurn{5};

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

  // Serves a new connection.  When there are kMostPeers, one that has never sent a frame makes room
  // for it, or it is closed.
  void Accept(std::unique_ptr<gateway::ClientSocket> socket);

  // Closes all connections.
  void CloseAll();

  int PeerCount() const;

  // The link to the switcher may be in another state.
  void LinkChanged();

  void DataArrived(int slot, std::size_t byteCount) override;
  void PeerClosed(int slot) override;

  void CrosspointRowChanged(int output, int mode) override;
  void GainsChanged() override { TellLevels(); }
  void TallyChanged() override { TellLevels(); }

  void Changed(std::span<const stations::Change> changes) override;

 private:
  struct Peer {
    std::unique_ptr<gateway::ClientSocket> socket;
    std::string address;
    bool isThere = false;
    FrameReader reader;
    std::deque<Request> requests;  // that are not served yet; nothing is read meanwhile
    std::set<Path> subscriptions;  // the matrix, parameters, and nodes for the parameters below
    Time lastHeard;
    bool hasSpoken = false;  // a whole frame was read
    bool isAsked = false;    // whether it is there, since it was last heard of
  };

  // What consumers were last told, or would have been, of what is compared.
  struct Levels {
    std::array<std::int16_t, model::kLevelCount> gains{};
    std::array<std::int16_t, model::kLevelCount> tally{};
    bool link = false;
    bool mapComplete = false;
  };

  struct KnownRow {
    bool isKnown = false;
    std::vector<std::uint8_t> sources;
    std::uint8_t status = 0;
  };

  Peer& At(int number) { return peers_[static_cast<std::size_t>(number - 1)]; }
  KnownRow& RowOf(int output) { return rows_[static_cast<std::size_t>(output - 1)]; }
  PeerName Name(int number) { return {number, At(number).address}; }
  int FreeNumber();
  int NumberOfMute();

  void Read(int peer);
  void Queue(int peer, Request request);
  void Serve();
  bool ServeOne(int peer);
  void Handle(int peer, const FrameReader::Event& event);
  void Handle(int peer, const Request& request);
  void AnswerDirectory(int peer, const Path& path);
  void Subscribe(int peer, const Path& path);
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

  Bytes RowMessage(int output, Disposition disposition);
  bool NoteRow(int output);
  std::set<std::pair<int, int>> SubscribedInhibits() const;
  void TellLevels();
  void TellTexts();
  void TellValue(const Path& path, int always = 0);
  bool IsSubscribed(const Peer& peer, const Path& parameter) const;
  void Send(int peer, std::span<const std::uint8_t> message);
  void SendFrames(int peer, std::span<const std::uint8_t> frames);
  void Drop(int peer, PeerDrop why);
  void EndPeer(int peer);
  void EverySecond();

  const Services services_;
  ChannelTexts texts_;
  Tree tree_;
  Takes takes_;
  std::vector<Peer> peers_;
  Levels told_;
  std::vector<KnownRow> rows_;  // by output - 1; none while nobody is connected
  bool isNewsDue_ = false;      // the news timer runs
};

}  // namespace ember

#endif  // GATEWAY_EMBER_PROVIDER_H_
