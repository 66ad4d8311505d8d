// SPDX-License-Identifier: MIT

#include "switcher/qt_serial_port.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <termios.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <ctime>
#include <functional>
#include <memory>
#include <stdexcept>
#include <thread>
#include <utility>

#include "tests/support/hex.h"
#include "tests/support/pty.h"

namespace switcher {
namespace {

using namespace std::chrono_literals;

class Events : public SerialPortEvents {
 public:
  explicit Events(SerialPort& port) : port_(port) {}
  void DataReceived() override {
    EXPECT_FALSE(sending);
    const Bytes bytes = port_.Read();
    received.insert(received.end(), bytes.begin(), bytes.end());
  }
  void OutputDrained() override {
    EXPECT_FALSE(sending);
    ++drained;
  }
  void PortLost() override {
    EXPECT_FALSE(sending);
    EXPECT_FALSE(port_.IsOpen());
    ++lost;
  }

  Bytes received;
  int drained = 0;
  int lost = 0;
  bool sending = false;  // the test is inside Write(): no handler may run

 private:
  SerialPort& port_;
};

// Something else that the event loop waits for, such as the window system.
class EventSource {
 public:
  EventSource() {
    if (pipe2(pipe_, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    notifier_ = std::make_unique<QSocketNotifier>(pipe_[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] {
      char byte = 0;
      EXPECT_EQ(read(pipe_[0], &byte, 1), 1);
      handler_();
    });
  }
  ~EventSource() {
    notifier_.reset();
    close(pipe_[0]);
    close(pipe_[1]);
  }
  EventSource(const EventSource&) = delete;
  EventSource& operator=(const EventSource&) = delete;

  void SetHandler(std::function<void()> handler) { handler_ = std::move(handler); }
  void Trigger() { EXPECT_EQ(write(pipe_[1], "x", 1), 1); }

 private:
  int pipe_[2] = {-1, -1};
  std::unique_ptr<QSocketNotifier> notifier_;
  std::function<void()> handler_;
};

class QtSerialPortTest : public testing::Test {
 protected:
  QtSerialPortTest() { port_.SetEvents(&events_); }

  void Open() { ASSERT_TRUE(port_.Open(1).ok()); }

  // Runs the event loop until `done` or for a second.  Returns whether it was done.
  template <typename Condition>
  static bool WaitFor(Condition done) {
    const QDeadlineTimer deadline(1000);
    while (!done() && !deadline.hasExpired()) Sleep(2);
    return done();
  }

  // Lets the event loop run, and sleep, for so long.
  static void Sleep(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  test::Pty pty_;
  std::string device_ = pty_.Device();
  QtSerialPort port_{[this](int) { return QString::fromStdString(device_); }};
  Events events_{port_};
};

TEST_F(QtSerialPortTest, TellsWhatALineCannotHaveSentYet) {
  EXPECT_EQ(port_.Unsent(), 0U);
  Open();
  // The pseudo terminal takes them at once; a line would send them for a tenth of a second.  A
  // machine that is busy for longer just then has another try.
  EXPECT_TRUE(WaitFor([this] {
    for (int i = 0; i < 600; ++i) EXPECT_TRUE(port_.Write(0x00).ok());
    pty_.Receive();
    return port_.Unsent() > 0;
  }));
  EXPECT_TRUE(WaitFor([this] { return port_.Unsent() == 0; }));
  for (int i = 0; i < 600; ++i) ASSERT_TRUE(port_.Write(0x00).ok());
  port_.Close();
  EXPECT_EQ(port_.Unsent(), 0U);
}

TEST_F(QtSerialPortTest, OpensWithTheLinesFixedSettings) {
  Open();
  EXPECT_TRUE(port_.IsOpen());
  EXPECT_EQ(port_.Number(), 1);
  const int line = open(device_.c_str(), O_RDWR | O_NOCTTY);
  // The port has the device for itself; its settings can be read at the far end.
  if (line >= 0) close(line);
  termios settings{};
  ASSERT_EQ(tcgetattr(pty_.Master(), &settings), 0);
  EXPECT_EQ(cfgetospeed(&settings), static_cast<speed_t>(B57600));
  EXPECT_EQ(cfgetispeed(&settings), static_cast<speed_t>(B57600));
  EXPECT_EQ(settings.c_cflag & CSIZE, static_cast<tcflag_t>(CS8));
  EXPECT_EQ(settings.c_cflag & (PARENB | CSTOPB | CRTSCTS), 0U);
}

TEST_F(QtSerialPortTest, AMissingDeviceIsAnErrorAndKeepsTheNumber) {
  device_ = "/dev/no-such-device";
  const model::Status status = port_.Open(3);
  EXPECT_FALSE(status.ok());
  EXPECT_EQ(status.Number(), kPortUnavailable);
  EXPECT_NE(status.Description(), "");
  EXPECT_FALSE(port_.IsOpen());
  EXPECT_EQ(port_.Number(), 3);
  EXPECT_EQ(events_.lost, 0);
}

TEST_F(QtSerialPortTest, AFileThatIsNoTerminalIsAnError) {
  device_ = "/dev/null";
  EXPECT_FALSE(port_.Open(1).ok());
  EXPECT_FALSE(port_.IsOpen());
}

TEST_F(QtSerialPortTest, ABusyDeviceIsAnError) {
  Open();
  QtSerialPort second([this](int) { return QString::fromStdString(device_); });
  EXPECT_FALSE(second.Open(1).ok());
}

TEST_F(QtSerialPortTest, DeliversWhatArrives) {
  Open();
  pty_.Send("F3 00 FF 0D 0A 11 13");
  EXPECT_TRUE(WaitFor([&] { return events_.received.size() == 7; }));
  EXPECT_EQ(test::Hex(events_.received), "F3 00 FF 0D 0A 11 13");
}

TEST_F(QtSerialPortTest, WritesByteByByteAndTellsWhenDrained) {
  Open();
  for (const std::uint8_t byte : {0xFD, 0x0A, 0x11, 0xFF}) ASSERT_TRUE(port_.Write(byte).ok());
  port_.SetSendThreshold(1);
  EXPECT_TRUE(WaitFor([&] { return events_.drained == 1; }));
  EXPECT_EQ(pty_.Receive(), "FD 0A 11 FF");
}

TEST_F(QtSerialPortTest, ClosingSendsWhatWasHandedOver) {
  Open();
  for (const std::uint8_t byte : {0xF5, 0x00, 0x00, 0x01, 0x01, 0x01, 0xFF}) {
    ASSERT_TRUE(port_.Write(byte).ok());
  }
  port_.Close();
  EXPECT_FALSE(port_.IsOpen());
  EXPECT_EQ(pty_.Receive(), "F5 00 00 01 01 01 FF");
}

TEST_F(QtSerialPortTest, ThresholdArmedOnADrainedOutputTellsAtOnce) {
  Open();
  port_.SetSendThreshold(1);
  EXPECT_EQ(events_.drained, 0);
  EXPECT_TRUE(WaitFor([&] { return events_.drained == 1; }));
}

TEST_F(QtSerialPortTest, NobodyIsToldWithoutAThreshold) {
  Open();
  ASSERT_TRUE(port_.Write(0xE5).ok());
  std::string wire;
  EXPECT_TRUE(WaitFor([&] { return (wire += pty_.Receive()) == "E5"; }));
  EXPECT_FALSE(WaitFor([&] { return events_.drained > 0; }));
}

TEST_F(QtSerialPortTest, WritingToAClosedPortFails) {
  const model::Status status = port_.Write(0xE5);
  EXPECT_EQ(status.Number(), kPortNotOpen);
}

TEST_F(QtSerialPortTest, ASenderWaitsForRoomAndHearsNothingMeanwhile) {
  Open();
  constexpr std::size_t kMessage = 20000;
  std::string wire;
  std::thread farEnd([&] {
    pty_.Send("EB");
    while (wire.size() < 3 * kMessage - 1) {
      const std::string more = pty_.Receive();
      if (!more.empty()) wire += (wire.empty() ? "" : " ") + more;
      std::this_thread::sleep_for(1ms);
    }
  });
  events_.sending = true;
  for (std::size_t i = 0; i < kMessage; ++i) ASSERT_TRUE(port_.Write(0x55).ok());
  events_.sending = false;
  EXPECT_TRUE(events_.received.empty());
  EXPECT_TRUE(WaitFor([&] { return !events_.received.empty(); }));
  EXPECT_EQ(test::Hex(events_.received), "EB");
  port_.SetSendThreshold(1);
  EXPECT_TRUE(WaitFor([&] { return events_.drained == 1; }));
  farEnd.join();
  EXPECT_EQ(wire.size(), 3 * kMessage - 1);
}

// Bytes arrive, and in the same turn of the event loop, before the port looks at them, an event
// makes the console send more than the output holds.  The sender then takes the bytes in itself,
// and when it is the port's turn there is nothing left to be read.  That is no loss of the line.
TEST_F(QtSerialPortTest, BytesThatASenderTookInAreNoLossOfTheLine) {
  // One event source is older than the port and one is younger: one of them has its turn first.
  EventSource older;
  Open();
  EventSource younger;
  constexpr std::size_t kMessage = 2000;
  for (int round = 1; round <= 3; ++round) {
    std::atomic<std::size_t> sent = 0;
    std::thread farEnd;
    const auto send = [&] {
      if (farEnd.joinable()) return;
      farEnd = std::thread([&] {
        const auto deadline = std::chrono::steady_clock::now() + 5s;
        while (sent < kMessage && std::chrono::steady_clock::now() < deadline) {
          sent += (pty_.Receive().size() + 1) / 3;
          std::this_thread::sleep_for(1ms);
        }
      });
      for (std::size_t i = 0; i < kMessage; ++i) ASSERT_TRUE(port_.Write(0x55).ok());
    };
    older.SetHandler(send);
    younger.SetHandler(send);
    events_.received.clear();
    pty_.Send("EB");
    older.Trigger();
    younger.Trigger();
    EXPECT_TRUE(WaitFor([&] { return farEnd.joinable() && !events_.received.empty(); }));
    EXPECT_EQ(test::Hex(events_.received), "EB");
    EXPECT_TRUE(WaitFor([&] { return sent == kMessage; })) << "round " << round;
    if (farEnd.joinable()) farEnd.join();
    EXPECT_EQ(events_.lost, 0);
    ASSERT_TRUE(port_.IsOpen());
  }
}

TEST_F(QtSerialPortTest, ALineThatTakesNothingIsAWriteError) {
  Open();
  const auto start = std::chrono::steady_clock::now();
  model::Status status;
  std::size_t written = 0;
  for (; written < 100000 && status.ok(); ++written) status = port_.Write(0x55);
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_EQ(status.Number(), kPortWriteFailed);
  EXPECT_GE(took, 2s);
  EXPECT_LT(took, 4s);
  EXPECT_TRUE(port_.IsOpen());

  // The next command is told at once, and works when the line takes bytes again.
  const auto again = std::chrono::steady_clock::now();
  EXPECT_EQ(port_.Write(0x55).Number(), kPortWriteFailed);
  EXPECT_LT(std::chrono::steady_clock::now() - again, 1s);
  EXPECT_TRUE(WaitFor([&] {
    pty_.Receive();
    return port_.Write(0x55).ok();
  }));
}

TEST_F(QtSerialPortTest, ALineThatTakesBytesAgainTellsWhenItHasDrained) {
  Open();
  while (port_.Write(0x55).ok()) continue;
  port_.SetSendThreshold(1);
  Sleep(50);
  EXPECT_EQ(events_.drained, 0);
  EXPECT_TRUE(WaitFor([&] {
    pty_.Receive();
    return events_.drained == 1;
  }));
}

TEST_F(QtSerialPortTest, AVanishingDeviceIsToldOnceAndCostsNothing) {
  Open();
  pty_.Close();
  EXPECT_TRUE(WaitFor([&] { return events_.lost == 1; }));
  EXPECT_FALSE(port_.IsOpen());
  const std::clock_t before = std::clock();
  Sleep(1000);
  EXPECT_EQ(events_.lost, 1);
  const double cpuSeconds = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
  EXPECT_LT(cpuSeconds, 0.1);
}

TEST_F(QtSerialPortTest, ADeviceThatVanishesUnderASenderEndsIt) {
  Open();
  std::thread farEnd([&] {
    std::this_thread::sleep_for(50ms);
    pty_.Close();
  });
  events_.sending = true;
  model::Status status;
  for (int i = 0; i < 100000 && status.ok(); ++i) status = port_.Write(0x55);
  events_.sending = false;
  farEnd.join();
  EXPECT_EQ(status.Number(), kPortWriteFailed);
  EXPECT_FALSE(port_.IsOpen());
  EXPECT_TRUE(WaitFor([&] { return events_.lost == 1; }));
}

TEST_F(QtSerialPortTest, OpensTheNewDeviceAfterALoss) {
  Open();
  pty_.Close();
  ASSERT_TRUE(WaitFor([&] { return events_.lost == 1; }));
  EXPECT_FALSE(port_.Open(1).ok());
  const test::Pty back;
  device_ = back.Device();
  ASSERT_TRUE(port_.Open(1).ok());
  back.Send("EB");
  EXPECT_TRUE(WaitFor([&] { return events_.received == Bytes{0xEB}; }));
}

}  // namespace
}  // namespace switcher
