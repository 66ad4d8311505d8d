// SPDX-License-Identifier: MIT

#include "tools/teskpanel/session.h"

#include <utility>

namespace teskpanel {

bool Session::Receive(std::span<const std::uint8_t> bytes) {
  if (!problem_.empty()) return false;
  cutter_.Append(bytes);
  Bytes frame;
  for (;;) {
    switch (cutter_.Next(&frame)) {
      case FrameCutter::Result::NeedMore:
        return true;
      case FrameCutter::Result::Broken:
        problem_ = cutter_.Problem();
        return false;
      case FrameCutter::Result::Frame:
        if (!Handle(frame)) return false;
    }
  }
}

Bytes Session::TakeOutput() { return std::exchange(output_, {}); }

bool Session::Handle(const Bytes& frame) {
  const std::uint8_t type = frame.front();
  if (type == kConnectionType) {
    asked_ = true;
    Send(EncodeConnectionReply(type_));
    PollLink();
    return true;
  }
  if (asked_ && (type == kLinkUpAnswer || type == kLinkDownAnswer)) {
    HandleLinkAnswer(type == kLinkUpAnswer);
    return true;
  }
  // A console sends changes to everybody, also to a panel that it does not serve.
  if (!served_) return true;
  switch (type) {
    case kCrosspointMapType:
      return HandleMap(frame);
    case kLabelTableType:
      return HandleLabels(frame);
    case kStationListType:
    case kButtonProgrammingType:
      return HandleProgramming(frame);
    default:
      return true;
  }
}

void Session::HandleLinkAnswer(bool linkUp) {
  if (std::exchange(served_, true)) {
    events_.OnLinkAnswer(*this, linkUp);
  } else {
    events_.OnServed(*this, linkUp);
  }
}

bool Session::HandleMap(const Bytes& frame) {
  const auto map = ParseCrosspointMap(frame);
  if (!map.has_value()) return Refuse("a crosspoint map is not what it says it is");
  events_.OnMap(*this, *map);
  return true;
}

bool Session::HandleLabels(const Bytes& frame) {
  const auto table = ParseLabelTable(frame);
  if (!table.has_value()) return Refuse("a label table is not what it says it is");
  events_.OnLabels(*this, *table);
  return true;
}

bool Session::HandleProgramming(const Bytes& frame) {
  if (frame.front() == kStationListType) {
    auto list = ParseStationList(frame);
    if (!list.has_value()) return Refuse("a list of stations is not what it says it is");
    stations_ = std::move(*list);
    return true;
  }
  auto programming = ParseButtonProgramming(frame);
  if (!programming.has_value() || programming->stations.size() != stations_.size()) {
    return Refuse("a button programming is not what it says it is");
  }
  std::vector<StationButtons> stations;
  for (std::size_t i = 0; i < stations_.size(); ++i) {
    stations.push_back({stations_[i], std::move(programming->stations[i])});
  }
  events_.OnProgramming(*this, stations);
  return true;
}

bool Session::Refuse(const char* problem) {
  problem_ = problem;
  return false;
}

}  // namespace teskpanel
