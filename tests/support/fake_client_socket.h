// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_FAKE_CLIENT_SOCKET_H_
#define TESTS_SUPPORT_FAKE_CLIENT_SOCKET_H_

#include <deque>
#include <memory>
#include <string>
#include <string_view>

#include "gateway/client_socket.h"

namespace test {

// The far end of a connection without a network, as the test holds it: keeps what is written,
// delivers what the test says.
struct FakePeer {
  std::string address = "10.0.0.7";
  bool connected = true;
  bool closedByConsole = false;
  bool reads = true;        // takes what it is sent
  bool failsReads = false;  // the next read fails
  bool failsWrites = false;
  bool closesAtWrite = false;           // the next write finds out that the connection has ended
  std::deque<gateway::Bytes> incoming;  // as the reads will return it
  gateway::Bytes written;
  std::size_t unsent = 0;
  gateway::ClientSocketEvents* events = nullptr;
  int slot = 0;

  // The bytes written since the last call, as "81 00 00 FF".
  std::string TakeWritten();

  // Bytes arrive, in one event.
  void Send(std::string_view hex);
  void Send(const gateway::Bytes& bytes);

  // The peer closes the connection.
  void Close();
};

// The console's end of it.
class FakeClientSocket : public gateway::ClientSocket {
 public:
  explicit FakeClientSocket(std::shared_ptr<FakePeer> peer) : peer_(std::move(peer)) {}

  void SetEvents(gateway::ClientSocketEvents* events, int slot) override;
  bool IsConnected() const override { return peer_->connected; }
  std::string PeerAddress() const override { return peer_->address; }
  ReadResult Read(std::size_t atMost, gateway::Bytes* bytes) override;
  model::Status Write(std::span<const std::uint8_t> bytes) override;
  std::size_t Unsent() const override { return peer_->unsent; }
  void Close() override;
  model::Status LastError() const override { return {10054, "The connection is broken"}; }

 private:
  std::shared_ptr<FakePeer> peer_;
};

}  // namespace test

#endif  // TESTS_SUPPORT_FAKE_CLIENT_SOCKET_H_
