// SPDX-License-Identifier: MIT
//
// A table as the engine sees it: rows found by row pointer and in storage order.

#ifndef DB_JET_TABLE_H_
#define DB_JET_TABLE_H_

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "db/jet/bytes.h"
#include "db/jet/format.h"
#include "db/jet/row_codec.h"
#include "db/jet/status.h"
#include "db/jet/table_def.h"
#include "db/jet/value.h"

namespace jet {

class Store;
struct Property;

// The content of a field to be stored.  A Boolean is true when it is not null.
struct FieldChange {
  int column = 0;  // into TableDef::columns
  bool isNull = false;
  ByteView content;
};

// What was found while the key of a row was made.
struct KeyInfo {
  bool known = true;     // false: a field has no key that this engine can make
  bool entered = true;   // false: the index leaves the row out
  bool hasNull = false;  // one of the fields is null
};

// All record sets on a table share one object.  Its definition is read again when a change
// was dropped, since it may have been part of that change.
class Table {
 public:
  // Reads the definition at `page`.  `properties` are those of the catalogue.
  // `store` must outlive the table.
  static Status Load(Store& store, std::string name, std::uint32_t page,
                     std::vector<Property> properties, std::shared_ptr<Table>* table);
  ~Table();

  Store& GetStore() const { return store_; }
  const Format& GetFormat() const { return format_; }
  const std::string& Name() const { return name_; }
  const TableDef& Def() const { return def_; }
  const std::vector<Property>& Properties() const { return properties_; }
  // Reads the definition again if it must be.  NoSuchTable, from then on for ever, when the
  // table is gone because its creation was dropped.
  Status Refresh();
  // The definition has changed.
  Status Reload();

  // Into Def().columns; -1 when there is no such column.
  int FindColumn(std::string_view name) const;

  // Storage order: by page, then by slot.  *row is null where there is no more.  From the last
  // slot that a page can have the walk goes on to the next page without a look at this one.
  Status FirstRow(RowPointer* row) { return NextRow({}, row); }
  Status NextRow(RowPointer after, RowPointer* row);
  Status LastRow(RowPointer* row);
  Status PreviousRow(RowPointer before, RowPointer* row);
  // The rows, counted.
  Status CountRows(std::uint32_t* count);

  // Whether there is a row at the home position `row`; a page that cannot be read has none.
  bool HasRow(RowPointer row);
  // The row at home at `row`; *place is where its bytes are.  The view holds until a page
  // changes.  NoCurrentRecord when there is none.
  Status ReadRow(RowPointer row, RowView* view, RowPointer* place = nullptr);

  // The content of a field; *present is false for null.  It refers to the row, a page or
  // *scratch.
  Status ReadContent(const RowView& row, int column, Bytes* scratch, bool* present,
                     ByteView* content);
  Status ReadValue(const RowView& row, int column, Value* value);

  // Appends the keys of a row's fields.
  Status AppendRowKey(const RealIndex& index, const RowView& row, Bytes* key, KeyInfo* info);

  // Edits.  Everything is checked before anything is written, and written before they return.
  Status Insert(std::span<const FieldChange> fields, RowPointer* row);
  Status Update(RowPointer row, std::span<const FieldChange> fields);
  Status Delete(RowPointer row);

  // Tells records apart that stand at one place one after the other: grows with each that is
  // put there while the database is open, and goes back with a change that is dropped.
  std::uint64_t TenantAt(RowPointer row) const;

  // Compares every index with the rows, once, and in a database open for writing rebuilds
  // those that are wrong; otherwise, and where that cannot be done, Damaged.
  Status EnsureIndexesChecked();
  // The indexes of a table just made need no check.
  void SetIndexesChecked();

 private:
  friend class TableWriter;

  Table(Store& store, std::string name, std::uint32_t page, std::vector<Property> properties);

  Status ReadDefinition(TableDef* def) const;
  void UseDefinition(TableDef def);
  void NoteNewTenant(RowPointer row);
  bool HasColumnsOf(const TableDef& def) const;
  bool OwnsPage(const std::uint8_t* bytes) const;
  Status SlotsOf(std::uint32_t page, const std::uint8_t** bytes, std::uint32_t* count);

  struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const;
  };
  struct NameEqual {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const { return EqualNoCase(a, b); }
  };

  Store& store_;
  const Format& format_;
  const std::string name_;
  const std::uint32_t page_;
  const std::vector<Property> properties_;
  TableDef def_;
  std::unordered_map<std::string, int, NameHash, NameEqual> columnsByName_;
  std::uint64_t rollbacksSeen_ = 0;
  bool isGone_ = false;

  // Row count, kept once it was counted, and whether the indexes were compared with the rows;
  // both are forgotten when a change is dropped.
  bool rowsCounted_ = false;
  std::uint32_t rowCount_ = 0;
  bool indexesChecked_ = false;

  // By packed row.  Shared with the undo actions of changes, which may outlive the table.
  using Tenants = std::unordered_map<std::uint32_t, std::uint64_t>;
  const std::shared_ptr<Tenants> tenants_ = std::make_shared<Tenants>();
  std::uint64_t lastTenant_ = 0;
  Bytes scratch_;
};

}  // namespace jet

#endif  // DB_JET_TABLE_H_
