// SPDX-License-Identifier: MIT
//
// The codec of the open gateway, each way.  The first byte chooses: the rest is a stream of frames,
// of which whatever is read lies within the bounds; a message, of which whatever is read can be
// built and reads the same; or what a message is made of, which is cut into packets and read back.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "gateway/ember/glow.h"
#include "gateway/ember/s101.h"

namespace {

using ember::Bytes;

void Require(bool condition) {
  if (!condition) std::abort();
}

// The same however the stream is cut.
void ReadStream(std::span<const std::uint8_t> bytes) {
  ember::FrameReader whole;
  std::vector<ember::FrameReader::Event> events;
  const bool isGood = whole.Read(bytes, &events);
  ember::FrameReader cut;
  std::vector<ember::FrameReader::Event> again;
  bool isGoodAgain = true;
  for (std::size_t at = 0; at < bytes.size() && isGoodAgain; at += 3) {
    isGoodAgain = cut.Read(bytes.subspan(at, std::min<std::size_t>(3, bytes.size() - at)), &again);
  }
  Require(isGood == isGoodAgain && events == again);
  Require(whole.Kept() <= ember::FrameReader::kLongestFrame + ember::FrameReader::kLongestMessage);
}

void ReadMessage(std::span<const std::uint8_t> bytes) {
  const auto requests = ember::ParseGlow(bytes);
  if (!requests) return;
  for (const ember::Request& request : *requests) {
    for (const int number : request.path) Require(number >= 0);
    if (request.kind != ember::Request::Kind::Connect) continue;
    Require(!request.connections.empty());
    // Built as the provider does, which is always absolute.
    const std::vector<Bytes> elements{ember::MatrixConnections(request.path, request.connections)};
    const auto again = ember::ParseGlow(ember::GlowMessage(elements));
    Require(again && again->size() == 1 && again->front().path == request.path);
    const auto& connections = again->front().connections;
    Require(connections.size() == request.connections.size());
    for (std::size_t i = 0; i < connections.size(); ++i) {
      Require(connections[i].target == request.connections[i].target &&
              connections[i].sources == request.connections[i].sources);
    }
  }
}

void WriteMessage(std::span<const std::uint8_t> bytes) {
  const Bytes frames = ember::Packets(bytes);
  ember::FrameReader reader;
  std::vector<ember::FrameReader::Event> events;
  Require(reader.Read(frames, &events) && reader.Kept() == 0);
  Require(events.size() == (bytes.empty() ? 0U : 1U));
  if (!events.empty()) Require(std::ranges::equal(events[0].message, bytes));
  const ember::Path path(bytes.begin(), bytes.end());
  const Bytes oid = ember::BerOid(path);
  const auto values = ember::ParseBer(oid);
  Require(values && ember::ReadOid(&values->front()) == path);
  int number = 0;
  for (const std::uint8_t byte : bytes.first(std::min<std::size_t>(bytes.size(), 4))) {
    number = static_cast<int>(static_cast<unsigned>(number) << 8U | byte);
  }
  const Bytes integer = ember::BerInteger(number);
  const auto read = ember::ParseBer(integer);
  Require(read && ember::ReadInteger(&read->front()) == number);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::span<const std::uint8_t> rest(data + 1, size - 1);
  switch (data[0] % 3) {
    case 0:
      ReadStream(rest);
      break;
    case 1:
      ReadMessage(rest);
      break;
    default:
      WriteMessage(rest);
      break;
  }
  return 0;
}
