// SPDX-License-Identifier: MIT

#ifndef SWITCHER_TRANSMISSION_H_
#define SWITCHER_TRANSMISSION_H_

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "db/database_files.h"
#include "model/status.h"
#include "switcher/message_sender.h"
#include "switcher/wire/values.h"

namespace switcher {

// One table on its way to the switcher, message by message.
class Transmission {
 public:
  // Whether the table can be sent at all; asked before its first message is read.
  using Check = std::function<model::Status()>;

  // Reads the next message: *message stays empty when none is left, *more is false when none
  // follows it.
  using ReadNext =
      std::function<model::Status(jet::Database& database, Bytes* message, bool* more)>;

  // What it works with and what it sends.  What is referred to must outlive it.
  struct Services {
    const MessageSender& sender;
    db::DatabaseFiles& files;
    std::string name;              // what a download calls it: "Inhibits"
    std::string_view failureLine;  // a literal
    Check check;
    ReadNext readNext;
  };
  explicit Transmission(Services services) : services_(std::move(services)) {}

  // Sends the next message and says whether there may be more.  It has been read from the
  // database whole before its first byte is handed to the port; the shared record set of the
  // stations is not touched.  Sets SendBusy, and at the end asks the port to tell when its
  // output has drained.
  //
  // A failure is reported to the operator and ends the transmission; what was sent by then
  // stays sent.  After the end: does nothing and returns false.  A transmission that was begun
  // is to be stepped to its end.
  bool Step(const SendProgress& progress = {});

  // Steps to the end.  Returns how many messages were sent, or nothing after a failure.
  std::optional<int> Run();

  const std::string& Name() const { return services_.name; }

  // Whether a failure has ended it.
  bool Failed() const { return failed_; }

  // So many messages have been handed to the port whole.
  int Messages() const { return messages_; }

 private:
  // *message is empty when there is none.
  model::Status Read(Bytes* message, bool* more);

  Services services_;
  bool checked_ = false;
  bool ended_ = false;
  bool failed_ = false;
  int messages_ = 0;
};

}  // namespace switcher

#endif  // SWITCHER_TRANSMISSION_H_
