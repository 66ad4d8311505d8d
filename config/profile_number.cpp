// SPDX-License-Identifier: MIT

#include "config/profile_number.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace config {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A decimal text whose value no double holds: endless, unless it is a tiny fraction.
double BeyondDouble(std::string_view number) {
  const auto exponent = number.find_first_of("eE");
  const std::string_view mantissa = number.substr(0, exponent);
  const std::string_view whole = mantissa.substr(0, mantissa.find('.'));
  const bool negativeExponent = exponent != std::string_view::npos && number[exponent + 1] == '-';
  const bool fraction = std::all_of(whole.begin(), whole.end(), [](char c) { return c == '0'; });
  return negativeExponent || (fraction && exponent == std::string_view::npos)
             ? 0.0
             : std::numeric_limits<double>::infinity();
}

double LeadingNumber(std::string_view text) {
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front())) != 0) {
    text.remove_prefix(1);
  }
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  // Letters would be taken for "inf" and "nan".
  const bool begins = !text.empty() &&
                      (IsDigit(text[0]) || (text[0] == '.' && text.size() > 1 && IsDigit(text[1])));
  if (!begins) return 0.0;
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range) {
    value = BeyondDouble(text.substr(0, static_cast<std::size_t>(end - text.data())));
  }
  return negative ? -value : value;
}

}  // namespace

std::int64_t ProfileNumber(std::string_view text, std::int64_t least, std::int64_t greatest) {
  // In the default rounding mode nearbyint() takes halves to the even neighbour.
  const double value = std::nearbyint(LeadingNumber(text));
  if (value <= static_cast<double>(least)) return least;
  if (value >= static_cast<double>(greatest)) return greatest;
  return static_cast<std::int64_t>(value);
}

}  // namespace config
