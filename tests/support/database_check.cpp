// SPDX-License-Identifier: MIT

#include "tests/support/database_check.h"

#include <memory>

#include "db/jet/audit.h"
#include "db/jet/database.h"

namespace test {

std::string WhatIsWrong(const std::filesystem::path& file) {
  std::unique_ptr<jet::Database> database;
  jet::Status status = jet::Database::Open(file, jet::Access::ReadOnly, &database);
  jet::Findings findings;
  if (status.ok()) status = jet::Audit(database->GetStore(), &findings);
  if (!status.ok()) return status.Description() + "\n";
  std::string wrong;
  for (const jet::Finding& finding : findings) {
    if (finding.IsProblem()) wrong += finding.text + "\n";
  }
  return wrong;
}

}  // namespace test
