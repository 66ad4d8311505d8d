// SPDX-License-Identifier: MIT
//
// The database engine beside SQLite (journal and sync off) and beside mdb-export, on the
// configuration database with its default records: 128 stations of 109 fields.
//
//   Create        a new file with both tables, indexes and all records; the one of the last round
//                 is removed outside the measured time
//   Check         the look at every page and field with which the console opens a file, which must
//                 not be felt
//   Read          the file opened, every field of every station in the order of their numbers
//   Seek          a station by its number, one field read
//   UpdateNumber  a station by its number, a number in it changed and written
//   UpdateLabel   the same with a text that has an index
//   Export        a process that prints both tables: mdbdump, and mdb-export once per table
//
// CPU time, for Export wall time.

#include <fcntl.h>
#include <spawn.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "bench/suite.h"
#include "db/damage.h"
#include "db/jet/database.h"
#include "db/schema.h"
#include "tests/support/temporary_folder.h"

namespace {

constexpr int kStations = 128;
constexpr double kCheckMilliseconds = 10;

// What a record holds, read once with the engine.
using Row = std::vector<jet::Value>;

std::vector<Row> ReadRows(jet::Database& database, const char* table) {
  std::vector<Row> rows;
  std::unique_ptr<jet::RecordSet> records;
  bool ok = database.OpenTable(table, &records).ok();
  for (; ok && !records->Eof(); ok = records->MoveNext().ok()) {
    Row& row = rows.emplace_back(records->FieldCount());
    for (int i = 0; i < records->FieldCount(); ++i) ok = ok && records->Get(i, &row[i]).ok();
  }
  return ok ? rows : std::vector<Row>();
}

// The folder of the run, with a database of each kind.
class Files {
 public:
  Files() : jet(folder_ / "Tesk.mdb"), sqlite(folder_ / "tesk.sqlite") {
    std::unique_ptr<jet::Database> database;
    if (!db::CreateDatabase(jet).ok()) return;
    if (!jet::Database::Open(jet, jet::Access::ReadOnly, &database).ok()) return;
    dbInfo = ReadRows(*database, db::kDbInfoTable);
    stations = ReadRows(*database, db::kStationsTable);
  }

  std::filesystem::path New(const char* name) const { return folder_ / name; }

 private:
  const test::TemporaryFolder folder_;

