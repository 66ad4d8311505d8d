// SPDX-License-Identifier: MIT

#ifndef TESKSIM_TERMINAL_H_
#define TESKSIM_TERMINAL_H_

#include <cstdint>
#include <span>
#include <string>
#include <utility>

#include "model/status.h"

namespace tesksim {

// The simulator's end of the line: the master of a pseudo terminal, or a serial device of 57600
// baud, 8 data bits, no parity, 1 stop bit.  Nothing here waits.
class Terminal {
 public:
  // `device` names the serial device; empty for a pseudo terminal.
  explicit Terminal(std::string device) : device_(std::move(device)) {}
  ~Terminal() { Close(); }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  // Opens the device, or makes a new pseudo terminal.  REQUIRES: !IsOpen()
  model::Status Open();

  // A pseudo terminal vanishes for whoever has it open.  No effect when it is closed.
  void Close();

  bool IsOpen() const { return fd_ >= 0; }
  bool IsDevice() const { return !device_.empty(); }

  // For poll(); -1 when closed.
  int Descriptor() const { return fd_; }

  // What the other side opens: "/dev/pts/7", or the device.  Empty before the first Open().
  const std::string& Path() const { return path_; }

  // Whether somebody has the pseudo terminal open, or had, and left something to be read.  A
  // serial device cannot tell: always true.
  bool HasPeer() const;

  // Throws away what was sent to a pseudo terminal and read by nobody, so that the next one to
  // open it does not find it.
  void DiscardUnread();

  enum class Io { Done, Later, Gone };

  // Reads up to buffer.size() bytes; *count says how many.  Later: there are none now.  Gone:
  // nobody has the pseudo terminal open any more, or the device is gone.
  Io Read(std::span<std::uint8_t> buffer, std::size_t* count);

  // Writes what the line takes of `bytes`; *count says how much.
  Io Write(std::span<const std::uint8_t> bytes, std::size_t* count);

 private:
  model::Status OpenDevice();
  model::Status OpenPseudoTerminal();

  std::string device_;
  std::string path_;
  int fd_ = -1;
};

}  // namespace tesksim

#endif  // TESKSIM_TERMINAL_H_
