// SPDX-License-Identifier: MIT

#include "tests/support/fake_client_socket.h"

#include <algorithm>
#include <utility>

#include "tests/support/hex.h"

namespace test {

std::string FakePeer::TakeWritten() { return Hex(std::exchange(written, {})); }

void FakePeer::Send(std::string_view hex) { Send(FromHex(hex)); }

void FakePeer::Send(const gateway::Bytes& bytes) {
  incoming.push_back(bytes);
  events->DataArrived(slot, bytes.size());
}

void FakePeer::Close() {
  connected = false;
  events->PeerClosed(slot);
}

void FakeClientSocket::SetEvents(gateway::ClientSocketEvents* events, int slot) {
  peer_->events = events;
  peer_->slot = slot;
}

gateway::ClientSocket::ReadResult FakeClientSocket::Read(std::size_t atMost,
                                                         gateway::Bytes* bytes) {
  if (peer_->failsReads) return ReadResult::Failed;
  if (peer_->incoming.empty()) {
    return peer_->connected ? ReadResult::WouldBlock : ReadResult::Closed;
  }
  gateway::Bytes& next = peer_->incoming.front();
  const auto count = static_cast<std::ptrdiff_t>(std::min(atMost, next.size()));
  bytes->insert(bytes->end(), next.begin(), next.begin() + count);
  next.erase(next.begin(), next.begin() + count);
  if (next.empty()) peer_->incoming.pop_front();
  return ReadResult::Data;
}

model::Status FakeClientSocket::Write(std::span<const std::uint8_t> bytes) {
  if (peer_->closesAtWrite) peer_->Close();
  if (peer_->failsWrites || !peer_->connected) return LastError();
  peer_->written.insert(peer_->written.end(), bytes.begin(), bytes.end());
  if (!peer_->reads) peer_->unsent += bytes.size();
  return {};
}

void FakeClientSocket::Close() {
  peer_->closedByConsole = true;
  peer_->connected = false;
}

}  // namespace test
