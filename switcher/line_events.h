// SPDX-License-Identifier: MIT
//
// What passes the line, for who keeps account of it.

#ifndef SWITCHER_LINE_EVENTS_H_
#define SWITCHER_LINE_EVENTS_H_

#include <cstdint>
#include <span>

namespace switcher {

class LineEvents {
 public:
  virtual ~LineEvents() = default;

  // A message of a table was handed to the port whole, from its code to its end byte.
  virtual void TableMessageSent(std::span<const std::uint8_t> message) = 0;

  // Only the beginning of such a message was: the port failed.
  virtual void TableMessageCut(std::span<const std::uint8_t> message) = 0;

  // The switcher was sent a keep-alive poll; everything that was sent before stands before it on
  // the line.
  virtual void Polled() = 0;

  // So many of these polls were answered, each by a byte of its own.
  virtual void Answered(int polls) = 0;

  // The port is closed.
  virtual void LineLost() = 0;
};

}  // namespace switcher

#endif  // SWITCHER_LINE_EVENTS_H_
