// SPDX-License-Identifier: MIT

#ifndef TESTS_GATEWAY_EMBER_PROVIDER_FIXTURE_H_
#define TESTS_GATEWAY_EMBER_PROVIDER_FIXTURE_H_

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "gateway/ember/provider.h"
#include "stations/record.h"
#include "tests/gateway/ember/commands.h"
#include "tests/gateway/ember/conversation.h"
#include "tests/support/fake_client_socket.h"
#include "tests/support/fake_pause_timer.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/hex.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/small_database.h"

namespace ember {

using test::Asked;

// Keeps what happens to consumers, a line each: "1 10.0.0.7 took 6 8 3".
class RecordingPeerEvents : public PeerEvents {
 public:
  void PeerConnected(const PeerName& peer) override { Add(peer, "connected"); }
  void PeerTurnedAway(const std::string& address, TurnedAway why) override {
    lines.push_back(address +
                    (why == TurnedAway::AllTaken ? " turned away" : " turned away, has many"));
  }
  void PeerTook(const PeerName& peer, const switcher::Take& take) override {
    Add(peer, "took " + std::to_string(take.destination) + " " + std::to_string(take.source) + " " +
                  std::to_string(take.action));
  }
  void PeerSetGain(const PeerName& peer, int input, int decibels) override {
    Add(peer, "gain " + std::to_string(input) + " " + std::to_string(decibels));
  }
  void TakeRefused(const PeerName& peer, const Wanted& wanted, Refusal why) override {
    refusals.push_back(why);
    Add(peer, "refused " + std::to_string(wanted.output));
  }
  void TakeStopped(const PeerName& peer, const Wanted& wanted, Refusal why) override {
    refusals.push_back(why);
    Add(peer, "stopped " + std::to_string(wanted.output));
  }
  void NumbersRefused(const PeerName& peer, Wanted::Act /*act*/, int target,
                      const std::vector<int>& /*sources*/) override {
    refusals.push_back(Refusal::NoSuchChannel);
    Add(peer, "no target " + std::to_string(target));
  }
  void ValueRefused(const PeerName& peer, const Path& /*path*/, Refusal why) override {
    refusals.push_back(why);
    Add(peer, "value refused");
  }
  void PeerDropped(const PeerName& peer, PeerDrop why) override {
    drops.push_back(why);
    Add(peer, "dropped");
  }
  void PeerGone(const PeerName& peer) override { Add(peer, "gone"); }

  std::vector<std::string> lines;
  std::vector<Refusal> refusals;
  std::vector<PeerDrop> drops;

 private:
  void Add(const PeerName& peer, const std::string& what) {
    lines.push_back(std::to_string(peer.number) + " " + peer.address + " " + what);
  }
};

// Keeps reports, and lets something happen at each.
class ActingReporter : public test::RecordingReporter {
 public:
  void Show(Icon icon, std::string_view title, std::string_view text) override {
    RecordingReporter::Show(icon, title, text);
    if (atReport) atReport();
  }

  std::function<void()> atReport;
};

// What a connection in a message asks for.
inline constexpr int kAbsoluteOperation = 0;
inline constexpr int kConnectOperation = 1;
inline constexpr int kDisconnectOperation = 2;

// The open gateway of a system of eight channels between fake consumers and a fake line, with the
// link up and the map of the recorded conversation: output 1 has input 3, output 6 inputs 2 and 8;
// output 5 is inhibited from input 5.
class ProviderTest : public testing::Test {
 protected:
  explicit ProviderTest(bool mayTake = true) : mayTake_(mayTake) {
    model_.ChannelCount = 8;
    model_.AllocateMap();
    model_.ResetLevels();
    model_.LinkStatus = {1, 1, 0};
    model_.XmapComplete = true;
    for (int output = 1; output <= 8; ++output) knownMap_.CrosspointRowChanged(output, 0);
    model_.CrosspointMap.At(1, 3) = 1;
    model_.CrosspointMap.At(6, 2) = 1;
    model_.CrosspointMap.At(6, 8) = 1;
    for (int i = 1; i <= 8; ++i) {
      database_.AddStation(i, {{"Label", "CAM " + std::to_string(i)},
                               {"InLabel", "MIC " + std::to_string(i)},
                               {"Inhibits", i == 5 ? "00001000" : "00000000"}});
    }
  }

  void SetUp() override { ASSERT_TRUE(port_.Open(1).ok()); }

  std::shared_ptr<test::FakePeer> Connect(const std::string& address = "10.0.0.7") {
    auto peer = std::make_shared<test::FakePeer>();
    peer->address = address;
    provider_.Accept(std::make_unique<test::FakeClientSocket>(peer));
    return peer;
  }

  // One that has asked for the matrix.
  std::shared_ptr<test::FakePeer> Subscribe() {
    auto peer = Connect();
    peer->Send(test::kMatrixAsked);
    peer->written.clear();
    return peer;
  }

  static Bytes Setting(const Path& path, const GlowValue& value) {
    const std::vector<Bytes> elements{ParameterValue(path, value)};
    return Packets(GlowMessage(elements));
  }

