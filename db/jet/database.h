// SPDX-License-Identifier: MIT
//
// A Jet database file: open, create, look up tables.

#ifndef DB_JET_DATABASE_H_
#define DB_JET_DATABASE_H_

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "db/jet/field_type.h"
#include "db/jet/record_set.h"
#include "db/jet/status.h"

namespace jet {

class PageFile;
class Store;

enum class Access { ReadOnly, ReadWrite };

// A field to create: Integer, Text or Memo.
struct FieldSpec {
  std::string name;
  FieldType type = FieldType::Integer;
  int size = 0;  // Text: the most characters, 1 to 255; otherwise ignored
  bool allowZeroLength = false;
  // Whether texts may be stored one byte per character; unset: Text yes, Memo no, as most
  // software creates them.  Ignored in Jet 3.
  std::optional<bool> compressed = std::nullopt;
};

struct IndexSpec {
  std::string name;
  std::vector<std::string> fields;
  bool primary = false;  // implies unique and required
  bool unique = false;
};

struct TableSpec {
  std::string name;
  std::vector<FieldSpec> fields;
};

// An open database.  Record sets may be closed before or after it.
class Database {
 public:
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  // Creates an empty Jet 4 database with the general sort order, replacing a file of that
  // name, and opens it for reading and writing.
  static Status Create(const std::filesystem::path& path, std::unique_ptr<Database>* database);
  // The same without a file.
  static Status CreateInMemory(std::unique_ptr<Database>* database);

  // Opens a Jet 3 or Jet 4 file.  A file is never changed by opening it.
  // FileNotFound, CannotOpen (no permission), UnknownFormat, Unsupported (encoded, or written
  // with a code page other than 1252), Password, Damaged.
  static Status Open(const std::filesystem::path& path, Access access,
                     std::unique_ptr<Database>* database);
  // The same over any bytes; for tests and tools.
  static Status Open(std::unique_ptr<PageFile> file, Access access,
                     std::unique_ptr<Database>* database);
  static Status Create(std::unique_ptr<PageFile> file, std::unique_ptr<Database>* database);
  // A copy of an open database, as its record sets show it, without a file: what is changed in the
  // one is not in the other.  REQUIRES: no batch of `source` is open
  static Status CopyInMemory(const Database& source, std::unique_ptr<Database>* copy);

  // 3 or 4.
  int Version() const;

  // Creates an empty table with its indexes, in the order given.  ObjectExists when there is
  // one of that name; Unsupported for field types other than Integer, Text and Memo.
  Status CreateTable(const TableSpec& spec, std::span<const IndexSpec> indexes = {});
  // Adds an index to a table, which may have records.  DuplicateKey or NullKey when those
  // contradict it.
  Status CreateIndex(std::string_view table, const IndexSpec& spec);

  // The user tables, in the order of the catalogue.
  std::vector<std::string> TableNames() const;
  // Table names are compared without regard to the case of ASCII letters.
  Status OpenTable(std::string_view name, std::unique_ptr<RecordSet>* records);
  // All records ordered by the fields named, as "SELECT * FROM name ORDER BY a, b" gives them:
  // texts by the general sort order of the file's version (characters that it does not know
  // after all others, by code point), numbers by value, null first; equal records stay in
  // storage order.  For reading only.  The order is that of the moment of opening; records
  // deleted since are passed over.
  Status OpenOrdered(std::string_view name, std::span<const std::string_view> orderBy,
                     std::unique_ptr<RecordSet>* records);

  // While a batch is open every change stays in memory; Commit writes them all.  Leaving the
  // scope without Commit drops them.  Record sets may stay open.  Batches do not nest.
  class Batch {
   public:
    explicit Batch(Database& database);
    // In the database of these records.
    explicit Batch(const RecordSet& records);
    ~Batch();
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    // Writes all changes; on an error they are dropped, in memory and, as far as the
    // file can still be written, there.  The batch is over either way.
    Status Commit();

   private:
    std::shared_ptr<Store> store_;
    bool open_ = true;
  };

  // Puts the file in order where a failed write has left it other than what the record sets
  // show, as the next write does.  Before this has succeeded, the file of a database that had a
  // write fail may be damaged.  REQUIRES: no batch is open.
  Status Settle();

  // How many changes have been written since it was opened; one that failed is none.
  std::uint64_t ChangesWritten() const;

  // The engine's inside, for the audit and the tools of this library.
  Store& GetStore() const { return *store_; }

 private:
  explicit Database(std::shared_ptr<Store> store);

  std::shared_ptr<Store> store_;
};

}  // namespace jet

#endif  // DB_JET_DATABASE_H_
