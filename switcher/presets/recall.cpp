// SPDX-License-Identifier: MIT

#include "switcher/presets/recall.h"

#include <utility>

#include "switcher/wire/messages/take.h"

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

std::optional<RecallObstacle> WhyNoRecall(const model::SystemModel& model,
                                          const model::Locks& locks) {
  if (locks.IsConsoleLocked()) return RecallObstacle::ConsoleLocked;
  if (model.DemoMode == 1) return RecallObstacle::DemoMode;
  if (model.LinkStatus[0] != 1) return RecallObstacle::NotConnected;
  if (!model.XmapComplete) return RecallObstacle::MapIncomplete;
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
  if (command_->makes && services_.isInhibited(Row().output, command_->input)) {
    EndRow(RecallOutcome::Inhibited);
    return;
  }
  display_.StartAnswerTimer();
  const TakeAction action = command_->makes ? TakeAction::MakeSum : TakeAction::BreakSum;
  if (services_.commands.SendTake(Row().output, command_->input,
                                  static_cast<std::uint8_t>(action))) {
    return;
  }
  Row().outcome = RecallOutcome::NotSent;
  End();
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
  Row().isTouched = true;
  expected_ = command_->expected;
  command_.reset();
  isTurnDue_ = true;
  display_.RequestTurn();
}

void Recall::AnswerOverdue() {
  if (!command_) return;
  Row().outcome = RecallOutcome::NoAnswer;
  End();
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

// What was done may have been undone by somebody else since.
void Recall::Verify() {
  for (RecallRow& row : rows_) {
    const bool isAsWanted = SourcesOf(services_.model, row.output) == row.wanted &&
                            services_.model.ChannelStatus[row.output] == 0;
    if (row.outcome == RecallOutcome::Done && !isAsWanted) row.outcome = RecallOutcome::Changed;
  }
}

void Recall::CancelNow() {
  if (!isRunning_) return;
  isCancelled_ = true;
  isRunning_ = false;
  isTurnDue_ = false;
  command_.reset();
  display_.StopAnswerTimer();
  Verify();
}

void Recall::End() {
  display_.StopAnswerTimer();
  isRunning_ = false;
  isTurnDue_ = false;
  command_.reset();
  Verify();
  display_.Ended();
}

}  // namespace switcher
