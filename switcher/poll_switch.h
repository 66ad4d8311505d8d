// SPDX-License-Identifier: MIT

#ifndef SWITCHER_POLL_SWITCH_H_
#define SWITCHER_POLL_SWITCH_H_

namespace switcher {

// The main window's poll timer, as far as a transmission may touch it.
class PollSwitch {
 public:
  virtual ~PollSwitch() = default;

  virtual void SetPolling(bool on) = 0;
};

// Keeps the poll off for the scope, so that no poll byte gets between the bytes of a table.
class PollPause {
 public:
  explicit PollPause(PollSwitch& poll) : poll_(poll) { poll_.SetPolling(false); }
  ~PollPause() { poll_.SetPolling(true); }
  PollPause(const PollPause&) = delete;
  PollPause& operator=(const PollPause&) = delete;

 private:
  PollSwitch& poll_;
};

}  // namespace switcher

#endif  // SWITCHER_POLL_SWITCH_H_
