// SPDX-License-Identifier: MIT
//
// The open gateway between sockets and a line that cost nothing.
//
//   row to 1, 20    a row reported, to the last consumer's `modified` in its socket
//   whole map       GetDirectory of the matrix of 256 channels with three sources a row, to its
//                   last byte in the socket
//   too many values the longest message of the smallest values, which is refused, to the answer of
//                   what comes behind it
//   longest turn    how long the event loop is held at most by a message of as many questions, or
//                   takes, as are accepted, by takes of 20 consumers that wait for the line and
//                   then stand, and by news of 8,192 inhibits for each of 20 consumers

#include <algorithm>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "bench/suite.h"
#include "gateway/ember/provider.h"
#include "stations/record.h"
#include "tests/gateway/ember/commands.h"
#include "tests/gateway/ember/conversation.h"
#include "tests/gateway/ember/long_messages.h"
#include "tests/support/fake_client_socket.h"
#include "tests/support/fake_pause_timer.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/hex.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/small_database.h"

namespace {

constexpr int kChannels = 256;

// Subscribe, to the inhibits of the first targets.
gateway::Bytes InhibitsSubscribed(int targets) {
  gateway::Bytes frames;
  for (int target = 0; target < targets; ++target) {
    std::vector<gateway::Bytes> elements;
    for (int source = 0; source < kChannels; ++source) {
      elements.push_back(test::Commanded(9, ember::InhibitedPath(target, source), 30));
    }
    const gateway::Bytes row = ember::Packets(ember::GlowMessage(elements));
    frames.insert(frames.end(), row.begin(), row.end());
  }
  return frames;
}

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
      database.AddStation(output, {{"Inhibits", std::string(kChannels, '0')}});
    }
    (void)port.Open(1);
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
  test::SmallDatabase database;
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
                            .database = [this] { return database.Files().Database(); },
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

void RefusedMessage(benchmark::State& state) {
  System system(1);
  test::FakePeer& peer = *system.peers[0];
  const gateway::Bytes message = ember::Packets(test::TooManyValues());
  for (auto _ : state) {
    peer.written.clear();
    peer.Send(message);
    peer.Send(test::kRootAsked);
    system.workTimer.ElapseAll();
    if (peer.written.empty()) state.SkipWithError("it was not answered");
  }
}

// What this process has worked, so that others on the machine change nothing.
double WorkedMilliseconds() { return static_cast<double>(std::clock()) * 1000 / CLOCKS_PER_SEC; }

template <typename Turn>
double TimeOf(Turn turn) {
  const double before = WorkedMilliseconds();
  turn();
  return WorkedMilliseconds() - before;
}

// The longest turn of the event loop from `first` on.
template <typename First>
double LongestTurn(test::FakePauseTimer& timer, First first) {
  double longest = TimeOf(first);
  while (timer.IsRunning()) {
    longest = std::max(longest, TimeOf([&] { timer.Elapse(); }));
  }
  return longest;
}

constexpr double kHeldMilliseconds = 10;

// What one consumer may send at once that is read and answered.
void MeasureLongest(bench::Figures& figures, const std::string& what, const ember::Bytes& message,
                    std::size_t requests, std::size_t answerBytes) {
  const std::string name = "open gateway: " + what + ", longest turn";
  const auto parsed = ember::ParseGlow(message);
  std::size_t count = 0;
  for (const ember::Request& request : parsed.value_or(std::vector<ember::Request>())) {
    count += std::max<std::size_t>(request.connections.size(), 1);
  }
  if (count != requests) return figures.AddMissing(name, "the message is not accepted");
  const gateway::Bytes frames = ember::Packets(message);
  std::vector<double> longest;
  for (int round = 0; round < 5; ++round) {
    System system(1);
    test::FakePeer& peer = *system.peers[0];
    peer.written.clear();
    longest.push_back(LongestTurn(system.workTimer, [&] { peer.Send(frames); }));
    if (peer.written.size() < requests * answerBytes) {
      return figures.AddMissing(name, "not all of it was answered");
    }
  }
  std::ranges::sort(longest);
  figures.Add({.what = name, .value = longest[2], .unit = "ms", .limit = kHeldMilliseconds});
}

