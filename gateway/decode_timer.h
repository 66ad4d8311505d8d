// SPDX-License-Identifier: MIT

#ifndef GATEWAY_DECODE_TIMER_H_
#define GATEWAY_DECODE_TIMER_H_

namespace gateway {

// The timer whose ticks serve what was received; the main window has it.
class DecodeTimer {
 public:
  virtual ~DecodeTimer() = default;

  // Bytes wait to be decoded: let the timer run.
  virtual void StartDecodeTimer() = 0;
};

}  // namespace gateway

#endif  // GATEWAY_DECODE_TIMER_H_
