// SPDX-License-Identifier: MIT

#ifndef GATEWAY_EMBER_TAKES_H_
#define GATEWAY_EMBER_TAKES_H_

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <list>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "gateway/ember/channel_texts.h"
#include "gateway/ember/peer_events.h"
#include "gateway/ember/take_plan.h"
#include "gateway/pause_timer.h"
#include "model/locks.h"
#include "model/system_model.h"
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

  // What was begun could not be carried out after all.
  virtual void RefuseLater(int peer, const Wanted& wanted, std::optional<int> invocation,
                           Refusal why) = 0;

  virtual void AnswerInvocation(int peer, std::optional<int> invocation, bool done) = 0;

  // A command for a consumer has been handed to the line.
  virtual void CommandSent(int peer, const switcher::Take& take) = 0;
};

// What consumers take: from the wish to the line, and until the switcher has reported the row.
// While the line has no room for them, the takes of each wait in their order and the consumers take
// turns.  What waits so long that its consumer has given up is not sent any more.
class Takes {
 public:
  using Time = std::chrono::steady_clock::time_point;

  // Consumers wait three seconds for the answer to a take.
  static constexpr std::chrono::milliseconds kPatience{2500};

  // So often it is seen whether the line has room again.
  static constexpr std::chrono::milliseconds kLook{10};

  // The most takes of a consumer that are not answered yet.
  static constexpr std::size_t kMostOpen = 256;

  // All must outlive the object.
  struct Services {
    const model::SystemModel& model;
    const model::Locks& locks;
    ChannelTexts& texts;
    switcher::LiveCommands& commands;
    const switcher::KnownMap& knownMap;
    const switcher::LineShare& line;
    gateway::PauseTimer& timer;
    std::function<Time()> now;
    TakeAnswers& answers;
  };
  explicit Takes(Services services) : services_(std::move(services)) {}
  Takes(const Takes&) = delete;
  Takes& operator=(const Takes&) = delete;

  // What came of a wish at once.
  struct Outcome {
    std::optional<Refusal> refusal;
    bool stands = false;  // the row has it already
  };

  // A consumer wants this; by an invocation of that number, if it is one.  Unless the outcome says
  // that it is refused or stands, it is answered later.
  // REQUIRES: the output and the inputs are channels of the system
  Outcome Add(int peer, const Wanted& wanted, std::optional<int> invocation = {});

  // Sets the gain (step 0..127) of an input (from 0) as soon as the line has room.
  void SendGain(int input, int step);

  // A row was reported: the consumers whose takes that answers.
  std::set<int> RowReported(int output);

  // A consumer has gone: what waits for it is not sent.
  void Forget(int peer);

  // How many of a consumer's takes are not answered yet.
  std::size_t Open(int peer) const;

 private:
  struct OpenTake {
    int peer;
    Wanted wanted;
    std::optional<int> invocation;
    Time deadline;
    bool isPlanned = false;  // `commands` holds what is left of it
    std::deque<switcher::Take> commands;
    bool isAnswered = false;  // by a report; never an invocation, which waits for the wanted state

    bool IsUnsent() const { return !isPlanned || !commands.empty(); }
  };
  using Queue = std::list<OpenTake>;

  void SendOn();
  bool SendOneGain();
  bool SendOneTake();
  Queue::iterator NextUnsent();
  void SendCommand(Queue::iterator take);
  // `take` is taken out first: who is answered may turn out to have gone.
  OpenTake TakeOut(Queue::iterator take);
  void EndOverdue();
  void End(const OpenTake& take);
  void Wait();

  const Services services_;
  Queue open_;                // in the order in which they came
  std::map<int, int> gains_;  // that wait for the line, by input
  int turn_ = 0;              // the consumer that was served last
};

}  // namespace ember

#endif  // GATEWAY_EMBER_TAKES_H_
