// SPDX-License-Identifier: MIT

#include "tests/soak/hostile_peers.h"

#include <chrono>
#include <random>

#include "tests/support/raw_panel.h"

namespace soak {

namespace {

using test::RawPanel;

constexpr char kIdentify[] = "81 35 35 FF";
constexpr char kRequestAll[] = "F2 00 47 00 00 00 00 00 00 47 FF";

}  // namespace

HostilePeers::HostilePeers(int port) : port_(port) {
  threads_.emplace_back([this] { Noise(true, 1); });
  threads_.emplace_back([this] { Noise(false, 2); });
  threads_.emplace_back([this] { EndlessFrames(); });
  threads_.emplace_back([this] { UnfinishedTakes(); });
  threads_.emplace_back([this] { Flood(); });
  threads_.emplace_back([this] { HalfOpen(); });
  threads_.emplace_back([this] { SlowReader(); });
  threads_.emplace_back([this] { Resets(); });
  threads_.emplace_back([this] { Requests(); });
  threads_.emplace_back([this] { ImpossibleTakes(); });
}

HostilePeers::~HostilePeers() {
  ending_ = true;
  for (std::thread& thread : threads_) thread.join();
}

// False when it is time to end.
bool HostilePeers::Rest(int milliseconds) const {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
  return !ending_;
}

void HostilePeers::Noise(bool identified, unsigned seed) {
  std::mt19937 random(seed);
  while (Rest(500)) {
    RawPanel peer(port_);
    ++connections_;
    if (identified) peer.Send(kIdentify);
    while (peer.Poll() && Rest(5)) {
      std::vector<std::uint8_t> bytes(1 + random() % 50);
      for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
      peer.Send(bytes);
    }
  }
}

void HostilePeers::EndlessFrames() {
  const std::vector<std::uint8_t> part(1024, 0x11);
  while (Rest(500)) {
    RawPanel peer(port_);
    ++connections_;
    peer.Send("81 35 35 FF 80");
    while (peer.Poll() && Rest(2)) peer.Send(part);
  }
}

void HostilePeers::UnfinishedTakes() {
  while (Rest(3000)) {
    RawPanel peer(port_);
    ++connections_;
    peer.Send(kIdentify);
    Rest(500);
    peer.Send("FE 24 00 05 00");
    Rest(500);
  }
}

void HostilePeers::Flood() {
  while (Rest(20)) {
    std::vector<RawPanel> crowd;
    for (int i = 0; i < 4; ++i) crowd.emplace_back(port_);
    connections_ += 4;
  }
}

void HostilePeers::HalfOpen() {
  std::vector<RawPanel> silent;
  for (int i = 0; i < 4; ++i) silent.emplace_back(port_);
  connections_ += 4;
  while (Rest(100)) continue;
}

void HostilePeers::SlowReader() {
  while (Rest(500)) {
    RawPanel peer(port_, 1024);
    ++connections_;
    peer.Send(kIdentify);
    for (int i = 0; i < 600 && Rest(50); ++i) peer.Send(kRequestAll);
  }
}

void HostilePeers::Resets() {
  while (Rest(300)) {
    RawPanel peer(port_);
    ++connections_;
    peer.Send(kIdentify);
    peer.Send(kRequestAll);
    Rest(200);
    peer.Reset();
  }
}

void HostilePeers::Requests() {
  while (Rest(500)) {
    RawPanel peer(port_);
    ++connections_;
    peer.Send(kIdentify);
    while (peer.Poll() && Rest(5)) {
      peer.Send(kRequestAll);
      peer.Send("F5");
      peer.Received().clear();
    }
  }
}

// Destinations 257 and 16384 of 64, and a source likewise: eight bits would make channels of them
// that are there.
void HostilePeers::ImpossibleTakes() {
  while (Rest(500)) {
    RawPanel peer(port_);
    ++connections_;
    peer.Send(kIdentify);
    while (peer.Poll() && Rest(100)) {
      peer.Send("FE 24 00 00 02 07 00 2D FF");
      peer.Send("FE 24 00 7F 7F 07 00 29 FF");
      peer.Send("FE 24 00 28 00 00 02 4E FF");
      peer.Received().clear();
    }
  }
}

}  // namespace soak
