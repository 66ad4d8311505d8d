// SPDX-License-Identifier: MIT
//
// Takes arbitrary bytes for what two consumers of the open gateway send.  The first byte says how
// large the system is, whether the link is up and whether they may take; then come steps: a byte
// that names a consumer and what happens, for data followed by a length and so many bytes, which
// are sent as they are or, with a good frame around them, as a message.  The upper half of a step's
// byte says how: which state of the link and the map, with how much room on the line, with which
// labels and inhibits.  Whatever comes, what goes to a consumer is whole frames of readable
// messages, nothing waits without bounds, and what goes to the switcher is takes of channels that
// are there and gains: nothing that makes an inhibited crosspoint, and nothing from who may not
// take.

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "gateway/ember/provider.h"
#include "switcher/wire/messages/gain.h"
#include "switcher/wire/messages/take.h"
#include "tests/support/fake_client_socket.h"
#include "tests/support/fake_pause_timer.h"
#include "tests/support/small_database.h"

namespace {

using ember::Bytes;

void Require(bool condition) {
  if (!condition) std::abort();
}

// The records before and after somebody has edited them; the same for all inputs, as consumers only
// read them.
jet::Database* Database(bool isEdited) {
  const auto make = [](const char* label, const std::string& inhibits) {
    auto made = std::make_unique<test::SmallDatabase>();
    for (int station = 1; station <= model::kMaxChannelCount; ++station) {
      made->AddStation(station, {{"Label", label}, {"InLabel", "In"}, {"Inhibits", inhibits}});
    }
    return made;
  };
  static const auto before = make("Sta", "0101");
  static const auto after = make("CAM", std::string(200, '1') + "0");
  return (isEdited ? *after : *before).Files().Database();
}

class NullReporter : public model::ErrorReporter {
 public:
  void Show(Icon, std::string_view, std::string_view text) override { Require(!text.empty()); }
};

// Keeps the bytes of a line, for taking messages off them.
class Line : public switcher::SerialPort {
 public:
  void SetEvents(switcher::SerialPortEvents*) override {}
  model::Status Open(int) override { return {}; }
  void Close() override {}
  bool IsOpen() const override { return true; }
  int Number() const override { return 1; }
  Bytes Read() override { return {}; }
  model::Status Write(std::uint8_t byte) override {
    if (fails) return {1, "the device is gone"};
    written.push_back(byte);
    return {};
  }
  std::size_t Unsent() const override {
    return isFull ? switcher::LineShare::kMostBehind : written.size();
  }
  void SetSendThreshold(int) override {}

  Bytes written;
  bool isFull = false;
  bool fails = false;
};

class EmberFuzz {
 public:
  explicit EmberFuzz(std::uint8_t setup) : mayTake_((setup & 0x40) != 0) {
    model_.ChannelCount =
        static_cast<std::int16_t>((setup & 0x0F) * 8 + ((setup & 0x10) != 0 ? 128 : 0));
    if (model_.ChannelCount == 248) model_.ChannelCount = model::kMaxChannelCount;
    model_.AllocateMap();
    model_.LinkStatus[0] = (setup & 0x80) != 0 ? 1 : 0;
    model_.XmapComplete = true;
    for (int channel = 1; channel <= model_.ChannelCount; ++channel) {
      knownMap_.CrosspointRowChanged(channel, 0);
      model_.CrosspointMap.At(channel, model_.ChannelCount + 1 - channel) = 1;
      model_.ChannelStatus[channel] = static_cast<std::uint8_t>(channel % 5 == 0);
    }
  }

  void Step(std::uint8_t what, const Bytes& data) {
    std::shared_ptr<test::FakePeer>& peer = peers_[what % 2];
    switch (what / 2 % 8) {
      case 0:
        if (peer != nullptr && peer->connected) peer->Close();
        break;
      case 1:
        now_ += std::chrono::milliseconds(700);
        takes_.Elapse();
        seconds_.Elapse();
        break;
      case 2:
        if (model_.ChannelCount > 0) {
          const int output = 1 + what % model_.ChannelCount;
          const int status = what / 128;
          model_.CrosspointMap.At(output, 1) ^= 1;
          model_.ChannelStatus[output] = static_cast<std::uint8_t>(status);
          knownMap_.CrosspointRowChanged(output, status);
          provider_.CrosspointRowChanged(output, status);
        }
        break;
      case 3:
        Disturb(what / 16);
        break;
      case 4:
      case 5:
        Deliver(peer, data);
        break;
      default:
        Deliver(peer, ember::Packets(data));
        break;
    }
    Check();
  }

