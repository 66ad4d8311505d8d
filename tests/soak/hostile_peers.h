// SPDX-License-Identifier: MIT

#ifndef TESTS_SOAK_HOSTILE_PEERS_H_
#define TESTS_SOAK_HOSTILE_PEERS_H_

#include <atomic>
#include <thread>
#include <vector>

namespace soak {

// Peers that do to the console what they should not, each in a thread of its own, until the
// object goes: noise, frames without an end, connections without number, connections that
// nothing is said on, readers that do not read, resets in the middle of a table, requests
// without a pause, takes of channels that are not there.
class HostilePeers {
 public:
  explicit HostilePeers(int port);
  ~HostilePeers();

  // Connections made so far.
  int Connections() const { return connections_; }

 private:
  void Noise(bool identified, unsigned seed);
  void EndlessFrames();
  void UnfinishedTakes();
  void Flood();
  void HalfOpen();
  void SlowReader();
  void Resets();
  void Requests();
  void ImpossibleTakes();

  bool Rest(int milliseconds) const;

  const int port_;
  std::atomic<bool> ending_ = false;
  std::atomic<int> connections_ = 0;
  std::vector<std::thread> threads_;
};

}  // namespace soak

#endif  // TESTS_SOAK_HOSTILE_PEERS_H_
