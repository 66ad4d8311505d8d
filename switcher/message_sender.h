// SPDX-License-Identifier: MIT

#ifndef SWITCHER_MESSAGE_SENDER_H_
#define SWITCHER_MESSAGE_SENDER_H_

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

#include "model/error_reporter.h"
#include "model/status.h"
#include "model/system_model.h"
#include "switcher/line_events.h"
#include "switcher/serial_port.h"

namespace switcher {

// The title of every report of a failed transmission, to the switcher or from it.
inline constexpr char kSendErrorTitle[] = "Serial Communications Error";

// Reports such a failure to the operator.
void ReportSendError(model::ErrorReporter& reporter, std::string_view failureLine,
                     const model::Status& status);

// Told of each data value of a table that has been handed to the port; empty for nobody.  A pair is
// one value; of the label texts every byte is one.  Code, checksum and end byte are none.
using SendProgress = std::function<void()>;

// Sends messages to the switcher: sets SendBusy, which the link takes back when the output has
// drained, hands the bytes to the port one by one, and reports a failure to the operator.
class MessageSender {
 public:
  // All must outlive the object.
  struct Services {
    model::SystemModel& model;
    SerialPort& port;
    model::ErrorReporter& reporter;
    LineEvents* account = nullptr;  // told of each message of a table; null for nobody
  };
  explicit MessageSender(const Services& services) : services_(services) {}

  // Sends a command.  A failure is reported to the operator under `failureLine`, and the result is
  // false.
  bool Send(std::span<const std::uint8_t> message, std::string_view failureLine) const;

  // A table goes out in these steps: Begin() sets SendBusy, before each of its messages is made.
  void Begin() const { services_.model.SendBusy = true; }

  // Writes a message of the table and tells `progress` of each value.  Stops at the first byte
  // that cannot be written; what was written by then stays written.
  model::Status WriteTable(std::span<const std::uint8_t> message,
                           const SendProgress& progress) const;

  // Ends a table that came to `status`.  Asks the port for the event that ends
  // SendBusy, also behind a failure: without it nothing would end the silence of the poll.  (A port
  // that has closed has no such event; what opens it again ends SendBusy.)  Reports a failure to
  // the operator under `failureLine`.  Returns whether there was none.
  bool End(const model::Status& status, std::string_view failureLine) const;

 private:
  // One write per byte.
  model::Status Write(std::span<const std::uint8_t> bytes) const;
  model::Status WriteBehindCode(std::span<const std::uint8_t> message,
                                const SendProgress& progress) const;

  const Services services_;
};

}  // namespace switcher

#endif  // SWITCHER_MESSAGE_SENDER_H_
