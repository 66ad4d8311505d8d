// SPDX-License-Identifier: MIT

#ifndef DB_JET_FINDING_H_
#define DB_JET_FINDING_H_

#include <cstdint>
#include <string>
#include <vector>

#include "db/jet/status.h"

namespace jet {

// Something an inspection of a file came upon.
struct Finding {
  enum class Kind {
    Problem,  // the file contradicts itself
    Note,     // harmless, and met in healthy files of other software
  };

  Kind kind = Kind::Problem;
  std::string text;
  std::uint32_t page = kNoPage;
  int row = -1;  // slot on the page, or -1

  bool IsProblem() const { return kind == Kind::Problem; }

  // The text and, where it has one, its place: " (page 17, row 3)".
  std::string Description() const {
    if (page == kNoPage) return text;
    return text + " (page " + std::to_string(page) +
           (row >= 0 ? ", row " + std::to_string(row) : "") + ")";
  }
};

using Findings = std::vector<Finding>;

inline bool HasProblem(const Findings& findings) {
  for (const Finding& finding : findings) {
    if (finding.IsProblem()) return true;
  }
  return false;
}

}  // namespace jet

#endif  // DB_JET_FINDING_H_