 private:
  // 0 locks an output, and so on.
  void Disturb(int how) {
    switch (how) {
      case 0:
        return locks_.LockOutput(7, model::Locks::Against::Console);
      case 1:
        return locks_.UnlockOutput(7);
      case 2:
      case 3:
        model_.LinkStatus[0] = how == 3 ? 1 : 0;
        knownMap_.LinkChanged();
        return provider_.LinkChanged();
      case 4:
      case 5:
        model_.XmapComplete = how == 5;
        return;
      case 6:
      case 7:
        line_.isFull = how == 7;
        return;
      case 8:
        for (int output = 1; output <= model_.ChannelCount; ++output) {
          knownMap_.CrosspointRowChanged(output, model_.ChannelStatus[output]);
        }
        return;
      case 9:
        return news_.Elapse();
      case 10:
      case 11:
        return Edit(how == 11);
      default:
        line_.fails = how == 15;
    }
  }

  void Edit(bool isEdited) {
    isEdited_ = isEdited;
    for (const char* const field : {"Label", "Inhibits"}) {
      changes_.Announce({.origin = stations::Origin::Operator,
                         .station = 1,
                         .fields = {{.field = field, .before = {}, .after = {}}}});
    }
  }

  // From every output.
  bool IsInhibited(int input) const { return isEdited_ ? input <= 200 : input == 2 || input == 4; }

  void Deliver(std::shared_ptr<test::FakePeer>& peer, const Bytes& data) {
    if (peer == nullptr || !peer->connected) {
      peer = std::make_shared<test::FakePeer>();
      provider_.Accept(std::make_unique<test::FakeClientSocket>(peer));
    }
    if (!data.empty()) peer->Send(data);
  }

  void Check() {
    for (const auto& peer : peers_) {
      if (peer == nullptr) continue;
      ember::FrameReader reader;
      std::vector<ember::FrameReader::Event> events;
      Require(reader.Read(peer->written, &events) && reader.Kept() == 0);
      for (const auto& event : events) {
        if (event.kind == ember::FrameReader::Kind::Message) {
          Require(ember::ParseBer(event.message).has_value());
        }
      }
      peer->written.clear();
    }
    Require(mayTake_ || line_.written.empty());
    Require(model_.LinkStatus[0] == 1 || line_.written.empty());
    std::span<const std::uint8_t> sent = line_.written;
    while (!sent.empty()) {
      const bool isGain = sent[0] == 0xE3;
      const std::size_t size = isGain ? 5 : 9;
      Require(sent.size() >= size);
      if (!isGain) {
        const auto take = switcher::ParseTake(sent.first(size));
        Require(take && take->destination <= model_.ChannelCount &&
                take->source <= model_.ChannelCount);
        Require(!locks_.IsLocked(take->destination));
        using switcher::TakeAction;
        const auto action = static_cast<TakeAction>(take->action);
        const bool isMade = action == TakeAction::Take || action == TakeAction::MakeSum ||
                            action == TakeAction::MakeCall ||
                            action == TakeAction::MakePriorityListen;
        Require(!isMade || !IsInhibited(take->source));
      }
      sent = sent.subspan(size);
    }
    line_.written.clear();
  }

  const bool mayTake_;
  bool isEdited_ = false;
  model::SystemModel model_;
  switcher::KnownMap knownMap_{model_};
  stations::Changes changes_;
  model::Locks locks_;
  NullReporter reporter_;
  Line line_;
  test::FakePauseTimer takes_;
  test::FakePauseTimer news_;
  test::FakePauseTimer seconds_;
  test::FakePauseTimer work_;
  ember::Provider::Time now_{};
  ember::PeerEvents events_;
  switcher::LiveCommands commands_{{.model = model_, .port = line_, .reporter = reporter_}};
  switcher::LineShare share_{line_, [] { return std::chrono::milliseconds(500); }};
  std::shared_ptr<test::FakePeer> peers_[2];
  ember::Provider provider_{{.model = model_,
                             .database = [this] { return Database(isEdited_); },
                             .changes = changes_,
                             .locks = locks_,
                             .commands = commands_,
                             .knownMap = knownMap_,
                             .line = share_,
                             .takeTimer = takes_,
                             .newsTimer = news_,
                             .secondTimer = seconds_,
                             .workTimer = work_,
                             .now = [this] { return now_; },
                             .events = events_,
                             .version = "2.12",
                             .mayTake = mayTake_,
                             .gainsChanged = [] {}}};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  EmberFuzz fuzz(data[0]);
  for (std::size_t at = 1; at < size;) {
    const std::uint8_t what = data[at++];
    Bytes bytes;
    if (what / 2 % 8 > 3 && at < size) {
      const std::size_t length = std::min<std::size_t>(data[at], size - at - 1);
      ++at;
      bytes.assign(data + at, data + at + length);
      at += length;
    }
    fuzz.Step(what, bytes);
  }
  return 0;
}
