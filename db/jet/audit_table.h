// SPDX-License-Identifier: MIT

#ifndef DB_JET_AUDIT_TABLE_H_
#define DB_JET_AUDIT_TABLE_H_

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "db/jet/audit_pages.h"
#include "db/jet/table.h"

namespace jet {

// The audit of one table.
class TableAudit {
 public:
  TableAudit(Table& table, AuditPages& pages, AuditLog& log);

  void Run();

 private:
  // Rows of the pages of one long-value column.
  struct ValueRows {
    std::unordered_set<std::uint32_t> pages;
    std::unordered_set<std::uint32_t> referred;  // packed row pointers
  };

  void ClaimDefinition();
  void ClaimDataPages();
  void ClaimLongValuePages();
  void CheckRows();
  void CheckRow(RowPointer row);
  void CheckLongValue(RowPointer row, int column, ByteView field);
  void CheckUnreferred();
  void CheckIndexes();
  void CheckIndex(std::size_t number);
  std::string IndexSubject(std::size_t number) const;

  Table& table_;
  const TableDef& def_;
  Pager& pager_;
  const Format& format_;
  AuditPages& pages_;
  AuditLog& log_;
  const std::string subject_;

  std::vector<std::uint32_t> dataPages_;       // sound ones
  std::unordered_set<std::uint32_t> moved_;    // packed places of moved rows that were met
  std::unordered_map<int, ValueRows> values_;  // by column
  bool rowsSound_ = true;
};

}  // namespace jet

#endif  // DB_JET_AUDIT_TABLE_H_
