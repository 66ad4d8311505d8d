// SPDX-License-Identifier: MIT

#include "db/jet/database.h"

#include "db/jet/creation.h"
#include "db/jet/page_file.h"
#include "db/jet/record_cursor.h"
#include "db/jet/record_order.h"
#include "db/jet/store.h"

namespace jet {

Database::Database(std::shared_ptr<Store> store) : store_(std::move(store)) {}
Database::~Database() = default;

Status Database::Create(std::unique_ptr<PageFile> file, std::unique_ptr<Database>* database) {
  std::shared_ptr<Store> store = Store::ForCreation(std::move(file));
  Status status = CreateDatabase(*store);
  if (status.ok()) database->reset(new Database(std::move(store)));
  return status;
}

Status Database::Create(const std::filesystem::path& path, std::unique_ptr<Database>* database) {
  std::unique_ptr<PageFile> file;
  Status status = CreatePageFile(path, &file);
  return status.ok() ? Create(std::move(file), database) : status;
}

Status Database::CreateInMemory(std::unique_ptr<Database>* database) {
  return Create(std::make_unique<MemoryPageFile>(), database);
}

Status Database::Open(std::unique_ptr<PageFile> file, Access access,
                      std::unique_ptr<Database>* database) {
  std::shared_ptr<Store> store;
  Status status = Store::Open(std::move(file), access == Access::ReadWrite, &store);
  if (status.ok()) database->reset(new Database(std::move(store)));
  return status;
}

Status Database::Open(const std::filesystem::path& path, Access access,
                      std::unique_ptr<Database>* database) {
  std::unique_ptr<PageFile> file;
  Status status = OpenPageFile(path, access == Access::ReadWrite, &file);
  return status.ok() ? Open(std::move(file), access, database) : status;
}

Status Database::CopyInMemory(const Database& source, std::unique_ptr<Database>* copy) {
  Pager& pager = source.store_->GetPager();
  const std::size_t pageSize = pager.GetFormat().pageSize;
  std::vector<std::uint8_t> content;
  content.reserve(pager.PageCount() * pageSize);
  for (std::uint32_t page = 0; page < pager.PageCount(); ++page) {
    const std::uint8_t* bytes = nullptr;
    if (Status status = pager.Read(page, &bytes); !status.ok()) return status;
    content.insert(content.end(), bytes, bytes + pageSize);
  }
  return Open(std::make_unique<MemoryPageFile>(std::move(content)), Access::ReadWrite, copy);
}

int Database::Version() const { return store_->GetFormat().version; }

Status Database::CreateTable(const TableSpec& spec, std::span<const IndexSpec> indexes) {
  return jet::CreateTable(*store_, spec, indexes);
}

Status Database::CreateIndex(std::string_view table, const IndexSpec& spec) {
  return jet::CreateIndex(*store_, table, spec);
}

std::vector<std::string> Database::TableNames() const {
  std::vector<std::string> names;
  const std::vector<CatalogEntry>* entries = nullptr;
  if (!store_->Catalog(&entries).ok()) return names;
  for (const CatalogEntry& entry : *entries) {
    if (entry.IsUserTable()) names.push_back(entry.name);
  }
  return names;
}

Status Database::OpenTable(std::string_view name, std::unique_ptr<RecordSet>* records) {
  std::shared_ptr<Table> table;
  Status status = store_->OpenTable(name, &table);
  if (!status.ok()) return status;
  std::unique_ptr<RecordSet> opened(
      new RecordSet(std::make_unique<RecordCursor>(store_, std::move(table))));
  status = opened->MoveFirst();
  if (status.ok()) *records = std::move(opened);
  return status;
}

Status Database::OpenOrdered(std::string_view name, std::span<const std::string_view> orderBy,
                             std::unique_ptr<RecordSet>* records) {
  std::shared_ptr<Table> table;
  Status status = store_->OpenTable(name, &table);
  if (!status.ok()) return status;
  std::vector<int> columns;
  for (const std::string_view field : orderBy) {
    columns.push_back(table->FindColumn(field));
    if (columns.back() < 0) {
      return Status(ErrorNumber::NoSuchItem,
                    "Table \"" + table->Name() + "\" has no field \"" + std::string(field) + "\"");
    }
  }
  std::vector<RowPointer> rows;
  status = SortRows(*table, columns, &rows);
  if (!status.ok()) return status;
  std::unique_ptr<RecordSet> opened(
      new RecordSet(std::make_unique<RecordCursor>(store_, std::move(table), std::move(rows))));
  status = opened->MoveFirst();
  if (status.ok()) *records = std::move(opened);
  return status;
}

std::uint64_t Database::ChangesWritten() const { return store_->GetPager().Written(); }

Status Database::Settle() { return store_->GetPager().Settle(); }

Database::Batch::Batch(Database& database) : store_(database.store_) { store_->BeginBatch(); }

Database::Batch::Batch(const RecordSet& records) : store_(records.cursor_->ShareStore()) {
  store_->BeginBatch();
}

Database::Batch::~Batch() {
  if (open_) store_->DropBatch();
}

Status Database::Batch::Commit() {
  if (!open_) return {};
  open_ = false;
  return store_->CommitBatch();
}

}  // namespace jet
