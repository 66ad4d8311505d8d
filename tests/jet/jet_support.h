// SPDX-License-Identifier: MIT
//
// What the tests of the Jet engine share.

#ifndef TESTS_JET_JET_SUPPORT_H_
#define TESTS_JET_JET_SUPPORT_H_

#include <gmock/gmock.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "db/jet/database.h"
#include "db/jet/status.h"
#include "tests/jet/memory_disk.h"

namespace test {

// EXPECT_THAT(records->MoveNext(), IsOk()): a failure shows the engine's text.
MATCHER(IsOk, "is a success") {
  if (!arg.ok()) *result_listener << arg.Number() << ": " << arg.Description();
  return arg.ok();
}

// EXPECT_THAT(records->Delete(), Fails(3021, "There is no current record")).
MATCHER_P2(Fails, number, text, "") {
  *result_listener << arg.Number() << ": " << arg.Description();
  return arg.Number() == number && arg.Description() == text;
}

// How many times a test that can be repeated at will is: less in a build for finding mistakes,
// which is slow.
#ifdef NDEBUG
constexpr int Repeated(int times) { return times; }
#else
constexpr int Repeated(int times) { return times / 4; }
#endif

// For tests that draw at random: TESK_SEED of the environment or a number by chance, the same
// for the whole run.  It is printed once.
std::uint32_t Seed();

// The sample files, by name without folder and ".mdb".
const std::vector<std::string>& SampleNames();
std::filesystem::path SamplePath(std::string_view name);
std::vector<std::uint8_t> SampleBytes(std::string_view name);

// A sample opened for reading and writing, in memory.
std::unique_ptr<jet::Database> OpenSample(std::string_view name);
std::unique_ptr<jet::Database> Open(MemoryDisk& disk, jet::Access access = jet::Access::ReadWrite);
std::unique_ptr<jet::RecordSet> OpenTable(jet::Database& database, std::string_view table);

// A field of the current record.  A failure fails the test and gives null.
jet::Value Read(jet::RecordSet& records, std::string_view field);
std::string Text(jet::RecordSet& records, std::string_view field);
int Int(jet::RecordSet& records, std::string_view field);

// The field in all records, in the set's order, from MoveFirst to Eof.
std::vector<std::string> Texts(jet::RecordSet& records, std::string_view field);
std::vector<int> Ints(jet::RecordSet& records, std::string_view field);

// The problems that the audit finds, one a line; its notes are left out.
std::string Problems(jet::Database& database);

std::uint32_t PageCount(const jet::Database& database);

// The bytes of page `number`.
std::vector<std::uint8_t> Page(const jet::Database& database, std::uint32_t number);

}  // namespace test

namespace jet {

// How GoogleTest shows them.
void PrintTo(const Value& value, std::ostream* out);
void PrintTo(const Status& status, std::ostream* out);

}  // namespace jet

#endif  // TESTS_JET_JET_SUPPORT_H_
