// SPDX-License-Identifier: MIT

#ifndef SWITCHER_DOWNLOAD_H_
#define SWITCHER_DOWNLOAD_H_

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/system_model.h"
#include "switcher/download_plan.h"
#include "switcher/message_size.h"
#include "switcher/poll_switch.h"
#include "switcher/table.h"
#include "switcher/table_senders.h"

namespace switcher {

// What came of a download that was begun.
struct DownloadResult {
  int sent = 0;                         // tables that went out; one for each station's buttons
  std::vector<TablePart> failed;        // tables that could not be sent, which was reported
  std::string notSent;                  // the tables that were left out by a cancel; empty for none
  std::vector<TablePart> leftOut = {};  // the same, part by part
};

// What a download shows, and its timers; the download window implements it.
class DownloadDisplay {
 public:
  virtual ~DownloadDisplay() = default;

  // Shows the progress bar, at 0, and the status line in place of the explanation.
  virtual void ShowProgressBar(int maximum) = 0;

  virtual void ShowCaption(std::string_view caption) = 0;

  // These two are called while a message is written: what they show must be seen at once,
  // without the event loop.
  virtual void ShowStatus(std::string_view status) = 0;
  virtual void ShowPosition(int position) = 0;

  // The operator's cancelling was taken note of; the running stage is still sent.
  virtual void ShowCancelling() = 0;

  // DelayTick() is to come once, Download::kDelayMilliseconds from now.
  virtual void StartDelayTimer() = 0;

  // SpacingTick() is to come once, after DownloadInterval.
  virtual void StartSpacingTimer() = 0;

  // SendNext() is to come once, from the next turn of the event loop.
  virtual void RequestTurn() = 0;

  // This has been sent without a failure, in so many messages.
  virtual void TableSent(const TablePart& part, int messages) = 0;

  // This could not be sent, which has been reported.
  virtual void TableFailed(const TablePart& part) = 0;

  // Nothing is left to do.
  virtual void Close() = 0;
};

// Sends the whole configuration to the switcher, or in its other mode the button programming of
// all stations, table after table with pauses between them.
//
// Every event is a function; the timers belong to the window.  It goes back to the event loop
// between any two messages and never inside one.
class Download {
 public:
  static constexpr int kDelayMilliseconds = 10;

  // What a download works with.
  struct Services {
    const model::SystemModel& model;
    const TableSenders& tables;
    PollSwitch& poll;
  };

  // All must outlive the object.  The mode is the model's DownloadMode as it is now.
  Download(const Services& services, DownloadDisplay& display);
  Download(const Download&) = delete;
  Download& operator=(const Download&) = delete;

  // What the window says before anything happens.
  std::string_view Confirmation() const;

  // The operator said OK.  Does nothing the second time.
  void Go();

  // The same for no more than these messages, in the order and with the pauses of a download, and
  // without the delay before it.
  void GoFor(std::span<const TablePart> parts, const MessageSize& size);

  // What has come of it since Go().
  const DownloadResult& Result() const { return result_; }

  // Before Go(), closes the window.  Afterwards the stage that is being sent is sent to its
  // end, the others are skipped and the window closes; a second cancel adds nothing.
  void Cancel();

  // Like Cancel(), for a program that is about to end: what is left of the running stage is
  // sent before it returns, and nothing is left to the timers.
  void CancelNow();

  // What the display's timers and turns come back with; without one that was asked for they do
  // nothing.  The delay after Go() is over: stops the poll and begins the first stage.
  void DelayTick();
  // The pause after a stage is over: begins the next one, or ends the download.
  void SpacingTick();
  // Sends one message of the stage, and asks for the next turn or ends the stage.
  void SendNext();

 private:
  // What a window counts and says when it begins.
  struct Progress {
    int maximum;
    std::string caption;
  };

  enum class State { Confirming, Delaying, BeforeStage, Sending, Pausing, Ended };

  void Begin(std::vector<DownloadStage> stages, const Progress& progress);
  bool SendMessage();
  void CountValue();
  void Proceed();
  void EndStage();
  void CountTable(const DownloadStage& stage);
  void End();

  const Services services_;
  DownloadDisplay& display_;
  const bool buttonsOnly_;
  State state_ = State::Confirming;
  bool running_ = false;  // from OK until the end or Cancel
  std::vector<DownloadStage> stages_;
  std::size_t current_ = 0;  // the stage that is sent or comes next
  DownloadResult result_;
  int values_ = 0;  // since the bar last moved
  int position_ = 0;
  int maximum_ = 0;
};

}  // namespace switcher

#endif  // SWITCHER_DOWNLOAD_H_