 public:
  const std::filesystem::path jet;
  const std::filesystem::path sqlite;
  std::vector<Row> dbInfo;
  std::vector<Row> stations;
};

const Files& TheFiles() {
  static const Files files;
  return files;
}

class Statement {
 public:
  Statement(sqlite3* database, const std::string& sql) {
    sqlite3_prepare_v2(database, sql.c_str(), -1, &statement_, nullptr);
  }
  ~Statement() { sqlite3_finalize(statement_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  void Bind(int index, int number) { sqlite3_bind_int(statement_, index, number); }
  void Bind(int index, const std::string& text) {
    sqlite3_bind_text(statement_, index, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
  }
  void Bind(int index, const jet::Value& value) {
    if (value.GetKind() == jet::Value::Kind::Int) {
      Bind(index, value.Int());
    } else {
      Bind(index, value.Text());
    }
  }
  // Whether there is a row.
  bool Step() { return sqlite3_step(statement_) == SQLITE_ROW; }
  void Reset() { sqlite3_reset(statement_); }
  int ColumnCount() const { return sqlite3_column_count(statement_); }
  bool IsNumber(int column) const {
    return sqlite3_column_type(statement_, column) == SQLITE_INTEGER;
  }
  int Number(int column) const { return sqlite3_column_int(statement_, column); }
  void Text(int column, std::string* text) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    text->assign(bytes, sqlite3_column_bytes(statement_, column));
  }

 private:
  sqlite3_stmt* statement_ = nullptr;
};

class Sqlite {
 public:
  explicit Sqlite(const std::filesystem::path& path) {
    sqlite3_open(path.c_str(), &database_);
    Run("PRAGMA journal_mode=OFF");
    Run("PRAGMA synchronous=OFF");
    Run("PRAGMA locking_mode=EXCLUSIVE");  // as the engine has the file to itself
  }
  ~Sqlite() { sqlite3_close(database_); }
  Sqlite(const Sqlite&) = delete;
  Sqlite& operator=(const Sqlite&) = delete;

  bool Run(const std::string& sql) {
    return sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
  }
  sqlite3* Handle() const { return database_; }

  // The same tables and indexes.  SMALLINT keeps the number from becoming the row's own id:
  // it has an index, as in the other file.
  bool CreateTables() {
    if (!Run("BEGIN") || !CreateTable(db::DbInfoSpec(), TheFiles().dbInfo) ||
        !CreateTable(db::StationsSpec(), {}) ||
        !Run("CREATE UNIQUE INDEX StationNum ON Stations (StationNum)") ||
        !Run("CREATE INDEX Label ON Stations (Label)")) {
      return false;
    }
    Insert(db::StationsSpec(), TheFiles().stations);
    return Run("COMMIT");
  }

 private:
  bool CreateTable(const jet::TableSpec& table, const std::vector<Row>& rows) {
    std::string sql = "CREATE TABLE \"" + table.name + "\" (";
    for (const jet::FieldSpec& field : table.fields) {
      if (sql.back() != '(') sql += ", ";
      sql += "\"" + field.name + "\"";
      sql += field.type == jet::FieldType::Integer ? " SMALLINT" : " TEXT";
    }
    if (!Run(sql + ")")) return false;
    Insert(table, rows);
    return true;
  }

  void Insert(const jet::TableSpec& table, const std::vector<Row>& rows) {
    std::string sql = "INSERT INTO \"" + table.name + "\" VALUES (?";
    for (std::size_t i = 1; i < table.fields.size(); ++i) sql += ", ?";
    Statement insert(database_, sql + ")");
    for (const Row& row : rows) {
      for (std::size_t i = 0; i < row.size(); ++i) insert.Bind(static_cast<int>(i) + 1, row[i]);
      insert.Step();
      insert.Reset();
    }
  }

  sqlite3* database_ = nullptr;
};

// Both sides must have read the same.
class Sum {
 public:
  void Add(int number) { sum_ += number; }
  void Add(const std::string& text) { sum_ += text.size() + static_cast<unsigned char>(text[0]); }
  std::uint64_t Total() const { return sum_; }

 private:
  std::uint64_t sum_ = 0;
};

std::uint64_t SumOfStations() {
  Sum sum;
  for (const Row& row : TheFiles().stations) {
    for (const jet::Value& value : row) {
      if (value.GetKind() == jet::Value::Kind::Int) {
        sum.Add(value.Int());
      } else {
        sum.Add(value.Text());
      }
    }
  }
  return sum.Total();
}

void CreateJet(benchmark::State& state) {
  const std::filesystem::path path = TheFiles().New("new.mdb");
  for (auto _ : state) {
    state.PauseTiming();
    std::filesystem::remove(path);
    state.ResumeTiming();
    if (!db::CreateDatabase(path).ok()) state.SkipWithError("not created");
  }
  state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(path));
}

void CreateSqlite(benchmark::State& state) {
  const std::filesystem::path path = TheFiles().New("new.sqlite");
  for (auto _ : state) {
    state.PauseTiming();
    std::filesystem::remove(path);
    state.ResumeTiming();
    if (!Sqlite(path).CreateTables()) state.SkipWithError("not created");
  }
  state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(path));
}

void CheckJet(benchmark::State& state) {
  for (auto _ : state) {
    std::unique_ptr<jet::Database> database;
    db::Damage damage;
    const bool ok = jet::Database::Open(TheFiles().jet, jet::Access::ReadWrite, &database).ok() &&
                    db::FindDamage(*database, &damage).ok();
    if (!ok || !damage.IsSound()) state.SkipWithError("not found sound");
  }
}

void ReadJet(benchmark::State& state) {
  const std::uint64_t expected = SumOfStations();
  for (auto _ : state) {
    Sum sum;
    std::unique_ptr<jet::Database> database;
    std::unique_ptr<jet::RecordSet> stations;
    bool ok = jet::Database::Open(TheFiles().jet, jet::Access::ReadWrite, &database).ok() &&
              database->OpenTable(db::kStationsTable, &stations).ok() &&
              stations->SetIndex(db::kStationNumIndex).ok() && stations->MoveFirst().ok();
    jet::Value value;
    for (; ok && !stations->Eof(); ok = ok && stations->MoveNext().ok()) {
      for (int i = 0; i < stations->FieldCount(); ++i) {
        ok = ok && stations->Get(i, &value).ok();
        if (value.GetKind() == jet::Value::Kind::Int) {
          sum.Add(value.Int());
        } else {
          sum.Add(value.Text());
        }
      }
    }
    if (!ok || sum.Total() != expected) state.SkipWithError("not read");
  }
}

void ReadSqlite(benchmark::State& state) {
  const std::uint64_t expected = SumOfStations();
  for (auto _ : state) {
    Sum sum;
    Sqlite database(TheFiles().sqlite);
    Statement select(database.Handle(), "SELECT * FROM Stations ORDER BY StationNum");
    std::string text;
    while (select.Step()) {
      for (int i = 0; i < select.ColumnCount(); ++i) {
        if (select.IsNumber(i)) {
          sum.Add(select.Number(i));
        } else {
          select.Text(i, &text);
          sum.Add(text);
        }
      }
    }
    if (sum.Total() != expected) state.SkipWithError("not read");
  }
}

// Numbers of stations, all over the table.
class Numbers {
 public:
  int Next() { return 1 + static_cast<int>(next_++ * 37 % kStations); }
  // Whether all stations had their turn an odd number of times.
  bool IsOddRound() const { return (next_ - 1) / kStations % 2 == 1; }

