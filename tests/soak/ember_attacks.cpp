// SPDX-License-Identifier: MIT
//
// ember_attacks [SECONDS [PATIENCE [ATTACK]]]: the real console with 256 channels on a simulated
// switcher of 57600 baud, its open gateway under one attack after the other, each for SECONDS
// (default 20).  Prints what it measured, and ends with 0 when everybody else was served in time:
//
//   crowd        20 consumers have news of all, while rows change; 5 ask for the whole map and
//                never read; one sends noise, one takes
//   connects     1,000 connections a second from eight addresses, which say nothing; at least 300
//                of them the console answers or closes
//   endless      frames and messages that do not end, as fast as they go
//   questions    25 consumers ask for the whole map on and on, and read it
//   many values  25 consumers send the longest messages that there are, on and on: of questions and
//                of takes, which are accepted, and of too many values, which are not
//   takes        25 consumers take as fast as they can
//
// In all of them a poll goes out every second and is late by 0.5 s at most, the operator's take
// goes out within 100 ms, a consumer that is there has its keep-alive answered within 500 ms, one
// that comes has its first answer within 1 s, who looks at the console sees something within 50 ms,
// less the longer of their two waits for a processor, and its memory grows by 64 MB at most,
// counted from the first attack on: what an attack leaves counts in those behind it.  After a
// failure it is counted anew.  Where nobody takes, nothing but the operator's takes is on the line.
//
// All limits of time are multiplied by PATIENCE, and the connections divided, for machines with
// something else to do.  ATTACK is the name of the only one to run.

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <deque>
#include <functional>
#include <random>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "gateway/ember/glow.h"
#include "gateway/ember/s101.h"
#include "tests/gateway/ember/commands.h"
#include "tests/gateway/ember/conversation.h"
#include "tests/gateway/ember/long_messages.h"
#include "tests/soak/house.h"
#include "tests/support/free_port.h"
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
constexpr int kCrowd = 25;
constexpr int kTargets = 50;  // that are taken in one message: below the operator's

constexpr char kKeepAliveAsked[] = "FE 00 0E 01 01 94 E4 FF";

// The sanitizer keeps what was freed.
double MostGrowth() { return test::ProgramsAreSanitized() ? 512 : 64; }

// Until the consumer has an answer to what it sends.
milliseconds TimeToAnswer(Consumer& consumer, const char* asked) {
  (void)consumer.Poll();
  consumer.Received().clear();
  const auto start = Clock::now();
  consumer.Send(asked);
  while (consumer.Poll() && consumer.Received().empty() && Since(start) < kLost) {
    std::this_thread::sleep_for(1ms);
  }
  return consumer.Received().empty() ? kLost : Since(start);
}

enum class Takes { None, OfTheCrowd };

class House : public soak::House {
 public:
  House(Clock::duration time, int patience) : House(time, patience, test::FreePort()) {}

  // From one of eight addresses, so that none has too many.
  Consumer Come(int number, int receiveBuffer = 0) const {
    const std::string from = "127.0.0." + std::to_string(2 + number % 8);
    return Consumer(port_, receiveBuffer, from.c_str());
  }

  // A consumer that has come, again where it was turned away, and has had an answer: who has said
  // nothing would have to make room for others.
  Consumer GetIn() const {
    for (const auto start = Clock::now();; std::this_thread::sleep_for(10ms)) {
      Consumer consumer(port_);
      if (TimeToAnswer(consumer, test::kRootAsked) < kLost || Since(start) >= kLost) {
        return consumer;
      }
    }
  }

  // What everybody else has of the console while it is attacked.
  bool ServesTheOthers(Takes takes) {
    milliseconds answer{0};
    milliseconds entry{0};
    soak::Service service;
    {
      // The crowd may be as many as there is room for.
      Consumer other = GetIn();
      const Attack asks(250ms, [&] {
        answer = std::max(answer, TimeToAnswer(other, kKeepAliveAsked));
        const auto start = Clock::now();
        (void)GetIn();
        entry = std::max(entry, Since(start));
      });
      service = Work();
    }
    bool ok = Check("who looks at the console waits, longest", service.longestLook, 50ms);
    ok = Check("the operator's take, longest", service.longestTake, 100ms) && ok;
    // It goes by the second, however busy the machine is.
    const milliseconds late = std::max(service.longestSilence - 1000ms, 0ms);
    ok = Check("a poll of the switcher is late by, longest", late, 500ms) && ok;
    ok = Check("a keep-alive's answer, longest", answer, 500ms) && ok;
    ok = Check("one who comes has an answer, longest", entry, 1000ms) && ok;
    ok = (takes == Takes::None
              ? CheckCount("takes on the line, not the operator's", service.takesOfOthers, 0, 0)
              : CheckCount("takes of the crowd on the line", service.takesOfOthers, 1)) &&
         ok;
    const bool isBounded = Growth() <= MostGrowth();
    std::printf("  %-44s %6.1f MB%s\n", "the console's memory has grown by", Growth(),
                isBounded ? "" : "  FAILED");
    return ok && isBounded;
  }

 private:
  House(Clock::duration time, int patience, int port)
      : soak::House(time, patience,
                    "Softpanel Support=No\r\n\r\n[OPEN GATEWAY]\r\nPort=" + std::to_string(port) +
                        "\r\nTakes=Yes\r\n",
                    kChannels),
        port_(port) {}

  const int port_;
};

