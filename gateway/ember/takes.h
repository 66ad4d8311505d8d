// SPDX-License-Identifier: MIT

#ifndef GATEWAY_EMBER_TAKES_H_
#define GATEWAY_EMBER_TAKES_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "gateway/ember/expected_rows.h"
#include "gateway/ember/peer_events.h"
#include "gateway/ember/take_plan.h"
#include "gateway/pause_timer.h"
#include "model/locks.h"
#include "model/system_model.h"
#include "stations/channel_texts.h"
#include "switcher/known_map.h"
#include "switcher/line_share.h"
#include "switcher/live_commands.h"

namespace ember {

// Who answers consumers for their takes, and says what became of them.
class TakeAnswers {
 public:
  virtual ~TakeAnswers() = default;

  // A take is over without a report that answers it: the row is to be answered as it is.
  virtual void AnswerRow(int peer, int output) = 0;

  // What was begun is not carried out after all.
  virtual void AnswerRefusal(int peer, const Wanted& wanted, std::optional<int> invocation) = 0;

  virtual void AnswerInvocation(int peer, std::optional<int> invocation, bool done) = 0;

  // A command for a consumer, which may have gone since, has been handed to the line.
  virtual void CommandSent(const PeerName& peer, const switcher::Take& take) = 0;

  // Nothing of what was wanted was sent, or only a part of it.
  virtual void TakeRefused(const PeerName& peer, const Wanted& wanted, Refusal why) = 0;
  virtual void TakeStopped(const PeerName& peer, const Wanted& wanted, Refusal why) = 0;

  // A gain (input from 0, step 0..127) has been handed to the line, or is not sent after all.
  virtual void GainSent(const PeerName& peer, int input, int step) = 0;
  virtual void GainRefused(const PeerName& peer, int input, Refusal why) = 0;
};

// What consumers take: from the wish to the line, and until the switcher has reported the row.
//
// What is wanted is judged by what the row will be when all that was sent before is carried out,
// anew before each command; the takes of an output go one after the other.  While the line has no
// room the consumers take turns.  What waits so long that its consumer has given up is not sent any
// more, but a take whose first command is out is finished as far as it may be, whatever becomes of
// the consumer: half of it may be two sources where there was one.
class Takes {
 public:
  using Time = std::chrono::steady_clock::time_point;

  // Consumers wait three seconds for the answer to a take.
  static constexpr std::chrono::milliseconds kPatience{2500};

  // So often it is seen whether the line has room again.
  static constexpr std::chrono::milliseconds kLook{10};

  // The most takes of a consumer that are not answered yet.
  static constexpr std::size_t kMostOpen = 256;

  // One turn of the event loop works on takes for kTurn at most, and ends overdue ones for as long.
  // The rest follows after kRest where some are overdue, else after kLook.
  static constexpr std::chrono::milliseconds kTurn{3};
  static constexpr std::chrono::milliseconds kRest{2};

  // All must outlive the object.
  struct Services {
    const model::SystemModel& model;
    const model::Locks& locks;
    stations::ChannelTexts& texts;
    switcher::LiveCommands& commands;
    const switcher::KnownMap& knownMap;
    const switcher::LineShare& line;
    gateway::PauseTimer& timer;
    std::function<Time()> now;
    TakeAnswers& answers;
  };
  explicit Takes(Services services)
      : services_(std::move(services)), rows_(services_.model, kPatience) {}
  Takes(const Takes&) = delete;
  Takes& operator=(const Takes&) = delete;

  // What came of a wish at once.
  struct Outcome {
    std::optional<Refusal> refusal = {};
    bool stands = false;  // the row has it already
  };

  // A consumer wants this; by an invocation of that number, if it is one.  Unless the outcome says
  // that it is refused or stands, it is answered later.
  // REQUIRES: the output and the inputs are channels of the system
  Outcome Add(const PeerName& peer, const Wanted& wanted, std::optional<int> invocation = {});

  // Sets the gain (step 0..127) of an input (from 0) as soon as the line has room.  A newer one of
  // the same input takes the place of one that waits.
  void SendGain(const PeerName& peer, int input, int step);

  // A row was reported: the consumers who are to be told of it because of their takes.  What waits
  // for it goes on with GoOn().
  std::set<int> RowReported(int output);
  void GoOn();

  // The link is lost: gains that wait are not sent.
  void LinkLost();

  // A consumer has gone: what it has not begun is not sent.
  void Forget(int peer);

  // Nothing more is sent.
  void Clear();

  // How many of a consumer's takes are not answered yet.
  std::size_t Open(int peer) const;

 private:
  struct OpenTake {
    std::uint64_t id;
    PeerName peer;
    Wanted wanted;
    std::optional<int> invocation;
    Time deadline;
    int sent = 0;             // commands
    int reports = 0;          // of the row since the first of them
    bool isSent = false;      // there is nothing more to send
    bool isWaiting = false;   // for a report of what was sent for others
    bool isAnswered = false;  // by a report; never an invocation, which waits for the wanted state
    bool isLate = false;      // it was answered in time, and goes on
    bool isGone = false;      // the consumer
  };
  using Queue = std::list<OpenTake>;

  struct Gain {
    PeerName peer;
    int step;
    Time deadline;
  };

  PlanServices PlanWith() const;
  bool IsHeldUp(int output) const;
  void SendOn();
  bool SendOneGain();
  bool SendOneTake();
  Queue::iterator NextUnsent();
  Queue::iterator Find(std::uint64_t id);
  void SendCommand(std::uint64_t id, const switcher::Take& command, bool isLast);
  bool IsOver(const OpenTake& take) const;
  // `take` is taken out first: who is answered may turn out to have gone.
  OpenTake TakeOut(Queue::iterator take);
  void Stop(Queue::iterator take, Refusal why);
  Queue::iterator NextOverdue(Time now);
  void EndOverdue();
  void End(const OpenTake& take);
  void RefuseGains(Refusal why, const std::function<bool(const Gain&)>& which);
  void Wait();
  std::chrono::milliseconds UntilNext();
  void WakeUp();

  const Services services_;
  ExpectedRows rows_;
  Queue open_;                 // in the order in which they came
  std::map<int, Gain> gains_;  // that wait for the line, by input
  int turn_ = 0;               // the consumer that was served last
  std::uint64_t lastId_ = 0;
  std::optional<Time> wakesUp_;  // while the timer runs
};

}  // namespace ember

#endif  // GATEWAY_EMBER_TAKES_H_
