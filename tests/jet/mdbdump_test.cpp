// SPDX-License-Identifier: MIT
//
// The program mdbdump as its user sees it.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "db/jet/bytes.h"
#include "tests/jet/jet_support.h"
#include "tests/jet/json_compare.h"
#include "tests/support/programs.h"
#include "tests/support/run_program.h"
#include "tests/support/temporary_folder.h"

namespace {

using test::ProgramResult;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

ProgramResult Mdbdump(const std::vector<std::string>& arguments) {
  return test::RunProgram(test::ProgramPath("mdbdump"), arguments);
}

class MdbdumpTest : public testing::Test {
 protected:
  // A file of its own with these bytes.
  std::string Write(const std::vector<std::uint8_t>& bytes) {
    test::WriteFile(path_, std::string(bytes.begin(), bytes.end()));
    return path_.string();
  }

  const test::TemporaryFolder folder_;
  const std::filesystem::path path_ = folder_ / "file.mdb";
};

TEST_F(MdbdumpTest, DumpsAFile) {
  const ProgramResult result = Mdbdump({test::SamplePath("indexTestV1997").string()});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_THAT(test::Differences(test::ParseJson(result.output), test::GoldenDump("indexTestV1997")),
              IsEmpty());
}

TEST_F(MdbdumpTest, DumpsAFileWithoutTables) {
  const ProgramResult result = Mdbdump({test::SamplePath("adox_jet4").string()});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_THAT(test::Differences(test::ParseJson(result.output), test::GoldenDump("adox_jet4")),
              IsEmpty());
}

TEST_F(MdbdumpTest, ChecksASoundFile) {
  const std::string file = test::SamplePath("tesk_jet4").string();
  const ProgramResult result = Mdbdump({"--check", file});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output, file + ": 0 problems, 0 notes\n");
  EXPECT_EQ(result.errors, "");
}

TEST_F(MdbdumpTest, NotesAreNoProblems) {
  const std::string file = test::SamplePath("delColTestV2000").string();
  const ProgramResult result = Mdbdump({file, "--check"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output,
            "note: table \"Table1\", index \"id2\": the definition counts 1 different keys, there "
            "are 2 (page 24)\n" +
                file + ": 0 problems, 1 notes\n");
}

// Other software makes a list of bitmap pages out of a window of bits and leaves behind the first
// entry what stood there: here that pages 0 to 486 were in use, pages 487 to 511 free.
TEST_F(MdbdumpTest, WhatStandsBehindTheListOfTheFreePagesIsNoPage) {
  constexpr std::size_t kPageBytes = 4096;
  auto bytes = test::SampleBytes("tesk_jet4");
  const auto pages = static_cast<std::uint32_t>(bytes.size() / kPageBytes);
  std::uint8_t* const row = &bytes[kPageBytes + (jet::GetU16(&bytes[kPageBytes + 14]) & 0x1FFF)];
  ASSERT_EQ(row[0], 0) << "a window";
  const std::vector<std::uint8_t> window(row + 5, row + 69);
  std::fill_n(row, 69, 0);
  row[0] = 1;
  jet::PutU32(row + 1, pages);
  jet::PutU32(row + 1 + 4 * 16, 0xFFFFFF80);
  std::vector<std::uint8_t> bitmap(kPageBytes, 0xFF);
  jet::PutU32(bitmap.data(), 0x0105);
  std::copy(window.begin(), window.end(), bitmap.begin() + 4);
  bitmap[4 + pages / 8] &= static_cast<std::uint8_t>(~(1U << (pages % 8)));
  bytes.insert(bytes.end(), bitmap.begin(), bitmap.end());
  const std::string file = Write(bytes);
  const ProgramResult result = Mdbdump({"--check", file});
  EXPECT_EQ(result.output, file + ": 0 problems, 0 notes\n");
  EXPECT_EQ(result.exitCode, 0);
}

// The index of the table loses its entries.
TEST_F(MdbdumpTest, ChecksADamagedFile) {
  auto bytes = test::SampleBytes("indexTestV1997");
  int emptied = 0;
  for (std::size_t page = 3 * 2048; page < bytes.size() && emptied == 0; page += 2048) {
    const bool isEmpty = jet::GetU16(&bytes[page + 2]) == 1800;
    if (bytes[page] != 4 || jet::GetU32(&bytes[page + 4]) < 6 || isEmpty) continue;
    std::fill_n(bytes.begin() + static_cast<long>(page) + 22, 226, 0);
    ++emptied;
  }
  ASSERT_EQ(emptied, 1);
  const std::string file = Write(bytes);
  const ProgramResult check = Mdbdump({"--check", file});
  EXPECT_EQ(check.exitCode, 1);
  EXPECT_THAT(check.output, HasSubstr("\nproblem: "));
  EXPECT_THAT(check.output, HasSubstr("(page "));
  EXPECT_THAT(check.output, testing::Not(HasSubstr(": 0 problems")));
  EXPECT_THAT(check.output, EndsWith(" notes\n"));
  EXPECT_EQ(check.errors, "");
  EXPECT_EQ(Mdbdump({file}).exitCode, 0) << "the records can still be read";
  EXPECT_EQ(test::SampleBytes("indexTestV1997").size(), test::ReadFile(path_).size());
}

TEST_F(MdbdumpTest, DumpsWhatCanBeReadOfADamagedFile) {
  auto bytes = test::SampleBytes("tesk_jet4");
  bytes.resize(200 * 4096);  // records and memos are lost
  const ProgramResult result = Mdbdump({Write(bytes)});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, StartsWith("mdbdump: " + path_.string() + ": table \"Stations\": "));
  const QJsonObject dump = test::ParseJson(result.output);
  EXPECT_TRUE(dump[QLatin1String("tables")].toObject().contains(QLatin1String("DbInfo")));
}

