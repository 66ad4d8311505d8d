// SPDX-License-Identifier: MIT

#ifndef GATEWAY_CLIENT_SOCKET_H_
#define GATEWAY_CLIENT_SOCKET_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "gateway/panel_frame.h"
#include "model/status.h"

namespace gateway {

// What a client socket tells its owner.  Handlers run one at a time and never inside an
// operation of a socket.
class ClientSocketEvents {
 public:
  virtual ~ClientSocketEvents() = default;

  // `byteCount` bytes can be read from the socket of `slot`.
  virtual void DataArrived(int slot, std::size_t byteCount) = 0;

  // The peer of `slot` has closed or reset the connection, or it was lost.
  virtual void PeerClosed(int slot) = 0;
};

// The connection to one panel or controller.  No operation waits.
class ClientSocket {
 public:
  enum class ReadResult {
    Data,        // bytes were read
    WouldBlock,  // none are there now
    Closed,      // none are there, and none will come
    Failed,      // LastError() says why
  };

  virtual ~ClientSocket() = default;

  // Who is told of events, and as which slot.  The receiver must outlive the socket.
  virtual void SetEvents(ClientSocketEvents* events, int slot) = 0;

  virtual bool IsConnected() const = 0;

  // The peer's address in dotted form, without its port.
  virtual std::string PeerAddress() const = 0;

  // Appends at most `atMost` bytes that have arrived to *bytes.
  virtual ReadResult Read(std::size_t atMost, Bytes* bytes) = 0;

  // Hands bytes over for sending; what the network does not take at once is kept.  Fails when
  // the connection takes no more.
  virtual model::Status Write(std::span<const std::uint8_t> bytes) = 0;

  // The bytes handed over that the network has not taken yet.
  virtual std::size_t Unsent() const = 0;

  // Closes the connection, forgetting what was not sent.  No event follows.
  virtual void Close() = 0;

  // Why the last Read() failed.
  virtual model::Status LastError() const = 0;
};

}  // namespace gateway

#endif  // GATEWAY_CLIENT_SOCKET_H_
