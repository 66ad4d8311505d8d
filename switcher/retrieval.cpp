// SPDX-License-Identifier: MIT

#include "switcher/retrieval.h"

#include "switcher/frame.h"
#include "switcher/send.h"

namespace switcher {

const char Retrieval::kConfirmation[] =
    "Preparing to Request System Information from the Switcher. This information Includes\n"
    " Alpha Labels, Button and Relay Programming and Crosspoint Inhibits. Click 'Ok' to \n"
    "continue and reprogram the existing Computer Information, or select 'Cancel' to abort.";

const char Retrieval::kCaption[] = "Retrieve System Data";

Retrieval::Retrieval(model::SystemModel& model, Decoder& decoder, SerialPort& port,
                     PollSwitch& poll, model::ErrorReporter& reporter, RetrievalDisplay& display)
    : model_(model),
      decoder_(decoder),
      port_(port),
      poll_(poll),
      reporter_(reporter),
      display_(display) {
  decoder_.SetHistory(this);
}

Retrieval::~Retrieval() { decoder_.EndHistory(this); }

void Retrieval::Go() {
  if (model_.RetrieveActive) return;
  display_.CloseViews();
  totalBytes_ = 0;
  silentSeconds_ = 0;
  completed_ = false;
  refusals_ = false;
  display_.ShowCaption(kCaption);
  display_.ShowHistory();
  display_.SetWaiting(true);
  poll_.SetPolling(false);
  model_.RetrieveActive = true;
  display_.StartDelayTimer();
}

void Retrieval::Cancel() {
  if (model_.RetrieveActive) {
    EndWait(kCaption);
  } else {
    display_.Close();
  }
}

void Retrieval::DelayTick() {
  // A tick that was on its way when the operator cancelled.
  if (!model_.RetrieveActive) return;
  if (const model::Status status = port_.Write(kRetrieveRequest); !status.ok()) {
    reporter_.Show(model::ErrorReporter::Icon::Critical, kSendErrorTitle,
                   ErrorText("Error Requesting System Data", status));
  }
}

void Retrieval::SecondTick() {
  if (!model_.RetrieveActive) return;
  if (++silentSeconds_ >= kSilenceSeconds) display_.ShowSilence(silentSeconds_);
}

void Retrieval::UpdateStatus(std::string_view description, int byteCount, DecodeStatus status) {
  display_.AddMessage(description, byteCount, status);
  totalBytes_ += byteCount;
  silentSeconds_ = 0;
  display_.ShowSilence(0);
  if (status != DecodeStatus::Ok) refusals_ = true;

  // The switcher sends the last station's button data last.
  const std::string last = "Station " + std::to_string(model_.StationCount) + " Button Data";
  if (description == last) {
    completed_ = true;
    EndWait("Retrieval Completed (" + std::to_string(totalBytes_) + " Bytes)");
  } else {
    display_.ShowCaption("Retrieving System Data ( " + std::to_string(totalBytes_) + " Bytes)");
  }
}

void Retrieval::EndWait(std::string_view caption) {
  model_.RetrieveActive = false;
  display_.StopDelayTimer();
  display_.ShowSilence(0);
  display_.SetWaiting(false);
  display_.ShowCaption(caption);
  poll_.SetPolling(true);
}

}  // namespace switcher
