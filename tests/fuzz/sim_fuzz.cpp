// SPDX-License-Identifier: MIT
//
// Feeds arbitrary bytes to the simulated switcher as a console's stream.  The first byte sets
// the size of the system, the second one the pauses, the rest is what arrives.  Whatever comes:
//
//   - the parser gives back every byte, once and in order, however the stream is portioned;
//   - the simulator answers in well-formed messages for its system and in link answers, comes
//     to rest, and never asks to be woken without having something to do;
//   - what a small one then holds can be written down and read again.

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "switcher/wire/frame.h"
#include "tests/support/message_codecs.h"
#include "tools/tesksim/kept_state.h"
#include "tools/tesksim/simulator.h"
#include "tools/tesksim/stream_parser.h"

namespace {

using switcher::Bytes;
using switcher::DecodeStatus;
using tesksim::Received;
using tesksim::SystemSizes;
using tesksim::Time;

void Require(bool holds) {
  if (!holds) std::abort();
}

// Noise may come out in pieces; everything else may not.
void Append(std::vector<Received> more, std::vector<Received>* all) {
  for (Received& piece : more) {
    if (piece.kind == Received::Kind::Noise && !all->empty() &&
        all->back().kind == Received::Kind::Noise) {
      all->back().bytes.insert(all->back().bytes.end(), piece.bytes.begin(), piece.bytes.end());
    } else {
      all->push_back(std::move(piece));
    }
  }
}

std::vector<Received> Parse(std::span<const std::uint8_t> stream, std::size_t portion, int labels) {
  tesksim::StreamParser parser(labels);
  std::vector<Received> all;
  for (std::size_t first = 0; first < stream.size(); first += portion) {
    Append(parser.Feed(stream.subspan(first, std::min(portion, stream.size() - first)), Time{}),
           &all);
  }
  Append(parser.GiveUp(), &all);
  Require(!parser.Deadline().has_value());
  return all;
}

void CheckParser(std::span<const std::uint8_t> stream, int labels) {
  const std::vector<Received> whole =
      Parse(stream, std::max<std::size_t>(1, stream.size()), labels);
  Require(whole == Parse(stream, 1, labels));
  Require(whole == Parse(stream, 7, labels));
  Bytes joined;
  for (const Received& piece : whole) {
    joined.insert(joined.end(), piece.bytes.begin(), piece.bytes.end());
  }
  Require(std::equal(joined.begin(), joined.end(), stream.begin(), stream.end()));
}

DecodeStatus Judge(const Bytes& message, const SystemSizes& sizes) {
  if (!switcher::IsReceivedCode(message.front())) return DecodeStatus::WrongSize;
  const test::MessageCounts counts = {.channels = sizes.channels,
                                      .stations = sizes.stations,
                                      .labels = sizes.labels,
                                      .buttons = tesksim::kButtons,
                                      .optos = tesksim::kOptos,
                                      .relays = tesksim::kRelays,
                                      .targets = sizes.stations / 8 * 8};
  return test::WithCodec(static_cast<switcher::MessageCode>(message.front()), [&](auto codec) {
    typename decltype(codec)::Value value{};
    return codec.Parse(message, counts, &value);
  });
}

// Takes one message off the front.  Label texts have characters of eight bits and end at their
// length; into any other message a link answer may come.
Bytes TakeMessage(std::span<const std::uint8_t>* output, const SystemSizes& sizes) {
  const bool texts = output->front() == switcher::kAlphaLabelsCode;
  const auto size = 8 * static_cast<std::size_t>(sizes.labels) + 4;
  Bytes message;
  for (bool ended = false; !ended;) {
    Require(!output->empty());
    const std::uint8_t byte = output->front();
    *output = output->subspan(1);
    if (texts || byte != switcher::kLinkAnswer) message.push_back(byte);
    ended = texts ? message.size() == size : byte == switcher::kEndOfMessage;
  }
  return message;
}

void CheckOutput(std::span<const std::uint8_t> output, const SystemSizes& sizes) {
  while (!output.empty()) {
    if (output.front() == switcher::kLinkAnswer) {
      output = output.subspan(1);
    } else {
      Require(Judge(TakeMessage(&output, sizes), sizes) == DecodeStatus::Ok);
    }
  }
}

void CheckState(const tesksim::SwitcherState& state) {
  const std::string text = tesksim::WriteState(state);
  std::optional<tesksim::SwitcherState> read;
  Require(tesksim::ReadState(text, &read).ok());
  Require(tesksim::WriteState(*read) == text);
}

// Lets the simulator work until it rests or `end`; time passes as it asks for it.
void Run(tesksim::Simulator& simulator, Time* now, Time end, Bytes* output) {
  int idleWakes = 0;
  for (;;) {
    const Bytes more = simulator.TakeOutput(*now);
    output->insert(output->end(), more.begin(), more.end());
    const auto next = simulator.NextTime();
    if (!next.has_value() || *next > end) break;
    idleWakes = more.empty() && *next <= *now ? idleWakes + 1 : 0;
    Require(idleWakes < 2);
    *now = std::max(*now, *next);
  }
  if (end != Time::max()) *now = end;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  constexpr int kChannels[] = {8, 16, 24, 32, 64, 128, 248, 256};
  const SystemSizes sizes{.channels = kChannels[data[0] % std::size(kChannels)],
                          .stations = 1 + 3 * (data[0] / 32),
                          .labels = 1 + data[0] / 32};
  const std::chrono::milliseconds pause(4 * data[1]);
  const std::span<const std::uint8_t> stream(data + 2, size - 2);
  CheckParser(stream, sizes.labels);

  Time now{};
  // Eight times as fast as the real line: fewer steps for a retrieval.
  tesksim::Simulator simulator(tesksim::SwitcherState(sizes), {.baud = 460'800}, now,
                               [](const std::string&) {});
  simulator.SetLogging(true);
  Bytes output;
  constexpr std::size_t kPortion = 16;
  for (std::size_t first = 0; first < stream.size(); first += kPortion) {
    simulator.Receive(stream.subspan(first, std::min(kPortion, stream.size() - first)), now);
    Run(simulator, &now, now + pause, &output);
  }
  Run(simulator, &now, Time::max(), &output);
  Require(!simulator.NextTime().has_value());
  Require(output.size() == simulator.Output().BytesSent());
  CheckOutput(output, sizes);
  if (sizes.channels == 8) CheckState(simulator.State());  // a large one takes its time
  return 0;
}
