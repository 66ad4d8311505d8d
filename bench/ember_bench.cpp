// SPDX-License-Identifier: MIT
//
// The open gateway between sockets and a line that cost nothing.
//
//   row to 1, 20    a row reported, to the last consumer's `modified` in its socket
//   whole map       GetDirectory of the matrix of 256 channels with three sources a row, to its
//                   last byte in the socket
//   longest message the longest of the smallest values, to the answer of what comes behind it

#include <memory>
#include <string>
#include <vector>

#include "bench/suite.h"
#include "gateway/ember/provider.h"
#include "tests/gateway/ember/conversation.h"
#include "tests/support/fake_client_socket.h"
#include "tests/support/fake_pause_timer.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/hex.h"
#include "tests/support/recording_reporter.h"

namespace {

constexpr int kChannels = 256;

class System {
 public:
  explicit System(int consumers) {
    model.ChannelCount = kChannels;
    model.AllocateMap();
    model.LinkStatus = {1, 1, 0};
    model.XmapComplete = true;
    for (int output = 1; output <= kChannels; ++output) {
      for (const int input : {output, output % kChannels + 1, (output + 99) % kChannels + 1}) {
        model.CrosspointMap.At(output, input) = 1;
      }
      knownMap.CrosspointRowChanged(output, 0);
    }
    for (int i = 0; i < consumers; ++i) {
      peers.push_back(std::make_shared<test::FakePeer>());
      peers.back()->address = "10.0.0." + std::to_string(i);
      provider.Accept(std::make_unique<test::FakeClientSocket>(peers.back()));
      Ask(*peers.back());
    }
  }

  // The whole map.
  std::size_t Ask(test::FakePeer& peer) {
    static const gateway::Bytes asked = test::FromHex(test::kMatrixAsked);
    peer.written.clear();
    peer.Send(asked);
    workTimer.ElapseAll();  // on a busy machine it may be the next one's turn
    return peer.written.size();
  }

  model::SystemModel model;
  stations::Changes changes;
  model::Locks locks;
  test::FakeSerialPort port;
  test::RecordingReporter reporter;
  test::FakePauseTimer takeTimer;
  test::FakePauseTimer newsTimer;
  test::FakePauseTimer secondTimer;
  test::FakePauseTimer workTimer;
  ember::PeerEvents events;
  switcher::LiveCommands commands{{.model = model, .port = port, .reporter = reporter}};
  switcher::KnownMap knownMap{model};
  switcher::LineShare line{port, [] { return std::chrono::milliseconds(500); }};
  std::vector<std::shared_ptr<test::FakePeer>> peers;
  ember::Provider provider{{.model = model,
                            .database = [] { return nullptr; },
                            .changes = changes,
                            .locks = locks,
                            .commands = commands,
                            .knownMap = knownMap,
                            .line = line,
                            .takeTimer = takeTimer,
                            .newsTimer = newsTimer,
                            .secondTimer = secondTimer,
                            .workTimer = workTimer,
                            .now = std::chrono::steady_clock::now,
                            .events = events,
                            .version = "2.12",
                            .mayTake = true,
                            .gainsChanged = [] {}}};
};

void RowToAll(benchmark::State& state) {
  System system(static_cast<int>(state.range(0)));
  int output = 1;
  for (auto _ : state) {
    system.model.CrosspointMap.At(output, 1) ^= 1;
    for (const auto& peer : system.peers) peer->written.clear();
    system.provider.CrosspointRowChanged(output, 0);
    if (system.peers.back()->written.empty()) state.SkipWithError("the last one was not told");
    output = output % kChannels + 1;
  }
}

void WholeMap(benchmark::State& state) {
  System system(1);
  for (auto _ : state) {
    const std::size_t size = system.Ask(*system.peers[0]);
    if (size < 6000) state.SkipWithError("the map is not whole");
    state.counters["bytes"] = static_cast<double>(size);
  }
}

// What holds the event loop longest of all that a consumer may send at once.
void LongestMessage(benchmark::State& state) {
  System system(1);
  test::FakePeer& peer = *system.peers[0];
  gateway::Bytes values;
  for (std::size_t i = 0; i < ember::FrameReader::kLongestMessage / 2; ++i) {
    values.insert(values.end(), {0x05, 0x00});
  }
  const gateway::Bytes message = ember::Packets(values);
  for (auto _ : state) {
    peer.written.clear();
    peer.Send(message);
    peer.Send(test::kRootAsked);
    system.workTimer.ElapseAll();
    if (peer.written.empty()) state.SkipWithError("it was not answered");
  }
}

}  // namespace

int main(int argc, char** argv) {
  bench::Suite suite(&argc, argv);
  for (const int consumers : {1, 20}) {
    suite.Measure({.what = "open gateway: a row reported, to " + std::to_string(consumers) +
                           (consumers == 1 ? " consumer" : " consumers"),
                   .run = RowToAll,
                   .size = consumers,
                   .limit = 2});
  }
  suite.Measure(
      {.what = "open gateway: the whole map of 256 channels", .run = WholeMap, .limit = 10});
  suite.Measure({.what = "open gateway: the longest message of the smallest values",
                 .run = LongestMessage,
                 .limit = 10});
  suite.Run();
  return suite.Finish();
}