TEST_F(MdbdumpTest, RefusesWhatIsNoDatabase) {
  test::WriteFile(path_, "just text");
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{path_.string()}, {"--check", path_.string()}}) {
    const ProgramResult result = Mdbdump(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors,
              "mdbdump: " + path_.string() + ": The file is not a Jet database (page 0)\n");
  }
}

TEST_F(MdbdumpTest, RefusesAFileThatIsNotThere) {
  const std::string file = (folder_ / "none.mdb").string();
  const ProgramResult result = Mdbdump({file});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "mdbdump: " + file + ": \"" + file +
                               "\" cannot be opened: No such file or directory\n");
}

TEST_F(MdbdumpTest, RefusesAFolder) {
  const ProgramResult result = Mdbdump({folder_.Path().string()});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_THAT(result.errors, EndsWith("cannot be opened: It is no ordinary file\n"));
}

TEST_F(MdbdumpTest, ExplainsItself) {
  const ProgramResult help = Mdbdump({"--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_THAT(help.output, StartsWith("Usage: mdbdump [--check] FILE\n"));
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{}, {"--check"}, {"--what", "x.mdb"}, {"a.mdb", "b.mdb"}}) {
    const ProgramResult result = Mdbdump(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, help.output);
  }
}

TEST_F(MdbdumpTest, SalvagesASoundFileWhole) {
  const std::string made = (folder_ / "new.mdb").string();
  const ProgramResult result = Mdbdump({"--salvage", test::SamplePath("tesk_jet3").string(), made});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output, "DbInfo: 1 of 1 records\nStations: 128 of 128 records\n");
  EXPECT_EQ(result.errors, "");
  const ProgramResult dump = Mdbdump({made});
  EXPECT_EQ(dump.exitCode, 0);
  EXPECT_THAT(test::Differences(test::WithoutPlaces(test::ParseJson(dump.output)),
                                test::WithoutPlaces(test::GoldenDump("tesk_jet4"))),
              IsEmpty());
}

TEST_F(MdbdumpTest, SaysWhatASalvageLacks) {
  auto bytes = test::SampleBytes("tesk_jet4");
  const std::string text = "Notes for Station 007";
  const auto at = std::search(bytes.begin(), bytes.end(), text.begin(), text.end());
  ASSERT_NE(at, bytes.end());
  const auto page = (at - bytes.begin()) / 4096 * 4096;
  std::fill_n(bytes.begin() + page, 4096, 0);
  const std::string damaged = Write(bytes);

  const ProgramResult bare = Mdbdump({"--salvage", damaged, (folder_ / "bare.mdb").string()});
  EXPECT_EQ(bare.exitCode, 1);
  EXPECT_EQ(bare.output,
            "DbInfo: 1 of 1 records\n"
            "Stations: 123 of 128 records\n"
            "missing: stations 6, 7, 8, 9, 10; without a record in the new file\n");

  const ProgramResult filled =
      Mdbdump({"--salvage", damaged, (folder_ / "filled.mdb").string(), "--defaults"});
  EXPECT_EQ(filled.exitCode, 1);
  EXPECT_EQ(filled.output,
            "DbInfo: 1 of 1 records\n"
            "Stations: 123 of 128 records\n"
            "missing: stations 6, 7, 8, 9, 10; with the default record in the new file\n");
}

TEST_F(MdbdumpTest, DoesNotSalvageIntoAFileThatIsThere) {
  const std::string there = Write({1, 2, 3});
  const ProgramResult result =
      Mdbdump({"--salvage", test::SamplePath("tesk_jet4").string(), there});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors, EndsWith("Cannot make file.mdb: File exists\n"));
  EXPECT_EQ(test::ReadFile(there), "\x01\x02\x03");
}

TEST_F(MdbdumpTest, ASalvageTakesTwoFiles) {
  const std::string file = test::SamplePath("tesk_jet4").string();
  for (const std::vector<std::string>& words :
       std::vector<std::vector<std::string>>{{"--salvage", file},
                                             {"--salvage", "--check", file, "new.mdb"},
                                             {"--defaults", file},
                                             {file, "new.mdb"}}) {
    const ProgramResult result = Mdbdump(words);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.errors, StartsWith("Usage: mdbdump"));
  }
}

}  // namespace
