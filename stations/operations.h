// SPDX-License-Identifier: MIT
//
// What a panel's button or an opto input does: its operation, stored as a code in "Bn Type" and
// "OptoType".

#ifndef STATIONS_OPERATIONS_H_
#define STATIONS_OPERATIONS_H_

#include <cstdint>
#include <span>

namespace stations {

inline constexpr int kTalk = 0;
inline constexpr int kListen = 1;
inline constexpr int kPriorityListen = 2;
inline constexpr int kExternal = 3;
inline constexpr int kInactive = 254;
inline constexpr int kGroup = 255;

// In the place of a code that cannot be read; no operation's.
inline constexpr int kNoType = -1;

// External switcher destinations are numbered behind this many stations.
inline constexpr int kBeforeExternal = 64;

// What is stored as the first target of a button or opto without one, which is inactive.
inline constexpr int kFirstOfNone = 1;

// What the targets of an operation are.
enum class TargetKind : std::uint8_t {
  Stations,  // by their output label, "Label"
  Sources,   // by their input label, "InLabel"
  Channels,  // by number: external channels, and what an inactive button or opto shows
};

struct Operation {
  int code;
  const char* label;     // on a button's type label: "TALK"
  const char* option;    // on its option: "Talk"
  std::uint32_t colour;  // of the type label, 0xRRGGBB
  TargetKind targets;
  const char* buttonTargets;  // the caption over a button's targets
  const char* optoTargets;    // the caption over an opto's targets
};

// The operations in the order of their options.
std::span<const Operation> AllOperations();

// The operation of a stored code.  A code outside the table is shown as "NULL" and has the
// targets of an inactive one, but is no option and stays what it is.
const Operation& OperationOf(int code);

// Whether the code is in the table.
bool IsOperation(int code);

// The target (from 1) that stands for station `station` where this is the operation; 0 when none of
// the `targetCount` does.  An external destination is the
// station kBeforeExternal behind it.
int TargetOfStation(int code, int station, int targetCount);

}  // namespace stations

#endif  // STATIONS_OPERATIONS_H_
