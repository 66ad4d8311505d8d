// SPDX-License-Identifier: MIT

#include "switcher/comparison/comparison.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "db/database_files.h"
#include "switcher/message_sender.h"
#include "switcher/wire/frame.h"

namespace switcher {
namespace {

bool Has(const std::vector<TablePart>& parts, const TablePart& part) {
  return std::ranges::find(parts, part) != parts.end();
}

}  // namespace

Comparison::Comparison(Services services, ComparisonDisplay& display)
    : services_(std::move(services)), display_(display) {}

Comparison::~Comparison() { services_.link.DivertTables(nullptr); }

void Comparison::Go() {
  if (state_ == State::Idle) return BeginWait();
  if (state_ != State::Listening) return;
  state_ = State::HeldUp;
  display_.ShowHeldUp();
}

void Comparison::BeginWait() {
  result_ = {};
  const jet::Database* const database = services_.database();
  const model::Status copied = database != nullptr
                                   ? ReportedTables::Copy(*database, services_.model, &tables_)
                                   : db::NotOpen();
  if (!copied.ok()) {
    state_ = State::Idle;
    model::ReportError(services_.reporter, "Comparing With The Switcher", copied);
    return display_.ShowResult(result_);
  }
  expected_ = AllMessages(services_.model);
  came_.clear();
  endCame_ = false;
  silentSeconds_ = 0;
  state_ = State::Waiting;
  services_.link.DivertTables(this);
  services_.poll.SetPolling(false);
  requestDue_ = true;
  display_.ShowWaiting();
  display_.StartDelayTimer();
}

void Comparison::DelayTick() {
  // A tick that was on its way when the operator cancelled.
  if (!std::exchange(requestDue_, false)) return;
  quietTicks_ = 0;
  const model::Status status = services_.port.Write(kRetrieveRequest);
  if (!status.ok()) ReportSendError(services_.reporter, "Error Requesting System Data", status);
}

void Comparison::Cancel() {
  if (state_ == State::HeldUp) {
    state_ = State::Listening;
    display_.ShowResult(result_);
  } else if (state_ == State::Waiting) {
    if (std::exchange(requestDue_, false)) {
      display_.StopDelayTimer();
      EndListening();
    } else {
      Listen();
    }
    EndWait(/*completed=*/false);
  }
}

void Comparison::SecondTick() {
  if (state_ == State::Waiting) {
    TickOfWait();
  } else if (state_ != State::Idle && IsQuiet()) {
    EndListening();
  }
}

void Comparison::TickOfWait() {
  NoteLoss();
  // A tool that sends a table meanwhile has put the poll on again behind it.
  services_.poll.SetPolling(false);
  if (!services_.link.KeepOpen()) {
    display_.ShowLine(RetrievalLine::Closed);
  } else {
    display_.ShowLine(result_.lineLost ? RetrievalLine::OpenAgain : RetrievalLine::Open);
  }
  if (IsQuiet() && endCame_) {
    EndListening();
    return EndWait(/*completed=*/true);
  }
  if (++silentSeconds_ >= Retrieval::kSilenceSeconds) display_.ShowSilence(silentSeconds_);
}

// Whole seconds, the first of which has begun some time before.
bool Comparison::IsQuiet() {
  quietTicks_ = services_.port.IsOpen() ? quietTicks_ + 1 : 0;
  return quietTicks_ > kQuietSeconds;
}

void Comparison::TakeTable(std::span<const std::uint8_t> message) {
  quietTicks_ = 0;
  const TablePart part = ReportedTables::PartOf(message);
  if (state_ == State::Waiting) {
    tables_->Take(message);
    NoteHeld(part);
    ++result_.messages;
    result_.bytes += static_cast<int>(message.size());
    silentSeconds_ = 0;
    display_.ShowSilence(0);
    display_.ShowProgress(result_.messages, result_.bytes);
  }
  if (requestDue_) return;  // the answer to an earlier request
  if (!Has(came_, part)) came_.push_back(part);
  if (part != TablePart{Table::Buttons, services_.model.StationCount}) return;
  endCame_ = true;
  if (!AllCame()) return;
  const bool wasWaiting = state_ == State::Waiting;
  EndListening();
  if (wasWaiting) EndWait(/*completed=*/true);
}

bool Comparison::AllCame() const {
  return std::ranges::all_of(expected_, [&](const TablePart& part) { return Has(came_, part); });
}

void Comparison::NoteLoss() {
  if (!services_.port.IsOpen()) result_.lineLost = true;
}

// Who is hidden comes with the station labels and is a mark in the input labels, too.
void Comparison::NoteHeld(const TablePart& part) {
  const std::vector<TablePart>& accepted = tables_->Accepted();
  if (services_.noteHeld == nullptr || !Has(accepted, part)) return;
  if (part.table == Table::InputLabels && !Has(accepted, {.table = Table::OutputLabels})) return;
  const std::optional<Digest> digest = tables_->HeldDigest(part);
  if (digest) services_.noteHeld(part, *digest);
  if (part.table == Table::OutputLabels) NoteHeld({.table = Table::InputLabels});
}

void Comparison::Listen() {
  quietTicks_ = 0;
  state_ = State::Listening;
}

void Comparison::EndListening() {
  services_.link.DivertTables(nullptr);
  const bool isHeldUp = state_ == State::HeldUp;
  state_ = State::Idle;
  if (isHeldUp) BeginWait();
}

void Comparison::EndWait(bool completed) {
  NoteLoss();
  result_.completed = completed;
  result_.differences = tables_->Differences();
  result_.accepted = tables_->Accepted();
  result_.refused = tables_->Refused();
  for (const TablePart& part : expected_) {
    const bool isRefused =
        std::ranges::find(result_.refused, part, &RefusedPart::part) != result_.refused.end();
    if (!isRefused && !Has(result_.accepted, part)) result_.missing.push_back(part);
  }
  services_.poll.SetPolling(true);
  display_.ShowResult(result_);
}

}  // namespace switcher
