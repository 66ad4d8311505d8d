// SPDX-License-Identifier: MIT

#ifndef TOOLS_GALLERY_NO_SWITCHER_H_
#define TOOLS_GALLERY_NO_SWITCHER_H_

#include <optional>
#include <string_view>
#include <utility>

#include <chrono>

#include "model/error_reporter.h"
#include "switcher/poll_switch.h"
#include "switcher/serial_port.h"
#include "views/table_sender.h"

namespace gallery {

// What the pictures show as today.
inline constexpr std::chrono::year_month_day kToday{std::chrono::year(2026), std::chrono::November,
                                                    std::chrono::day(21)};

// A serial port with nothing at its other end.
class DeadLine : public switcher::SerialPort {
 public:
  void SetEvents(switcher::SerialPortEvents* /*events*/) override {}
  model::Status Open(int /*number*/) override {
    isOpen_ = !isMissing;
    if (isMissing) return {switcher::kPortUnavailable, "The port is not available"};
    return {};
  }
  void Close() override { isOpen_ = false; }
  bool IsOpen() const override { return isOpen_; }
  int Number() const override { return 1; }
  switcher::Bytes Read() override { return std::exchange(incoming, {}); }
  model::Status Write(std::uint8_t /*byte*/) override {
    wasWritten = true;
    return {};
  }
  std::size_t Unsent() const override { return 0; }
  void SetSendThreshold(int /*threshold*/) override {}

  bool isMissing = false;  // the next Open() fails
  bool wasWritten = false;
  switcher::Bytes incoming;  // for the next Read()

 private:
  bool isOpen_ = true;
};

// Sends nothing and shows no boxes.
class NoSwitcher : public views::TableSender,
                   public switcher::PollSwitch,
                   public model::ErrorReporter {
 public:
  std::optional<int> Send(const switcher::TablePart& /*part*/) override { return 1; }
  void SetPolling(bool /*on*/) override {}
  void Show(Icon /*icon*/, std::string_view /*title*/, std::string_view /*text*/) override {}
};

}  // namespace gallery

#endif  // TOOLS_GALLERY_NO_SWITCHER_H_
