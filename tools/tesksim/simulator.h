// SPDX-License-Identifier: MIT

#ifndef TESKSIM_SIMULATOR_H_
#define TESKSIM_SIMULATOR_H_

#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <vector>

#include "tools/tesksim/clock.h"
#include "tools/tesksim/demo.h"
#include "tools/tesksim/message_handler.h"
#include "tools/tesksim/message_handlers.h"
#include "tools/tesksim/retrieval.h"
#include "tools/tesksim/stream_parser.h"
#include "tools/tesksim/switcher_state.h"
#include "tools/tesksim/transmitter.h"

namespace tesksim {

// What has come and gone since the start.
struct Stats {
  std::uint64_t bytesReceived = 0;
  std::uint64_t mapPolls = 0;
  std::uint64_t tallyPolls = 0;
  std::uint64_t keepAlives = 0;
  std::uint64_t tablePolls = 0;
  std::uint64_t takes = 0;      // done
  std::uint64_t tables = 0;     // table messages, accepted
  std::uint64_t messages = 0;   // well-framed, of any kind
  std::uint64_t refused = 0;    // of these: understood and not done
  std::uint64_t malformed = 0;  // broken off, or wrong in length, checksum or end
  std::uint64_t noiseBytes = 0;
};

// A switcher without a line: bytes from the console go in, bytes to the console come out.
//
// It says nothing until it is polled.  0xE5 starts the whole map, one row after the other and
// then the gain report; while that is going out, more 0xE5 start nothing, because the console
// polls every second and a map of 256 channels takes longer.  A take's row goes before the rest
// of a map.  0xE4 brings the tally, 0xED the link answer before everything else but inside no
// table.  0xE7 starts the retrieval, before the rest of a map; another one starts it again.
class Simulator {
 public:
  struct Options {
    int baud = 57600;        // of the line to the console; 0 sends without a pace
    std::uint32_t seed = 1;  // of everything that is left to chance
    bool demo = false;       // a change every few seconds
  };

  // Starts with `state` at `now`.  `log` is told of every message, "rx ..." and "tx ...", once
  // SetLogging() has switched it on; it may be empty.
  Simulator(SwitcherState state, const Options& options, Time now, Log log);
  Simulator(const Simulator&) = delete;
  Simulator& operator=(const Simulator&) = delete;

  // Bytes from the console.
  void Receive(std::span<const std::uint8_t> bytes, Time now);

  // The program had no processor until `now`: what came meanwhile did not come late.
  void HeldUp(Time now) { parser_.HeldUp(now); }

  // The bytes that have reached the console's end of the line since the last call.
  Bytes TakeOutput(Time now);

  // When TakeOutput() should be called next, if no bytes come in; nothing when there is nothing
  // to do.  It may be in the past: that is "at once".
  std::optional<Time> NextTime() const;

  // The other end of the line is gone, or is new: what was under way in either direction is
  // lost, and the switcher is silent until it is polled again.
  void DropLine();

  // What the switcher holds.  Changing it sends nothing.
  SwitcherState& State() { return state_; }

  // Sends the map row of an output, without being asked.  REQUIRES: State().HasChannel(output)
  void SendRow(int output);
  void SendTally();
  void SendGains();

  // Sends these bytes as they are.  REQUIRES: !bytes.empty()
  void SendRaw(Bytes bytes);

  // Sets one fault.  REQUIRES: 0 <= value <= setting.limit
  void SetFault(const FaultSetting& setting, int value, Time now);

  // Silent: everything is received and acted on, nothing is answered, and what waits to be sent
  // is lost.  SendRow() and its like still send.
  void SetSilence(bool silent);

  // The answer to 0xE7, for choosing messages that go out wrong.
  Retrieval& Tables() { return retrieval_; }

  // How often what it holds has been changed by a message or the demo.
  std::uint64_t Changes() const { return changes_; }

  void SetLogging(bool on) { logging_ = on; }

  // Puts a line of the caller's into the log.
  void Note(const std::string& line) const;

  const Stats& Counts() const { return stats_; }
  const Transmitter& Output() const { return transmitter_; }

 private:
  // Something received, and when it is acted on.
  struct Request {
    Time due;
    Received received;
  };

  bool HasNext() const;
  Outgoing Next();

  void Work(Time now);
  void Enqueue(std::vector<Received> received, Time now);
  void Act(const Received& received);
  void AnswerPoll(std::uint8_t poll);
  void AcceptMessage(std::span<const std::uint8_t> message);
  void PlayDemo(Time now);
  Outgoing RowMessage(int output) const;
  Outgoing GainsMessage() const;

  SwitcherState state_;
  MessageHandlers handlers_{state_};
  StreamParser parser_;
  std::deque<Request> requests_;
  Log log_;
  bool logging_ = false;
  Transmitter transmitter_;
  Retrieval retrieval_;
  int nextMapRow_ = 0;   // the map's next output; ChannelCount() + 1: the gain report; 0: no map
  bool polled_ = false;  // since the line was last dropped
  bool silent_ = false;
  Demo demo_;
  std::optional<Time> nextDemoChange_;
  Stats stats_;
  std::uint64_t changes_ = 0;
};

}  // namespace tesksim

#endif  // TESKSIM_SIMULATOR_H_
