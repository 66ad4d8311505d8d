// SPDX-License-Identifier: MIT

#include "stations/journal/compaction.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "stations/fold.h"

namespace stations {
namespace {

// What is kept of a run that broke off, by the numbers of the lines.
void KeepWhole(const JournalRun& run, std::map<std::int64_t, std::string>* kept) {
  struct Pending {
    const JournalLine* line = nullptr;  // the last of those made one
    std::vector<Act> acts;
  } pending;
  const auto write = [&] {
    if (pending.acts.empty()) return;
    JournalLine line = *pending.line;
    std::string content(line.content);
    if (pending.acts.size() > 1) {
      Act act = pending.acts.back();
      act.changes = ChangesOf(pending.acts);
      content = WriteAct(act);
    }
    line.content = content;
    (*kept)[line.number] = WriteLine(line);
    pending = {};
  };
  for (const JournalLine* const line : run.acts) {
    Act act;
    if (!ReadAct(line->content, &act)) {
      write();
      (*kept)[line->number] = WriteLine(*line);
      continue;
    }
    if (!pending.acts.empty() && pending.acts.back().origin != act.origin) write();
    pending.line = line;
    pending.acts.push_back(std::move(act));
  }
  write();
}

}  // namespace

std::vector<Act> ActsOf(const JournalRun& run, std::size_t* unreadable) {
  std::vector<Act> acts;
  *unreadable = 0;
  for (const JournalLine* const line : run.acts) {
    Act act;
    if (ReadAct(line->content, &act)) {
      acts.push_back(std::move(act));
    } else {
      ++*unreadable;
    }
  }
  return acts;
}

std::vector<Change> ChangesOf(std::span<const Act> acts) {
  std::vector<Change> all;
  for (const Act& act : acts) all.insert(all.end(), act.changes.begin(), act.changes.end());
  return Fold(all);
}

std::string Compact(const JournalContents& contents, std::uint64_t history) {
  std::map<std::int64_t, std::string> kept;
  std::set<std::int64_t> brokenOff;
  for (const JournalRun& run : contents.Runs()) {
    if (!run.IsUnsaved()) continue;
    brokenOff.insert(run.id);
    KeepWhole(run, &kept);
  }
  std::uint64_t bytes = 0;
  for (auto line = contents.Lines().rbegin(); line != contents.Lines().rend(); ++line) {
    if (brokenOff.contains(line->run)) {
      if (line->kind != JournalLine::Kind::Act) kept[line->number] = WriteLine(*line);
      continue;
    }
    if (bytes > history) continue;
    std::string text = WriteLine(*line);
    bytes += text.size();
    if (bytes <= history) kept[line->number] = std::move(text);
  }
  std::string all;
  for (const auto& [number, text] : kept) all += text;
  return all;
}

}  // namespace stations
