// SPDX-License-Identifier: MIT
//
// A cursor over the records of one table.

#ifndef DB_JET_RECORD_SET_H_
#define DB_JET_RECORD_SET_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "db/jet/bookmark.h"
#include "db/jet/field_type.h"
#include "db/jet/status.h"
#include "db/jet/value.h"

namespace jet {

class RecordCursor;

// What is known of a field.
struct FieldInfo {
  std::string name;
  FieldType type = FieldType::Text;
  int size = 0;  // Text: characters; Binary: bytes; fixed types: bytes; Memo and OLE: 0
  bool allowZeroLength = false;  // Text and Memo: "" may be stored
  bool required = false;         // may not be null
};

// A cursor over one table.  There may be several on one table at a time; what one of them
// changes is seen by the others at once.  A record that was deleted through another record
// set gives NoCurrentRecord here, and moving from it goes to its neighbours.
//
// Every field is named by its name, ASCII letters in either case, or by its 0-based index in
// the table's column order.  A name or index that is not there is NoSuchItem.
class RecordSet {
 public:
  ~RecordSet();
  RecordSet(const RecordSet&) = delete;
  RecordSet& operator=(const RecordSet&) = delete;

  // Position.  A fresh set stands on the first record; on an empty table Bof() and Eof() both
  // hold.  Every move drops a change that was begun and not updated.

  // On an empty table: success, Bof() and Eof() both hold.
  Status MoveFirst();
  Status MoveLast();
  // Past the last record: success, Eof() holds.  From there, and when there is no current
  // record and none was deleted here: NoCurrentRecord.  From Bof: to the first record.
  Status MoveNext();
  // The mirror image.
  Status MovePrevious();

  bool Bof() const;
  bool Eof() const;
  // True on a record that is there: not Bof, not Eof, not deleted.
  bool HasRecord() const;
  // The number of records, counted in the table, not read from its header.  -1 when they
  // cannot be counted because the file is damaged; a move reports what is wrong.
  int RecordCount() const;

  // Sets the order of moves: the name of an index, or "" for storage order.  The current
  // record stays the current one; Bof, Eof and no current record stay, too.  A fresh order
  // is checked against the records once: an index that contradicts them is rebuilt, or, in a
  // database open for reading only, reported as Damaged.
  // NoSuchItem when there is no such index; Unsupported for a sorted query.
  Status SetIndex(std::string_view indexName);
  // The name given to SetIndex.
  const std::string& IndexName() const { return indexName_; }

  // Goes to the first record whose index key equals `key`, which is compared with the first
  // field of the index: texts by the sort order (letter case does not count), numbers by
  // value, null equal to null.  No match is no error: NoMatch() holds and there is no current
  // record.
  // REQUIRES an index set; Unsupported without one.
  Status Seek(const Value& key);
  bool NoMatch() const { return noMatch_; }

  // Goes to the first record, in the set's order, whose field equals `value` as in Seek;
  // NoMatch() as there.  Uses no index.
  Status FindFirst(std::string_view field, const Value& value);

  // The present place, and back to it.  A bookmark of another table is NoCurrentRecord, as is
  // one whose record is gone; the set then has no current record.  A bookmark of Bof, Eof or
  // no current record brings that back and is a success.  Dropping a begun change as every
  // move does.
  Bookmark Mark() const;
  Status GoTo(const Bookmark& mark);

  // Fields.
  int FieldCount() const;
  // -1 when there is no such field.
  int FieldIndex(std::string_view field) const;
  // REQUIRES: 0 <= index < FieldCount().
  const FieldInfo& Field(int index) const;
  std::vector<std::string> FieldNames() const;

  // The field's value in the current record, or in the record being added or edited.
  // NoCurrentRecord without one; Damaged when the file's bytes contradict themselves.
  // Characters that cannot be read are U+FFFD.
  Status Get(std::string_view field, Value* value) const;
  Status Get(int index, Value* value) const;

  // Replaces *key by bytes that order, compared as std::string does, as a sorted query orders
  // the field's value in the current record: see Database::OpenOrdered.  Values that are equal
  // to such a query have equal bytes.  Of a change that is begun nothing is seen.
  // NoCurrentRecord without a record, NoSuchItem, Damaged.
  Status OrderKey(std::string_view field, std::string* key) const;

  // A change: AddNew or Edit, any number of Set, then Update.  Beginning again drops what was
  // begun.
  Status AddNew();
  Status Edit();

  // TypeMismatch, ValueTooLong, ZeroLength or RequiredField when the field cannot take the
  // value; the field then keeps what it had.  Integer fields take whole numbers in their
  // range, Boolean fields booleans and numbers, Text and Memo fields texts, any field null.
  // UpdateWithoutEdit when no change was begun.
  Status Set(std::string_view field, const Value& value);
  Status Set(int index, const Value& value);

  // Checks the whole change and writes it to the file.  The added or changed record is the
  // current one afterwards.  On an error nothing is changed and the change is still open, so
  // that it can be corrected or cancelled.
  Status Update();
  // Drops a begun change, if any; the current record is as before it.
  void CancelUpdate();
  // Whether a change is begun.
  bool IsChanging() const { return change_ != Change::No; }

  // Deletes the current record.  There is no current record until a move; MoveNext goes to
  // the record that followed, MovePrevious to the one before.
  Status Delete();

 private:
  friend class Database;

  enum class Change : std::uint8_t { No, Add, Edit };

  // A field that was set: null, or bytes of contents_.
  struct Pending {
    bool isSet = false;
    bool isNull = false;
    std::size_t begin = 0;
    std::size_t length = 0;
  };

  explicit RecordSet(std::unique_ptr<RecordCursor> cursor);

  Status CheckChangeable() const;
  Status NoSuchField(std::string_view field) const;

  std::unique_ptr<RecordCursor> cursor_;
  std::vector<FieldInfo> fields_;
  std::string indexName_;
  bool noMatch_ = false;

  Change change_ = Change::No;
  std::vector<Pending> pending_;        // by field index
  std::vector<std::uint8_t> contents_;  // of the pending fields, as they will be stored
};

}  // namespace jet

#endif  // DB_JET_RECORD_SET_H_
