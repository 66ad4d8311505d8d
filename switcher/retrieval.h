// SPDX-License-Identifier: MIT

#ifndef SWITCHER_RETRIEVAL_H_
#define SWITCHER_RETRIEVAL_H_

#include <string>
#include <string_view>

#include "model/error_reporter.h"
#include "model/system_model.h"
#include "switcher/decoder.h"
#include "switcher/poll_switch.h"
#include "switcher/serial_port.h"

namespace switcher {

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

  // All must outlive the object, which becomes the decoder's history for its lifetime.
  Retrieval(model::SystemModel& model, Decoder& decoder, SerialPort& port, PollSwitch& poll,
            model::ErrorReporter& reporter, RetrievalDisplay& display);
  ~Retrieval() override;
  Retrieval(const Retrieval&) = delete;
  Retrieval& operator=(const Retrieval&) = delete;

  // The operator said OK.  Does nothing while the retrieval waits.
  void Go();

  // While waiting, ends the wait; the history stays.  Otherwise closes the window.
  void Cancel();

  // The delay timer has run out: sends the request, and reports a failure to the operator.
  void DelayTick();

  // To be called once a second while waiting.
  void SecondTick();

  // Whether the last retrieval came to its end.
  bool IsCompleted() const { return completed_; }

  // Whether a message since the last Go() failed its checks.
  bool HasRefusals() const { return refusals_; }

  void UpdateStatus(std::string_view description, int byteCount, DecodeStatus status) override;

 private:
  void EndWait(std::string_view caption);

  model::SystemModel& model_;
  Decoder& decoder_;
  SerialPort& port_;
  PollSwitch& poll_;
  model::ErrorReporter& reporter_;
  RetrievalDisplay& display_;
  int totalBytes_ = 0;
  int silentSeconds_ = 0;
  bool completed_ = false;
  bool refusals_ = false;
};

}  // namespace switcher

#endif  // SWITCHER_RETRIEVAL_H_
