// SPDX-License-Identifier: MIT
//
// Takes arbitrary bytes for a database file.  First everything is read: all tables both ways,
// every index, a sorted query, the audit.  Then the whole pages are the file of a database that
// is edited, and what is left of the bytes says how.  Whatever comes:
//
//   - reading changes nothing, and a walk forward and one back meet as many records;
//   - a change that was dropped has changed nothing;
//   - a file that the audit found sound is sound after the edits, and has as many records as
//     were there, were added and not deleted.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "db/jet/audit.h"
#include "db/jet/database.h"
#include "db/jet/page_file.h"
#include "db/jet/store.h"

namespace {

constexpr std::size_t kMostEdits = 64;
// Values that are read whole.  Each is as long as the file at most, but a damaged file can
// give one value to thousands of records.
constexpr std::size_t kMostBytesRead = 16 << 20;

void Require(bool holds) {
  if (!holds) std::abort();
}

// An open database and the bytes below it.
class OpenFile {
 public:
  OpenFile(std::span<const std::uint8_t> bytes, jet::Access access) {
    auto file = std::make_unique<jet::MemoryPageFile>(
        std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
    file_ = file.get();
    if (!jet::Database::Open(std::move(file), access, &database_).ok()) file_ = nullptr;
  }

  bool IsOpen() const { return file_ != nullptr; }
  jet::Database& Database() const { return *database_; }
  const std::vector<std::uint8_t>& Content() const { return file_->Content(); }

 private:
  std::unique_ptr<jet::Database> database_;
  jet::MemoryPageFile* file_ = nullptr;
};

// Whether the audit finds no problem; what it only notes does not count.
bool IsSound(const jet::Database& database) {
  jet::Findings findings;
  if (!jet::Audit(database.GetStore(), &findings).ok()) return false;
  return std::none_of(findings.begin(), findings.end(),
                      [](const jet::Finding& finding) { return finding.IsProblem(); });
}

std::vector<std::string> IndexNames(const jet::Database& database, const std::string& table) {
  std::vector<std::string> names;
  std::shared_ptr<jet::Table> opened;
  if (!database.GetStore().OpenTable(table, &opened).ok()) return names;
  for (const jet::LogicalIndex& index : opened->Def().logicalIndexes) names.push_back(index.name);
  return names;
}

class Reader {
 public:
  explicit Reader(jet::Database& database) : database_(database) {}

  void ReadAll() {
    for (const std::string& name : database_.TableNames()) ReadTable(name);
  }

 private:
  void ReadTable(const std::string& name) {
    std::unique_ptr<jet::RecordSet> records;
    if (!database_.OpenTable(name, &records).ok()) return;
    Walk(*records);
    for (const std::string& index : IndexNames(database_, name)) {
      if (!records->SetIndex(index).ok()) continue;
      Walk(*records);
      Seek(*records);
    }
    if (records->FieldCount() == 0) return;
    const std::string first = records->Field(0).name;
    const std::string last = records->Field(records->FieldCount() - 1).name;
    const std::string_view orderBy[] = {last, first};
    std::unique_ptr<jet::RecordSet> sorted;
    if (database_.OpenOrdered(name, orderBy, &sorted).ok()) Walk(*sorted);
  }

  void Walk(jet::RecordSet& records) {
    int forward = 0;
    jet::Status status = records.MoveFirst();
    for (; status.ok() && !records.Eof(); status = records.MoveNext()) {
      ++forward;
      ReadFields(records);
    }
    if (!status.ok()) return;
    int back = 0;
    status = records.MoveLast();
    for (; status.ok() && !records.Bof(); status = records.MovePrevious()) ++back;
    Require(status.ok() && forward == back);
    if (records.IndexName().empty()) Require(records.RecordCount() == forward);
  }

  void ReadFields(jet::RecordSet& records) {
    jet::Value value;
    for (int i = 0; i < records.FieldCount() && bytesRead_ < kMostBytesRead; ++i) {
      if (!records.Get(i, &value).ok()) continue;
      bytesRead_ += 1 + value.Text().size() + value.Bytes().size();
    }
  }

  // Each kind of value is sought; what is found is not checked here.
  static void Seek(jet::RecordSet& records) {
    for (const jet::Value& key : {jet::Value(), jet::Value(1), jet::Value("Sta. 003"),
                                  jet::Value(""), jet::Value(0.5), jet::Value(true)}) {
      if (records.Seek(key).ok() && !records.NoMatch()) Require(records.HasRecord());
    }
  }

  jet::Database& database_;
  std::size_t bytesRead_ = 0;
};

// Changes a database as the script says.
class Editor {
 public:
  Editor(jet::Database& database, std::span<const std::uint8_t> script)
      : database_(database), script_(script) {}

  void Run() {
    for (const std::string& name : database_.TableNames()) {
      Open table;
      table.name = name;
      if (!database_.OpenTable(name, &table.records).ok()) continue;
      table.expected = table.records->RecordCount();
      tables_.push_back(std::move(table));
    }
    for (std::size_t i = 0; i < kMostEdits && !tables_.empty() && !script_.empty(); ++i) Step();
  }

  // By table name: how many records there should be.
  std::map<std::string, int> Counts() const {
    std::map<std::string, int> counts;
    for (const Open& table : tables_) counts[table.name] = table.expected;
    return counts;
  }

 private:
  struct Open {
    std::string name;
    std::unique_ptr<jet::RecordSet> records;
    int expected = 0;
    jet::Bookmark mark;
  };

  std::uint8_t Next() {
    if (script_.empty()) return 0;
    const std::uint8_t byte = script_.front();
    script_ = script_.subspan(1);
    return byte;
  }

