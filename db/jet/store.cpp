// SPDX-License-Identifier: MIT

#include "db/jet/store.h"

#include <chrono>
#include <optional>

#include "db/jet/ownership.h"
#include "files/local_time.h"

namespace jet {
namespace {

constexpr double kDaysToUnixEpoch = 25569;  // from 1899-12-30 to 1970-01-01
constexpr double kSecondsPerDay = 86400;

Header NewFileHeader() {
  Header header;
  header.format = &kJet4;
  header.codePage = kWesternCodePage;
  return header;
}

}  // namespace

Store::Store(std::unique_ptr<PageFile> file, const Header& header, bool writable)
    : header_(header),
      writable_(writable),
      pager_(std::move(file), *header.format, header.pageCount),
      allocator_(pager_) {}

Status Store::Open(std::unique_ptr<PageFile> file, bool writable, std::shared_ptr<Store>* store) {
  Header header;
  Status status = ReadHeader(*file, &header);
  if (!status.ok()) return status;
  std::shared_ptr<Store> opened(new Store(std::move(file), header, writable));
  const std::vector<CatalogEntry>* entries = nullptr;
  status = opened->Catalog(&entries);
  if (status.ok()) *store = std::move(opened);
  return status;
}

std::shared_ptr<Store> Store::ForCreation(std::unique_ptr<PageFile> file) {
  std::shared_ptr<Store> store(new Store(std::move(file), NewFileHeader(), true));
  store->usedPagesKnown_ = true;  // there are none that the global map does not know of
  return store;
}

Status Store::CheckWritable() const {
  if (!writable_) {
    return Status(ErrorNumber::ReadOnly, "The database is open for reading only");
  }
  if (header_.hasPartialPage) {
    return Status(ErrorNumber::ReadOnly,
                  "The file ends in the middle of a page, so it can only be read",
                  pager_.PageCount());
  }
  return {};
}

Status Store::PrepareWrite() {
  Status status = CheckWritable();
  if (!status.ok() || usedPagesKnown_) return status;
  std::vector<bool> used;
  status = CollectUsedPages(*this, &used);
  if (!status.ok()) return status;
  allocator_.Protect(std::move(used));
  usedPagesKnown_ = true;
  return {};
}

Status Store::ReadCatalog() {
  catalog_.clear();
  std::shared_ptr<Table> table;
  Status status = OpenTableAt(kCatalogPage, "MSysObjects", {}, &table);
  if (!status.ok()) return status;
  const int id = table->FindColumn("Id");
  const int parent = table->FindColumn("ParentId");
  const int name = table->FindColumn("Name");
  const int type = table->FindColumn("Type");
  const int flags = table->FindColumn("Flags");
  if (id < 0 || parent < 0 || name < 0 || type < 0 || flags < 0) {
    return Status(ErrorNumber::Damaged, "The catalogue lacks a column", kCatalogPage);
  }
  RowPointer row;
  for (status = table->FirstRow(&row); status.ok() && row; status = table->NextRow(row, &row)) {
    RowView view;
    Value value;
    CatalogEntry entry;
    entry.row = row;
    const auto number = [&](int column) {
      if (status.ok()) status = table->ReadValue(view, column, &value);
      return value.Int();
    };
    status = table->ReadRow(row, &view);
    entry.id = number(id);
    entry.parent = number(parent);
    entry.type = number(type);
    entry.flags = static_cast<std::uint32_t>(number(flags));
    if (status.ok()) status = table->ReadValue(view, name, &value);
    if (!status.ok()) {
      return Status(status.Error(), "The catalogue cannot be read: " + status.Text(),
                    status.Page() == kNoPage ? row.page : status.Page());
    }
    entry.name = value.Text();
    catalog_.push_back(std::move(entry));
  }
  return status;
}

Status Store::Catalog(const std::vector<CatalogEntry>** entries) {
  if (!catalogRead_ || catalogRollbacks_ != pager_.Rollbacks()) {
    catalogRead_ = false;
    Status status = ReadCatalog();
    if (!status.ok()) return status;
    catalogRead_ = true;
    catalogRollbacks_ = pager_.Rollbacks();
  }
  *entries = &catalog_;
  return {};
}

Status Store::FindTable(std::string_view name, CatalogEntry* entry) {
  const std::vector<CatalogEntry>* entries = nullptr;
  Status status = Catalog(&entries);
  if (!status.ok()) return status;
  for (const CatalogEntry& candidate : *entries) {
    if (!candidate.IsTable() || !EqualNoCase(candidate.name, name)) continue;
    *entry = candidate;
    return {};
  }
  return Status(ErrorNumber::NoSuchTable, "There is no table \"" + std::string(name) + "\"");
}

// A value that cannot be read or taken apart counts as no properties.
Status Store::ReadProperties(const CatalogEntry& entry, std::vector<Property>* properties) {
  properties->clear();
  std::shared_ptr<Table> table;
  Status status = OpenTableAt(kCatalogPage, "MSysObjects", {}, &table);
  if (!status.ok()) return status;
  const int column = table->FindColumn("LvProp");
  RowView view;
  if (column < 0 || !table->ReadRow(entry.row, &view).ok()) return {};
  Bytes scratch;
  bool present = false;
  ByteView blob;
  if (table->ReadContent(view, column, &scratch, &present, &blob).ok() && present) {
    (void)ParseProperties(GetFormat(), blob, properties);
  }
  return {};
}

Status Store::OpenTable(std::string_view name, std::shared_ptr<Table>* table) {
  CatalogEntry entry;
  Status status = FindTable(name, &entry);
  if (!status.ok()) return status;
  std::vector<Property> properties;
  status = ReadProperties(entry, &properties);
  if (!status.ok()) return status;
  return OpenTableAt(static_cast<std::uint32_t>(entry.id), entry.name, std::move(properties),
                     table);
}

Status Store::OpenTableAt(std::uint32_t page, std::string name, std::vector<Property> properties,
                          std::shared_ptr<Table>* table) {
  const auto found = tables_.find(page);
  if (found != tables_.end() && found->second->Name() == name && found->second->Refresh().ok()) {
    *table = found->second;
    return {};
  }
  Status status = Table::Load(*this, std::move(name), page, std::move(properties), table);
  if (status.ok()) tables_[page] = *table;
  return status;
}

double Store::Now() const {
  if (fixedNow_ != 0) return fixedNow_;
  return LocalDays(std::time(nullptr));
}

double Store::LocalDays(std::time_t instant) {
  const std::optional<std::tm> local = files::LocalTime(instant);
  if (!local) {
    return kDaysToUnixEpoch + static_cast<double>(instant) / kSecondsPerDay;
  }
  const std::chrono::sys_days date = std::chrono::year(local->tm_year + 1900) /
                                     std::chrono::month(static_cast<unsigned>(local->tm_mon) + 1) /
                                     std::chrono::day(static_cast<unsigned>(local->tm_mday));
  const int seconds = (local->tm_hour * 60 + local->tm_min) * 60 + local->tm_sec;
  return kDaysToUnixEpoch + static_cast<double>(date.time_since_epoch().count()) +
         seconds / kSecondsPerDay;
}

void Store::BeginBatch() {
  if (batch_ == nullptr) batch_ = std::make_unique<Change>(pager_);
}

Status Store::CommitBatch() {
  if (batch_ == nullptr) return {};
  const std::unique_ptr<Change> batch = std::move(batch_);
  return batch->Commit();
}

void Store::DropBatch() { batch_.reset(); }

}  // namespace jet
