// SPDX-License-Identifier: MIT

#include "stations/journal/line.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace stations {
namespace {

using Kind = JournalLine::Kind;

constexpr std::array kWords = {
    std::pair{Kind::Run, std::string_view("run")},
    std::pair{Kind::Act, std::string_view("act")},
    std::pair{Kind::Saved, std::string_view("saved")},
    std::pair{Kind::Restored, std::string_view("restored")},
    std::pair{Kind::Discarded, std::string_view("discarded")},
};

// Of the number and of what follows the checksum, as if it were not there.
std::string ChecksumOf(std::string_view number, std::string_view rest) {
  uLong sum = crc32(0, nullptr, 0);
  for (const std::string_view part : {number, rest}) {
    sum = crc32(sum, reinterpret_cast<const Bytef*>(part.data()), static_cast<uInt>(part.size()));
  }
  // By hand: a start reads thousands of lines, and printf() would take as long as all the rest.
  std::string text(8, '0');
  for (auto digit = text.rbegin(); sum != 0; sum >>= 4) *digit++ = "0123456789abcdef"[sum & 0xF];
  return text;
}

// Cuts the text up to the next blank off the front of `rest`.
std::string_view NextWord(std::string_view* rest) {
  const std::size_t end = std::min(rest->find(' '), rest->size());
  const std::string_view word = rest->substr(0, end);
  rest->remove_prefix(std::min(end + 1, rest->size()));
  return word;
}

// So far a run never gets, and counting on from there cannot overflow.
constexpr std::int64_t kHighest = 1'000'000'000'000'000;

bool ReadNumber(std::string_view word, std::int64_t* number) {
  const char* const end = word.data() + word.size();
  const auto result = std::from_chars(word.data(), end, *number);
  return result.ec == std::errc() && result.ptr == end && *number > 0 && *number <= kHighest;
}

}  // namespace

std::string WriteLine(const JournalLine& line) {
  const std::string number = std::to_string(line.number);
  std::string rest(
      std::ranges::find(kWords, line.kind, &decltype(kWords)::value_type::first)->second);
  rest += ' ' + std::to_string(line.run) + ' ';
  rest += line.content;
  return number + ' ' + ChecksumOf(number, rest) + ' ' + rest + '\n';
}

bool ReadLine(std::string_view text, JournalLine* line) {
  const std::string_view number = NextWord(&text);
  const std::string_view checksum = NextWord(&text);
  if (!ReadNumber(number, &line->number) || checksum != ChecksumOf(number, text)) return false;
  const auto word =
      std::ranges::find(kWords, NextWord(&text), &decltype(kWords)::value_type::second);
  if (word == kWords.end() || !ReadNumber(NextWord(&text), &line->run)) return false;
  line->kind = word->first;
  line->content = text;
  return true;
}

}  // namespace stations
