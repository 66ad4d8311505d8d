// SPDX-License-Identifier: MIT

#include "stations/journal/compaction.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "stations/journal/act.h"
#include "stations/journal/fold_acts.h"

namespace stations {
namespace {

// Lines in the order of their numbers.  One may stand twice: a disk that reports a failure may have
// taken the line all the same, and the next one has its number.
class Kept {
 public:
  void Add(const JournalLine& line) { Add(line, WriteLine(line)); }
  void Add(const JournalLine& line, std::string text) {
    lines_.emplace(std::tuple(line.number, line.kind, line.run), std::move(text));
  }

  std::string All() const {
    std::string all;
    for (const auto& [key, text] : lines_) all += text;
    return all;
  }

 private:
  std::multimap<std::tuple<std::int64_t, JournalLine::Kind, std::int64_t>, std::string> lines_;
};

// Of a run that broke off what its acts come to, in the places of the last ones; those that cannot
// be read as they are.
void KeepFolded(const JournalRun& run, Kept* kept) {
  std::vector<Act> acts;
  std::vector<const JournalLine*> lines;
  for (const JournalLine* const line : run.acts) {
    Act act;
    if (ReadAct(line->content, &act)) {
      lines.push_back(line);
      acts.push_back(std::move(act));
    } else {
      kept->Add(*line);
    }
  }
  if (lines.size() < 2) {
    for (const JournalLine* const line : lines) kept->Add(*line);
    return;
  }
  const std::vector<Act> folded = FoldActs(std::move(acts));
  auto place = lines.end() - static_cast<std::ptrdiff_t>(folded.size());
  for (const Act& act : folded) {
    const std::string content = WriteAct(act);
    JournalLine line = **place++;
    line.content = content;
    kept->Add(line);
  }
}

}  // namespace

std::string Compact(const JournalContents& contents, std::uint64_t history) {
  Kept kept;
  std::set<std::int64_t> brokenOff;
  for (const JournalRun& run : contents.Runs()) {
    if (!run.IsUnsaved()) continue;
    brokenOff.insert(run.id);
    KeepFolded(run, &kept);
  }
  std::uint64_t bytes = 0;
  for (auto line = contents.Lines().rbegin(); line != contents.Lines().rend(); ++line) {
    if (brokenOff.contains(line->run)) {
      if (line->kind != JournalLine::Kind::Act) kept.Add(*line);
      continue;
    }
    if (bytes > history) continue;
    std::string text = WriteLine(*line);
    bytes += text.size();
    if (bytes <= history) kept.Add(*line, std::move(text));
  }
  return kept.All();
}

}  // namespace stations
