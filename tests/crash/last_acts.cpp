// SPDX-License-Identifier: MIT

#include "tests/crash/last_acts.h"

#include <algorithm>
#include <string>
#include <utility>

namespace crash {
namespace {

constexpr std::size_t kMostOfAnEdit = 3;  // acts

// Fields that no table carries are left out.
void LayOver(const stations::Act& act, test::StoredTables* tables) {
  for (const stations::Change& change : act.changes) {
    for (const stations::FieldChange& field : change.fields) {
      const auto kept = tables->find(std::to_string(change.station) + " " + field.field);
      if (kept == tables->end()) continue;
      const bool isText = field.after.GetKind() == jet::Value::Kind::Text;
      kept->second = isText ? field.after.Text() : std::to_string(field.after.Int());
    }
  }
}

}  // namespace

std::vector<stations::Act> LastActs(const stations::JournalContents& journal) {
  std::vector<stations::Act> acts;
  const stations::JournalRun* last = nullptr;
  for (const stations::JournalRun& run : journal.Runs()) {
    if (run.IsUnsaved()) last = &run;
  }
  if (last == nullptr) return acts;
  const std::size_t count = std::min(last->acts.size(), kMostOfAnEdit);
  for (std::size_t i = last->acts.size() - count; i < last->acts.size(); ++i) {
    stations::Act act;
    if (stations::ReadAct(last->acts[i]->content, &act)) acts.push_back(std::move(act));
  }
  return acts;
}

bool IsSeenAndWholeActs(const test::StoredTables& tables, const test::StoredTables& seen,
                        const std::vector<stations::Act>& acts,
                        const test::StoredTables& arriving) {
  const auto isFrom = [](const test::StoredTables& source, const auto& each) {
    const auto found = source.find(each.first);
    return found != source.end() && found->second == each.second;
  };
  if (tables.size() != seen.size()) return false;
  for (std::size_t first = acts.size();; --first) {
    test::StoredTables expected = seen;
    for (std::size_t i = first; i < acts.size(); ++i) LayOver(acts[i], &expected);
    if (std::ranges::all_of(tables, [&](const auto& each) {
          return isFrom(expected, each) || isFrom(arriving, each);
        })) {
      return true;
    }
    if (first == 0) return false;
  }
}

}  // namespace crash
