// SPDX-License-Identifier: MIT
//
// Inserting, updating and deleting rows of a table.

#ifndef DB_JET_TABLE_WRITER_H_
#define DB_JET_TABLE_WRITER_H_

#include <cstdint>
#include <span>
#include <vector>

#include "db/jet/bytes.h"
#include "db/jet/data_page.h"
#include "db/jet/row_codec.h"
#include "db/jet/status.h"
#include "db/jet/store.h"
#include "db/jet/table.h"

namespace jet {

// One edit of one row.  The operation checks first, then changes the pages inside a Change of
// its own, and on an error leaves everything as it was.
class TableWriter {
 public:
  explicit TableWriter(Table& table);

  // All of them: ReadOnly; Damaged where the table or an index of it contradicts itself;
  // Unsupported for what this engine cannot keep up; DiskError and DiskFull from the writing.
  //
  // Insert and Update besides: RequiredField, RecordTooLarge, and NullKey or DuplicateKey when an
  // index refuses the new key.

  // Adds a row with these fields; the others are null, an automatic number is the next one.
  // *row is where it is, and is unchanged on an error.
  Status Insert(std::span<const FieldChange> fields, RowPointer* row);
  // Changes these fields of a row, which keeps its pointer.  Those that have the value already
  // are passed over, and without any other nothing is written.
  Status Update(RowPointer row, std::span<const FieldChange> fields);
  // Takes the row, its long values and its index entries away.  Of this and Update:
  // NoCurrentRecord when the row has been deleted.
  Status Delete(RowPointer row);

 private:
  // What the edit does to one index.
  struct IndexEdit {
    const RealIndex* index = nullptr;
    bool removes = false;
    bool adds = false;
    bool isNewKey = false;  // no other row has the key that is added
    Bytes oldEntry;         // whole
    Bytes newEntry;         // the key, and the row pointer once the row has its place
  };

  Status Prepare();
  void TakeChanges(std::span<const FieldChange> fields);
  Status LoadOldRow(RowPointer row);
  Status KeepRealChanges(std::span<const FieldChange> fields);
  Status CheckFields(bool isNew) const;
  Status AssignAutoNumber();
  Status PutAutoNumber();

  // Indexes.
  Status PlanIndexes(bool hasOld, RowPointer row);
  Status PlanIndex(const RealIndex& index, bool hasOld, RowPointer row, IndexEdit* edit);
  Status PlanRemoval(const RealIndex& index, RowPointer row, IndexEdit* edit);
  Status NewKey(const RealIndex& index, bool hasOld, Bytes* key, bool* entered, bool* hasNull);
  Status FindEntryOf(const RealIndex& index, RowPointer row, Bytes* entry, bool* found);
  Status HasKey(const RealIndex& index, ByteView key, RowPointer except, bool* has);
  Status ApplyIndexes(RowPointer row);
  Status AddToDistinctKeys(const RealIndex& index, int difference);
  Status SetRowCount(std::uint32_t count);
  std::string IndexName(const RealIndex& index) const;

  // The row.
  Status BuildNewRow(bool hasOld);
  Status StoreLongValues(bool hasOld);
  Status ReleaseOldValues();
  Status PlaceNew(std::uint16_t flags, RowPointer* place);
  Status PlaceUpdated(RowPointer home);
  Status MarkRoom(std::uint32_t page);

  Table& table_;
  Store& store_;
  Pager& pager_;
  PageAllocator& allocator_;
  const Format& format_;
  const TableDef& def_;

  std::vector<FieldChange> given_;
  std::vector<const FieldChange*> changes_;  // by column; null where nothing changes
  std::int32_t autoNumber_ = 0;              // assigned or given; 0 for none
  Bytes autoNumberContent_;

  Bytes oldRow_;
  RowView old_;          // of oldRow_
  RowPointer oldPlace_;  // where its bytes are

  std::vector<RawField> fields_;  // the new row, by column
  Bytes longValueFields_;         // what fields_ refers to
  std::vector<int> oldValues_;    // columns whose old long values are given back
  Bytes row_;
  std::vector<IndexEdit> edits_;
  Bytes scratch_;
};

}  // namespace jet

#endif  // DB_JET_TABLE_WRITER_H_
