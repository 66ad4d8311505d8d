// SPDX-License-Identifier: MIT

#include "views/rules/target_list.h"

#include <algorithm>
#include <charconv>

#include "model/flag_string.h"
#include "views/rules/csv.h"

namespace rules {
namespace {

constexpr int kCountedTargets = 10;
constexpr char kNumberMark = '#';

bool TellsItsTarget(const std::string& label, std::span<const std::string> labels) {
  if (label.empty() || label.front() == kNumberMark || label.front() == '(') return false;
  if (Trimmed(label).size() != label.size()) return false;
  if (label.find_first_of(",\"\r\n\t;") != std::string::npos) return false;
  return std::ranges::count(labels, label) == 1;
}

// The number that a text is, from 1 to `count`; 0 for every other text.
int NumberIn(std::string_view text, std::size_t count) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isAll = error == std::errc() && end == text.data() + text.size();
  return isAll && number >= 1 && static_cast<std::size_t>(number) <= count ? number : 0;
}

// The list without the count before it, unless that begins a label.
std::string_view WithoutCount(std::string_view text, std::span<const std::string> labels) {
  if (!text.starts_with('(')) return text;
  const std::string_view first = Trimmed(text.substr(0, text.find(',')));
  if (std::ranges::find(labels, first) != labels.end()) return text;
  const std::size_t end = text.find(')');
  if (end == std::string_view::npos || end == 1) return text;
  const std::string_view count = text.substr(1, end - 1);
  const bool isCount = std::ranges::all_of(count, [](char c) { return c >= '0' && c <= '9'; });
  return isCount ? text.substr(end + 1) : text;
}

TargetListProblem Read(std::string_view target, std::span<const std::string> labels, int* number) {
  if (target.starts_with(kNumberMark)) {
    *number = NumberIn(target.substr(1), labels.size());
    if (*number != 0) return TargetListProblem::None;
  }
  const auto found = std::ranges::find(labels, target);
  if (found != labels.end()) {
    *number = static_cast<int>(found - labels.begin()) + 1;
    return std::ranges::count(labels, target) == 1 ? TargetListProblem::None
                                                   : TargetListProblem::Ambiguous;
  }
  *number = NumberIn(target, labels.size());
  return *number != 0 ? TargetListProblem::None : TargetListProblem::Unknown;
}

}  // namespace

std::string WriteTargetList(const std::string& flags, std::span<const std::string> labels) {
  std::string list;
  int count = 0;
  for (std::size_t i = 0; i < labels.size(); ++i) {
    if (!model::FlagIsSet(flags, static_cast<int>(i) + 1)) continue;
    if (count++ != 0) list += ", ";
    list += TellsItsTarget(labels[i], labels) ? labels[i] : kNumberMark + std::to_string(i + 1);
  }
  return count < kCountedTargets ? list : "(" + std::to_string(count) + ") " + list;
}

TargetListFault ReadTargetList(std::string_view text, std::span<const std::string> labels,
                               std::string* flags) {
  flags->assign(labels.size(), '0');
  std::string_view rest = Trimmed(WithoutCount(Trimmed(text), labels));
  while (!rest.empty()) {
    const std::size_t comma = rest.find(',');
    const std::string_view target = Trimmed(rest.substr(0, comma));
    rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
    if (target.empty()) continue;  // a comma too many
    int number = 0;
    if (const TargetListProblem problem = Read(target, labels, &number);
        problem != TargetListProblem::None) {
      return {problem, std::string(target)};
    }
    (*flags)[static_cast<std::size_t>(number - 1)] = '1';
  }
  return {};
}

}  // namespace rules
