// SPDX-License-Identifier: MIT

#ifndef SWITCHER_LINK_H_
#define SWITCHER_LINK_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "model/status.h"
#include "model/system_model.h"
#include "switcher/decoder.h"
#include "switcher/line_events.h"
#include "switcher/serial_port.h"
#include "switcher/wire/frame.h"

namespace switcher {

// What the link shows and asks for; the main window implements it.
class LinkDisplay {
 public:
  virtual ~LinkDisplay() = default;

  // The text of the status bar's first panel.
  virtual void ShowLinkText(std::string_view text) = 0;

  // Bytes wait to be decoded: let the decode timer run.
  virtual void StartDecodeTimer() = 0;

  // A whole message with this unknown code stands in front of the receive buffer and blocks
  // it; nothing when the way is free again.  Told on a change only.
  virtual void ShowBlockedCode(std::optional<std::uint8_t> code) = 0;
};

// Who takes the tables that the switcher sends in place of the decoder.
class TableTaker {
 public:
  virtual ~TableTaker() = default;

  // A whole message of a table, code to end byte, not checked yet.
  virtual void TakeTable(std::span<const std::uint8_t> message) = 0;
};

// The link to the switcher: the receive buffer, the poll, and the state of the link.
//
// Every event is a function; the timers that call PollTick() every second and DecodeTick()
// every 5 ms while there is work belong to the main window.
class Link : public SerialPortEvents {
 public:
  // The most that is kept of what was received and not decoded.  Beyond it the newest bytes
  // are dropped.
  static constexpr std::size_t kRxLimit = std::size_t{1} << 20;

  // What the link works with and who shows it; all must outlive it.
  struct Services {
    model::SystemModel& model;
    SerialPort& port;
    Decoder& decoder;
    LinkDisplay& display;
    LineEvents* account = nullptr;  // told of keep-alive polls and answers; null for nobody
  };
  explicit Link(const Services& services);
  ~Link() override;
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  // Opens the port ComPort for the first time and shows "Not Connected - COM " and its number.
  // When that fails the text stays as it is, and the poll tries again quietly.
  model::Status OpenPort();

  // Leaves the port that is open and opens port `number`, which becomes ComPort.  Of the switcher
  // there nothing is known: its map and its tally are asked for.  When the port cannot be opened
  // the poll tries again quietly.
  model::Status MoveTo(int number);

  // Polls the switcher and watches for its answers, if the port is open or KeepOpen() opens it.
  void PollTick();

  // While the port is closed, tries to open it, without a report; when it is back, the whole map
  // is asked for again.  Returns whether it is open.
  bool KeepOpen();

  // Decodes at most one message.  Returns false when the receive buffer was empty, that is,
  // when there was no work.
  bool DecodeTick();

  // Tables that the switcher sends go to `taker` from now on and not into the database; null: to
  // the decoder again.  All else goes to the decoder as ever.
  void DivertTables(TableTaker* taker) { tableTaker_ = taker; }

  // Takes note that the switcher answered (true) or is gone (false), and then shows a change.
  void SetLinkState(bool connected);

  // Drops the one byte in front of the receive buffer, if it is a code that blocks; decoding goes
  // on behind it.  Returns that code, or nothing when none blocks.
  std::optional<std::uint8_t> DiscardBlockedByte();

  // The bytes received and not decoded yet.
  const Bytes& RxBuffer() const { return received_.bytes; }

  void DataReceived() override;
  void OutputDrained() override;
  void PortLost() override;

 private:
  // Polls with this byte.
  void Poll(std::uint8_t poll);

  // Takes at most one message off the receive buffer and decodes it.
  void DecodeSwitcherMessage();

  void Pass(std::span<const std::uint8_t> message);
  void ShowBlockedCode(std::optional<std::uint8_t> code);
  std::string ConnectedText() const;
  std::string NotConnectedText() const;

  const Services services_;
  TableTaker* tableTaker_ = nullptr;
  ReceiveBuffer received_;
  std::optional<std::uint8_t> blockedCode_;
};

}  // namespace switcher

#endif  // SWITCHER_LINK_H_
