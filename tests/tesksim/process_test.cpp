// SPDX-License-Identifier: MIT
//
// The real program on a real pseudo terminal, seen from the console's end of the line.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <utility>

#include "tests/support/hex.h"
#include "tests/support/pty.h"
#include "tests/support/simulator_process.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;
using test::SimulatorProcess;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr seconds kPatience{60};

// A console's serial port: opens the terminal with the settings of the line.
class ConsolePort {
 public:
  explicit ConsolePort(const std::string& device)
      : fd_(open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
    termios settings{};
    if (fd_ < 0 || tcgetattr(fd_, &settings) != 0) return;
    cfmakeraw(&settings);
    cfsetspeed(&settings, B57600);
    tcsetattr(fd_, TCSANOW, &settings);
  }
  ~ConsolePort() {
    if (fd_ >= 0) close(fd_);
  }
  ConsolePort(const ConsolePort&) = delete;
  ConsolePort& operator=(const ConsolePort&) = delete;

  bool IsOpen() const { return fd_ >= 0; }

  void Send(std::string_view hex) {
    const auto bytes = test::FromHex(hex);
    ASSERT_EQ(write(fd_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }

  // Waits until `count` bytes have come and returns them; fewer when they do not come in time.
  std::string Receive(std::size_t count, milliseconds within = kPatience) {
    const auto deadline = steady_clock::now() + within;
    std::vector<std::uint8_t> received;
    std::array<std::uint8_t, 4096> block{};
    while (received.size() < count && WaitReadable(deadline)) {
      const ssize_t n = read(fd_, block.data(), std::min(block.size(), count - received.size()));
      if (n > 0) received.insert(received.end(), block.begin(), block.begin() + n);
      if (n == 0 || (n < 0 && errno != EAGAIN)) break;
    }
    return test::Hex(received);
  }

  // Waits until the device has vanished.
  bool WaitUntilGone() {
    const auto deadline = steady_clock::now() + kPatience;
    while (WaitReadable(deadline)) {
      std::uint8_t byte = 0;
      const ssize_t n = read(fd_, &byte, 1);
      if (n == 0 || (n < 0 && errno == EIO)) return true;
    }
    return false;
  }

 private:
  bool WaitReadable(steady_clock::time_point deadline) const {
    const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
    pollfd state{.fd = fd_, .events = POLLIN, .revents = 0};
    return left.count() > 0 && poll(&state, 1, static_cast<int>(left.count())) > 0;
  }

  int fd_;
};

constexpr char kRow6From8[] = "F3 05 00 00 00 00 01 00 00 05 FF";

TEST(Process, AnswersPollsAndTakes) {
  SimulatorProcess simulator({"--channels", "16", "--log"});
  ASSERT_THAT(simulator.Terminal(), StartsWith("/dev/"));
  ConsolePort port(simulator.Terminal());
  ASSERT_TRUE(port.IsOpen());

  port.Send("E5");
  const std::string map = port.Receive(16 * 11 + 19);
  EXPECT_THAT(map, StartsWith("F3 00 00 00 00 00 00 00 00 00 FF F3 01 00 00"));
  EXPECT_THAT(map, EndsWith("F3 0F 00 00 00 00 00 00 00 0F FF "
                            "E2 40 40 40 40 40 40 40 40 40 40 40 40 40 40 40 40 00 FF"));
  EXPECT_TRUE(simulator.WaitForLine("rx poll map").has_value());
  EXPECT_TRUE(simulator.WaitForLine("tx gains").has_value());

  port.Send("E4");
  const std::string tally = port.Receive(131);
  EXPECT_THAT(tally, StartsWith("E4 00 00 "));
  EXPECT_EQ(tally.size(), 131u * 3 - 1);

  port.Send("ED");
  EXPECT_EQ(port.Receive(1), "EB");

  port.Send("FD 03 00 07 00 05 00 0F FF");
  EXPECT_EQ(port.Receive(11), kRow6From8);
  EXPECT_TRUE(simulator.WaitForLine("rx take output 6 source 8 action 3").has_value());
  EXPECT_TRUE(simulator.WaitForLine("tx row output 6 status 0 sources 8").has_value());
  EXPECT_EQ(simulator.Command("row 6"), "ok output 6 status 0 sources 8");
}

TEST(Process, DoesNotEchoBeforeTheConsoleHasSetUpItsPort) {
  SimulatorProcess simulator({"--channels", "8"});
  const int fd = open(simulator.Terminal().c_str(), O_RDWR | O_NOCTTY);
  ASSERT_GE(fd, 0);
  termios settings{};
  ASSERT_EQ(tcgetattr(fd, &settings), 0);
  close(fd);
  EXPECT_EQ(settings.c_lflag & static_cast<tcflag_t>(ECHO | ICANON), 0u);
  EXPECT_EQ(settings.c_oflag & static_cast<tcflag_t>(OPOST), 0u);
}

TEST(Process, CommandsSendToTheConsole) {
  SimulatorProcess simulator({"--channels", "16"});
  ConsolePort port(simulator.Terminal());
  port.Send("ED");
  ASSERT_EQ(port.Receive(1), "EB");  // the simulator has noticed its peer
  EXPECT_EQ(simulator.Command("make 6 8"), "ok output 6 status 0 sources 8");
  EXPECT_EQ(simulator.Command("send-row 6"), "ok");
  EXPECT_EQ(port.Receive(11), kRow6From8);
  EXPECT_EQ(simulator.Command("raw E0 FF"), "ok bytes 2");
  EXPECT_EQ(port.Receive(2), "E0 FF");
}

TEST(Process, UnplugAndReplug) {
  test::TemporaryFolder folder;
  const fs::path link = folder / "com1";
  SimulatorProcess simulator({"--channels", "16", "--link", link.string()});
  EXPECT_EQ(fs::read_symlink(link), simulator.Terminal());
  ConsolePort port(link.string());
  ASSERT_TRUE(port.IsOpen());
  port.Send("ED");
  ASSERT_EQ(port.Receive(1), "EB");
  EXPECT_EQ(simulator.Command("make 6 8"), "ok output 6 status 0 sources 8");

  EXPECT_EQ(simulator.Command("unplug"), "ok");
  EXPECT_TRUE(port.WaitUntilGone());
  EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
  EXPECT_FALSE(ConsolePort(link.string()).IsOpen());
  EXPECT_EQ(simulator.Command("unplug"), "error unplugged already");

  const std::string answer = simulator.Command("replug");
  EXPECT_EQ(answer, "ok connect to " + simulator.Terminal() + ", also as " + link.string());
  EXPECT_EQ(fs::read_symlink(link), simulator.Terminal());
  EXPECT_EQ(simulator.Command("replug"), "error plugged in already");

  // It kept its state; only the line was gone.
  ConsolePort again(link.string());
  ASSERT_TRUE(again.IsOpen());
  again.Send("E5");
  EXPECT_THAT(again.Receive(16 * 11 + 19), HasSubstr(kRow6From8));

  EXPECT_EQ(simulator.Command("quit"), "ok");
  EXPECT_EQ(simulator.WaitForEnd(), 0);
  EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
}

TEST(Process, AConsoleThatComesBackFindsNothingOfWhatWasSentBefore) {
  SimulatorProcess simulator({"--channels", "256", "--log"});
  {
    ConsolePort port(simulator.Terminal());
    ASSERT_TRUE(simulator.WaitForLine("terminal opened").has_value());
    port.Send("E5");
    ASSERT_TRUE(simulator.WaitForLine("tx row output 20 ").has_value());  // 1.3 kB wait unread
  }
  ASSERT_TRUE(simulator.WaitForLine("terminal closed").has_value());
  ConsolePort port(simulator.Terminal());
  ASSERT_TRUE(simulator.WaitForLine("terminal opened").has_value());
  port.Send("ED");
  EXPECT_EQ(port.Receive(1), "EB");
  EXPECT_EQ(port.Receive(1, milliseconds(100)), "");  // the rest of the map went with the line
}

TEST(Process, HearsASenderThatOpensWritesAndIsGone) {
  SimulatorProcess simulator({"--channels", "16", "--log"});
  ConsolePort(simulator.Terminal()).Send("FD 03 00 07 00 05 00 0F FF");
  EXPECT_TRUE(simulator.WaitForLine("rx take output 6 source 8 action 3").has_value());
}

TEST(Process, AMapOf256ChannelsComesAtThePaceOfTheLine) {
  SimulatorProcess simulator({"--channels", "256"});
  ConsolePort port(simulator.Terminal());
  port.Send("ED");
  ASSERT_EQ(port.Receive(1), "EB");

  constexpr std::size_t kBytes = 256 * 71 + 259;
  const auto start = steady_clock::now();
  port.Send("E5");
  EXPECT_EQ(port.Receive(kBytes).size(), kBytes * 3 - 1);
  const double took = std::chrono::duration<double>(steady_clock::now() - start).count();
  const double onTheLine = static_cast<double>(kBytes + 1) / 5760.0;
  RecordProperty("percent_of_line_time", std::to_string(took / onTheLine * 100));
  EXPECT_GE(took, onTheLine * 0.999);
  EXPECT_LE(took, onTheLine * 1.2);  // a busy machine may hold it up; the line may not be beaten
}

TEST(Process, ARetrievalComesWholeAtThePaceOfTheLine) {
  SimulatorProcess simulator({"--channels", "64", "--stations", "16"});
  ConsolePort port(simulator.Terminal());
  port.Send("ED");
  ASSERT_EQ(port.Receive(1), "EB");

  // Labels, inhibits and relays of 64 outputs, optos, buttons of 16 stations.
  constexpr std::size_t kBytes = 2 * 1028 + 64 * (21 + 21) + 1411 + 16 * 261;
  const auto start = steady_clock::now();
  port.Send("E7");
  const std::string received = port.Receive(kBytes);
  const double took = std::chrono::duration<double>(steady_clock::now() - start).count();
  EXPECT_EQ(received.size(), kBytes * 3 - 1);
  EXPECT_THAT(received, StartsWith("F9 14 53 74 61 2E 20 30 30 31 53 74 61 2E 20 30 30 32 "));
  // The last checksum: the station 15, the first stations 1 to 32 and two groups of 255.
  EXPECT_THAT(received, HasSubstr(" FF FB 0F 00 00 00 01 00 00 00 02 00 "));
  EXPECT_THAT(received, EndsWith(" 00 00 00 00 00 00 00 00 1D FF"));
  const double onTheLine = static_cast<double>(kBytes + 1) / 5760.0;
  RecordProperty("percent_of_line_time", std::to_string(took / onTheLine * 100));
  EXPECT_GE(took, onTheLine * 0.999);
  EXPECT_LE(took, onTheLine * 1.2);
  EXPECT_EQ(port.Receive(1, milliseconds(100)), "");  // nothing more
}

TEST(Process, ASpoiledMessageOfARetrieval) {
  SimulatorProcess simulator({"--channels", "8", "--stations", "1", "--labels", "1", "--baud", "0",
                              "--spoil", "inhibits:1:checksum"});
  EXPECT_EQ(simulator.Command("spoil label-texts 10 drop"),
            "ok inhibits 1 checksum, label-texts 10 drop");
  ConsolePort port(simulator.Terminal());
  port.Send("E7");
  EXPECT_EQ(port.Receive(12 + 7), "F9 14 53 74 61 2E 20 30 30 31 1B FF F5 00 00 01 00 00 FF");
}

TEST(Process, KeepsItsStateAcrossRuns) {
  test::TemporaryFolder folder;
  const std::string kept = (folder / "kept").string();
  {
    SimulatorProcess simulator({"--channels", "8", "--state", kept});
    EXPECT_FALSE(fs::exists(kept));
    EXPECT_EQ(simulator.Command("label out 1 MIC"), "ok out 1 \"MIC     \"");
    // A table from the console, too: output 2 is inhibited from 1.  Both are in the file before
    // the program ends.
    ConsolePort(simulator.Terminal()).Send("F5 01 00 01 00 02 FF");
    const auto deadline = steady_clock::now() + kPatience;
    while (test::ReadFile(kept).find("\noutput 2 inhibits 1\n") == std::string::npos) {
      ASSERT_LT(steady_clock::now(), deadline);
      usleep(20'000);
    }
    EXPECT_THAT(test::ReadFile(kept), HasSubstr("\nout 1 \"MIC     \"\n"));
    EXPECT_EQ(simulator.Command("relay 8 64 on"), "ok output 8 relays 64");
    EXPECT_EQ(simulator.Command("save"), "ok");
    EXPECT_THAT(test::ReadFile(kept), HasSubstr("\noutput 8 relays 64\n"));
    EXPECT_EQ(simulator.Command("make 6 8"), "ok output 6 status 0 sources 8");
    EXPECT_EQ(simulator.Command("quit"), "ok");  // within a second of the change
    EXPECT_EQ(simulator.WaitForEnd(), 0);
  }
  SimulatorProcess again({"--state", kept});
  EXPECT_EQ(again.Command("label out 1"), "ok out 1 \"MIC     \"");
  EXPECT_EQ(again.Command("inhibits 2"), "ok output 2 inhibits 1");
  EXPECT_EQ(again.Command("relays 8"), "ok output 8 relays 64");
  EXPECT_EQ(again.Command("row 6"), "ok output 6 status 0 sources 8");
  EXPECT_EQ(again.Command("map"), "ok channels 8 crosspoints 1 priority 0 outputs-in-use 1");
}

TEST(Process, ASignalKeepsTheStateToo) {
  test::TemporaryFolder folder;
  const std::string kept = (folder / "kept").string();
  SimulatorProcess simulator({"--channels", "8", "--state", kept});
  EXPECT_EQ(simulator.Command("gain 8 127"), "ok input 8 step 127");
  kill(simulator.Id(), SIGTERM);
  EXPECT_EQ(simulator.WaitForEnd(), 0);
  EXPECT_THAT(test::ReadFile(kept), HasSubstr("\ninput 8 gain 127\n"));
}

TEST(Process, AStateFileThatIsNoneEndsWithOneAndStays) {
  test::TemporaryFolder folder;
  const std::string kept = (folder / "kept").string();
  test::WriteFile(kept, "tesksim state 1\nsystem");
  EXPECT_EQ(SimulatorProcess({"--state", kept}).WaitForEnd(), 1);
  EXPECT_EQ(test::ReadFile(kept), "tesksim state 1\nsystem");
  EXPECT_EQ(SimulatorProcess({"--database", kept}).WaitForEnd(), 1);
  EXPECT_EQ(test::ReadFile(kept), "tesksim state 1\nsystem");
}

TEST(Process, AStateThatCannotBeKeptEndsWithOne) {
  test::TemporaryFolder folder;
  SimulatorProcess simulator({"--state", (folder / "nowhere" / "kept").string()});
  EXPECT_THAT(simulator.Command("save"), StartsWith("error cannot write "));
  EXPECT_EQ(simulator.Command("save " + (folder / "copy").string()), "ok");
  EXPECT_THAT(test::ReadFile(folder / "copy"), EndsWith("\nend\n"));
  EXPECT_EQ(simulator.Command("quit"), "ok");
  EXPECT_EQ(simulator.WaitForEnd(), 1);
}

TEST(Process, WhatItReadsIsPacedToo) {
  SimulatorProcess simulator({"--channels", "16", "--log"});
  ConsolePort port(simulator.Terminal());
  port.Send("ED");
  ASSERT_EQ(port.Receive(1), "EB");
  ASSERT_TRUE(simulator.WaitForLine("keep-alive").has_value());

  std::string burst;  // 2880 bytes: half a second of the line, written at once
  for (int i = 0; i < 320; ++i) burst += "FD 02 00 07 00 05 00 0F FF";  // wrong checksum
  const auto start = steady_clock::now();
  port.Send(burst);
  port.Send("ED");
  ASSERT_TRUE(simulator.WaitForLine("keep-alive").has_value());
  const double took = std::chrono::duration<double>(steady_clock::now() - start).count();
  EXPECT_GE(took, 2881 / 5760.0 * 0.999);
  EXPECT_LE(took, 2881 / 5760.0 + 2.0);
}

TEST(Process, UsesASerialDevice) {
  test::Pty line;  // stands for the device and its far end
  SimulatorProcess simulator({"--channels", "16", "--device", line.Device()});
  EXPECT_EQ(simulator.Terminal(), line.Device());
  line.Send("FD 03 00 07 00 05 00 0F FF");
  std::string received;
  const auto deadline = steady_clock::now() + kPatience;
  while (received.size() < 11 * 3 - 1 && steady_clock::now() < deadline) {
    pollfd state{.fd = line.Master(), .events = POLLIN, .revents = 0};
    poll(&state, 1, 100);
    const std::string more = line.Receive();
    if (!more.empty()) received += (received.empty() ? "" : " ") + more;
  }
  EXPECT_EQ(received, kRow6From8);

  // The adapter is pulled: the program stays and says so when asked to plug in again.
  line.Close();
  std::string answer;
  while (!answer.starts_with("error cannot use") && steady_clock::now() < deadline) {
    answer = simulator.Command("replug");
  }
  EXPECT_THAT(answer, StartsWith("error cannot use " + line.Device()));
  EXPECT_EQ(simulator.Command("quit"), "ok");
  EXPECT_EQ(simulator.WaitForEnd(), 0);
}

TEST(Process, SignalsEndItCleanly) {
  for (const int signal : {SIGINT, SIGTERM}) {
    SCOPED_TRACE(signal);
    test::TemporaryFolder folder;
    const fs::path link = folder / "com1";
    SimulatorProcess simulator({"--link", link.string()});
    ASSERT_TRUE(fs::is_symlink(link));
    kill(simulator.Id(), signal);
    EXPECT_EQ(simulator.WaitForEnd(), 0);
    EXPECT_FALSE(fs::is_symlink(link));
  }
}

TEST(Process, TheEndOfTheInputEndsNothing) {
  SimulatorProcess simulator({"--channels", "8"});
  simulator.CloseInput();
  ConsolePort port(simulator.Terminal());
  port.Send("ED");
  EXPECT_EQ(port.Receive(1), "EB");
  EXPECT_EQ(simulator.WaitForEnd(milliseconds(0)), std::nullopt);
}

TEST(Process, AWrongCommandLineEndsWithTwo) {
  SimulatorProcess simulator({"--channels", "7"});
  EXPECT_EQ(simulator.Terminal(), "");
  EXPECT_EQ(simulator.WaitForEnd(), 2);
}

TEST(Process, ATerminalThatCannotBeHadEndsWithOne) {
  EXPECT_EQ(SimulatorProcess({"--device", "/nowhere/tty"}).WaitForEnd(), 1);
  test::TemporaryFolder folder;
  test::WriteFile(folder / "com1", "precious");
  EXPECT_EQ(SimulatorProcess({"--link", (folder / "com1").string()}).WaitForEnd(), 1);
  EXPECT_EQ(test::ReadFile(folder / "com1"), "precious");
}

TEST(Process, HelpEndsWithZero) { EXPECT_EQ(SimulatorProcess({"--help"}).WaitForEnd(), 0); }

}  // namespace
