// SPDX-License-Identifier: MIT

#include "switcher/download.h"

#include <optional>
#include <span>
#include <utility>

namespace switcher {

namespace {

constexpr std::string_view kConfirmEverything =
    "Preparing to Transmit System Information to the Switcher. This information Includes Alpha "
    "Labels, Button and Relay Programming and Crosspoint Inhibits. Click 'Ok' to continue and "
    "reprogram the existing System Information, or select 'Cancel' to abort.";
constexpr std::string_view kConfirmButtons =
    "Preparing to Transmit Button Programming Information to the Switcher. Click 'Ok' to "
    "continue and reprogram the existing System Button Information, or select 'Cancel' to abort.";

// The bar moves at every value behind so many.
constexpr int kValuesBetweenSteps = 10;
constexpr int kBytesPerStep = 10;

}  // namespace

Download::Download(const Services& services, DownloadDisplay& display)
    : services_(services), display_(display), buttonsOnly_(services.model.DownloadMode != 0) {}

std::string_view Download::Confirmation() const {
  return buttonsOnly_ ? kConfirmButtons : kConfirmEverything;
}

void Download::Go() {
  if (state_ != State::Confirming) return;
  const int total = EstimateDownloadBytes(services_.model);
  Begin(PlanDownload(services_.model, services_.tables),
        {.maximum = total / kBytesPerStep,
         .caption = "System Download Progress (" + std::to_string(total) + " Total Bytes)"});
  display_.StartDelayTimer();
}

void Download::GoFor(std::span<const TablePart> parts, const MessageSize& size) {
  if (state_ != State::Confirming) return;
  Begin(PlanSending(parts, services_.tables),
        {.maximum = size.values / (kValuesBetweenSteps + 1),
         .caption = "Sending Changes (" + std::to_string(size.bytes) + " Bytes)"});
  DelayTick();
}

void Download::Begin(std::vector<DownloadStage> stages, const Progress& progress) {
  maximum_ = progress.maximum;
  display_.ShowProgressBar(maximum_);
  display_.ShowCaption(progress.caption);
  display_.ShowStatus("Download Status");
  stages_ = std::move(stages);
  running_ = true;
  state_ = State::Delaying;
}

void Download::Cancel() {
  if (state_ == State::Confirming) {
    state_ = State::Ended;
    display_.Close();
  } else if (running_) {
    running_ = false;
    display_.ShowCancelling();
  }
}

void Download::CancelNow() {
  Cancel();
  if (state_ == State::Ended) return;
  if (state_ == State::Sending) {
    while (SendMessage()) continue;
    CountTable(stages_[current_]);
    ++current_;
  }
  End();
}

void Download::DelayTick() {
  if (state_ != State::Delaying) return;
  services_.poll.SetPolling(false);
  Proceed();
}

// To the stage that comes next, or to the end of the download.
void Download::Proceed() {
  if (!running_ || current_ == stages_.size()) {
    End();
    return;
  }
  state_ = State::BeforeStage;
  display_.RequestTurn();
}

bool Download::SendMessage() {
  std::optional<Transmission>& table = stages_[current_].table;
  return table && table->Step([this] { CountValue(); });
}

void Download::SendNext() {
  if (state_ == State::BeforeStage) {
    if (!running_) {
      End();
      return;
    }
    state_ = State::Sending;
    display_.ShowStatus("Download Status (" + stages_[current_].name + ")");
  }
  if (state_ != State::Sending) return;
  if (SendMessage()) {
    display_.RequestTurn();
  } else {
    EndStage();
  }
}

void Download::EndStage() {
  const DownloadStage& stage = stages_[current_];
  CountTable(stage);
  const bool pauses = stage.pauses && services_.model.DownloadInterval > 0;
  ++current_;
  if (pauses) {
    state_ = State::Pausing;
    display_.StartSpacingTimer();
  } else {
    Proceed();
  }
}

void Download::CountTable(const DownloadStage& stage) {
  if (!stage.table) return;
  const int messages = stage.table->Messages();
  if (stage.table->Failed()) {
    result_.failed.push_back(stage.part);
    display_.TableFailed(stage.part);
    return;
  }
  // What has no record has no message.
  if (messages > 0) ++result_.sent;
  display_.TableSent(stage.part, messages);
}

void Download::SpacingTick() {
  if (state_ == State::Pausing) Proceed();
}

void Download::CountValue() {
  if (values_ < kValuesBetweenSteps) {
    ++values_;
    return;
  }
  values_ = 0;
  if (position_ == maximum_) return;
  ++position_;
  display_.ShowPosition(position_);
}

void Download::End() {
  if (!running_) {
    const auto left = std::span(stages_).subspan(current_);
    result_.notSent = NameTables(left);
    for (const DownloadStage& stage : left) {
      if (stage.table) result_.leftOut.push_back(stage.part);
    }
  }
  running_ = false;
  // Also when it was cancelled before the first tick: the poll is on then and stays so.
  state_ = State::Ended;
  services_.poll.SetPolling(true);
  display_.Close();
}

}  // namespace switcher
