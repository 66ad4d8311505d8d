// SPDX-License-Identifier: MIT

#include "switcher/unsent/held_messages.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <iterator>
#include <utility>

namespace switcher {
namespace {

using State = HeldMessage::State;

constexpr std::array kStates = {
    std::pair{State::Held, std::string_view("held")},
    std::pair{State::Found, std::string_view("found")},
    std::pair{State::Open, std::string_view("open")},
};

constexpr std::string_view kNone = "-";

// Beyond this no station has a number.
constexpr int kLastStation = 32767;

template <typename Words>
std::string_view WordOf(const Words& words, auto value) {
  return std::ranges::find(words, value, &Words::value_type::first)->second;
}

template <typename Words>
bool ReadWord(const Words& words, std::string_view word, auto* value) {
  const auto entry = std::ranges::find(words, word, &Words::value_type::second);
  if (entry == words.end()) return false;
  *value = entry->first;
  return true;
}

// Cuts what stands before the next separator off the front of `rest`.
std::string_view Next(std::string_view* rest, char separator) {
  const std::size_t end = std::min(rest->find(separator), rest->size());
  const std::string_view next = rest->substr(0, end);
  rest->remove_prefix(std::min(end + 1, rest->size()));
  return next;
}

// All of the word is a number.
template <typename Number>
bool ReadNumber(std::string_view word, int base, Number* number) {
  const char* const end = word.data() + word.size();
  const auto result = std::from_chars(word.data(), end, *number, base);
  return result.ec == std::errc() && result.ptr == end;
}

bool ReadPart(std::string_view table, std::string_view station, TablePart* part) {
  const db::TableKind* const kind = db::FindTable(table);
  if (kind == nullptr) return false;
  part->table = kind->table;
  if (kind->rows == db::Rows::None) return station == kNone;
  return ReadNumber(station, 10, &part->station) && part->station >= 1 &&
         part->station <= kLastStation;
}

bool ReadDigest(std::string_view word, Digest* digest) {
  constexpr std::size_t kDigits = 16;
  return word.size() == kDigits && ReadNumber(word, 16, digest);
}

// "2026-11-21"
std::string DayText(const std::optional<Day>& day) {
  if (!day) return std::string(kNone);
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", static_cast<int>(day->year()),
                static_cast<unsigned>(day->month()), static_cast<unsigned>(day->day()));
  return text.data();
}

bool ReadDay(std::string_view word, std::optional<Day>* day) {
  if (word == kNone) return true;
  unsigned year = 0;
  unsigned month = 0;
  unsigned number = 0;
  std::string_view rest = word;
  if (!ReadNumber(Next(&rest, '-'), 10, &year) || !ReadNumber(Next(&rest, '-'), 10, &month) ||
      !ReadNumber(rest, 10, &number)) {
    return false;
  }
  *day = Day(std::chrono::year(static_cast<int>(year)), std::chrono::month(month),
             std::chrono::day(number));
  // Reading takes what is never written, such as a month of one digit.
  return (*day)->ok() && DayText(*day) == word;
}

bool ReadLine(std::string_view line, TablePart* part, HeldMessage* message) {
  const std::string_view table = Next(&line, ' ');
  const std::string_view station = Next(&line, ' ');
  return ReadPart(table, station, part) && ReadWord(kStates, Next(&line, ' '), &message->state) &&
         ReadDigest(Next(&line, ' '), &message->digest) && ReadDay(line, &message->since);
}

}  // namespace

std::string WriteHeld(const HeldMessages& messages) {
  std::string text;
  for (const auto& [part, message] : messages) {
    if (message.state == State::Found && !message.since) continue;
    text += db::KindOf(part.table).word;
    text += ' ';
    text += part.station == model::kAll ? kNone : std::to_string(part.station);
    text += ' ';
    text += WordOf(kStates, message.state);
    std::array<char, 20> digest{};
    std::snprintf(digest.data(), digest.size(), " %016llx ",
                  static_cast<unsigned long long>(message.digest));
    text += digest.data() + DayText(message.since) + '\n';
  }
  return text;
}

HeldMessages ReadHeld(std::string_view text) {
  HeldMessages messages;
  while (!text.empty()) {
    TablePart part;
    HeldMessage message;
    if (ReadLine(Next(&text, '\n'), &part, &message)) messages[part] = message;
  }
  return messages;
}

}  // namespace switcher