  // A take; what a provider sends has the same shape.
  static Bytes Taking(int operation, int target, const std::vector<int>& sources) {
    const Bytes connection =
        BerValue(Application(16),
                 {BerValue(Context(0), BerInteger(target)), BerValue(Context(1), BerOid(sources)),
                  BerValue(Context(2), BerInteger(operation))});
    const std::vector<Bytes> elements{
        BerValue(Application(17),
                 {BerValue(Context(0), BerOid(Path{1, 2})),
                  BerValue(Context(5), BerValue(kSequence, BerValue(Context(0), connection)))})};
    return Packets(GlowMessage(elements));
  }

  static Bytes Calling(const Path& function, std::optional<int> number,
                       std::initializer_list<Bytes> arguments) {
    Bytes members;
    for (const Bytes& argument : arguments) {
      const Bytes member = BerValue(Context(0), argument);
      members.insert(members.end(), member.begin(), member.end());
    }
    const Bytes invocation =
        BerValue(Application(22), {number ? BerValue(Context(0), BerInteger(*number)) : Bytes(),
                                   BerValue(Context(1), BerValue(kSequence, members))});
    const Bytes command = BerValue(
        Application(2), {BerValue(Context(0), BerInteger(33)), BerValue(Context(2), invocation)});
    const std::vector<Bytes> elements{
        BerValue(Application(20),
                 {BerValue(Context(0), BerOid(function)),
                  BerValue(Context(2), BerValue(Application(4), BerValue(Context(0), command)))})};
    return Packets(GlowMessage(elements));
  }

  // What the provider sends of a row: "3 locked: 5" for target 3 with source 5.
  static std::string RowFrame(Disposition disposition, int target,
                              const std::vector<int>& sources) {
    const Connection row{.target = target, .sources = sources, .disposition = disposition};
    const std::vector<Bytes> elements{MatrixConnections({1, 2}, std::span(&row, 1))};
    return test::Hex(Packets(GlowMessage(elements)));
  }
  static std::string ValueFrame(const Path& path, const GlowValue& value) {
    return test::Hex(Setting(path, value));
  }

  // The switcher reports a row with these inputs.
  void Report(int output, const std::vector<int>& inputs, int status = 0) {
    for (int input = 1; input <= 8; ++input) model_.CrosspointMap.At(output, input) = 0;
    for (const int input : inputs) model_.CrosspointMap.At(output, input) = 1;
    model_.ChannelStatus[output] = static_cast<std::uint8_t>(status);
    knownMap_.CrosspointRowChanged(output, status);
    provider_.CrosspointRowChanged(output, status);
  }

  // The line has room for so many takes.
  void MakeRoom(std::size_t takes) {
    port_.sendsAtOnce = false;
    port_.unsent = switcher::LineShare::kMostBehind - takes * switcher::kTakeLength;
  }

  // Time passes, and what waits for it happens.
  void Pass(std::chrono::milliseconds time) {
    now_ += time;
    takeTimer_.Elapse();
  }

  // Somebody edits a field of a station.
  void Edit(int station, const char* field, const std::string& value) {
    jet::RecordSet& stations = *database_.Files().Stations();
    database_.GoTo(station);
    stations::Record record(stations);
    record.Set(field, value);
    ASSERT_TRUE(record.Commit({changes_, stations::Origin::Operator}).ok());
  }

  const bool mayTake_;
  model::SystemModel model_;
  test::SmallDatabase database_;
  stations::Changes changes_;
  model::Locks locks_;
  test::FakeSerialPort port_;
  ActingReporter reporter_;
  test::FakePauseTimer takeTimer_;
  test::FakePauseTimer newsTimer_;
  test::FakePauseTimer secondTimer_;
  test::FakePauseTimer workTimer_;
  Provider::Time now_{};
  std::chrono::microseconds workTakes_{0};  // from one look at the clock to the next
  int gainsShown_ = 0;
  bool hasDatabase_ = true;
  RecordingPeerEvents events_;
  switcher::LiveCommands commands_{{.model = model_, .port = port_, .reporter = reporter_}};
  switcher::KnownMap knownMap_{model_};
  switcher::LineShare line_{port_, [] { return std::chrono::milliseconds(500); }};
  Provider provider_{
      {.model = model_,
       .database = [this] { return hasDatabase_ ? database_.Files().Database() : nullptr; },
       .changes = changes_,
       .locks = locks_,
       .commands = commands_,
       .knownMap = knownMap_,
       .line = line_,
       .takeTimer = takeTimer_,
       .newsTimer = newsTimer_,
       .secondTimer = secondTimer_,
       .workTimer = workTimer_,
       .now = [this] { return now_ += workTakes_; },
       .events = events_,
       .version = "2.12",
       .mayTake = mayTake_,
       .gainsChanged = [this] { ++gainsShown_; }}};
};

}  // namespace ember

#endif  // TESTS_GATEWAY_EMBER_PROVIDER_FIXTURE_H_
