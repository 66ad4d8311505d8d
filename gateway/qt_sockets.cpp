// SPDX-License-Identifier: MIT

#include "gateway/qt_sockets.h"

#include <QHostAddress>
#include <algorithm>
#include <chrono>
#include <utility>

#include "gateway/address_list.h"

#ifdef Q_OS_LINUX
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#endif

namespace gateway {

namespace {

// The size of the buffers of a client socket.
constexpr int kBufferSize = 32767;

// After a failed accept, such as for lack of files, the listener rests so long.
constexpr std::chrono::milliseconds kAcceptRest{500};

// Connections are accepted for so long at once, and the others so much later: everything else comes
// between, however many there are.
constexpr std::chrono::milliseconds kAcceptFor{3};
constexpr std::chrono::milliseconds kAcceptPause{3};

// So many are taken over from the system before they are accepted.
constexpr int kPending = 8;

// Connections that may wait to be accepted: all panels of a house come back at once when the
// console starts.
constexpr int kBacklog = 128;

// A peer that has gone without closing, because its power or its cable has, is found out within
// a minute; by itself the system would take hours.
void WatchPeer(QTcpSocket& socket) {
  socket.setSocketOption(QAbstractSocket::KeepAliveOption, 1);
#ifdef Q_OS_LINUX
  const auto set = [&](int option, int value) {
    // Where it is refused, the system's own patience applies.
    (void)setsockopt(static_cast<int>(socket.socketDescriptor()), IPPROTO_TCP, option, &value,
                     sizeof value);
  };
  set(TCP_KEEPIDLE, 30);
  set(TCP_KEEPINTVL, 10);
  set(TCP_KEEPCNT, 3);
#endif
}

}  // namespace

QtClientSocket::QtClientSocket(std::unique_ptr<QTcpSocket> socket) : socket_(std::move(socket)) {
  socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
  socket_->setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, kBufferSize);
  socket_->setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, kBufferSize);
  socket_->setReadBufferSize(kBufferSize);
  WatchPeer(*socket_);
}

// Named, because a derived class is gone by now.
QtClientSocket::~QtClientSocket() { QtClientSocket::Close(); }

void QtClientSocket::SetEvents(ClientSocketEvents* events, int slot) {
  QObject::connect(socket_.get(), &QTcpSocket::readyRead, socket_.get(), [this, events, slot] {
    events->DataArrived(slot, static_cast<std::size_t>(socket_->bytesAvailable()));
  });
  QObject::connect(socket_.get(), &QTcpSocket::disconnected, socket_.get(),
                   [events, slot] { events->PeerClosed(slot); });
  // What has come before anybody listened, while it waited to be accepted.
  const auto tell = [this, events, slot] {
    const auto available = static_cast<std::size_t>(socket_->bytesAvailable());
    if (available > 0) events->DataArrived(slot, available);
    if (!IsConnected()) events->PeerClosed(slot);
  };
  QMetaObject::invokeMethod(socket_.get(), tell, Qt::QueuedConnection);
}

bool QtClientSocket::IsConnected() const {
  return socket_->state() == QAbstractSocket::ConnectedState;
}

std::string QtClientSocket::PeerAddress() const {
  return Unmapped(socket_->peerAddress()).toString().toStdString();
}

ClientSocket::ReadResult QtClientSocket::Read(std::size_t atMost, Bytes* bytes) {
  const std::size_t before = bytes->size();
  bytes->resize(before + atMost);
  const qint64 read =
      socket_->read(reinterpret_cast<char*>(bytes->data() + before), static_cast<qint64>(atMost));
  bytes->resize(before + static_cast<std::size_t>(std::max<qint64>(read, 0)));
  if (read > 0) return ReadResult::Data;
  if (!IsConnected()) return ReadResult::Closed;
  return read == 0 ? ReadResult::WouldBlock : ReadResult::Failed;
}

model::Status QtClientSocket::Write(std::span<const std::uint8_t> bytes) {
  const auto size = static_cast<qint64>(bytes.size());
  const qint64 taken = socket_->write(reinterpret_cast<const char*>(bytes.data()), size);
  return taken == size ? model::Status() : LastError();
}

std::size_t QtClientSocket::Unsent() const {
  return static_cast<std::size_t>(socket_->bytesToWrite());
}

void QtClientSocket::Close() {
  socket_->disconnect();
  socket_->abort();
}

model::Status QtClientSocket::LastError() const {
  return {kSocketFailed, socket_->errorString().toStdString()};
}

Listener::Listener(QObject* parent) : QObject(parent) {
  server_.setListenBacklogSize(kBacklog);
  server_.setMaxPendingConnections(kPending);
  rest_.setSingleShot(true);
  rest_.setInterval(kAcceptPause);
  connect(&rest_, &QTimer::timeout, this, [this] {
    turn_ = std::chrono::steady_clock::now();
    AcceptAll();
  });
  connect(&server_, &QTcpServer::newConnection, this, &Listener::AcceptAll);
  // The server stops accepting for good when it fails once; files may become free again.
  connect(&server_, &QTcpServer::acceptError, this, [this] {
    QTimer::singleShot(kAcceptRest, &server_, [this] {
      if (server_.isListening()) server_.resumeAccepting();
    });
  });
}

model::Status Listener::Start(int port) {
  Stop();
  if (port < 1 || port > 65535) {
    return {kPortInUse, "There is no IP port " + std::to_string(port)};
  }
  if (!server_.listen(address_, static_cast<quint16>(port))) {
    return {kPortInUse, server_.errorString().toStdString()};
  }
  return {};
}

void Listener::Stop() {
  if (server_.isListening()) server_.close();
}

void Listener::AcceptAll() {
  const auto now = std::chrono::steady_clock::now();
  // Everything else has come between by itself.
  if (now - last_ >= kAcceptPause) turn_ = now;
  while (!rest_.isActive()) {
    QTcpSocket* const socket = server_.nextPendingConnection();
    if (socket == nullptr) return;
    // It belongs to its slot from here on, not to the server.
    socket->setParent(nullptr);
    auto client = std::make_unique<QtClientSocket>(std::unique_ptr<QTcpSocket>(socket));
    if (accept_) accept_(std::move(client));
    last_ = std::chrono::steady_clock::now();
    if (last_ - turn_ >= kAcceptFor) rest_.start();
  }
}

QtPauseTimer::QtPauseTimer() {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Wait(); });
}

void QtPauseTimer::Start(std::chrono::milliseconds pause, std::function<void()> handler) {
  handler_ = std::move(handler);
  deadline_ = std::chrono::steady_clock::now() + pause;
  Wait();
}

// The toolkit waits for whole milliseconds, and rounds up.  So the last, broken one is passed in
// turns of the event loop, in which everything else goes on.
void QtPauseTimer::Wait() {
  const auto left = deadline_ - std::chrono::steady_clock::now();
  if (left > left.zero()) {
    timer_.start(std::chrono::floor<std::chrono::milliseconds>(left));
    return;
  }
  const auto handler = std::exchange(handler_, nullptr);
  if (handler) handler();
}

}  // namespace gateway
