// SPDX-License-Identifier: MIT

#include "db/jet/audit.h"

#include <map>
#include <string>
#include <vector>

#include "db/jet/audit_pages.h"
#include "db/jet/audit_table.h"

namespace jet {
namespace {

constexpr const char* kCatalog = "catalogue";

void ClaimGlobalMaps(Pager& pager, AuditPages& pages, AuditLog& log) {
  pages.Claim(0, "header");
  (void)pages.CheckDataPage(kGlobalMapPage, 1, "global map");
  std::vector<std::uint32_t> ignored;
  pages.ClaimMap({kGlobalMapPage, 0}, "global map", &ignored);
  UsageMap second;
  if (UsageMap::Open(pager, {kGlobalMapPage, 1}, &second).ok()) {
    pages.ClaimMap({kGlobalMapPage, 1}, "second global map", &ignored);
  } else {
    log.Note("second global map", "there is none", kGlobalMapPage);
  }
}

void CheckTables(Store& store, const std::vector<CatalogEntry>& entries, AuditPages& pages,
                 AuditLog& log) {
  std::map<std::int32_t, std::string> seen;
  for (const CatalogEntry& entry : entries) {
    if (!entry.IsTable()) continue;
    const std::string subject = "table \"" + entry.name + "\"";
    const auto [other, isNew] = seen.emplace(entry.id, entry.name);
    if (!isNew) {
      log.Problem(kCatalog, subject + " has the same definition as table \"" + other->second + "\"",
                  entry.row.page, entry.row.slot);
      continue;
    }
    std::shared_ptr<Table> table;
    const Status status = store.OpenTable(entry.name, &table);
    if (!status.ok()) {
      log.Problem(subject, status);
      continue;
    }
    if (table->Def().page != static_cast<std::uint32_t>(entry.id)) {
      log.Problem(kCatalog, "two tables are named \"" + entry.name + "\"", entry.row.page,
                  entry.row.slot);
      continue;
    }
    TableAudit(*table, pages, log).Run();
  }
  if (!seen.contains(kCatalogPage)) log.Problem(kCatalog, "it does not name itself", kCatalogPage);
}

// The global map against the pages that were claimed.
void CheckFreePages(Store& store, const AuditPages& pages, AuditLog& log) {
  for (std::uint32_t page = 0; page < store.GetPager().PageCount(); ++page) {
    bool isFree = false;
    const Status status = store.Allocator().IsFree(page, &isFree);
    if (!status.ok()) {
      log.Problem("global map", status);
      return;
    }
    if (isFree && pages.IsClaimed(page)) {
      log.Problem(pages.Owner(page), "the page is marked as free", page);
    } else if (!isFree && !pages.IsClaimed(page)) {
      log.Note("global map", "the page is lost: neither free nor in use", page);
    }
  }
}

}  // namespace

Status Audit(Store& store, Findings* findings) {
  AuditLog log(findings);
  AuditPages pages(store.GetPager(), log);
  const std::vector<CatalogEntry>* entries = nullptr;
  Status status = store.Catalog(&entries);
  if (!status.ok()) return status;
  if (store.GetHeader().hasPartialPage) {
    log.Problem("file", "it ends in the middle of a page", store.GetPager().PageCount());
  }
  ClaimGlobalMaps(store.GetPager(), pages, log);
  const std::vector<CatalogEntry> copy = *entries;
  CheckTables(store, copy, pages, log);
  CheckFreePages(store, pages, log);
  return {};
}

}  // namespace jet
