// SPDX-License-Identifier: MIT

#include <algorithm>
#include <string>
#include <vector>

#include "db/jet/creation.h"
#include "db/jet/index_check.h"
#include "db/jet/index_writer.h"
#include "db/jet/key_codec.h"
#include "db/jet/property_blob.h"
#include "db/jet/system_ids.h"
#include "db/jet/table_builder.h"
#include "db/jet/text_codec.h"

namespace jet {
namespace {

// Letters, digits and most signs; no control characters, no leading space, and not the signs
// that mean something in expressions.
Status CheckName(const Format& format, const std::string& name, const char* what) {
  Bytes stored;
  std::size_t characters = 0;
  const bool isText = EncodeText(format, name, false, &stored, &characters) == EncodeResult::Ok;
  const bool hasSign = std::any_of(name.begin(), name.end(), [](char c) {
    return (c >= 0 && c < ' ') || c == '.' || c == '!' || c == '`' || c == '[' || c == ']';
  });
  if (isText && characters > 0 && characters <= kMaxNameLength && !hasSign && name[0] != ' ') {
    return {};
  }
  return Status(ErrorNumber::InvalidName, "\"" + name + "\" cannot be the name of " + what);
}

Status PlanField(const Format& format, const FieldSpec& field, ColumnPlan* plan) {
  Status status = CheckName(format, field.name, "a field");
  if (!status.ok()) return status;
  plan->name = field.name;
  plan->type = field.type;
  plan->flags = kColumnNullable;
  const bool compressed = field.compressed.value_or(field.type == FieldType::Text);
  if (compressed && format.IsJet4()) plan->extraFlags = kColumnCompressed;
  switch (field.type) {
    case FieldType::Integer:
      plan->flags |= kColumnFixed;
      plan->extraFlags = 0;
      plan->length = 2;
      return {};
    case FieldType::Text:
      if (field.size < 1 || field.size > static_cast<int>(kMaxTextLength)) {
        return Status(ErrorNumber::Unsupported,
                      "Text field \"" + field.name + "\" must have a size from 1 to 255");
      }
      plan->length =
          static_cast<std::uint16_t>(static_cast<std::uint32_t>(field.size) * format.CharSize());
      return {};
    case FieldType::Memo:
      return {};
    default:
      return Status(ErrorNumber::Unsupported,
                    "Field \"" + field.name + "\" is of a type that cannot be created");
  }
}

// `findColumn(name)` gives the number of a column, or -1.
template <typename FindColumn>
Status PlanIndex(const Format& format, const IndexSpec& spec, FindColumn findColumn,
                 IndexPlan* plan) {
  Status status = CheckName(format, spec.name, "an index");
  if (!status.ok()) return status;
  if (spec.fields.empty() || spec.fields.size() > kMaxIndexColumns) {
    return Status(ErrorNumber::Unsupported,
                  "Index \"" + spec.name + "\" must have from 1 to 10 fields");
  }
  plan->name = spec.name;
  plan->primary = spec.primary;
  if (spec.unique || spec.primary) plan->flags |= kIndexUnique;
  if (spec.primary) plan->flags |= kIndexRequired;
  for (const std::string& field : spec.fields) {
    const int column = findColumn(field);
    if (column < 0) {
      return Status(ErrorNumber::NoSuchItem, "Index \"" + spec.name + "\" names field \"" + field +
                                                 "\", which is not there");
    }
    plan->columns.push_back(column);
  }
  return {};
}

Status PlanTable(const Format& format, const TableSpec& spec, std::span<const IndexSpec> indexes,
                 TablePlan* plan) {
  Status status = CheckName(format, spec.name, "a table");
  if (!status.ok()) return status;
  if (spec.fields.empty() || spec.fields.size() > kMaxColumns) {
    return Status(ErrorNumber::TooManyFields,
                  "Table \"" + spec.name + "\" must have from 1 to 255 fields");
  }
  const auto findColumn = [plan](std::string_view name) {
    for (std::size_t i = 0; i < plan->columns.size(); ++i) {
      if (EqualNoCase(plan->columns[i].name, name)) return static_cast<int>(i);
    }
    return -1;
  };
  for (const FieldSpec& field : spec.fields) {
    ColumnPlan column;
    status = PlanField(format, field, &column);
    if (!status.ok()) return status;
    if (findColumn(column.name) >= 0) {
      return Status(ErrorNumber::ObjectExists,
                    "Table \"" + spec.name + "\" has field \"" + column.name + "\" twice");
    }
    plan->columns.push_back(std::move(column));
  }
  if (indexes.size() > kMaxRealIndexes) {
    return Status(ErrorNumber::Unsupported,
                  "Table \"" + spec.name + "\" may have at most 32 indexes");
  }
  for (const IndexSpec& index : indexes) {
    IndexPlan indexPlan;
    status = PlanIndex(format, index, findColumn, &indexPlan);
    if (!status.ok()) return status;
    for (const IndexPlan& other : plan->indexes) {
      if (!EqualNoCase(other.name, index.name)) continue;
      return Status(ErrorNumber::ObjectExists,
                    "Table \"" + spec.name + "\" has index \"" + index.name + "\" twice");
    }
    plan->indexes.push_back(std::move(indexPlan));
  }
  return {};
}

Status CheckNoSuchObject(Store& store, const std::string& name) {
  const std::vector<CatalogEntry>* entries = nullptr;
  Status status = store.Catalog(&entries);
  if (!status.ok()) return status;
  for (const CatalogEntry& entry : *entries) {
    if (entry.parent == kTablesContainer && EqualNoCase(entry.name, name)) {
      return Status(ErrorNumber::ObjectExists, "There is already a table \"" + name + "\"");
    }
  }
  return {};
}

Status InsertTableRows(Store& store, const TableSpec& spec, std::uint32_t page) {
  std::vector<std::string> zeroLength;
  for (const FieldSpec& field : spec.fields) {
    if (field.allowZeroLength && field.type != FieldType::Integer) {
      zeroLength.push_back(field.name);
    }
  }
  CatalogRow row;
  row.id = static_cast<std::int32_t>(page);
  row.parent = kTablesContainer;
  row.name = spec.name;
  row.type = CatalogEntry::kTable;
  if (!zeroLength.empty()) {
    row.properties = BuildAllowZeroLength(store.GetFormat(), zeroLength);
  }
  Status status = FindOwner(store, &row.owner);
  if (status.ok()) status = InsertCatalogRow(store, row);
  std::vector<Bytes> users;
  if (status.ok()) status = FindTableUsers(store, &users);
  for (const Bytes& user : users) {
    if (!status.ok()) break;
    status = InsertPermission(store, row.id, user, kAllOfATable, false);
  }
  return status;
}

// Enters the rows that are there into the new, last index of the table.
Status FillIndex(Store& store, Table& table, const RealIndex& index, const std::string& name) {
  ExpectedEntries expected;
  Status status = ExpectEntries(table, index, &expected);
  if (!status.ok()) return status;
  if (!expected.opaqueRows.empty()) {
    return Status(ErrorNumber::Unsupported,
                  "A record has a value that cannot be entered into index \"" + name + "\"");
  }
  if (!expected.nullRows.empty() && index.IsRequired()) {
    return Status(ErrorNumber::NullKey, "A record has no value for index \"" + name + "\"");
  }
  const EntryList& entries = expected.entries;
  for (std::size_t i = 1; i < entries.Count() && index.IsUnique(); ++i) {
    const ByteView key = entries[i].first(entries[i].size() - kEntryPointer);
    const bool hasNull = std::binary_search(expected.nullRows.begin(), expected.nullRows.end(),
                                            EntryRow(entries[i]).Packed());
    if (!hasNull && entries[i].size() == entries[i - 1].size() && StartsWith(entries[i - 1], key)) {
      return Status(ErrorNumber::DuplicateKey,
                    "Two records have the same value for index \"" + name + "\"");
    }
  }
  IndexWriter writer(store.GetPager(), store.Allocator(), table.Def().page, index);
  status = writer.Build(entries);
  if (status.ok()) {
    status = PutDistinctKeys(store.GetPager(), table.Def().page, index, CountDistinctKeys(entries));
  }
  if (!status.ok() || index.distinctKeysAt + 4 > store.GetFormat().pageSize) return status;
  PageEditor editor;
  status = store.GetPager().Edit(table.Def().page, &editor);
  if (status.ok() && entries.Count() > 0) {
    editor.PutU32(index.distinctKeysAt - 4, static_cast<std::uint32_t>(entries.Count()));
  }
  return status;
}

}  // namespace

Status CreateTable(Store& store, const TableSpec& spec, std::span<const IndexSpec> indexes) {
  Status status = store.PrepareWrite();
  TablePlan plan;
  if (status.ok()) status = PlanTable(store.GetFormat(), spec, indexes, &plan);
  if (status.ok()) status = CheckNoSuchObject(store, spec.name);
  if (!status.ok()) return status;

  Change change(store.GetPager());
  std::uint32_t page = 0;
  status = store.Allocator().Allocate(&page);
  MapRows maps(store.GetPager(), store.Allocator());
  if (status.ok()) status = BuildTable(store.GetPager(), store.Allocator(), maps, plan, page);
  if (status.ok()) status = InsertTableRows(store, spec, page);
  if (status.ok()) status = change.Commit();
  if (!status.ok()) return status;
  store.ForgetCatalog();
  std::shared_ptr<Table> table;
  status = store.OpenTable(spec.name, &table);
  if (status.ok()) table->SetIndexesChecked();
  return status;
}

Status CreateIndex(Store& store, std::string_view tableName, const IndexSpec& spec) {
  Status status = store.PrepareWrite();
  std::shared_ptr<Table> table;
  if (status.ok()) status = store.OpenTable(tableName, &table);
  if (status.ok()) status = table->EnsureIndexesChecked();
  if (!status.ok()) return status;
  const TableDef& def = table->Def();
  IndexPlan plan;
  status = PlanIndex(
      store.GetFormat(), spec, [&table](std::string_view name) { return table->FindColumn(name); },
      &plan);
  if (!status.ok()) return status;
  if (def.IsSystem()) {
    return Status(ErrorNumber::ReadOnly, "The tables of the system cannot be changed");
  }
  if (def.FindIndex(spec.name) != nullptr) {
    return Status(ErrorNumber::ObjectExists,
                  "Table \"" + table->Name() + "\" has an index \"" + spec.name + "\" already");
  }
  if (def.realIndexes.size() >= kMaxRealIndexes) {
    return Status(ErrorNumber::Unsupported,
                  "Table \"" + table->Name() + "\" has as many indexes as it can have");
  }
  for (const int column : plan.columns) {
    if (HasKnownKeys(def.columns[column])) continue;
    return Status(ErrorNumber::Unsupported, "Field \"" + def.columns[column].name +
                                                "\" is of a type that cannot be indexed here");
  }

  Change change(store.GetPager());
  status = BuildIndex(store.GetPager(), store.Allocator(), def, plan);
  TableDef changed;
  if (status.ok()) status = ReadTableDef(store.GetPager(), def.page, &changed);
  if (status.ok()) status = FillIndex(store, *table, changed.realIndexes.back(), spec.name);
  if (status.ok()) status = change.Commit();
  if (!status.ok()) return status;
  status = table->Reload();
  if (status.ok()) table->SetIndexesChecked();
  return status;
}

}  // namespace jet
