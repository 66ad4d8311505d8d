// SPDX-License-Identifier: MIT
//
// Feeds arbitrary bytes to the simulated switcher as a console's stream.  The first byte sets
// the size of the matrix, the second one the pauses, the rest is what arrives.  Whatever comes:
//
//   - the parser gives back every byte, once and in order, however the stream is portioned;
//   - the simulator answers in well-formed messages for its matrix and in link answers, comes
//     to rest, and never asks to be woken without having something to do.

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "switcher/frame.h"
#include "switcher/messages/crosspoint_row.h"
#include "switcher/messages/gain_report.h"
#include "switcher/messages/tally.h"
#include "tools/tesksim/simulator.h"
#include "tools/tesksim/stream_parser.h"

namespace {

using switcher::Bytes;
using tesksim::Received;
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

std::vector<Received> Parse(std::span<const std::uint8_t> stream, std::size_t portion) {
  tesksim::StreamParser parser;
  std::vector<Received> all;
  for (std::size_t first = 0; first < stream.size(); first += portion) {
    Append(parser.Feed(stream.subspan(first, std::min(portion, stream.size() - first)), Time{}),
           &all);
  }
  if (auto rest = parser.GiveUp(); rest.has_value()) Append({*rest}, &all);
  return all;
}

void CheckParser(std::span<const std::uint8_t> stream) {
  const std::vector<Received> whole = Parse(stream, std::max<std::size_t>(1, stream.size()));
  Require(whole == Parse(stream, 1));
  Require(whole == Parse(stream, 7));
  Bytes joined;
  for (const Received& piece : whole) {
    joined.insert(joined.end(), piece.bytes.begin(), piece.bytes.end());
  }
  Require(std::equal(joined.begin(), joined.end(), stream.begin(), stream.end()));
}

void CheckMessage(const Bytes& message, int channels) {
  switcher::CrosspointRow row;
  switcher::TallyValues tally{};
  std::vector<std::int16_t> gains;
  switch (message.front()) {
    case switcher::kCrosspointRowCode:
      Require(switcher::ParseCrosspointRow(message, channels, &row) == switcher::DecodeStatus::Ok);
      break;
    case switcher::kTallyCode:
      Require(switcher::ParseTally(message, &tally) == switcher::DecodeStatus::Ok);
      break;
    default:
      Require(message.front() == switcher::kGainReportCode);
      Require(switcher::ParseGainReport(message, channels, &gains) == switcher::DecodeStatus::Ok);
  }
}

void CheckOutput(Bytes output, int channels) {
  output.erase(std::remove(output.begin(), output.end(), switcher::kLinkAnswer), output.end());
  Bytes message;
  while (!output.empty()) {
    Require(switcher::CutMessage(output, &message) == switcher::Cut::Message);
    CheckMessage(message, channels);
  }
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
  const int channels = 8 * (1 + data[0] % 32);
  const std::chrono::milliseconds pause(4 * data[1]);
  const std::span<const std::uint8_t> stream(data + 2, size - 2);
  CheckParser(stream);

  Time now{};
  tesksim::Simulator simulator({.channelCount = channels}, now, [](const std::string&) {});
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
  CheckOutput(std::move(output), channels);
  return 0;
}
