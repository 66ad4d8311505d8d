// SPDX-License-Identifier: MIT

#include "db/jet/system_ids.h"

#include <algorithm>
#include <string_view>

#include "db/jet/value_codec.h"

namespace jet {
namespace {

constexpr std::uint32_t kPermissionsPage = 3;  // in every file seen; the catalogue decides

// Collects the fields of a new row by name.
class NewRow {
 public:
  explicit NewRow(Table& table) : table_(table) {}

  void Set(std::string_view name, const Value& value) {
    if (!status_.ok()) return;
    const int column = table_.FindColumn(name);
    if (column < 0) {
      status_ = Status(ErrorNumber::Damaged,
                       "Table \"" + table_.Name() + "\" lacks field \"" + std::string(name) + "\"",
                       table_.Def().page);
      return;
    }
    contents_.emplace_back();
    bool isTrue = true;
    status_ = EncodeContent(table_.GetFormat(), table_.Def().columns[column], value,
                            &contents_.back(), &isTrue);
    columns_.push_back(column);
    isNull_.push_back(!isTrue);
  }

  Status Insert() {
    if (!status_.ok()) return status_;
    std::vector<FieldChange> fields;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      fields.push_back({columns_[i], isNull_[i], contents_[i]});
    }
    RowPointer row;
    return table_.Insert(fields, &row);
  }

 private:
  Table& table_;
  Status status_;
  std::vector<int> columns_;
  std::vector<bool> isNull_;
  std::vector<Bytes> contents_;
};

Status OpenPermissions(Store& store, std::shared_ptr<Table>* table) {
  CatalogEntry entry;
  const Status status = store.FindTable("MSysACEs", &entry);
  const std::uint32_t page = status.ok() ? static_cast<std::uint32_t>(entry.id) : kPermissionsPage;
  return store.OpenTableAt(page, "MSysACEs", {}, table);
}

}  // namespace

Status InsertCatalogRow(Store& store, const CatalogRow& row) {
  std::shared_ptr<Table> table;
  Status status = store.OpenTableAt(kCatalogPage, "MSysObjects", {}, &table);
  if (!status.ok()) return status;
  NewRow fields(*table);
  fields.Set("Id", row.id);
  fields.Set("ParentId", row.parent);
  fields.Set("Name", row.name);
  fields.Set("Type", row.type);
  fields.Set("DateCreate", Value::FromDate(store.Now()));
  fields.Set("DateUpdate", Value::FromDate(store.Now()));
  fields.Set("Owner", Value::FromBytes(row.owner));
  fields.Set("Flags", static_cast<std::int32_t>(row.flags));
  if (!row.properties.empty()) fields.Set("LvProp", Value::FromBytes(row.properties));
  store.ForgetCatalog();
  return fields.Insert();
}

Status InsertPermission(Store& store, std::int32_t object, const Bytes& id, std::uint32_t mask,
                        bool inheritable) {
  std::shared_ptr<Table> table;
  Status status = OpenPermissions(store, &table);
  if (!status.ok()) return status;
  NewRow fields(*table);
  fields.Set("ObjectId", object);
  fields.Set("SID", Value::FromBytes(id));
  fields.Set("ACM", static_cast<std::int32_t>(mask));
  fields.Set("FInheritable", inheritable);
  return fields.Insert();
}

Status FindOwner(Store& store, Bytes* owner) {
  std::shared_ptr<Table> table;
  Status status = store.OpenTableAt(kCatalogPage, "MSysObjects", {}, &table);
  if (!status.ok()) return status;
  owner->assign(kAdminId.begin(), kAdminId.end());
  const std::vector<CatalogEntry>* entries = nullptr;
  status = store.Catalog(&entries);
  const int column = table->FindColumn("Owner");
  if (!status.ok() || column < 0) return status;
  for (const CatalogEntry& entry : *entries) {
    if (entry.name != kDatabaseObjectName) continue;
    RowView view;
    Value value;
    status = table->ReadRow(entry.row, &view);
    if (status.ok()) status = table->ReadValue(view, column, &value);
    if (!status.ok()) return status;
    if (!value.IsNull()) owner->assign(value.Bytes().begin(), value.Bytes().end());
  }
  return {};
}

Status FindTableUsers(Store& store, std::vector<Bytes>* users) {
  std::shared_ptr<Table> table;
  Status status = OpenPermissions(store, &table);
  if (!status.ok()) return status;
  const int object = table->FindColumn("ObjectId");
  const int id = table->FindColumn("SID");
  const int mask = table->FindColumn("ACM");
  if (object < 0 || id < 0 || mask < 0) {
    return Status(ErrorNumber::Damaged, "Table \"MSysACEs\" lacks a field", table->Def().page);
  }
  RowPointer row;
  for (status = table->FirstRow(&row); status.ok() && row; status = table->NextRow(row, &row)) {
    RowView view;
    Value value;
    status = table->ReadRow(row, &view);
    if (status.ok()) status = table->ReadValue(view, object, &value);
    if (!status.ok()) return status;
    if (value.Int() != kTablesContainer) continue;
    status = table->ReadValue(view, mask, &value);
    if (!status.ok()) return status;
    if (static_cast<std::uint32_t>(value.Int()) == kCreatorMask) continue;
    status = table->ReadValue(view, id, &value);
    if (!status.ok()) return status;
    const Bytes user(value.Bytes().begin(), value.Bytes().end());
    if (std::find(users->begin(), users->end(), user) == users->end()) users->push_back(user);
  }
  return status;
}

}  // namespace jet
