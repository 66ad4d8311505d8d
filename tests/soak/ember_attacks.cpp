// SPDX-License-Identifier: MIT
//
// ember_attacks [SECONDS [PATIENCE [ATTACK]]]: the real console with 256 channels on a simulated
// switcher of 57600 baud, its open gateway under one attack after the other, each for SECONDS
// (default 20).  Prints what it measured, and ends with 0 when everybody else was served in time:
//   crowd        20 consumers that have news of all, while rows change; 5 that ask for the whole
//   map
//                and never read; one that sends noise
//   connects     1,000 connections a second from eight addresses, which say nothing
//   endless      frames and messages that do not end, as fast as they go
//   questions    25 consumers ask for the whole map on and on, and read it
//   many values  25 consumers send the longest messages of the smallest values
//   takes        25 consumers take as fast as they can
// In all of them a poll goes out at least every 3 s and the operator's take within 100 ms, another
// consumer's keep-alive request is answered within 500 ms, who looks at the console sees something
// within 50 ms, and its memory grows by 64 MB at most.
// All limits of time are multiplied by PATIENCE, for machines with something else to do.  ATTACK is
// the name of the only one to run.

#include <QCoreApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <deque>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "gateway/ember/glow.h"
#include "gateway/ember/s101.h"
#include "tests/gateway/ember/conversation.h"
#include "tests/soak/house.h"
#include "tests/support/hex.h"
#include "tests/support/programs.h"
#include "tests/support/raw_panel.h"

namespace {

using ember::Bytes;
using soak::Attack;
using soak::Clock;
using soak::kLost;
using soak::Since;
using std::chrono::milliseconds;
using namespace std::chrono_literals;
using Consumer = test::RawPanel;

constexpr int kChannels = 256;

// The sanitizer keeps what was freed.
double MostGrowth() { return test::ProgramsAreSanitized() ? 512 : 64; }

class House : public soak::House {
 public:
  House(Clock::duration time, int patience, int port)
      : soak::House(time, patience,
                    "Softpanel Support=No\r\n\r\n[OPEN GATEWAY]\r\nPort=" + std::to_string(port) +
                        "\r\nTakes=Yes\r\n",
                    kChannels),
        port_(port) {}

  // From one of eight addresses, so that none has too many.
  Consumer Come(int number, int receiveBuffer = 0) const {
    const std::string from = "127.0.0." + std::to_string(2 + number % 8);
    return Consumer(port_, receiveBuffer, from.c_str());
  }

  // What everybody else has of the console while it is attacked.
  bool ServesTheOthers() {
    const double before = Megabytes();
    milliseconds answer{0};
    bool ok = true;
    {
      Consumer other(port_);
      other.Send(test::kRootAsked);  // or it would have to make room
      const Attack asks(250ms, [&] {
        other.Received().clear();
        const auto start = Clock::now();
        other.Send("FE 00 0E 01 01 94 E4 FF");
        while (other.Received().empty() && Since(start) < kLost && other.Poll()) {
          std::this_thread::sleep_for(1ms);
        }
        answer = std::max(answer, other.Received().empty() ? kLost : Since(start));
      });
      ok = Check("who looks at the console waits, longest", LongestLook(), 50ms);
      ok = Check("the operator's take, longest", LongestTake(), 100ms) && ok;
      ok = Check("between two polls of the switcher, longest", LongestSilence(), 3000ms) && ok;
    }
    ok = Check("a keep-alive's answer, longest", answer, 500ms) && ok;
    const double growth = Megabytes() - before;
    const bool isBounded = growth <= MostGrowth();
    std::printf("  %-44s %6.1f MB%s\n", "the console's memory grew by", growth,
                isBounded ? "" : "  FAILED");
    return ok && isBounded;
  }

