// SPDX-License-Identifier: MIT

#ifndef SWITCHER_RETRIEVAL_H_
#define SWITCHER_RETRIEVAL_H_

#include <string>
#include <string_view>

#include "model/error_reporter.h"
#include "model/system_model.h"
#include "switcher/decoder.h"
#include "switcher/link.h"
#include "switcher/poll_switch.h"
#include "switcher/serial_port.h"

namespace switcher {

// What came of a retrieval.
struct RetrievalResult {
  bool completed = false;         // the last station's button data came; else the operator ended it
  bool asked = false;             // the tables were asked for by then
  bool lineLost = false;          // the port was closed meanwhile
  int messages = 0;               // all that came
  int refused = 0;                // those of them that were not stored
  std::string firstRefused = {};  // the description of the first of these

  // Whether the database now holds what the switcher holds.
  bool IsWhole() const { return completed && asked && !lineLost && refused == 0; }
};

// How the port does while a retrieval waits.
enum class RetrievalLine {
  Open,      // it has been open all the time
  Closed,    // it is closed, and is tried again each second
  OpenAgain  // it was closed for a while
};

// What a retrieval shows, and its timers; the retrieval window implements it.
class RetrievalDisplay {
 public:
  virtual ~RetrievalDisplay() = default;

  // Closes the three main views, which would show what is no longer true.
  virtual void CloseViews() = 0;

  // Shows the history, empty, in place of the explanation.
  virtual void ShowHistory() = 0;

  // The retrieval waits for the switcher: OK cannot be used.
  virtual void SetWaiting(bool waiting) = 0;

  // Adds a row to the history.
  virtual void AddMessage(std::string_view description, int byteCount, DecodeStatus status) = 0;

  virtual void ShowCaption(std::string_view caption) = 0;

  // Says that no message has come for so many seconds; 0 says nothing.
  virtual void ShowSilence(int seconds) = 0;

  // Says how the port does; told each second.
  virtual void ShowLine(RetrievalLine line) = 0;

  // DelayTick() is to come once, Retrieval::kDelayMilliseconds from now.
  virtual void StartDelayTimer() = 0;
  virtual void StopDelayTimer() = 0;

  virtual void Close() = 0;
};

// Asks the switcher for all its tables and keeps account of the messages that come.  The
// decoders write them into the database.
//
// Confirming, waiting, ended: Go() begins to wait, also once more after an end.  The wait ends
// when the last station's button data has come, whatever its check result, or by Cancel().
// Every event is a function; the timers belong to the window.
class Retrieval : public MessageHistory {
 public:
  // What the window says before anything happens.
  static const char kConfirmation[];

  // The caption of a window that is not waiting.
  static const char kCaption[];

  // From Go() to the request, so that an answer to the last poll is through by then.
  static constexpr int kDelayMilliseconds = 500;

  // Silence is spoken of from this many seconds on.
  static constexpr int kSilenceSeconds = 10;

  // What a retrieval works with.
  struct Services {
    model::SystemModel& model;
    Decoder& decoder;  // it tells the retrieval of its messages
    SerialPort& port;
    Link& link;
    PollSwitch& poll;
    model::ErrorReporter& reporter;
  };

  // Becomes the decoder's history for its lifetime.  All must outlive it.
  Retrieval(const Services& services, RetrievalDisplay& display);
  ~Retrieval() override;
  Retrieval(const Retrieval&) = delete;
  Retrieval& operator=(const Retrieval&) = delete;

  // The operator said OK.  Does nothing while the retrieval waits.
  void Go();

  // While waiting, ends the wait; the history stays.  Otherwise closes the window.
  void Cancel();

  // The delay timer has run out: sends the request, and reports a failure to the operator.  It is
  // sent whatever has come by then, be it the message that ended the wait.
  void DelayTick();

  // To be called once a second while waiting.  The poll is off then, and with it what opens a port
  // that was lost: that is done here.
  void SecondTick();

  // What has come since the last Go().
  const RetrievalResult& Result() const { return result_; }

  void UpdateStatus(std::string_view description, int byteCount, DecodeStatus status) override;

 private:
  void ForgetRequest();
  void NoteLoss();
  void EndWait(std::string_view caption);

  const Services services_;
  RetrievalDisplay& display_;
  RetrievalResult result_;
  int totalBytes_ = 0;
  int silentSeconds_ = 0;
  bool requestDue_ = false;  // the delay timer runs
};

}  // namespace switcher

#endif  // SWITCHER_RETRIEVAL_H_
