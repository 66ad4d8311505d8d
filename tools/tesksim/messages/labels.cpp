// SPDX-License-Identifier: MIT

#include "tools/tesksim/messages/labels.h"

#include <utility>

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/label_texts.h"

namespace tesksim {

namespace {

bool IsSelector(int selector) {
  return selector == switcher::kOutputLabels || selector == switcher::kInputLabels;
}

}  // namespace

Outcome LabelsHandler::Accept(std::span<const std::uint8_t> message) {
  return message.front() == switcher::kLabelOrderCode ? AcceptOrder(message) : AcceptTexts(message);
}

Outcome LabelsHandler::AcceptOrder(std::span<const std::uint8_t> message) {
  order_ = switcher::ParseLabelOrder(message, state_.Sizes().labels);
  if (!order_.has_value()) {
    const std::size_t required =
        switcher::MessageLength(switcher::kLabelOrderCode, state_.Sizes().labels);
    return Rejected(message.size() != required ? switcher::DecodeStatus::WrongSize
                                               : switcher::DecodeStatus::ChecksumFailed);
  }
  Outcome outcome{.result = Outcome::Result::Done,
                  .text = "selector " + std::to_string(order_->selector)};
  if (IsSelector(order_->selector) && IsComplete(*order_)) return outcome;
  outcome.result = Outcome::Result::Refused;
  if (IsSelector(order_->selector)) outcome.text += ", not every station once";
  order_.reset();
  return outcome;
}

Outcome LabelsHandler::AcceptTexts(std::span<const std::uint8_t> message) {
  const auto order = std::exchange(order_, std::nullopt);
  switcher::LabelTexts texts;
  const auto status = switcher::ParseLabelTexts(message, state_.Sizes().labels, &texts);
  if (status != switcher::DecodeStatus::Ok) return Rejected(status);
  Outcome outcome{.result = Outcome::Result::Refused,
                  .text = "selector " + std::to_string(texts.selector)};
  if (!order.has_value() || order->selector != texts.selector) {
    outcome.text += ", no order before it";
    return outcome;
  }
  auto& labels = texts.selector == switcher::kOutputLabels ? state_.outLabels : state_.inLabels;
  for (std::size_t i = 0; i < texts.labels.size(); ++i) {
    labels[order->stations[i]] = texts.labels[i];
  }
  outcome.result = Outcome::Result::Done;
  return outcome;
}

bool LabelsHandler::IsComplete(const switcher::LabelOrder& order) const {
  std::vector<bool> seen(static_cast<std::size_t>(state_.Sizes().labels));
  for (const int station : order.stations) {
    const auto index = static_cast<std::size_t>(station - 1);
    if (index >= seen.size() || seen[index]) return false;
    seen[index] = true;
  }
  return true;
}

switcher::Bytes LabelsHandler::Report(int selector) const {
  const auto& labels = selector == switcher::kOutputLabels ? state_.outLabels : state_.inLabels;
  switcher::LabelTexts texts{.selector = selector, .labels = {}};
  for (int label = 1; label <= labels.Size(); ++label) texts.labels.push_back(labels[label]);
  return switcher::EncodeLabelTexts(texts);
}

}  // namespace tesksim
