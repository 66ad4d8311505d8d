// SPDX-License-Identifier: MIT
//
// Takes arbitrary bytes for the journal.  What is read of it must be read again when it was written
// again, and making it shorter must lose nothing of a run that broke off.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "stations/journal/act.h"
#include "stations/journal/compaction.h"
#include "stations/journal/contents.h"
#include "stations/journal/unsaved_run.h"

namespace {

void Check(bool holds) {
  if (!holds) std::abort();
}

bool IsSame(const std::vector<stations::Change>& one, const std::vector<stations::Change>& other) {
  stations::Act first;
  stations::Act second;
  first.changes = one;
  second.changes = other;
  for (stations::Act* const act : {&first, &second}) {
    for (stations::Change& change : act->changes) {
      std::ranges::sort(change.fields, {}, &stations::FieldChange::field);
    }
  }
  return stations::WriteAct(first) == stations::WriteAct(second);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);

  // Checksums are not found by chance: the rest stands on good lines, too.
  stations::Act act;
  if (stations::ReadAct(text, &act)) {
    stations::Act again;
    Check(stations::ReadAct(stations::WriteAct(act), &again));
    Check(stations::WriteAct(act) == stations::WriteAct(again));
  }
  // What a run begins with is read and written alike.
  stations::JournalRun begun;
  begun.beginning = text;
  const std::string database = stations::ReadUnsavedRun(begun).database;
  const std::string beginning = stations::WriteBeginning(database);
  begun.beginning = beginning;
  Check(stations::ReadUnsavedRun(begun).database == database);
  std::string lines(text);
  std::int64_t number = 1;
  for (std::string_view rest = text; !rest.empty();) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    lines += stations::WriteLine({.number = number,
                                  .kind = stations::JournalLine::Kind::Act,
                                  .run = 1 + number % 3,
                                  .content = rest.substr(0, end)});
    ++number;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  const stations::JournalContents contents(lines);
  const std::string compacted = stations::Compact(contents, 100);
  const stations::JournalContents again(compacted);
  Check(again.DamagedLines() == 0);
  for (const stations::JournalRun& run : contents.Runs()) {
    if (!run.IsUnsaved()) continue;
    const stations::JournalRun* const kept = again.Run(run.id);
    Check(kept != nullptr && kept->IsUnsaved());
    std::size_t unreadable = 0;
    std::size_t keptUnreadable = 0;
    const auto before = stations::ChangesOf(stations::ActsOf(run, &unreadable));
    const auto after = stations::ChangesOf(stations::ActsOf(*kept, &keptUnreadable));
    Check(unreadable == keptUnreadable && IsSame(before, after));
    const stations::UnsavedRun read = stations::ReadUnsavedRun(run);
    Check(IsSame(stations::ChangesOf(read, stations::Share::All), before));
    if (!read.HasReceived())
      Check(IsSame(stations::ChangesOf(read, stations::Share::Edits), before));
  }
  return 0;
}
