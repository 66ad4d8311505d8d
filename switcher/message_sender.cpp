// SPDX-License-Identifier: MIT

#include "switcher/message_sender.h"

#include "switcher/wire/message_table.h"

namespace switcher {

void ReportSendError(model::ErrorReporter& reporter, std::string_view failureLine,
                     const model::Status& status) {
  reporter.Show(model::ErrorReporter::Icon::Critical, kSendErrorTitle,
                ErrorText(failureLine, status));
}

bool MessageSender::Send(std::span<const std::uint8_t> message,
                         std::string_view failureLine) const {
  Begin();
  return End(Write(message), failureLine);
}

model::Status MessageSender::Write(std::span<const std::uint8_t> bytes) const {
  for (const std::uint8_t byte : bytes) {
    if (model::Status status = services_.port.Write(byte); !status.ok()) return status;
  }
  return {};
}

model::Status MessageSender::WriteTable(std::span<const std::uint8_t> message,
                                        const SendProgress& progress) const {
  if (model::Status status = Write(message.first(1)); !status.ok()) return status;
  model::Status status = WriteBehindCode(message, progress);
  if (services_.account == nullptr) return status;
  if (status.ok()) {
    services_.account->TableMessageSent(message);
  } else {
    services_.account->TableMessageCut(message);
  }
  return status;
}

model::Status MessageSender::WriteBehindCode(std::span<const std::uint8_t> message,
                                             const SendProgress& progress) const {
  constexpr std::size_t kBehindValues = 2;  // checksum and end byte
  const std::size_t width = FindMessage(message.front())->valueBytes;
  const std::size_t end = message.size() - kBehindValues;
  for (std::size_t value = 1; value < end; value += width) {
    if (model::Status status = Write(message.subspan(value, width)); !status.ok()) return status;
    if (progress) progress();
  }
  return Write(message.subspan(end));
}

bool MessageSender::End(const model::Status& status, std::string_view failureLine) const {
  if (services_.port.IsOpen()) services_.port.SetSendThreshold(1);
  if (!status.ok()) ReportSendError(services_.reporter, failureLine, status);
  return status.ok();
}

}  // namespace switcher
