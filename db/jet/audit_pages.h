// SPDX-License-Identifier: MIT
//
// Book-keeping of an audit: who owns which page, which row was referred to.

#ifndef DB_JET_AUDIT_PAGES_H_
#define DB_JET_AUDIT_PAGES_H_

#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "db/jet/finding.h"
#include "db/jet/format.h"
#include "db/jet/pager.h"
#include "db/jet/usage_map.h"

namespace jet {

// Collects findings, each with its place and with what it is about before it.
class AuditLog {
 public:
  explicit AuditLog(Findings* findings) : findings_(*findings) {}

  void Problem(const std::string& subject, const std::string& text, std::uint32_t page = kNoPage,
               int row = -1) {
    findings_.push_back({Finding::Kind::Problem, subject + ": " + text, page, row});
  }
  void Note(const std::string& subject, const std::string& text, std::uint32_t page = kNoPage,
            int row = -1) {
    findings_.push_back({Finding::Kind::Note, subject + ": " + text, page, row});
  }
  void Problem(const std::string& subject, const Status& status) {
    Problem(subject, status.Text(), status.Page());
  }

 private:
  Findings& findings_;
};

class AuditPages {
 public:
  AuditPages(Pager& pager, AuditLog& log) : pager_(pager), log_(log), owners_(pager.PageCount()) {}

  // The page belongs to `owner`.  Pages of usage maps may be claimed again for the same.
  void Claim(std::uint32_t page, const std::string& owner);
  bool IsClaimed(std::uint32_t page) const { return !owners_[page].empty(); }
  const std::string& Owner(std::uint32_t page) const { return owners_[page]; }

  // Claims the row and the bitmap pages of a map and lists its members.
  void ClaimMap(RowPointer at, const std::string& owner, std::vector<std::uint32_t>* pages);

  // A data page: type, owner, slot table, count of free bytes.  False when its rows cannot be
  // looked at.
  bool CheckDataPage(std::uint32_t page, std::uint32_t owner, const std::string& subject);

 private:
  Pager& pager_;
  AuditLog& log_;
  std::vector<std::string> owners_;
  std::unordered_set<std::uint32_t> mapRows_;  // packed
};

}  // namespace jet

#endif  // DB_JET_AUDIT_PAGES_H_
