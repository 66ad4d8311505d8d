// SPDX-License-Identifier: MIT

#include "switcher/qt_serial_port.h"

#include <QDeadlineTimer>
#include <QMetaObject>
#include <QThread>
#include <algorithm>
#include <chrono>
#include <utility>

#ifdef Q_OS_UNIX
#include <poll.h>
#include <sys/ioctl.h>
#endif

namespace switcher {

namespace {

// What may stand between a sender and the wire.  Small, so that a progress bar tells the truth
// and a cancelled download really stops; 256 bytes last 44 ms at 57600 baud.
constexpr int kOutputLimit = 256;

// A line that takes no byte for so long takes none at all.
constexpr int kStallMilliseconds = 2000;

// So many errors without a byte in between mean that the device does not work any more, although
// it is there.
constexpr int kMostIdleErrors = 50;

// Bytes that the operating system holds and the line has not sent.  A pseudo terminal has none;
// neither has a platform that does not tell.
int KernelQueue([[maybe_unused]] const QSerialPort& port) {
#ifdef Q_OS_UNIX
  int queued = 0;
  if (ioctl(port.handle(), TIOCOUTQ, &queued) == 0) return queued;
#endif
  return 0;
}

// Whether the device is still at the other end of the line.  A platform that does not tell has
// lost it.
bool IsPresent([[maybe_unused]] const QSerialPort& port) {
#ifdef Q_OS_UNIX
  pollfd device{.fd = port.handle(), .events = 0, .revents = 0};
  return poll(&device, 1, 0) == 0;  // else it has hung up
#else
  return false;
#endif
}

}  // namespace

QtSerialPort::QtSerialPort(DeviceName deviceName, QObject* parent)
    : QObject(parent), deviceName_(std::move(deviceName)) {
  setObjectName(QStringLiteral("MSComm1"));
  connect(&port_, &QSerialPort::readyRead, this, &QtSerialPort::OnReadyRead);
  connect(&port_, &QSerialPort::bytesWritten, this, &QtSerialPort::OnBytesWritten);
  connect(&port_, &QSerialPort::errorOccurred, this, &QtSerialPort::OnError);
}

QtSerialPort::~QtSerialPort() {
  port_.disconnect(this);
  QtSerialPort::Close();
}

model::Status QtSerialPort::Open(int number) {
  Close();
  number_ = number;
  sendThreshold_ = 0;
  idleErrors_ = 0;
  stalledAt_ = 0;
  pace_.Reset();
  opening_ = true;
  port_.setPortName(deviceName_(number));
  port_.setBaudRate(QSerialPort::Baud57600);
  port_.setDataBits(QSerialPort::Data8);
  port_.setParity(QSerialPort::NoParity);
  port_.setStopBits(QSerialPort::OneStop);
  port_.setFlowControl(QSerialPort::NoFlowControl);
  const bool opened = port_.open(QIODevice::ReadWrite);
  opening_ = false;
  if (!opened) return {kPortUnavailable, port_.errorString().toStdString()};
  return {};
}

// What a sender has handed over still goes out: closing drops whatever stands in the buffer, and
// a message without its end is none.
void QtSerialPort::Close() {
  if (!port_.isOpen()) return;
  writing_ = true;
  (void)WaitForOutputBelow(1);
  writing_ = false;
  readDeferred_ = false;
  lostDeferred_ = false;
  if (port_.isOpen()) port_.close();
}

Bytes QtSerialPort::Read() {
  const QByteArray data = port_.readAll();
  return {data.begin(), data.end()};
}

model::Status QtSerialPort::Write(std::uint8_t byte) {
  if (!port_.isOpen()) return {kPortNotOpen, "The serial port is not open"};

  writing_ = true;
  const bool room = WaitForOutputBelow(kOutputLimit);
  const bool written = room && port_.putChar(static_cast<char>(byte));
  writing_ = false;

  if (std::exchange(readDeferred_, false)) {
    QMetaObject::invokeMethod(this, &QtSerialPort::OnReadyRead, Qt::QueuedConnection);
  }
  if (std::exchange(lostDeferred_, false)) {
    QMetaObject::invokeMethod(this, &QtSerialPort::TellLost, Qt::QueuedConnection);
    return {kPortWriteFailed, "The serial device has gone"};
  }
  if (!room) return {kPortWriteFailed, "The serial line has taken no byte for two seconds"};
  if (!written) return {kPortWriteFailed, port_.errorString().toStdString()};
  pace_.Add(1, std::chrono::steady_clock::now());
  return {};
}

// Waits until fewer than `limit` bytes wait to be sent.  False when the line stalls or the device
// goes.  A line that has stalled is not waited for again until it moves: each command would hold
// up the operator for as long again.
bool QtSerialPort::WaitForOutputBelow(int limit) {
  int pending = PendingOutput();
  if (stalledAt_ > 0 && pending >= stalledAt_) return false;
  stalledAt_ = 0;
  QDeadlineTimer stall(kStallMilliseconds);
  while (pending >= limit) {
    if (port_.bytesToWrite() > 0) {
      port_.waitForBytesWritten(20);
    } else {
      QThread::msleep(2);  // all of it is with the operating system; look again later
    }
    if (!port_.isOpen()) return false;
    const int left = PendingOutput();
    if (left < pending) {
      stall.setRemainingTime(kStallMilliseconds);
    } else if (stall.hasExpired()) {
      stalledAt_ = left;
      return false;
    }
    pending = left;
  }
  return true;
}

int QtSerialPort::PendingOutput() const {
  return static_cast<int>(port_.bytesToWrite()) + KernelQueue(port_);
}

std::size_t QtSerialPort::Unsent() const {
  if (!port_.isOpen()) return 0;
  return std::max(static_cast<std::size_t>(PendingOutput()),
                  pace_.Behind(std::chrono::steady_clock::now()));
}

void QtSerialPort::SetSendThreshold(int threshold) {
  sendThreshold_ = threshold;
  if (threshold == 1 && port_.bytesToWrite() == 0) {
    QMetaObject::invokeMethod(this, &QtSerialPort::TellDrained, Qt::QueuedConnection);
  }
}

void QtSerialPort::OnReadyRead() {
  idleErrors_ = 0;
  if (writing_) {
    readDeferred_ = true;
    return;
  }
  if (events_ != nullptr && port_.bytesAvailable() > 0) events_->DataReceived();
}

void QtSerialPort::OnBytesWritten() {
  idleErrors_ = 0;
  if (!writing_) TellDrained();
}

void QtSerialPort::TellDrained() {
  if (sendThreshold_ == 1 && port_.bytesToWrite() == 0 && events_ != nullptr) {
    events_->OutputDrained();
  }
}

void QtSerialPort::OnError(QSerialPort::SerialPortError error) {
  if (opening_ || !port_.isOpen() || error == QSerialPort::NoError ||
      error == QSerialPort::TimeoutError) {
    return;
  }
  // A sender that waits for room takes in what arrives meanwhile.  When the event loop then
  // wakes the port for these bytes there is nothing left to be read, which the toolkit takes for
  // an error.  It may have stopped listening to the device; this makes it listen again.
  if (IsPresent(port_) && ++idleErrors_ <= kMostIdleErrors) {
    port_.setReadBufferSize(port_.readBufferSize());
    return;
  }
  // A device that has gone reports this error again at every turn of the event loop until the
  // port is closed.
  port_.close();
  if (writing_) {
    lostDeferred_ = true;
    return;
  }
  TellLost();
}

void QtSerialPort::TellLost() {
  if (events_ != nullptr) events_->PortLost();
}

}  // namespace switcher