// As many takes as may wait are there while the line has no room, and are all as the row is then.
void MeasureStanding(bench::Figures& figures) {
  constexpr int kConsumers = 20;
  constexpr int kOutput = 1;
  constexpr int kInput = 5;
  constexpr std::size_t kTakes = ember::Takes::kMostOpen;
  const std::string name = "open gateway: 5120 takes that turn out to stand, longest turn";
  System system(kConsumers);
  system.port.sendsAtOnce = false;
  system.port.unsent = switcher::LineShare::kMostBehind;
  const std::vector<ember::Connection> takes(kTakes,
                                             {.target = kOutput - 1, .sources = {kInput - 1}});
  const std::vector<gateway::Bytes> elements{ember::MatrixConnections({1, 2}, takes)};
  const gateway::Bytes frames = ember::Packets(ember::GlowMessage(elements));
  for (const auto& peer : system.peers) {
    peer->Send(frames);
    system.workTimer.ElapseAll();
    peer->written.clear();
  }
  system.port.unsent = 0;
  for (int input = 1; input <= kChannels; ++input) {
    system.model.CrosspointMap.At(kOutput, input) = input == kInput ? 1 : 0;
  }
  const double longest =
      LongestTurn(system.takeTimer, [&] { system.provider.CrosspointRowChanged(kOutput, 0); });
  for (const auto& peer : system.peers) {
    // A row is told in more than thirty bytes.
    if (peer->written.size() < 30 * kTakes) {
      return figures.AddMissing(name, "not all were answered");
    }
  }
  if (!system.port.TakeWritten().empty()) return figures.AddMissing(name, "one was sent");
  figures.Add({.what = name, .value = longest, .unit = "ms", .limit = kHeldMilliseconds});
}

// All inhibits that twenty consumers have news of change at once.
void MeasureNews(bench::Figures& figures) {
  constexpr int kRows = static_cast<int>(ember::News::kMostSubscriptions) / kChannels;
  const std::string name = "open gateway: 8192 inhibits changed, to 20 consumers, longest turn";
  System system(20);
  const gateway::Bytes subscribed = InhibitsSubscribed(kRows);
  for (const auto& peer : system.peers) {
    peer->Send(subscribed);
    system.workTimer.ElapseAll();
  }
  // Nothing is known of inhibits that nobody has asked for.
  system.peers[0]->Send(test::Asked({1, 4, 3, 0, 0}));
  system.workTimer.ElapseAll();
  for (const auto& peer : system.peers) peer->written.clear();
  for (int i = 1; i <= kRows; ++i) {
    system.database.GoTo(i);
    stations::Record record(*system.database.Files().Stations());
    record.Set("Inhibits", std::string(kChannels, '1'));
    if (!record.Commit({system.changes, stations::Origin::Operator}).ok()) {
      return figures.AddMissing(name, "a record was not stored");
    }
  }
  const double longest = LongestTurn(system.newsTimer, [] {});
  for (const auto& peer : system.peers) {
    // Each value is told in more than twenty bytes.
    if (peer->written.size() < std::size_t{20} * kRows * kChannels) {
      return figures.AddMissing(name, "not all were told");
    }
  }
  figures.Add({.what = name, .value = longest, .unit = "ms", .limit = kHeldMilliseconds});
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
  suite.Measure({.what = "open gateway: a message of too many values, which is refused",
                 .run = RefusedMessage,
                 .limit = kHeldMilliseconds});
  suite.Run();
  MeasureLongest(suite.AllFigures(), "the most questions in a message", test::ManyQuestions(),
                 test::kManyQuestions, 66);
  MeasureLongest(suite.AllFigures(), "the most takes in a message",
                 test::ManyConnections(kChannels), test::kManyConnections, 20);
  MeasureStanding(suite.AllFigures());
  MeasureNews(suite.AllFigures());
  return suite.Finish();
}