 private:
  unsigned next_ = 0;
};

class JetStations {
 public:
  JetStations() {
    ok_ = jet::Database::Open(TheFiles().jet, jet::Access::ReadWrite, &database_).ok() &&
          database_->OpenTable(db::kStationsTable, &records).ok() &&
          records->SetIndex(db::kStationNumIndex).ok();
  }

  bool Seek(int number) { return ok_ && records->Seek(number).ok() && !records->NoMatch(); }

 private:
  std::unique_ptr<jet::Database> database_;
  bool ok_ = false;

 public:
  std::unique_ptr<jet::RecordSet> records;
};

void SeekJet(benchmark::State& state) {
  JetStations stations;
  Numbers numbers;
  jet::Value label;
  for (auto _ : state) {
    const bool found = stations.Seek(numbers.Next()) && stations.records->Get("Label", &label).ok();
    if (!found || label.Text().size() != 8) state.SkipWithError("not found");
  }
}

void SeekSqlite(benchmark::State& state) {
  Sqlite database(TheFiles().sqlite);
  Statement select(database.Handle(), "SELECT Label FROM Stations WHERE StationNum = ?");
  Numbers numbers;
  std::string label;
  for (auto _ : state) {
    select.Bind(1, numbers.Next());
    const bool found = select.Step();
    if (found) select.Text(0, &label);
    select.Reset();
    if (!found || label.size() != 8) state.SkipWithError("not found");
  }
}

template <typename T>
void UpdateJet(benchmark::State& state, const char* field, const std::array<T, 2>& values) {
  JetStations stations;
  Numbers numbers;
  for (auto _ : state) {
    const int number = numbers.Next();
    const bool ok = stations.Seek(number) && stations.records->Edit().ok() &&
                    stations.records->Set(field, values[numbers.IsOddRound()]).ok() &&
                    stations.records->Update().ok();
    if (!ok) state.SkipWithError("not updated");
  }
}

template <typename T>
void UpdateSqlite(benchmark::State& state, const char* field, const std::array<T, 2>& values) {
  Sqlite database(TheFiles().sqlite);
  Statement update(database.Handle(),
                   std::string("UPDATE Stations SET \"") + field + "\" = ? WHERE StationNum = ?");
  Numbers numbers;
  for (auto _ : state) {
    update.Bind(2, numbers.Next());
    update.Bind(1, values[numbers.IsOddRound()]);
    update.Step();
    update.Reset();
    if (sqlite3_changes(database.Handle()) != 1) state.SkipWithError("not updated");
  }
}

const std::array<int, 2> kNumbers{3, 4};
const std::array<std::string, 2> kLabels{"Studio A", "Gallery2"};

void UpdateNumberJet(benchmark::State& state) { UpdateJet(state, "OptoFirst", kNumbers); }
void UpdateNumberSqlite(benchmark::State& state) { UpdateSqlite(state, "OptoFirst", kNumbers); }
void UpdateLabelJet(benchmark::State& state) { UpdateJet(state, "Label", kLabels); }
void UpdateLabelSqlite(benchmark::State& state) { UpdateSqlite(state, "Label", kLabels); }

// Runs a program to its end, its output thrown away.
bool RunProgram(std::vector<std::string> words) {
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t process = 0;
  int result = -1;
  const bool started =
      posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ) == 0;
  posix_spawn_file_actions_destroy(&actions);
  return started && waitpid(process, &result, 0) == process && result == 0;
}

