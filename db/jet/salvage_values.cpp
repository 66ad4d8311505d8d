// SPDX-License-Identifier: MIT

#include "db/jet/salvage_values.h"

#include <algorithm>
#include <optional>

namespace jet {
namespace {

using Lengths = std::map<std::uint32_t, std::uint32_t>;

// The lengths of the rows on a sound page of long values; nothing for any other page.
std::optional<Lengths> LengthsOn(const Format& format, ByteView page) {
  const SlotTable slots = ReadSlots(format, page);
  if (!slots.isSound || PageOwner(page.data()) != kLongValueOwner) return std::nullopt;
  Lengths lengths;
  for (std::uint32_t i = 0; i < slots.entries.size(); ++i) {
    const Slot& slot = slots.entries[i].slot;
    if (!slot.IsDead() && slot.Length() > 0) lengths[i] = slot.Length();
  }
  return lengths;
}

// Whether a page with rows of these lengths has all that are expected.
bool Has(const std::optional<Lengths>& lengths, const Lengths& expected) {
  return lengths && std::all_of(expected.begin(), expected.end(), [&](const auto& row) {
           const auto found = lengths->find(row.first);
           return found != lengths->end() && found->second == row.second;
         });
}

// Where a row begins, by what is known of its page.
struct PossibleBegins {
  std::vector<std::uint32_t> begins;  // the likeliest first
  bool isSure = false;
};

PossibleBegins FindBegin(const Format& format, ByteView page, const Lengths& expected,
                         std::uint32_t slot) {
  const std::uint32_t length = expected.at(slot);
  // Whatever the page says of the number of its rows.
  const auto stated = [&](std::uint32_t index) -> std::optional<std::uint32_t> {
    const std::uint32_t at = format.slotsAt + 2 * index;
    if (at + 2 > page.size()) return std::nullopt;
    return GetU16(&page[at]) & kSlotOffset;
  };
  const std::optional<std::uint32_t> own = stated(slot);
  const std::optional<std::uint32_t> end =
      slot == 0 ? std::optional(format.pageSize) : stated(slot - 1);
  PossibleBegins possible;
  if (own && end && *own + length == *end) {
    possible.begins.push_back(*own);
    possible.isSure = LengthsOn(format, page).has_value();
    if (possible.isSure) return possible;  // otherwise it may be so by chance
  }

  // Rows are stacked from the end of the page.
  std::uint32_t begin = format.pageSize;
  std::uint32_t next = 0;
  for (auto row = expected.begin(); row != expected.end() && row->first == next; ++row, ++next) {
    begin -= std::min(begin, row->second);
    if (row->first != slot) continue;
    possible.begins.push_back(begin);
    return possible;
  }

  const auto following = expected.find(slot + 1);
  const auto isWhereNextEnds = [&](std::uint32_t at) {
    return following != expected.end() && stated(slot + 1) &&
           *stated(slot + 1) + following->second == at;
  };
  const bool endIsSurer = end && *end >= length && isWhereNextEnds(*end - length);
  if (endIsSurer) possible.begins.push_back(*end - length);
  if (own) possible.begins.push_back(*own);
  if (end && *end >= length && !endIsSurer) possible.begins.push_back(*end - length);
  const bool areAlike = std::all_of(expected.begin(), expected.end(),
                                    [length](const auto& row) { return row.second == length; });
  const std::uint32_t before = (slot + 1) * length;
  if (areAlike && before <= format.pageSize) possible.begins.push_back(format.pageSize - before);
  return possible;
}

}  // namespace

void SalvageValues::Expect(ByteView field) {
  LongValueHead head;
  if (!ReadLongValueHead(field, &head).ok() || head.kind != LongValueHead::kSingle) return;
  expected_[head.row.page][head.row.slot] = head.length;
}

// Pages that were written to each other's place are both there.  A page is taken for another one
// only when what stands in its place cannot be it, or when the two fit crosswise.
void SalvageValues::FindDisplaced() {
  displacedKnown_ = true;
  const Format& format = pages_.GetFormat();
  std::map<std::uint32_t, Lengths> loose;  // pages of values that are not what is expected there
  for (std::uint32_t page = 1; page < pages_.Count(); ++page) {
    std::optional<Lengths> lengths = LengthsOn(format, pages_.Read(page));
    const auto expected = expected_.find(page);
    if (!lengths || (expected != expected_.end() && *lengths == expected->second)) continue;
    if (!pages_.IsSaidFree(page)) loose.emplace(page, std::move(*lengths));
  }
  for (const auto& [page, expected] : expected_) {
    if (page >= pages_.Count()) continue;
    const ByteView bytes = pages_.Read(page);
    const bool isSomething = std::any_of(bytes.begin(), bytes.end(), [](auto b) { return b != 0; });
    const std::optional<Lengths> present = LengthsOn(format, bytes);
    if (!isSomething || (present && *present == expected)) continue;
    std::vector<std::uint32_t> fitting;
    for (const auto& [other, lengths] : loose) {
      if (other == page || lengths != expected) continue;
      const auto othersOwn = expected_.find(other);
      const bool isWanted = othersOwn != expected_.end();
      const bool isCrosswise = isWanted && present && othersOwn->second == *present;
      const bool isInItsPlace = isWanted && Has(lengths, othersOwn->second);
      if (isCrosswise || (!isInItsPlace && !Has(present, expected))) fitting.push_back(other);
    }
    if (fitting.size() == 1) displaced_[page] = fitting[0];
  }
}

bool SalvageValues::ReadRow(RowPointer row, std::uint32_t length, const Judge& judge) {
  if (!displacedKnown_) FindDisplaced();
  const auto displaced = displaced_.find(row.page);
  const std::uint32_t number = displaced == displaced_.end() ? row.page : displaced->second;
  const auto expected = expected_.find(row.page);
  if (number >= pages_.Count() || expected == expected_.end() ||
      !expected->second.contains(row.slot)) {
    return false;
  }
  const ByteView page = pages_.Read(number);
  const PossibleBegins possible = FindBegin(pages_.GetFormat(), page, expected->second, row.slot);
  return std::any_of(possible.begins.begin(), possible.begins.end(), [&](std::uint32_t begin) {
    return begin + length <= pages_.LengthOf(number) &&
           judge(page.subspan(begin, length), possible.isSure);
  });
}

bool SalvageValues::Read(ByteView field, const Judge& judge) {
  LongValueHead head;
  if (!ReadLongValueHead(field, &head).ok()) return false;
  // What is not in the row is somewhere and something.
  if (head.kind != LongValueHead::kInline && (head.length == 0 || !head.row)) return false;
  if (head.kind == LongValueHead::kSingle) return ReadRow(head.row, head.length, judge);
  ByteView value;
  Bytes chain;
  return ReadLongValue(pages_.GetPager(), field, &chain, &value).ok() && judge(value, true);
}

}  // namespace jet
