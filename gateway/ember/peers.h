// SPDX-License-Identifier: MIT

#ifndef GATEWAY_EMBER_PEERS_H_
#define GATEWAY_EMBER_PEERS_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "gateway/client_socket.h"
#include "gateway/ember/bytes.h"
#include "gateway/ember/glow.h"
#include "gateway/ember/peer_events.h"
#include "gateway/ember/s101.h"
#include "gateway/pause_timer.h"

namespace ember {

// The connections of consumers, each under a number from 1: lets them in, reads what they ask,
// hands it on one request at a time, and drops who does the others harm.
//
// However much they ask at once, they are served in turns of the event loop, between which the
// operator and the switcher come, and none of them twice while another one waits.
class Peers : public gateway::ClientSocketEvents {
 public:
  using Time = std::chrono::steady_clock::time_point;

  static constexpr int kMost = 32;

  // The most from one address, so that one computer out of its mind leaves room for the others.  Of
  // IPv6 the first half of an address counts; the console's own computer may have all.
  static constexpr int kMostOfAddress = 16;

  // The most that waits in a socket for a consumer that does not read.
  static constexpr std::size_t kMostUnsent = std::size_t{1} << 20;

  // A consumer that has been quiet so long is asked whether it is there, and one that still is,
  // dropped.
  static constexpr std::chrono::seconds kAskAfter{10};
  static constexpr std::chrono::seconds kDropAfter{30};

  // So long consumers are served in one turn of the event loop, however many of them have asked,
  // and so long they wait for the next when that was not enough.
  static constexpr std::chrono::milliseconds kTurn{5};
  static constexpr std::chrono::milliseconds kRest{5};

  // All must outlive the object.
  struct Services {
    gateway::PauseTimer& timer;
    std::function<Time()> now;
    PeerEvents& events;
    std::function<void(int peer, const Request&)> serve;
    std::function<void(int peer)> ended;  // before anybody else is told
  };
  explicit Peers(Services services) : services_(std::move(services)) {}
  Peers(const Peers&) = delete;
  Peers& operator=(const Peers&) = delete;

  // Lets a new connection in; false when it was closed.  When so many are there as can be, in all
  // or from its address, one of them that has never sent a frame makes room for it: of the address
  // that has most, so that who comes in numbers drives out nobody who has just come.
  bool Accept(std::unique_ptr<gateway::ClientSocket> socket);

  void CloseAll();

  // How many are connected, and the highest number that one of them may have.
  int Count() const;
  int Highest() const { return static_cast<int>(peers_.size()); }

  // REQUIRES of all below: 1 <= peer <= Highest()
  bool IsThere(int peer) const { return At(peer).isThere; }
  PeerName Name(int peer) const { return {peer, At(peer).address}; }

  // Sends a message, or frames that are made already; nothing to one that is not there.
  void Send(int peer, std::span<const std::uint8_t> message) { SendFrames(peer, Packets(message)); }
  void SendFrames(int peer, std::span<const std::uint8_t> frames);

  // Asks those that are quiet whether they are there, and drops those that have been too long.
  void LookAround();

  void DataArrived(int slot, std::size_t byteCount) override;
  void PeerClosed(int slot) override { End(slot); }

 private:
  struct Peer {
    std::unique_ptr<gateway::ClientSocket> socket;
    std::string address;
    std::string network;  // the part of the address that counts
    bool isThere = false;
    FrameReader reader;
    bool isUnread = false;         // something may be in the socket
    std::deque<Request> requests;  // that are not served yet; nothing is read meanwhile
    Time lastHeard;
    bool hasSpoken = false;  // a whole frame was read
    bool isAsked = false;    // whether it is there, since it was last heard of
  };

  Peer& At(int number) { return peers_[static_cast<std::size_t>(number - 1)]; }
  const Peer& At(int number) const { return peers_[static_cast<std::size_t>(number - 1)]; }
  bool MakeRoom(const std::string& address);
  int FreeNumber();
  int CountOf(const std::string& network) const;
  int NumberOfMute(const std::function<int(const Peer&)>& precedence) const;
  void Serve();
  bool ServeUntil(Time end);
  bool ServeOne(int number);
  bool Read(int number);
  void Queue(int number, std::span<const std::uint8_t> message);
  void Drop(int number, PeerDrop why);
  void End(int number);

  const Services services_;
  std::vector<Peer> peers_;
  int turn_ = 0;            // whose it was last
  bool isTurnDue_ = false;  // the timer runs
  Time left_;               // when they were last served, ...
  Time::duration taken_{};  // ...and what they have had of the event loop before the others
};

}  // namespace ember

#endif  // GATEWAY_EMBER_PEERS_H_
