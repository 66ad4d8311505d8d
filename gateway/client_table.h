// SPDX-License-Identifier: MIT

#ifndef GATEWAY_CLIENT_TABLE_H_
#define GATEWAY_CLIENT_TABLE_H_

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "gateway/client_socket.h"
#include "gateway/decode_timer.h"
#include "gateway/panel_events.h"
#include "gateway/received_bytes.h"
#include "gateway/take_frame.h"
#include "model/error_reporter.h"
#include "model/observers.h"

namespace gateway {

// What is kept of the client of one slot.
struct ClientConnection {
  bool Identified = false;  // it answered the connection request with an accepted type
  bool Connected = false;
  bool AlphasPending = false;    // a label table was requested and has not gone out
  bool Option20Pending = false;  // set by a request; nothing clears or reads it
  bool ButtonsPending = false;   // station programming was requested and has not gone out
  std::string PeerIP;
  int ConnType = 0;
  ReceivedBytes RxData;
  std::deque<std::uint8_t> Requests;  // masks of service requests that wait for their turn
  std::deque<PanelTake> Takes;        // that wait for the line
  int KeepAliveCount = 0;   // set to 0 by accepting and by keep-alives; nothing counts it up
  int UnfinishedTicks = 0;  // decode ticks that have found the frame in front without its end
  int TakeReports = 0;      // of takes without their end, since the last whole frame

  // What is on its way in answer to a service request.
  struct {
    int messages = 0;
    int labels = 0;  // of them
  } Answer;

  // What of that which was received waits, in bytes.
  std::size_t Undecoded() const {
    return RxData.size() + Requests.size() * kServiceRequestLength + Takes.size() * kTakeLength;
  }
};

// The slots of the panel gateway, from 1.  A slot is made when all others are taken and never
// goes away; a new client gets the lowest that is free.
class ClientTable : public ClientSocketEvents {
 public:
  // The most clients at a time, so that a flood of connections can use up neither the process's
  // files nor, by the pause that every slot costs, the time of the others.
  static constexpr int kMaxClients = 128;

  // The most that is kept of what a client sent and that is not decoded.  What exceeds it stays
  // in the socket until there is room.
  static constexpr std::size_t kRxLimit = std::size_t{64} << 10;

  // All must outlive the table.
  struct Services {
    DecodeTimer& decodeTimer;
    model::ErrorReporter& reporter;
  };
  explicit ClientTable(const Services& services) : services_(services) {}
  ClientTable(const ClientTable&) = delete;
  ClientTable& operator=(const ClientTable&) = delete;

  // Who is told of connections that begin, of what their clients are, and of their end.
  void AddObserver(PanelEvents& observer) { observers_.Add(observer); }

  // Gives a new connection the lowest free slot and returns it.  When all slots are taken, the
  // client that has been unidentified the longest makes room; when there is none, the new
  // connection is closed and the result is 0.
  int Accept(std::unique_ptr<ClientSocket> socket);

  // The connection reply, type byte to terminator.  Ignored when its checksum is wrong.
  void Identify(std::span<const std::uint8_t> frame, int slot);

  // Reads what was left in the socket of a slot for want of room, if there is room now.  Whether
  // something may still be left.
  bool ReadOn(int slot);

  // Whether something may be left in the socket of a slot for want of room.
  bool IsUnread(int slot) const { return At(slot).unread; }

  // Ends the connection of a slot because of what its client does.
  void Drop(int slot, DropReason reason);

  // Closes all connections.
  void CloseAll();

  // The highest slot made so far, and the number of clients that are connected.
  int SocketCount() const { return static_cast<int>(slots_.size()); }
  int ClientCount() const { return clientCount_; }

  // REQUIRES of all below: 1 <= slot <= SocketCount()
  ClientConnection& Connection(int slot) { return At(slot).connection; }
  const ClientConnection& Connection(int slot) const { return At(slot).connection; }
  PanelName Name(int slot) const { return {slot, Connection(slot).PeerIP}; }
  ClientSocket& Socket(int slot) { return *At(slot).socket; }
  bool IsConnected(int slot) const { return At(slot).socket->IsConnected(); }

  // Tells the clients apart that one slot has had: the number of its connection, from 1.
  std::uint64_t ConnectionNumber(int slot) const { return At(slot).number; }

  // Decode ticks since data arrived or a message was sent.
  int TcpIdleTicks = 0;

  void DataArrived(int slot, std::size_t byteCount) override;
  void PeerClosed(int slot) override;

 private:
  struct Slot {
    std::unique_ptr<ClientSocket> socket;
    ClientConnection connection;
    std::uint64_t number = 0;
    bool unread = false;  // the socket may hold bytes that there was no room for
  };

  Slot& At(int slot) { return slots_[static_cast<std::size_t>(slot - 1)]; }
  const Slot& At(int slot) const { return slots_[static_cast<std::size_t>(slot - 1)]; }
  int FreeSlot();
  int LongestUnidentified() const;
  void Close(int slot);

  const Services services_;
  model::Observers<PanelEvents> observers_;
  std::vector<Slot> slots_;
  int clientCount_ = 0;
  std::uint64_t accepted_ = 0;
};

}  // namespace gateway

#endif  // GATEWAY_CLIENT_TABLE_H_