  void Step() {
    const std::uint8_t what = Next();
    Open& table = tables_[what / 16 % tables_.size()];
    jet::RecordSet& records = *table.records;
    jet::Status status;  // most may fail in a damaged file
    switch (what % 16) {
      case 0:
      case 1:
      case 2:
        if (records.AddNew().ok() && Change(records)) ++table.expected;
        break;
      case 3:
      case 4:
      case 5:
        if (records.Edit().ok()) Change(records);
        break;
      case 6:
      case 7:
        if (records.Delete().ok()) --table.expected;
        break;
      case 8:
        status = records.MoveFirst();
        break;
      case 9:
        status = records.MoveLast();
        break;
      case 10:
        status = records.MoveNext();
        break;
      case 11:
        status = records.MovePrevious();
        break;
      case 12:
        SetIndex(table);
        break;
      case 13:
        if (!records.IndexName().empty()) status = records.Seek(MakeValue(FieldType(records)));
        break;
      case 14:
        table.mark = records.Mark();
        break;
      default:
        status = records.GoTo(table.mark);
    }
  }

  jet::FieldType FieldType(const jet::RecordSet& records) {
    const int count = records.FieldCount();
    return count == 0 ? jet::FieldType::Text : records.Field(Next() % count).type;
  }

  void SetIndex(Open& table) {
    const std::vector<std::string> names = IndexNames(database_, table.name);
    const std::size_t choice = Next() % (names.size() + 1);
    const std::string name = choice == 0 ? "" : names[choice - 1];
    if (table.records->SetIndex(name).ok()) Require(table.records->IndexName() == name);
  }

  bool Change(jet::RecordSet& records) {
    const int fields = records.FieldCount();
    for (int i = Next() % 8; i >= 0 && fields > 0; --i) {
      const int field = Next() % fields;
      const jet::Value value = MakeValue(records.Field(field).type);
      const bool isSet = records.Set(field, value).ok();
      jet::Value held;
      if (isSet && value.GetKind() == jet::Value::Kind::Text) {
        Require(records.Get(field, &held).ok() && held == value);
      }
    }
    if (records.Update().ok()) return true;
    records.CancelUpdate();
    return false;
  }

  jet::Value MakeValue(jet::FieldType type) {
    const std::uint8_t choice = Next();
    if (choice % 16 == 15) return {};
    switch (type) {
      case jet::FieldType::Text:
      case jet::FieldType::Memo: {
        constexpr std::size_t kLengths[] = {0, 1, 3, 8, 40, 64, 255, 300, 1100, 2100, 5000, 9000};
        std::string text;
        const std::size_t length = kLengths[choice % std::size(kLengths)];
        const std::uint8_t seed = Next();
        for (std::size_t i = 0; i < length; ++i) text += static_cast<char>('!' + (seed + i) % 90);
        if (choice >= 128) text += "\xC3\x9F\xE2\x82\xAC";  // sharp s, euro
        return text;
      }
      case jet::FieldType::Ole:
      case jet::FieldType::Binary:
        return jet::Value::FromBytes(std::vector<std::uint8_t>(choice * 3U, choice));
      case jet::FieldType::Single:
      case jet::FieldType::Double:
        return (choice - 100) / 4.0;
      case jet::FieldType::DateTime:
        return jet::Value::FromDate(choice * 100.25);
      case jet::FieldType::Boolean:
        return choice % 2 == 0;
      case jet::FieldType::Currency:
        return jet::Value::FromCurrency((choice - 100) * 12345);
      default:
        return (choice - 100) * (choice % 4 == 0 ? 300 : 1);
    }
  }

  jet::Database& database_;
  std::span<const std::uint8_t> script_;
  std::vector<Open> tables_;
};

void ReadFile(std::span<const std::uint8_t> bytes) {
  const OpenFile file(bytes, jet::Access::ReadOnly);
  if (!file.IsOpen()) return;
  Reader(file.Database()).ReadAll();
  (void)IsSound(file.Database());
  Require(std::equal(bytes.begin(), bytes.end(), file.Content().begin(), file.Content().end()));
}

void EditFile(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> script) {
  const OpenFile file(bytes, jet::Access::ReadWrite);
  if (!file.IsOpen()) return;
  const bool wasSound = IsSound(file.Database());
  const bool isDropped = script.front() % 4 == 0;
  Editor editor(file.Database(), script.subspan(1));
  if (isDropped) {
    {
      jet::Database::Batch batch(file.Database());
      editor.Run();
    }
    Require(std::equal(bytes.begin(), bytes.end(), file.Content().begin(), file.Content().end()));
    return;
  }
  editor.Run();
  if (wasSound) Require(IsSound(file.Database()));
  const OpenFile again(file.Content(), jet::Access::ReadOnly);
  if (wasSound) Require(again.IsOpen());
  if (!again.IsOpen()) return;
  Reader(again.Database()).ReadAll();
  if (!wasSound) return;
  Require(IsSound(again.Database()));
  for (const auto& [name, count] : editor.Counts()) {
    std::unique_ptr<jet::RecordSet> records;
    Require(again.Database().OpenTable(name, &records).ok());
    Require(records->RecordCount() == count);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const std::uint8_t> bytes(data, size);
  ReadFile(bytes);
  constexpr std::size_t kVersionAt = 0x14;
  if (size <= kVersionAt) return 0;
  const std::size_t pageSize = data[kVersionAt] == 0 ? 2048 : 4096;
  const std::size_t whole = size / pageSize * pageSize;
  if (whole < size) EditFile(bytes.first(whole), bytes.subspan(whole));
  return 0;
}