// GetDirectory of all that has news.
Bytes Everything() {
  Bytes all;
  const auto ask = [&](const ember::Path& path) {
    const Bytes one = test::Asked(path);
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

// A take of one of the targets from 100 on: on none of them the operator takes.
Bytes TakeOf(int target, int source) {
  const ember::Connection take{.target = 100 + target % 100, .sources = {source % kChannels}};
  const std::vector<Bytes> elements{ember::MatrixConnections({1, 2}, std::span(&take, 1))};
  return ember::Packets(ember::GlowMessage(elements));
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
  Consumer taker = house.Come(6);
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
    // The switcher reports what one takes: news for all.
    if (!taker.Poll()) taker = house.Come(6);
    taker.Received().clear();
    ++row;
    taker.Send(TakeOf(row, row * 7 + row / 50));
  });
  // It is under way when one of its takes has got through.
  (void)house.Switcher().WaitForLine("rx take output 1", kLost);
  return house.ServesTheOthers(Takes::OfTheCrowd);
}

// Whether the console has answered it or closed it.
bool IsServed(Consumer& consumer) {
  return consumer.IsConnected() && (!consumer.Poll() || !consumer.Received().empty());
}

// As many as the clock says, which do not wait for those that hang.
bool Connects(House& house) {
  constexpr int kPerSecond = 1000;
  constexpr int kLeastPerSecond = 300;
  constexpr int kMostAtOnce = 10;
  std::deque<Consumer> crowd;
  int number = 0;
  int served = 0;  // the system accepts them by itself
  bool ok = false;
  const auto start = Clock::now();
  {
    const Attack connects(1ms, [&] {
      const auto due = static_cast<int>(Since(start).count() * kPerSecond / 1000);
      for (int i = 0; i < kMostAtOnce && number < due; ++i) crowd.push_back(house.Come(++number));
      for (; crowd.size() > 200; crowd.pop_front()) served += IsServed(crowd.front()) ? 1 : 0;
    });
    ok = house.ServesTheOthers(Takes::None);
  }
  for (Consumer& last : crowd) served += IsServed(last) ? 1 : 0;
  const auto perSecond = static_cast<int>(served * 1000LL / Since(start).count());
  return House::CheckCount("connections served a second", perSecond,
                           kLeastPerSecond / house.Patience()) &&
         ok;
}

bool Endless(House& house) {
  std::vector<Consumer> crowd;
  for (int i = 0; i < kCrowd; ++i) crowd.push_back(house.Come(i));
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
  return house.ServesTheOthers(Takes::None);
}

bool Questions(House& house) {
  std::vector<Consumer> crowd;
  for (int i = 0; i < kCrowd; ++i) crowd.push_back(house.Come(i));
  const Attack questions(2ms, [&] {
    Drain(crowd, [&](int i) { return house.Come(i); });
    for (Consumer& one : crowd) one.Send(test::kMatrixAsked);
  });
  return house.ServesTheOthers(Takes::None);
}

// A consumer that sends a message on and on, as fast as the network takes it, and counts the bytes
// that it is answered.
class Stream {
 public:
  // `answered` must outlive the object.
  Stream(std::function<Consumer()> come, const Bytes& message, std::atomic<int>& answered)
      : come_(std::move(come)),
        consumer_(come_()),
        frames_(ember::Packets(message)),
        answered_(&answered) {}

  void GoOn() {
    if (!consumer_.Poll()) {
      consumer_ = come_();
      at_ = 0;
    }
    *answered_ += static_cast<int>(consumer_.Received().size());
    consumer_.Received().clear();
    while (const std::size_t sent = consumer_.SendSome(std::span(frames_).subspan(at_))) {
      at_ = (at_ + sent) % frames_.size();
    }
  }

 private:
  std::function<Consumer()> come_;
  Consumer consumer_;
  Bytes frames_;
  std::size_t at_ = 0;
  std::atomic<int>* answered_;
};

bool ManyValues(House& house) {
  const Bytes messages[] = {test::ManyQuestions(), test::ManyConnections(kTargets),
                            test::TooManyValues()};
  std::array<std::atomic<int>, 3> answered{};
  std::vector<Stream> crowd;
  for (int i = 0; i < kCrowd; ++i) {
    const auto kind = static_cast<std::size_t>(i % 3);
    crowd.emplace_back([&house, i] { return house.Come(i); }, messages[kind], answered[kind]);
  }
  const Attack values(5ms, [&] {
    for (Stream& one : crowd) one.GoOn();
  });
  // It is under way when the first of them have come whole.
  test::ConsoleProcess::WaitFor([&] { return answered[0] > 0 && answered[1] > 0; }, kLost);
  bool ok = house.ServesTheOthers(Takes::OfTheCrowd);
  ok = House::CheckCount("bytes that questions were answered", answered[0], 1) && ok;
  ok = House::CheckCount("bytes that takes were answered", answered[1], 1) && ok;
  return House::CheckCount("bytes that refused messages were answered", answered[2], 0, 0) && ok;
}

bool TakesOfAll(House& house) {
  std::vector<Consumer> crowd;
  for (int i = 0; i < kCrowd; ++i) crowd.push_back(house.Come(i));
  int number = 0;
  const Attack takes(5ms, [&] {
    Drain(crowd, [&](int i) { return house.Come(i); });
    for (Consumer& one : crowd) {
      ++number;
      one.Send(TakeOf(number, number));
    }
  });
  (void)house.Switcher().WaitForLine("rx take output 1", kLost);
  return house.ServesTheOthers(Takes::OfTheCrowd);
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  // Those that take come last: what they leave on its way is not taken for that of others.
  return soak::RunAttacks<House>({argc, argv}, {{"connects", Connects},
                                                {"endless", Endless},
                                                {"questions", Questions},
                                                {"crowd", Crowd},
                                                {"takes", TakesOfAll},
                                                {"many values", ManyValues}});
}
