// SPDX-License-Identifier: MIT

#include "switcher/presets/recall.h"

#include <utility>

namespace switcher {
namespace {

// The lowest input of the set; none when it is empty.
std::optional<int> First(const Sources& sources) {
  for (std::size_t input = 1; input < sources.size(); ++input) {
    if (sources.test(input)) return static_cast<int>(input);
  }
  return std::nullopt;
}

}  // namespace

std::optional<RecallObstacle> Recall::WhyNot(const Services& services) {
  if (services.locks.IsConsoleLocked()) return RecallObstacle::ConsoleLocked;
  if (services.model.DemoMode == 1) return RecallObstacle::DemoMode;
  if (services.model.LinkStatus[0] != 1) return RecallObstacle::NotConnected;
  if (!services.model.XmapComplete) return RecallObstacle::MapIncomplete;
  if (!services.knownMap.IsKnown()) return RecallObstacle::MapNotKnown;
  return std::nullopt;
}

void Recall::Go(std::vector<RecallRow> rows) {
  rows_ = std::move(rows);
  isRunning_ = true;
  if (rows_.empty()) {
    End();
    return;
  }
  expected_ = Row().listed;
  display_.ShowRow(current_);
  isTurnDue_ = true;
  display_.RequestTurn();
}

RecallOutcome Recall::WhySkip(const Sources& now) const {
  const RecallRow& row = rows_[current_];
  if (services_.locks.IsLocked(row.output)) return RecallOutcome::Locked;
  if (services_.model.ChannelStatus[row.output] != 0) return RecallOutcome::Priority;
  if (now != expected_) return RecallOutcome::Changed;
  return RecallOutcome::Done;
}

std::optional<Recall::Command> Recall::NextCommand(const Sources& now) const {
  const Sources& wanted = rows_[current_].wanted;
  const std::optional<int> missing = First(wanted & ~now);
  const std::optional<int> next = missing ? missing : First(now & ~wanted);
  if (!next) return std::nullopt;
  Command command{.input = *next, .makes = missing.has_value(), .expected = now};
  command.expected.set(static_cast<std::size_t>(*next), command.makes);
  return command;
}

void Recall::Next() {
  if (!std::exchange(isTurnDue_, false) || !isRunning_) return;
  obstacle_ = WhyNot(services_);
  if (obstacle_) return EndAt(RecallOutcome::NotNow);
  const Sources now = SourcesOf(services_.model, Row().output);
  if (const RecallOutcome skip = WhySkip(now); skip != RecallOutcome::Done) {
    EndRow(skip);
    return;
  }
  command_ = NextCommand(now);
  if (!command_) {
    EndRow(RecallOutcome::Done);
    return;
  }
  if (const RecallOutcome skip = WhyNotMade(*command_); skip != RecallOutcome::Done) {
    EndRow(skip);
    return;
  }
  const int output = Row().output;
  const int input = command_->input;
  const TakeAction action = command_->makes ? TakeAction::MakeSum : TakeAction::BreakSum;
  display_.StartAnswerTimer();
  if (!services_.commands.SendTake(output, input, static_cast<std::uint8_t>(action))) {
    EndAt(RecallOutcome::NotSent);
    return;
  }
  Row().isTouched = true;
  display_.CommandSent(output, input, action);
}

RecallOutcome Recall::WhyNotMade(const Command& command) const {
  if (!command.makes) return RecallOutcome::Done;
  const std::optional<bool> isInhibited =
      services_.facts.isInhibited(rows_[current_].output, command.input);
  if (!isInhibited) return RecallOutcome::NotKnown;
  return *isInhibited ? RecallOutcome::Inhibited : RecallOutcome::Done;
}

void Recall::CrosspointRowChanged(int output, int mode) {
  if (!command_ || output != Row().output) return;
  const Sources now = SourcesOf(services_.model, output);
  if (mode != 0) {
    EndRow(RecallOutcome::Priority);
    return;
  }
  // An older report, or one of what somebody else did: what was commanded is still to come.
  if (now.test(static_cast<std::size_t>(command_->input)) != command_->makes) return;
  display_.StopAnswerTimer();
  expected_ = command_->expected;
  command_.reset();
  isTurnDue_ = true;
  display_.RequestTurn();
}

void Recall::AnswerOverdue() {
  if (!command_) return;
  obstacle_ = WhyNot(services_);
  EndAt(obstacle_ ? RecallOutcome::NotNow : RecallOutcome::NoAnswer);
}

void Recall::EndRow(RecallOutcome outcome) {
  display_.StopAnswerTimer();
  command_.reset();
  Row().outcome = outcome;
  ++current_;
  if (isCancelled_ || current_ == rows_.size()) {
    End();
    return;
  }
  expected_ = Row().listed;
  display_.ShowRow(current_);
  isTurnDue_ = true;
  display_.RequestTurn();
}

void Recall::EndAt(RecallOutcome outcome) {
  Row().outcome = outcome;
  End();
}

// What was done may have been undone by somebody else since.
void Recall::Verify() {
  for (RecallRow& row : rows_) {
    const Sources now = SourcesOf(services_.model, row.output);
    const bool isAsWanted = now == row.wanted && services_.model.ChannelStatus[row.output] == 0;
    if (row.outcome == RecallOutcome::Cancelled && isAsWanted) row.outcome = RecallOutcome::Done;
    if (row.outcome == RecallOutcome::Done) {
      if (!isAsWanted) row.outcome = RecallOutcome::Undone;
    } else {
      row.isPartial = row.isTouched && now != row.listed;
    }
  }
}

void Recall::CancelNow() {
  if (!isRunning_) return;
  isCancelled_ = true;
  if (Row().isTouched) Row().outcome = RecallOutcome::Cancelled;
  Stop();
}

void Recall::End() {
  Stop();
  display_.Ended();
}

void Recall::Stop() {
  display_.StopAnswerTimer();
  isRunning_ = false;
  isTurnDue_ = false;
  command_.reset();
  Verify();
}

}  // namespace switcher
