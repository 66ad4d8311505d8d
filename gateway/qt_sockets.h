// SPDX-License-Identifier: MIT
//
// The sockets and the timer of the gateways, by Qt.

#ifndef GATEWAY_QT_SOCKETS_H_
#define GATEWAY_QT_SOCKETS_H_

#include <QHostAddress>
#include <QObject>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "gateway/client_socket.h"
#include "gateway/pause_timer.h"
#include "model/status.h"

namespace gateway {

// Error number of a port that cannot be listened on.
inline constexpr int kPortInUse = 10048;

// Error number of a connection that failed in reading or writing.
inline constexpr int kSocketFailed = 10054;

// An accepted connection.
class QtClientSocket : public ClientSocket {
 public:
  // REQUIRES of its end: not from within one of its own events.
  explicit QtClientSocket(std::unique_ptr<QTcpSocket> socket);
  ~QtClientSocket() override;
  QtClientSocket(const QtClientSocket&) = delete;
  QtClientSocket& operator=(const QtClientSocket&) = delete;

  void SetEvents(ClientSocketEvents* events, int slot) override;
  bool IsConnected() const override;
  std::string PeerAddress() const override;
  ReadResult Read(std::size_t atMost, Bytes* bytes) override;
  model::Status Write(std::span<const std::uint8_t> bytes) override;
  std::size_t Unsent() const override;
  void Close() override;
  model::Status LastError() const override;

 private:
  std::unique_ptr<QTcpSocket> socket_;
};

// The listening socket of a gateway.
class Listener : public QObject {
  Q_OBJECT

 public:
  using AcceptHandler = std::function<void(std::unique_ptr<ClientSocket>)>;

  explicit Listener(QObject* parent = nullptr);

  // Who takes new connections; without one they are closed at once.
  void SetAcceptHandler(AcceptHandler accept) { accept_ = std::move(accept); }

  // The address that Start() listens on: every interface (IPv4) unless it is set.
  void SetAddress(const QHostAddress& address) { address_ = address; }

  // Listens on `port`.  Fails when the port is taken, not permitted or outside 1..65535, or when
  // the address is none of this computer.
  model::Status Start(int port);

  // Stops listening.  Does nothing when it is not.
  void Stop();

  bool IsListening() const { return server_.isListening(); }

 private:
  void AcceptAll();

  QTcpServer server_;
  QTimer rest_;
  std::chrono::steady_clock::time_point turn_;  // when accepting began after the last rest
  std::chrono::steady_clock::time_point last_;  // when one was accepted
  QHostAddress address_{QHostAddress::AnyIPv4};
  AcceptHandler accept_;
};

// The pause between two sends, to a fraction of a millisecond: sixteen panels have fifteen of them
// one after the other, and what each is late adds up.
class QtPauseTimer : public PauseTimer {
 public:
  QtPauseTimer();

  void Start(std::chrono::milliseconds pause, std::function<void()> handler) override;
  void Stop() override { timer_.stop(); }

 private:
  void Wait();

  QTimer timer_;
  std::chrono::steady_clock::time_point deadline_;
  std::function<void()> handler_;
};

}  // namespace gateway

#endif  // GATEWAY_QT_SOCKETS_H_
