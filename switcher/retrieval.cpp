// SPDX-License-Identifier: MIT

#include "switcher/retrieval.h"

#include <utility>

#include "switcher/message_sender.h"
#include "switcher/wire/frame.h"
#include "switcher/wire/message_table.h"

namespace switcher {

const char Retrieval::kConfirmation[] =
    "Preparing to Request System Information from the Switcher. This information Includes\n"
    " Alpha Labels, Button and Relay Programming and Crosspoint Inhibits. Click 'Ok' to \n"
    "continue and reprogram the existing Computer Information, or select 'Cancel' to abort.";

const char Retrieval::kCaption[] = "Retrieve System Data";

Retrieval::Retrieval(const Services& services, RetrievalDisplay& display)
    : services_(services), display_(display) {
  services_.decoder.SetHistory(this);
}

Retrieval::~Retrieval() { services_.decoder.EndHistory(this); }

void Retrieval::Go() {
  if (services_.model.RetrieveActive) return;
  display_.CloseViews();
  result_ = {};
  totalBytes_ = 0;
  silentSeconds_ = 0;
  display_.ShowCaption(kCaption);
  display_.ShowHistory();
  display_.SetWaiting(true);
  services_.poll.SetPolling(false);
  services_.model.RetrieveActive = true;
  requestDue_ = true;
  display_.StartDelayTimer();
}

void Retrieval::Cancel() {
  ForgetRequest();
  if (services_.model.RetrieveActive) {
    EndWait(kCaption);
  } else {
    display_.Close();
  }
}

void Retrieval::ForgetRequest() {
  if (std::exchange(requestDue_, false)) display_.StopDelayTimer();
}

void Retrieval::DelayTick() {
  // A tick that was on its way when the operator cancelled.
  if (!std::exchange(requestDue_, false)) return;
  const model::Status status = services_.port.Write(kRetrieveRequest);
  if (services_.model.RetrieveActive) result_.asked = status.ok();
  if (!status.ok()) ReportSendError(services_.reporter, "Error Requesting System Data", status);
}

void Retrieval::SecondTick() {
  if (!services_.model.RetrieveActive) return;
  NoteLoss();
  if (!services_.link.KeepOpen()) {
    display_.ShowLine(RetrievalLine::Closed);
  } else {
    display_.ShowLine(result_.lineLost ? RetrievalLine::OpenAgain : RetrievalLine::Open);
  }
  if (++silentSeconds_ >= kSilenceSeconds) display_.ShowSilence(silentSeconds_);
}

void Retrieval::NoteLoss() {
  if (!services_.port.IsOpen()) result_.lineLost = true;
}

void Retrieval::UpdateStatus(std::string_view description, int byteCount, DecodeStatus status) {
  display_.AddMessage(description, byteCount, status);
  totalBytes_ += byteCount;
  silentSeconds_ = 0;
  display_.ShowSilence(0);
  ++result_.messages;
  if (status != DecodeStatus::Ok && ++result_.refused == 1) result_.firstRefused = description;

  // The switcher sends the last station's button data last.
  if (description == DescribeMessage(kButtonDataCode, services_.model.StationCount)) {
    result_.completed = true;
    EndWait("Retrieval Completed (" + std::to_string(totalBytes_) + " Bytes)");
  } else {
    display_.ShowCaption("Retrieving System Data ( " + std::to_string(totalBytes_) + " Bytes)");
  }
}

void Retrieval::EndWait(std::string_view caption) {
  NoteLoss();
  services_.model.RetrieveActive = false;
  display_.ShowSilence(0);
  display_.SetWaiting(false);
  display_.ShowCaption(caption);
  services_.poll.SetPolling(true);
}

}  // namespace switcher
