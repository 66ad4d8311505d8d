// SPDX-License-Identifier: MIT

#include "switcher/unsent/confirmation.h"

#include <algorithm>
#include <utility>

namespace switcher {
namespace {

std::vector<TablePart> PartsOf(const std::map<TablePart, Digest>& messages) {
  std::vector<TablePart> parts;
  for (const auto& [part, digest] : messages) parts.push_back(part);
  return parts;
}

}  // namespace

void Confirmation::Sent(const TablePart& part, Digest digest) {
  asked_.erase(part);
  sent_[part] = digest;
}

void Confirmation::Forget(const TablePart& part) {
  sent_.erase(part);
  asked_.erase(part);
}

std::vector<TablePart> Confirmation::Polled() {
  std::vector<TablePart> givenUp;
  if (polls_ == kMostPolls) {
    givenUp = PartsOf(std::exchange(asked_, {}));
    polls_ = 0;
    unanswered_ = 0;
  }
  for (const auto& [part, digest] : std::exchange(sent_, {})) {
    asked_[part] = digest;
    std::erase(givenUp, part);
  }
  ++polls_;
  ++unanswered_;
  return givenUp;
}

std::map<TablePart, Digest> Confirmation::Answered(int answers) {
  // One that nobody asked for answers no poll.
  if (unanswered_ == 0) return {};
  unanswered_ -= std::min(unanswered_, answers);
  if (unanswered_ > 0) return {};
  polls_ = 0;
  return std::exchange(asked_, {});
}

std::vector<TablePart> Confirmation::Lost() {
  std::map<TablePart, Digest> lost = std::exchange(sent_, {});
  lost.merge(std::exchange(asked_, {}));
  polls_ = 0;
  unanswered_ = 0;
  return PartsOf(lost);
}

}  // namespace switcher
