// SPDX-License-Identifier: MIT
//
// Takes arbitrary bytes for what three panels send.  The first byte says how large the system is
// and whether the link is up; then come steps: a byte that names a panel and what it does, for
// data followed by a length and so many bytes.  Whatever comes, receive buffers and queue stay
// within their bounds, every tick with bytes to decode shortens a buffer or waits for the end of
// a frame, what goes to a panel is whole frames, and what goes to the switcher is takes of
// channels that are there.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "gateway/panel_gateway.h"
#include "switcher/wire/messages/take.h"
#include "tests/support/fake_client_socket.h"
#include "tests/support/fake_pause_timer.h"
#include "tests/support/small_database.h"

namespace {

using gateway::Bytes;

void Require(bool condition) {
  if (!condition) std::abort();
}

// The same for all inputs: panels only read it.
db::DatabaseFiles& Database() {
  static const std::unique_ptr<test::SmallDatabase> database = [] {
    auto made = std::make_unique<test::SmallDatabase>();
    for (int station = 1; station <= 120; ++station) {
      made->AddStation(station, {{"Label", "Sta"}, {"B1 Type", 254}, {"B1 Prog", "0101"}});
    }
    return made;
  }();
  return database->Files();
}

class NullReporter : public model::ErrorReporter {
 public:
  void Show(Icon, std::string_view, std::string_view text) override { Require(!text.empty()); }
};

class NullDecodeTimer : public gateway::DecodeTimer {
 public:
  void StartDecodeTimer() override {}
};

// What is told fits together: nobody acts or goes who has not come.
class CheckedEvents : public gateway::PanelEvents {
 public:
  void PanelConnected(const gateway::PanelName& panel) override {
    Require(!panel.address.empty() && there_.insert(panel.slot).second);
  }
  void PanelIdentified(const gateway::PanelName& panel, int type) override {
    Require(there_.contains(panel.slot) && type >= 0);
  }
  void PanelTook(const gateway::PanelName& panel, const gateway::PanelTake& take) override {
    Require(there_.contains(panel.slot) && take.destination <= 256 && take.source <= 256);
  }
  void PanelDropped(const gateway::PanelName& panel, gateway::DropReason /*reason*/) override {
    Require(there_.contains(panel.slot) && !panel.address.empty());
  }
  void PanelGone(const gateway::PanelName& panel) override {
    Require(!panel.address.empty() && there_.erase(panel.slot) == 1);
  }

 private:
  std::set<int> there_;
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
    written.push_back(byte);
    return {};
  }
  std::size_t Unsent() const override { return written.size(); }
  void SetSendThreshold(int) override {}

  Bytes written;
};

class PanelFuzz {
 public:
  explicit PanelFuzz(std::uint8_t setup) {
    model_.ChannelCount = static_cast<std::int16_t>((setup & 0x0F) * 8);
    model_.AllocateMap();
    model_.LinkStatus[0] = (setup & 0x80) != 0 ? 1 : 0;
    for (int channel = 1; channel <= model_.ChannelCount; ++channel) {
      model_.CrosspointMap.At(channel, model_.ChannelCount + 1 - channel) = 1;
    }
  }

  void Step(std::uint8_t what, const Bytes& data) {
    std::shared_ptr<test::FakePeer>& peer = peers_[what % 3];
    switch (what / 3 % 8) {
      case 0:
        if (peer != nullptr && peer->connected) peer->Close();
        peer = nullptr;
        break;
      case 1:
        timer_.Elapse();
        break;
      case 2:
        gateway_.CrosspointRowChanged(1 + what % std::max<int>(model_.ChannelCount, 1), 0);
        break;
      case 3:
        for (int tick = 0; tick < 210; ++tick) Tick();
        break;
      default:
        Deliver(peer, data);
        break;
    }
    Tick();
    Check();
  }

  // Without more data the buffers run dry: bytes go one by one, and the flush ends the rest.
  void Finish(std::size_t inputSize) {
    std::size_t ticks = 0;
    while (AnyWork()) {
      Require(++ticks < 2 * inputSize + 1000);
      timer_.ElapseAll();
    }
    timer_.ElapseAll();
    Check();
    Require(gateway_.Queue().Size() == 0);
  }

 private:
  bool AnyWork() {
    gateway_.BeginTick();
    return gateway_.DecodeTick();
  }

  void Deliver(std::shared_ptr<test::FakePeer>& peer, const Bytes& data) {
    if (peer == nullptr || !peer->connected) {
      peer = std::make_shared<test::FakePeer>();
      gateway_.Accept(std::make_unique<test::FakeClientSocket>(peer));
    }
    if (!data.empty()) peer->Send(data);
  }

  void Tick() {
    gateway::ClientTable& clients = gateway_.Clients();
    std::vector<std::size_t> before;
    bool isWork = false;
    for (int slot = 1; slot <= clients.SocketCount(); ++slot) {
      const gateway::ClientConnection& client = clients.Connection(slot);
      before.push_back(client.RxData.size());
      isWork = isWork || !client.RxData.empty() || !client.Takes.empty();
    }
    const bool worked = AnyWork();
    Require(worked == isWork);
    for (int slot = 1; slot <= clients.SocketCount(); ++slot) {
      const std::span<const std::uint8_t> left = clients.Connection(slot).RxData.View();
      if (left.empty() || left.size() < before[static_cast<std::size_t>(slot - 1)]) continue;
      Require(left.front() >= 0x80);
      Require(std::find(left.begin(), left.end(), 0xFF) == left.end());
    }
  }

  void Check() {
    Require(gateway_.Clients().SocketCount() <= 3);
    for (int slot = 1; slot <= gateway_.Clients().SocketCount(); ++slot) {
      Require(gateway_.Clients().Connection(slot).Undecoded() <= 65536);
    }
    // Per slot: every row, the map, two label tables, programming twice, a question, 64 answers.
    Require(gateway_.Queue().Size() <= 3U * (static_cast<unsigned>(model_.ChannelCount) + 80));
    CheckTakes();
  }

  void CheckTakes() {
    Require(line_.written.size() % 9 == 0);
    for (std::size_t i = 0; i < line_.written.size(); i += 9) {
      const auto take = switcher::ParseTake(std::span(line_.written).subspan(i, 9));
      Require(take.has_value());
    }
    line_.written.clear();
  }

  model::SystemModel model_;
  NullReporter reporter_;
  NullDecodeTimer decodeTimer_;
  CheckedEvents events_;
  Line line_;
  test::FakePauseTimer timer_;
  switcher::LiveCommands commands_{{.model = model_, .port = line_, .reporter = reporter_}};
  switcher::LineShare share_{line_, [] { return std::chrono::milliseconds(500); }};
  std::shared_ptr<test::FakePeer> peers_[3];
  model::Locks locks_;
  gateway::PanelGateway gateway_{{.model = model_,
                                  .locks = locks_,
                                  .files = Database(),
                                  .commands = commands_,
                                  .line = share_,
                                  .timer = timer_,
                                  .decodeTimer = decodeTimer_,
                                  .events = events_,
                                  .reporter = reporter_}};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  PanelFuzz fuzz(data[0]);
  for (std::size_t at = 1; at < size;) {
    const std::uint8_t what = data[at++];
    Bytes bytes;
    if (what / 3 % 8 > 3 && at < size) {
      const std::size_t length = std::min<std::size_t>(data[at], size - at - 1);
      ++at;
      bytes.assign(data + at, data + at + length);
      at += length;
    }
    fuzz.Step(what, bytes);
  }
  fuzz.Finish(size);
  return 0;
}
