// SPDX-License-Identifier: MIT

#ifndef SWITCHER_PRESETS_RECALL_H_
#define SWITCHER_PRESETS_RECALL_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "model/locks.h"
#include "model/system_model.h"
#include "switcher/known_map.h"
#include "switcher/live_commands.h"
#include "switcher/presets/preset.h"
#include "switcher/switcher_events.h"
#include "switcher/wire/messages/take.h"

namespace switcher {

// Why the map cannot be brought to a preset now.
enum class RecallObstacle : std::uint8_t {
  ConsoleLocked,
  DemoMode,       // what the map shows then may be its own drawing
  NotConnected,   // nobody would report what came of it
  MapIncomplete,  // the switcher has not reported all rows yet
  MapNotKnown,    // nor all of them since the link was lost
};

// What became of an output.
enum class RecallOutcome : std::uint8_t {
  Done,       // it hears what was wanted
  NotBegun,   // the recall ended before
  Changed,    // skipped: somebody has changed it since it was listed, or while it was recalled
  Priority,   // skipped: a call or a priority listen stands on it
  Locked,     // skipped: it is locked
  Inhibited,  // skipped: an input that it was to hear is inhibited
  NotKnown,   // skipped: whether an input that it was to hear is inhibited cannot be read
  Undone,     // it was recalled, and somebody has changed it since
  NoAnswer,   // what was commanded was not reported in time; the recall ended here
  NotSent,    // a command could not be sent, which was reported; the recall ended here
  NotNow,     // the map cannot be recalled any more, Recall::Obstacle(); the recall ended here
  Cancelled,  // the program ends, and the recall ended here
};

// An output that is to be recalled.
struct RecallRow {
  int output = 0;  // from 1
  Sources listed;  // what it heard when that was shown
  Sources wanted;
  RecallOutcome outcome = RecallOutcome::NotBegun;
  bool isTouched = false;  // a command of it was sent
  bool isPartial = false;  // it was left behind some of its commands, and is not as it was listed
};

// What a recall shows, and its timers; the window implements it.
class RecallDisplay {
 public:
  virtual ~RecallDisplay() = default;

  // `row`, from 0, is being recalled.
  virtual void ShowRow(std::size_t row) = 0;

  // A command was sent; the channels are from 1.
  virtual void CommandSent(int output, int input, TakeAction action) = 0;

  // Next() is to come once, from the next turn of the event loop.
  virtual void RequestTurn() = 0;

  // AnswerOverdue() is to come once, Recall::kAnswerMilliseconds from now, in place of what was
  // asked for before; or not any more.
  virtual void StartAnswerTimer() = 0;
  virtual void StopAnswerTimer() = 0;

  // It is over; Rows() say what came of it.
  virtual void Ended() = 0;
};

// Brings outputs of the map to what a preset says, one after the other and with the ordinary
// commands: what is wanted is connected, then what is not is broken.
//
// Each command is made of what the output was last reported to hear, as long as the map is what the
// switcher holds and may be changed, and the next one waits until
// the switcher has reported what this one was to bring about: a report of something else is not
// taken for it.  A row that is not as it was expected any more is left to whoever changed it.
//
// Every event is a function; the timers belong to the window.
class Recall : public SwitcherEvents {
 public:
  // So long a command waits for its report.
  static constexpr int kAnswerMilliseconds = 2500;

  struct Services {
    const model::SystemModel& model;
    const model::Locks& locks;
    const KnownMap& knownMap;
    LiveCommands& commands;
    ChannelFacts facts;
  };

  // Why the map cannot be brought to a preset now, and what it is now cannot be kept as one;
  // nothing when it can.
  static std::optional<RecallObstacle> WhyNot(const Services& services);

  // All must outlive the object.
  Recall(Services services, RecallDisplay& display)
      : services_(std::move(services)), display_(display) {}
  Recall(const Recall&) = delete;
  Recall& operator=(const Recall&) = delete;

  // Begins with these outputs of the map, in their order.  REQUIRES: it has not begun.
  void Go(std::vector<RecallRow> rows);

  // Ends the recall when the present output is as it should be, or cannot be brought there.
  void Cancel() { isCancelled_ = true; }
  // Ends it at once, for a program that ends; the display is not told.
  void CancelNow();

  bool IsRunning() const { return isRunning_; }
  bool IsCancelled() const { return isCancelled_; }
  const std::vector<RecallRow>& Rows() const { return rows_; }
  // What has ended it before all was done, other than a row.
  std::optional<RecallObstacle> Obstacle() const { return obstacle_; }

  // What the display's turns and timers come back with.
  void Next();
  void AnswerOverdue();

  // The switcher has reported a row.
  void CrosspointRowChanged(int output, int mode) override;

 private:
  // A command on its way: what its output hears when it was carried out and nothing else happened.
  struct Command {
    int input;
    bool makes;
    Sources expected;
  };

  RecallRow& Row() { return rows_[current_]; }
  // Why the present row is to be left as it is now; Done for none.
  RecallOutcome WhySkip(const Sources& now) const;
  std::optional<Command> NextCommand(const Sources& now) const;
  RecallOutcome WhyNotMade(const Command& command) const;
  void EndRow(RecallOutcome outcome);
  void EndAt(RecallOutcome outcome);
  void End();
  void Stop();
  void Verify();

  const Services services_;
  RecallDisplay& display_;
  std::vector<RecallRow> rows_;
  std::size_t current_ = 0;
  bool isRunning_ = false;
  bool isCancelled_ = false;
  bool isTurnDue_ = false;
  std::optional<RecallObstacle> obstacle_;
  Sources expected_;  // what the present row should hear before its next command
  std::optional<Command> command_;
};

}  // namespace switcher

#endif  // SWITCHER_PRESETS_RECALL_H_
