// SPDX-License-Identifier: MIT

#ifndef GATEWAY_EMBER_PEER_EVENTS_H_
#define GATEWAY_EMBER_PEER_EVENTS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "gateway/ember/ber.h"
#include "switcher/wire/messages/take.h"

namespace ember {

// Which consumer: its number, from 1, and its address.
struct PeerName {
  int number = 0;
  std::string address;

  bool operator==(const PeerName&) const = default;
};

// What a consumer wants of a row.
struct Wanted {
  enum class Act : std::uint8_t {
    Absolute,        // these inputs and no others
    Connect,         // these inputs, too
    Disconnect,      // these inputs no more
    Call,            // a call, on or off
    PriorityListen,  // a priority listen, on or off
  };

  Act act = Act::Absolute;
  int output = 1;                // from 1; in a report, 0 for one that is not there
  std::vector<int> inputs = {};  // from 1, in their order, each once
  bool on = true;                // of the functions, which have one input

  // A function of the tree, and not the matrix.
  bool IsFunction() const { return act == Act::Call || act == Act::PriorityListen; }

  bool operator==(const Wanted&) const = default;
};

// Why the console does not do what a consumer wants.
enum class Refusal : std::uint8_t {
  ReadOnly,        // nobody may take here, or nothing can be set there
  LinkDown,        // the switcher does not answer
  MapNotComplete,  // the map is being asked for
  MapNotKnown,     // it was not reported whole since the link last came up
  OutputLocked,
  Inhibited,        // a crosspoint that would be made is
  InhibitsUnknown,  // it cannot be read whether one is
  PriorityRow,      // a crosspoint would be broken in a row of priority
  NoSuchChannel,    // there is no such output or input
  BadValue,         // of another type, or out of range
  TooMany,          // too many of its takes wait
  LineBusy,         // the line had no room for it in time
  LineFailed,       // it could not be written
  Replaced,         // another consumer has set the same since
  Closing,          // the console ends
};

// Why the console drops a consumer.
enum class PeerDrop : std::uint8_t {
  TooLong,      // it sends a frame or a message that does not end
  DoesNotRead,  // it does not read what it is sent
  Silent,       // it does not answer
  MadeRoom,     // it has never said anything, and another one wants its place
};

// Why the console does not let a consumer in.
enum class TurnedAway : std::uint8_t {
  AllTaken,        // so many are connected as can be
  AddressHasMany,  // so many are from that address
};

// What happens to consumers.  Who is told overrides what concerns it.
class PeerEvents {
 public:
  virtual ~PeerEvents() = default;

  virtual void PeerConnected(const PeerName& /*peer*/) {}

  // A consumer was not let in.
  virtual void PeerTurnedAway(const std::string& /*address*/, TurnedAway /*why*/) {}

  // A command for a consumer has been handed to the line.
  virtual void PeerTook(const PeerName& /*peer*/, const switcher::Take& /*take*/) {}

  // A consumer has set the gain of an input (from 1), in dB.
  virtual void PeerSetGain(const PeerName& /*peer*/, int /*input*/, int /*decibels*/) {}

  // Nothing was sent of what a consumer wants, or only a part of it, or a value at a path of the
  // tree is not set.
  virtual void TakeRefused(const PeerName& /*peer*/, const Wanted& /*wanted*/, Refusal /*why*/) {}
  virtual void TakeStopped(const PeerName& /*peer*/, const Wanted& /*wanted*/, Refusal /*why*/) {}
  // A consumer names a target or a source (from 0, as it has sent them) that is not there.
  virtual void NumbersRefused(const PeerName& /*peer*/, Wanted::Act /*act*/, int /*target*/,
                              const std::vector<int>& /*sources*/) {}
  virtual void ValueRefused(const PeerName& /*peer*/, const Path& /*path*/, Refusal /*why*/) {}

  // The console drops a consumer.  PeerGone() follows.
  virtual void PeerDropped(const PeerName& /*peer*/, PeerDrop /*why*/) {}

  virtual void PeerGone(const PeerName& /*peer*/) {}
};

}  // namespace ember

#endif  // GATEWAY_EMBER_PEER_EVENTS_H_
