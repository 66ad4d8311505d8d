// SPDX-License-Identifier: MIT
//
// An empty database: the pages and rows that every file has.

#include <bit>
#include <initializer_list>
#include <vector>

#include "db/jet/creation.h"
#include "db/jet/data_page.h"
#include "db/jet/header.h"
#include "db/jet/system_ids.h"
#include "db/jet/table_builder.h"
#include "db/jet/text_codec.h"

namespace jet {
namespace {

constexpr std::uint8_t kSystemColumn = 0x10;
constexpr std::uint8_t kSecurityColumn = 0x20;

struct SystemColumn {
  const char* name;
  char type;  // L, I, Y, Q, D, T, B, M, O; S for a security id
};

struct SystemIndex {
  const char* name;
  std::vector<int> columns;
  std::uint8_t flags;
  bool primary;
};

struct SystemTable {
  std::uint32_t page;
  const char* name;
  std::vector<SystemColumn> columns;
  std::vector<SystemIndex> indexes;
};

ColumnPlan PlanColumn(const SystemColumn& column) {
  ColumnPlan plan;
  plan.name = column.name;
  plan.flags = kSystemColumn | kColumnNullable;
  const auto fixed = [&plan](FieldType type, std::uint16_t length) {
    plan.type = type;
    plan.length = length;
    plan.flags |= kColumnFixed;
  };
  const auto variable = [&plan](FieldType type, std::uint16_t length) {
    plan.type = type;
    plan.length = length;
  };
  switch (column.type) {
    case 'L':
      fixed(FieldType::Long, 4);
      break;
    case 'I':
      fixed(FieldType::Integer, 2);
      break;
    case 'Y':
      fixed(FieldType::Byte, 1);
      break;
    case 'Q':
      fixed(FieldType::Boolean, 1);
      break;
    case 'D':
      fixed(FieldType::DateTime, 8);
      break;
    case 'T':
      variable(FieldType::Text, 2 * kMaxTextLength);
      break;
    case 'M':
      variable(FieldType::Memo, 0);
      break;
    case 'O':
      variable(FieldType::Ole, 0);
      break;
    case 'S':
      plan.flags |= kSecurityColumn;
      variable(FieldType::Binary, static_cast<std::uint16_t>(kJet4.maxBinary));
      break;
    default:
      variable(FieldType::Binary, static_cast<std::uint16_t>(kJet4.maxBinary));
      break;
  }
  return plan;
}

const std::vector<SystemTable>& SystemTables() {
  static const std::vector<SystemTable> tables = {
      {kCatalogPage,
       "MSysObjects",
       {{"Id", 'L'},
        {"ParentId", 'L'},
        {"Name", 'T'},
        {"Type", 'I'},
        {"DateCreate", 'D'},
        {"DateUpdate", 'D'},
        {"Owner", 'S'},
        {"Flags", 'L'},
        {"Database", 'M'},
        {"Connect", 'M'},
        {"ForeignName", 'T'},
        {"RmtInfoShort", 'B'},
        {"RmtInfoLong", 'O'},
        {"Lv", 'O'},
        {"LvProp", 'O'},
        {"LvModule", 'O'},
        {"LvExtra", 'O'}},
       {{"ParentIdName", {1, 2}, kIndexUnique, false}, {"Id", {0}, kIndexUnique, true}}},
      {3,
       "MSysACEs",
       {{"ObjectId", 'L'}, {"SID", 'S'}, {"ACM", 'L'}, {"FInheritable", 'Q'}},
       {{"ObjectId", {0}, kIndexRequired, false}}},
      {4,
       "MSysQueries",
       {{"ObjectId", 'L'},
        {"Attribute", 'Y'},
        {"Order", 'B'},
        {"Name1", 'T'},
        {"Name2", 'T'},
        {"Expression", 'M'},
        {"Flag", 'I'},
        {"LvExtra", 'L'}},
       {{"ObjectIdAttribute", {0, 1, 2}, kIndexUnique, true}}},
      {5,
       "MSysRelationships",
       {{"szRelationship", 'T'},
        {"grbit", 'L'},
        {"ccolumn", 'L'},
        {"icolumn", 'L'},
        {"szObject", 'T'},
        {"szColumn", 'T'},
        {"szReferencedObject", 'T'},
        {"szReferencedColumn", 'T'}},
       {{"szRelationship", {0}, kIndexIgnoreNulls, false},
        {"szObject", {4}, kIndexIgnoreNulls, false},
        {"szReferencedObject", {6}, kIndexIgnoreNulls, false}}},
  };
  return tables;
}

TablePlan PlanTable(const SystemTable& table) {
  TablePlan plan;
  plan.isSystem = true;
  for (const SystemColumn& column : table.columns) plan.columns.push_back(PlanColumn(column));
  for (const SystemIndex& index : table.indexes) {
    plan.indexes.push_back({index.name, index.columns, index.flags, index.primary});
  }
  return plan;
}

// Header, global maps, room for the definitions.
Status MakeFirstPages(Store& store) {
  Pager& pager = store.GetPager();
  for (std::uint32_t i = 0; i <= 5; ++i) {
    std::uint32_t page = 0;
    Status status = pager.Append(&page);
    if (!status.ok()) return status;
  }
  PageEditor header;
  Status status = pager.Edit(0, &header);
  if (!status.ok()) return status;
  header.Put(0, BuildHeaderPage());
  DataPage maps;
  status = DataPage::Format(pager, kGlobalMapPage, 1, &maps);
  if (!status.ok()) return status;
  Bytes row(kJet4.mapRowSize, 0xFF);
  PutU32(&row[1], 0);
  row[0] = 0;
  row[5] = 0xC0;  // pages 0 to 5 are in use
  maps.Insert(row);
  maps.Insert(Bytes(kJet4.mapRowSize));
  return {};
}

Status InsertObjects(Store& store) {
  struct Object {
    std::int32_t id;
    std::int32_t parent;
    const char* name;
    int type;
  };
  constexpr Object kObjects[] = {
      {kTablesContainer, kRootContainer, "Tables", 3},
      {0x0F000002, kRootContainer, "Databases", 3},
      {0x0F000003, kRootContainer, "Relationships", 3},
      {kDatabaseObject, 0x0F000002, kDatabaseObjectName, 2},
      {2, kTablesContainer, "MSysObjects", 1},
      {3, kTablesContainer, "MSysACEs", 1},
      {4, kTablesContainer, "MSysQueries", 1},
      {5, kTablesContainer, "MSysRelationships", 1},
  };
  for (const Object& object : kObjects) {
    CatalogRow row;
    row.id = object.id;
    row.parent = object.parent;
    row.name = object.name;
    row.type = static_cast<std::int16_t>(object.type);
    row.flags = 0x80000000;
    const SecurityId& owner = object.id == kDatabaseObject ? kAdminId : kEngineId;
    row.owner.assign(owner.begin(), owner.end());
    Status status = InsertCatalogRow(store, row);
    if (!status.ok()) return status;
  }
  return {};
}

Status InsertPermissions(Store& store) {
  struct Permission {
    std::int32_t object;
    SecurityId id;
    std::uint32_t mask;
    bool inheritable;
  };
  constexpr Permission kPermissions[] = {
      {2, kAdminId, 0x60000, false},
      {3, kAdminId, 0x60000, false},
      {4, kAdminId, 0x60000, false},
      {5, kAdminId, 0xE0000, false},
      {kTablesContainer, kCreatorId, 0xF00FE, true},
      {kTablesContainer, kAdminId, 0x60001, false},
      {0x0F000003, kCreatorId, 0xF00FE, true},
      {0x0F000003, kAdminId, 0x60001, false},
      {0x0F000002, kAdminId, 0x60000, false},
      {kDatabaseObject, kAdminId, 0x6000E, false},
      {kDatabaseObject, kUsersId, 0x0E, false},
      {4, kUsersId, 0x14, false},
      {5, kUsersId, 0x14, false},
      {2, kUsersId, 0x14, false},
      {kTablesContainer, kUsersId, 0xFFEFF, true},
      {0x0F000003, kUsersId, 0xFFFFF, true},
  };
  for (const Permission& permission : kPermissions) {
    Status status = InsertPermission(store, permission.object,
                                     Bytes(permission.id.begin(), permission.id.end()),
                                     permission.mask, permission.inheritable);
    if (!status.ok()) return status;
  }
  return {};
}

}  // namespace

Status CreateDatabase(Store& store) {
  Pager& pager = store.GetPager();
  Change change(pager);
  Status status = MakeFirstPages(store);
  MapRows maps(pager, store.Allocator());
  for (const SystemTable& table : SystemTables()) {
    if (!status.ok()) return status;
    status = BuildTable(pager, store.Allocator(), maps, PlanTable(table), table.page);
  }
  if (status.ok()) status = InsertObjects(store);
  if (status.ok()) status = InsertPermissions(store);
  return status.ok() ? change.Commit() : status;
}

}  // namespace jet
