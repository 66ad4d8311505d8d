// SPDX-License-Identifier: MIT

#include "stations/journal/contents.h"

#include <algorithm>
#include <functional>
#include <tuple>
#include <utility>

namespace stations {

JournalContents::JournalContents(std::string text) : text_(std::move(text)) {
  for (std::string_view rest = text_; !rest.empty();) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    JournalLine line;
    if (ReadLine(rest.substr(0, end), &line)) {
      lines_.push_back(line);
    } else if (end > 0) {
      ++damaged_;
    }
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  const auto key = [](const JournalLine& line) {
    return std::tuple(line.number, line.kind, line.run, line.content);
  };
  const auto isBefore = [&](const JournalLine& a, const JournalLine& b) { return key(a) < key(b); };
  const auto isSame = [&](const JournalLine& a, const JournalLine& b) { return key(a) == key(b); };
  // As a rule each is before the next one, as it was written.
  if (std::ranges::adjacent_find(lines_, std::not_fn(isBefore)) != lines_.end()) {
    std::ranges::sort(lines_, isBefore);
    lines_.erase(std::unique(lines_.begin(), lines_.end(), isSame), lines_.end());
  }

  for (const JournalLine& line : lines_) {
    nextNumber_ = std::max(nextNumber_, std::max(line.number, line.run) + 1);
    JournalRun& run = RunOf(line.run);
    switch (line.kind) {
      case JournalLine::Kind::Run:
        run.beginning = line.content;
        break;
      case JournalLine::Kind::Act:
        run.acts.push_back(&line);
        break;
      case JournalLine::Kind::Saved:
        run.end = JournalRun::End::Saved;
        break;
      case JournalLine::Kind::Restored:
        run.end = JournalRun::End::Restored;
        break;
      case JournalLine::Kind::Discarded:
        run.end = JournalRun::End::Discarded;
        break;
    }
  }
}

const JournalRun* JournalContents::Run(std::int64_t id) const {
  const auto run = std::ranges::lower_bound(runs_, id, {}, &JournalRun::id);
  return run != runs_.end() && run->id == id ? &*run : nullptr;
}

JournalRun& JournalContents::RunOf(std::int64_t id) {
  const auto at = std::ranges::lower_bound(runs_, id, {}, &JournalRun::id);
  if (at != runs_.end() && at->id == id) return *at;
  JournalRun run;
  run.id = id;
  return *runs_.insert(at, std::move(run));
}

}  // namespace stations
