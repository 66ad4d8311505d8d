// SPDX-License-Identifier: MIT

#include "stations/operations.h"

#include <algorithm>

namespace stations {
namespace {

constexpr char kStationsOfButton[] = "Station(s) To Be Called Upon Button Press";
constexpr char kSourceOfButton[] = "Source To Be Monitored Upon Button Press";
constexpr char kStationsOfOpto[] = "Station(s) To Be Called When OPTO Is Activated";
constexpr char kSourceOfOpto[] = "Source To Be Monitored When OPTO Is Activated";

constexpr Operation kOperations[] = {
    {kTalk, "TALK", "Talk", 0x80FF80, TargetKind::Stations, kStationsOfButton, kStationsOfOpto},
    {kListen, "LISTEN", "Listen", 0xFFFF80, TargetKind::Sources, kSourceOfButton, kSourceOfOpto},
    {kPriorityListen, "P-LSTN", "P-Listen", 0xFF8080, TargetKind::Sources, kSourceOfButton,
     kSourceOfOpto},
    {kExternal, "EXTRN", "External", 0xFF80FF, TargetKind::Channels,
     "External Switcher Destinatons", "External Channel To Be Called When OPTO Is Activated"},
    {kInactive, "NULL", "Inactive", 0x808080, TargetKind::Channels, "Button Specified Inactive",
     "OPTO Specified Inactive"},
    {kGroup, "GROUP", "Group", 0x8080FF, TargetKind::Stations, kStationsOfButton, kStationsOfOpto},
};

// What a code outside the table is shown as.
constexpr const Operation& kOther = kOperations[4];
static_assert(kOther.code == kInactive);

const Operation* Find(int code) {
  const auto* const found = std::ranges::find(kOperations, code, &Operation::code);
  return found == std::end(kOperations) ? nullptr : found;
}

}  // namespace

std::span<const Operation> AllOperations() { return kOperations; }

const Operation& OperationOf(int code) {
  const Operation* const found = Find(code);
  return found != nullptr ? *found : kOther;
}

bool IsOperation(int code) { return Find(code) != nullptr; }

int TargetOfStation(int code, int station, int targetCount) {
  int target = station;
  if (OperationOf(code).targets == TargetKind::Channels) {
    target = code == kExternal ? station - kBeforeExternal : 0;
  }
  return target >= 1 && target <= targetCount ? target : 0;
}

}  // namespace stations
