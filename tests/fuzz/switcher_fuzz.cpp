// SPDX-License-Identifier: MIT
//
// Takes arbitrary bytes for what the switcher sends.  The first byte chooses the size of the
// system, the rest is the stream.  Every step must shorten the buffer or say why it cannot, and
// what was accepted must be a message that encodes to the same bytes again.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "model/system_model.h"
#include "switcher/decoder.h"
#include "switcher/frame.h"
#include "switcher/messages/crosspoint_row.h"
#include "switcher/messages/gain.h"
#include "switcher/messages/inhibit_row.h"
#include "switcher/messages/take.h"

namespace {

class Events : public switcher::SwitcherEvents, public switcher::MessageHistory {
 public:
  explicit Events(const model::SystemModel& model) : model_(model) {}
  void CrosspointRowChanged(int output, int mode) override {
    if (output < 1 || output > model_.ChannelCount || mode < 0 || mode > 255) std::abort();
  }
  void GainsChanged() override {
    for (const int gain : model_.InputGains) {
      if (gain < 0 || gain > 127) std::abort();
    }
  }
  void TallyChanged() override {}
  void UpdateStatus(std::string_view description, int byteCount,
                    switcher::DecodeStatus status) override {
    if (description.empty() || byteCount < 2 || switcher::StatusWord(status).empty()) std::abort();
  }

 private:
  const model::SystemModel& model_;
};

// The codecs of the other direction, on the same bytes.
void ParseEverything(std::span<const std::uint8_t> message, int channelCount) {
  if (const auto take = switcher::ParseTake(message)) {
    if (take->destination < 1 || take->source < 1) std::abort();
  }
  if (const auto gain = switcher::ParseGain(message)) {
    if (gain->input < 0 || gain->step < 0) std::abort();
  }
  switcher::InhibitRow inhibits;
  (void)switcher::ParseInhibitRow(message, channelCount, &inhibits);  // any status will do
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  model::SystemModel model;
  model.ChannelCount = static_cast<std::int16_t>(data[0] < 128 ? data[0] : 2 * data[0] - 254);
  model.AllocateMap();
  model.RetrieveActive = true;
  Events events(model);
  switcher::Decoder decoder(model, events);
  decoder.SetHistory(&events);

  switcher::Bytes rxBuffer(data + 1, data + size);
  switcher::Bytes message;
  for (;;) {
    const std::size_t before = rxBuffer.size();
    const switcher::Cut cut = switcher::CutMessage(rxBuffer, &message);
    if (cut == switcher::Cut::Empty || cut == switcher::Cut::NeedMore) return 0;
    if (cut == switcher::Cut::Blocked) {
      ParseEverything(rxBuffer, model.ChannelCount);
      return 0;
    }
    if (rxBuffer.size() >= before) std::abort();
    if (cut == switcher::Cut::Message) {
      decoder.Decode(message);
      ParseEverything(message, model.ChannelCount);
    }
  }
}