 private:
  const int port_;
};

Bytes Command(const ember::Path& path, int number) {
  using ember::BerValue;
  const Bytes command =
      BerValue(ember::Application(2), BerValue(ember::Context(0), ember::BerInteger(number)));
  const Bytes children = BerValue(
      ember::Context(2), BerValue(ember::Application(4), BerValue(ember::Context(0), command)));
  const std::vector<Bytes> elements{BerValue(
      ember::Application(10), {BerValue(ember::Context(0), ember::BerOid(path)), children})};
  return ember::Packets(ember::GlowMessage(elements));
}

// GetDirectory of all that has news.
Bytes Everything() {
  Bytes all;
  const auto ask = [&](const ember::Path& path) {
    const Bytes one = Command(path, 32);
    all.insert(all.end(), one.begin(), one.end());
  };
  ask({1, 2});
  ask({1, 3, 1});
  ask({1, 3, 2});
  ask({1, 5});
  ask({1, 6});
  for (int target = 0; target < kChannels; ++target) ask({1, 4, 1, target});
  for (int source = 0; source < 64; ++source) ask({1, 4, 2, source});
  return all;
}

// Reads and forgets; one that was dropped comes again.
void Drain(std::vector<Consumer>& consumers, const std::function<Consumer(int)>& come) {
  for (std::size_t i = 0; i < consumers.size(); ++i) {
    if (!consumers[i].Poll()) consumers[i] = come(static_cast<int>(i));
    consumers[i].Received().clear();
  }
}

bool Crowd(House& house) {
  const Bytes everything = Everything();
  std::vector<Consumer> readers;
  for (int i = 0; i < 20; ++i) {
    readers.push_back(house.Come(i));
    readers.back().Send(everything);
  }
  std::vector<Consumer> mute;
  for (int i = 0; i < 5; ++i) mute.push_back(house.Come(i, 4096));
  Consumer noisy = house.Come(7);
  std::mt19937 random(1);
  int row = 0;
  const Attack crowd(20ms, [&] {
    Drain(readers, [&](int i) { return house.Come(i); });
    for (std::size_t i = 0; i < mute.size(); ++i) {
      if (!mute[i].IsConnected()) mute[i] = house.Come(static_cast<int>(i), 4096);
      for (int k = 0; k < 5; ++k) mute[i].Send(test::kMatrixAsked);
    }
    Bytes noise(4096);
    for (std::uint8_t& byte : noise) byte = static_cast<std::uint8_t>(random());
    if (!noisy.Poll()) noisy = house.Come(7);
    noisy.Send(noise);
    // A consumer takes, and the switcher reports: news for all.
    row = (row + 1) % 100;
    const ember::Connection take{.target = row, .sources = {(row * 7 + row / 50) % kChannels}};
    const std::vector<Bytes> elements{ember::MatrixConnections({1, 2}, std::span(&take, 1))};
    readers[0].Send(ember::Packets(ember::GlowMessage(elements)));
  });
  return house.ServesTheOthers();
}

bool Connects(House& house) {
  std::deque<Consumer> crowd;
  int number = 0;
  const Attack connects(10ms, [&] {
    for (int i = 0; i < 10; ++i) crowd.push_back(house.Come(++number));
    while (crowd.size() > 200) crowd.pop_front();
  });
  return house.ServesTheOthers();
}

bool Endless(House& house) {
  std::vector<Consumer> crowd;
  for (int i = 0; i < 25; ++i) crowd.push_back(house.Come(i));
  const Bytes part(16384, 0x11);
  // A first packet of many, which no last one follows.
  Bytes first = ember::Packets(Bytes(2000, 0x11));
  first.resize(1024 + 14);
  const Attack endless(5ms, [&] {
    Drain(crowd, [&](int i) { return house.Come(i); });
    for (std::size_t i = 0; i < crowd.size(); ++i) {
      if (i % 2 == 0) {
        crowd[i].Send("FE");
        crowd[i].Send(part);
      } else {
        crowd[i].Send(first);
      }
    }
  });
  return house.ServesTheOthers();
}

bool Questions(House& house) {
  std::vector<Consumer> crowd;
  for (int i = 0; i < 25; ++i) crowd.push_back(house.Come(i));
  const Attack questions(2ms, [&] {
    Drain(crowd, [&](int i) { return house.Come(i); });
    for (Consumer& one : crowd) one.Send(test::kMatrixAsked);
  });
  return house.ServesTheOthers();
}

bool ManyValues(House& house) {
  std::vector<Consumer> crowd;
  for (int i = 0; i < 25; ++i) crowd.push_back(house.Come(i));
  Bytes smallest;
  for (int i = 0; i < 130000; ++i) smallest.insert(smallest.end(), {0x05, 0x00});
  const Bytes message = ember::Packets(smallest);
  const Attack values(20ms, [&] {
    Drain(crowd, [&](int i) { return house.Come(i); });
    for (Consumer& one : crowd) one.Send(message);
  });
  return house.ServesTheOthers();
}

bool Takes(House& house) {
  std::vector<Consumer> crowd;
  for (int i = 0; i < 25; ++i) crowd.push_back(house.Come(i));
  int number = 0;
  const Attack takes(5ms, [&] {
    Drain(crowd, [&](int i) { return house.Come(i); });
    for (Consumer& one : crowd) {
      ++number;
      const ember::Connection take{.target = 100 + number % 100, .sources = {number % kChannels}};
      const std::vector<Bytes> elements{ember::MatrixConnections({1, 2}, std::span(&take, 1))};
      one.Send(ember::Packets(ember::GlowMessage(elements)));
    }
  });
  return house.ServesTheOthers();
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const soak::Options options(argc, argv);
  int failures = 0;
  const std::pair<const char*, bool (*)(House&)> attacks[] = {
      {"crowd", Crowd},         {"connects", Connects},      {"endless", Endless},
      {"questions", Questions}, {"many values", ManyValues}, {"takes", Takes},
  };
  for (const auto& [name, attack] : attacks) {
    if (!options.Wants(name)) continue;
    std::printf("%s\n", name);
    std::fflush(stdout);
    House house(options.time, options.patience, soak::FreePort());
    if (!house.IsUp() || !attack(house) || !house.Console().Lives()) {
      std::printf("FAILED: %s\n", name);
      ++failures;
    }
  }
  return failures == 0 ? 0 : 1;
}