void ExportJet(benchmark::State& state) {
  for (auto _ : state) {
    if (!RunProgram({TESK_MDBDUMP, TheFiles().jet.string()})) state.SkipWithError("no mdbdump");
  }
}

void ExportMdbTools(benchmark::State& state) {
  for (auto _ : state) {
    for (const char* table : {db::kDbInfoTable, db::kStationsTable}) {
      if (!RunProgram({"mdb-export", TheFiles().jet.string(), table})) {
        state.SkipWithError("no mdb-export");
      }
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  bench::Suite suite(&argc, argv);
  if (TheFiles().stations.size() != kStations || !Sqlite(TheFiles().sqlite).CreateTables()) {
    std::fprintf(stderr, "the databases cannot be made\n");
    return 2;
  }
  constexpr auto kMicroseconds = benchmark::kMicrosecond;
  constexpr auto kMilliseconds = benchmark::kMillisecond;
  const auto add = [&suite](const char* what, benchmark::TimeUnit unit,
                            const bench::Suite::Function& engine,
                            const bench::Suite::Function& sqlite) {
    suite.Compare({.what = what, .run = engine, .unit = unit},
                  {.name = "SQLite", .run = sqlite, .ratioLimit = 2});
  };
  add("database: created with all default rows", kMilliseconds, CreateJet, CreateSqlite);
  suite.Measure({.what = "database: opened, looked over for damage",
                 .run = CheckJet,
                 .limit = kCheckMilliseconds});
  add("database: opened, every field of 128 stations read", kMilliseconds, ReadJet, ReadSqlite);
  add("database: a station found by its number", kMicroseconds, SeekJet, SeekSqlite);
  add("database: a number of a station updated", kMicroseconds, UpdateNumberJet,
      UpdateNumberSqlite);
  suite.Compare({.what = "database: printed by mdbdump (wall)", .run = ExportJet},
                {.name = "mdb-export", .run = ExportMdbTools, .ratioLimit = 1},
                bench::Suite::Clock::Wall);
  // Last: it changes the labels.
  add("database: an indexed label updated", kMicroseconds, UpdateLabelJet, UpdateLabelSqlite);
  suite.Run();
  return suite.Finish();
}
