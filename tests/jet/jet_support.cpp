// SPDX-License-Identifier: MIT

#include "tests/jet/jet_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <ostream>
#include <random>

#include "db/jet/audit.h"
#include "db/jet/store.h"
#include "tests/support/hex.h"
#include "tests/support/temporary_folder.h"

namespace test {

namespace fs = std::filesystem;

std::uint32_t Seed() {
  static const std::uint32_t seed = [] {
    const char* given = std::getenv("TESK_SEED");
    const std::uint32_t drawn = given == nullptr
                                    ? std::random_device()()
                                    : static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10));
    std::cout << "TESK_SEED=" << drawn << std::endl;
    return drawn;
  }();
  return seed;
}

const std::vector<std::string>& SampleNames() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> found;
    for (const fs::directory_entry& entry : fs::directory_iterator(TESK_TEST_DATA "/mdb")) {
      if (entry.path().extension() == ".mdb") found.push_back(entry.path().stem().string());
    }
    std::sort(found.begin(), found.end());
    return found;
  }();
  return names;
}

fs::path SamplePath(std::string_view name) {
  return fs::path(TESK_TEST_DATA "/mdb") / (std::string(name) + ".mdb");
}

std::vector<std::uint8_t> SampleBytes(std::string_view name) {
  const std::string bytes = ReadFile(SamplePath(name));
  return {bytes.begin(), bytes.end()};
}

std::unique_ptr<jet::Database> OpenSample(std::string_view name) {
  std::unique_ptr<jet::Database> database;
  EXPECT_THAT(jet::Database::Open(std::make_unique<jet::MemoryPageFile>(SampleBytes(name)),
                                  jet::Access::ReadWrite, &database),
              IsOk());
  return database;
}

std::unique_ptr<jet::Database> Open(MemoryDisk& disk, jet::Access access) {
  std::unique_ptr<jet::Database> database;
  EXPECT_THAT(jet::Database::Open(disk.NewFile(), access, &database), IsOk());
  return database;
}

std::unique_ptr<jet::RecordSet> OpenTable(jet::Database& database, std::string_view table) {
  std::unique_ptr<jet::RecordSet> records;
  EXPECT_THAT(database.OpenTable(table, &records), IsOk()) << table;
  return records;
}

jet::Value Read(jet::RecordSet& records, std::string_view field) {
  jet::Value value;
  EXPECT_THAT(records.Get(field, &value), IsOk()) << field;
  return value;
}

std::string Text(jet::RecordSet& records, std::string_view field) {
  return Read(records, field).Text();
}

int Int(jet::RecordSet& records, std::string_view field) { return Read(records, field).Int(); }

std::vector<std::string> Texts(jet::RecordSet& records, std::string_view field) {
  std::vector<std::string> texts;
  for (jet::Status status = records.MoveFirst(); !records.Eof(); status = records.MoveNext()) {
    EXPECT_THAT(status, IsOk());
    if (!status.ok()) break;
    texts.push_back(Text(records, field));
  }
  return texts;
}

std::vector<int> Ints(jet::RecordSet& records, std::string_view field) {
  std::vector<int> numbers;
  for (jet::Status status = records.MoveFirst(); !records.Eof(); status = records.MoveNext()) {
    EXPECT_THAT(status, IsOk());
    if (!status.ok()) break;
    numbers.push_back(Int(records, field));
  }
  return numbers;
}

std::string Problems(jet::Database& database) {
  jet::Findings findings;
  const jet::Status status = jet::Audit(database.GetStore(), &findings);
  if (!status.ok()) return status.Description() + "\n";
  std::string text;
  for (const jet::Finding& finding : findings) {
    if (finding.IsProblem())
      text += finding.text + " (page " + std::to_string(finding.page) + ")\n";
  }
  return text;
}

std::uint32_t PageCount(const jet::Database& database) {
  return database.GetStore().GetPager().PageCount();
}

std::vector<std::uint8_t> Page(const jet::Database& database, std::uint32_t number) {
  jet::Pager& pager = database.GetStore().GetPager();
  const std::uint8_t* bytes = nullptr;
  EXPECT_THAT(pager.Read(number, &bytes), IsOk());
  if (bytes == nullptr) return {};
  return {bytes, bytes + pager.GetFormat().pageSize};
}

}  // namespace test

namespace jet {

void PrintTo(const Value& value, std::ostream* out) {
  switch (value.GetKind()) {
    case Value::Kind::Null:
      *out << "null";
      break;
    case Value::Kind::Text:
    case Value::Kind::Decimal:
      *out << '"' << value.Text() << '"';
      break;
    case Value::Kind::Binary:
    case Value::Kind::Guid:
      *out << test::Hex(value.Bytes());
      break;
    default:
      *out << value.Real();
      break;
  }
}

void PrintTo(const Status& status, std::ostream* out) {
  *out << status.Number() << ": " << status.Description();
}

}  // namespace jet
