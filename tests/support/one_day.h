// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_ONE_DAY_H_
#define TESTS_SUPPORT_ONE_DAY_H_

#include <chrono>

namespace test {

// What is today in tests: 21 Nov 2026.
inline constexpr std::chrono::year_month_day kToday{std::chrono::year(2026), std::chrono::November,
                                                    std::chrono::day(21)};

}  // namespace test

#endif  // TESTS_SUPPORT_ONE_DAY_H_
