// SPDX-License-Identifier: MIT

#include "gateway/ember/peers.h"

#include <algorithm>
#include <optional>

#include "gateway/ember/peer_network.h"

namespace ember {

namespace {

// What is read from a socket at once: no more than is read in little time, whatever it is.
constexpr std::size_t kReadSize = std::size_t{4} << 10;

}  // namespace

bool Peers::Accept(std::unique_ptr<gateway::ClientSocket> socket) {
  const std::string address = socket->PeerAddress();
  if (!MakeRoom(address)) {
    socket->Close();
    return false;
  }
  const int number = FreeNumber();
  Peer& peer = At(number);
  peer = {};
  peer.socket = std::move(socket);
  peer.address = address;
  peer.network = NetworkOf(address);
  peer.isThere = true;
  peer.lastHeard = services_.now();
  peer.socket->SetEvents(this, number);
  services_.events.PeerConnected(Name(number));
  return true;
}

bool Peers::MakeRoom(const std::string& address) {
  const std::string network = NetworkOf(address);
  TurnedAway why = TurnedAway::AllTaken;
  int mute = 0;
  if (!IsLoopback(address) && CountOf(network) >= kMostOfAddress) {
    why = TurnedAway::AddressHasMany;
    mute = NumberOfMute([&](const Peer& peer) { return peer.network == network ? 1 : 0; });
  } else if (Count() < kMost) {
    return true;
  } else {
    mute = NumberOfMute([this](const Peer& peer) { return CountOf(peer.network); });
  }
  if (mute == 0) {
    services_.events.PeerTurnedAway(address, why);
    return false;
  }
  Drop(mute, PeerDrop::MadeRoom);
  return true;
}

int Peers::CountOf(const std::string& network) const {
  return static_cast<int>(std::count_if(peers_.begin(), peers_.end(), [&](const Peer& peer) {
    return peer.isThere && peer.network == network;
  }));
}

// A socket that has ended is deleted when another one takes its place, never in its own event.
int Peers::FreeNumber() {
  const auto free =
      std::find_if(peers_.begin(), peers_.end(), [](const Peer& peer) { return !peer.isThere; });
  if (free != peers_.end()) return static_cast<int>(free - peers_.begin()) + 1;
  peers_.emplace_back();
  return Highest();
}

// One that has never sent a frame: of those that come first, above 0, the one that has been quiet
// for the longest; 0 for none.
int Peers::NumberOfMute(const std::function<int(const Peer&)>& precedence) const {
  int mute = 0;
  int first = 0;
  for (int number = 1; number <= Highest(); ++number) {
    const Peer& peer = At(number);
    if (!peer.isThere || peer.hasSpoken) continue;
    const int its = precedence(peer);
    if (its == 0 || its < first) continue;
    if (its == first && peer.lastHeard >= At(mute).lastHeard) continue;
    mute = number;
    first = its;
  }
  return mute;
}

int Peers::Count() const {
  return static_cast<int>(
      std::count_if(peers_.begin(), peers_.end(), [](const Peer& peer) { return peer.isThere; }));
}

void Peers::CloseAll() {
  for (int number = 1; number <= Highest(); ++number) End(number);
}

// Served at once, unless a turn is due anyway.  The bytes of many come as events one behind the
// other, each within its time and all together not: so the time that serving took is counted over
// these events, less the time that was left to the others in between.
void Peers::DataArrived(int slot, std::size_t /*byteCount*/) {
  At(slot).isUnread = true;
  if (isTurnDue_) return;
  taken_ -= std::min(taken_, services_.now() - left_);
  Serve();
}

void Peers::Serve() {
  const Time begin = services_.now();
  isTurnDue_ = !ServeUntil(begin + kTurn - taken_);
  left_ = services_.now();
  taken_ += left_ - begin;
  if (!isTurnDue_) return;
  services_.timer.Start(kRest, [this] {
    isTurnDue_ = false;
    taken_ = {};
    Serve();
  });
}

// False when there is more to do.
bool Peers::ServeUntil(Time end) {
  for (int idle = 0; idle < Highest();) {
    if (services_.now() >= end) return false;
    turn_ = turn_ % Highest() + 1;
    idle = ServeOne(turn_) ? 0 : idle + 1;
  }
  return true;
}

// Answers one request, or reads on.  False when there is nothing to do.
bool Peers::ServeOne(int number) {
  Peer& peer = At(number);
  if (!peer.isThere) return false;
  if (peer.requests.empty()) return Read(number);
  const Request request = std::move(peer.requests.front());
  peer.requests.pop_front();
  services_.serve(number, request);
  peer.lastHeard = services_.now();
  return true;
}

bool Peers::Read(int number) {
  Peer& peer = At(number);
  if (!peer.isUnread) return false;
  Bytes bytes;
  if (peer.socket->Read(kReadSize, &bytes) != gateway::ClientSocket::ReadResult::Data) {
    peer.isUnread = false;
    return false;
  }
  peer.lastHeard = services_.now();
  peer.isAsked = false;
  std::vector<FrameReader::Event> events;
  const bool isWhole = peer.reader.Read(bytes, &events);
  peer.hasSpoken = peer.hasSpoken || !events.empty();
  bool asksForUs = false;
  for (const FrameReader::Event& event : events) {
    asksForUs = asksForUs || event.kind == FrameReader::Kind::KeepAliveRequest;
    if (event.kind == FrameReader::Kind::Message) Queue(number, event.message);
  }
  // Who asks a thousand times at once is told once.
  if (asksForUs) SendFrames(number, KeepAliveResponse());
  if (!isWhole && peer.isThere) Drop(number, PeerDrop::TooLong);
  return true;
}

// Of many connections each is a request.
void Peers::Queue(int number, std::span<const std::uint8_t> message) {
  std::optional<std::vector<Request>> requests = ParseGlow(message);
  if (!requests) return;
  std::deque<Request>& queue = At(number).requests;
  for (Request& request : *requests) {
    if (request.connections.size() <= 1) {
      queue.push_back(std::move(request));
      continue;
    }
    for (Connection& connection : std::exchange(request.connections, {})) {
      queue.push_back(request);
      queue.back().connections.push_back(std::move(connection));
    }
  }
}

void Peers::SendFrames(int number, std::span<const std::uint8_t> frames) {
  Peer& peer = At(number);
  if (!peer.isThere) return;
  const bool isWritten = peer.socket->Write(frames).ok();
  if (!peer.isThere) return;  // writing has found out that it has gone
  if (!isWritten || peer.socket->Unsent() > kMostUnsent) Drop(number, PeerDrop::DoesNotRead);
}

void Peers::Drop(int number, PeerDrop why) {
  services_.events.PeerDropped(Name(number), why);
  End(number);
}

void Peers::End(int number) {
  Peer& peer = At(number);
  if (!peer.isThere) return;
  peer.isThere = false;
  peer.requests.clear();
  peer.reader = {};
  peer.socket->Close();
  services_.ended(number);
  services_.events.PeerGone(Name(number));
}

void Peers::LookAround() {
  const Time now = services_.now();
  for (int number = 1; number <= Highest(); ++number) {
    Peer& peer = At(number);
    if (!peer.isThere) continue;
    const auto quiet = now - peer.lastHeard;
    if (quiet >= kDropAfter) {
      Drop(number, PeerDrop::Silent);
    } else if (quiet >= kAskAfter && !std::exchange(peer.isAsked, true)) {
      SendFrames(number, KeepAliveRequest());
    }
  }
}

}  // namespace ember
