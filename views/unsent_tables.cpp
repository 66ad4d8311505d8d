// SPDX-License-Identifier: MIT

#include "views/unsent_tables.h"

#include <algorithm>
#include <map>

#include "views/words.h"

namespace views {

UnsentTables::UnsentTables(switcher::UnsentMessages& messages) : messages_(messages) {
  messages_.SetListener(this);
}

UnsentTables::~UnsentTables() { messages_.SetListener(nullptr); }

void UnsentTables::NoteSent(const switcher::TablePart& part, int messages, Sender sender) {
  Q_EMIT Sent(part, messages, sender);
  Q_EMIT Changed();
}

bool UnsentTables::Has(switcher::Table table) const {
  return std::ranges::any_of(messages_.Unsent(),
                             [table](const auto& entry) { return entry.first.table == table; });
}

UnsentTables::Parts UnsentTables::All() const {
  Parts parts;
  for (const auto& [part, since] : messages_.Unsent()) parts.push_back(part);
  return parts;
}

std::optional<switcher::Day> UnsentTables::Since(const switcher::TablePart& part) const {
  const auto entry = messages_.Unsent().find(part);
  if (entry == messages_.Unsent().end()) return std::nullopt;
  return entry->second;
}

QString UnsentTables::NeverSeenWords() const {
  const int neverSeen = messages_.NeverSeen();
  if (neverSeen == messages_.Count()) {
    return tr(
        "The switcher was never seen to hold this database. Send all of it, or retrieve what the "
        "switcher holds.");
  }
  return tr("The switcher was never seen to hold all of this database: not known are %1 of %2 "
            "messages. Send all of it, or retrieve what the switcher holds.")
      .arg(neverSeen)
      .arg(messages_.Count());
}

QString UnsentTables::Names() const { return PartWords(All()); }

QString UnsentTables::Words() const {
  const std::map<switcher::TablePart, switcher::Day>& unsent = messages_.Unsent();
  if (unsent.empty()) return {};
  const auto first = std::ranges::min_element(
      unsent, {}, [](const auto& entry) { return std::chrono::sys_days(entry.second); });
  return tr("Unsent since %1: %2").arg(DayWords(first->second), Names());
}

}  // namespace views
