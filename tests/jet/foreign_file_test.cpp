// SPDX-License-Identifier: MIT
//
// Files that are no databases, or not of a kind known here.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "db/jet/database.h"
#include "db/jet/header.h"
#include "tests/jet/jet_support.h"
#include "tests/support/temporary_folder.h"

namespace {

using test::Fails;
using test::IsOk;
using Bytes = std::vector<std::uint8_t>;

constexpr char kNoJet[] = "The file is not a Jet database (page 0)";

jet::Status StatusOf(Bytes bytes) {
  std::unique_ptr<jet::Database> database;
  jet::Status status = jet::Database::Open(std::make_unique<jet::MemoryPageFile>(std::move(bytes)),
                                           jet::Access::ReadWrite, &database);
  EXPECT_EQ(status.ok(), database != nullptr);
  return status;
}

jet::Status OpenText(const std::string& text) { return StatusOf({text.begin(), text.end()}); }

// A sample with a byte of its masked header changed.
Bytes WithHeaderByte(const char* sample, std::size_t at, std::uint8_t value) {
  Bytes bytes = test::SampleBytes(sample);
  const jet::Format& format = bytes[0x14] == 0 ? jet::kJet3 : jet::kJet4;
  jet::MaskHeader(format, bytes.data());
  bytes[at] = value;
  jet::MaskHeader(format, bytes.data());
  return bytes;
}

TEST(ForeignFiles, OfOtherKinds) {
  EXPECT_THAT(OpenText(""), Fails(3343, kNoJet));
  EXPECT_THAT(OpenText("x"), Fails(3343, kNoJet));
  EXPECT_THAT(OpenText(std::string(100000, ' ')), Fails(3343, kNoJet));
  EXPECT_THAT(OpenText("[Ports]\r\nPort=1\r\n"), Fails(3343, kNoJet));
  EXPECT_THAT(OpenText("SQLite format 3" + std::string(8177, '\0')), Fails(3343, kNoJet));
  EXPECT_THAT(OpenText("PK\x03\x04" + std::string(20000, '\1')), Fails(3343, kNoJet));
}

TEST(ForeignFiles, OfNewerFormats) {
  for (const int version : {2, 3, 5, 6, 255}) {
    Bytes bytes = test::SampleBytes("adox_jet4");
    bytes[0x14] = static_cast<std::uint8_t>(version);
    EXPECT_THAT(StatusOf(bytes),
                Fails(3343, "The file is of a newer database format (" + std::to_string(version) +
                                "); formats 0 (Jet 3) and 1 (Jet 4) are known (page 0)"));
  }
  Bytes ace = test::SampleBytes("adox_jet4");
  const std::string name = "Standard ACE DB";
  std::copy(name.begin(), name.end(), ace.begin() + 4);
  ace[0x14] = 2;
  EXPECT_EQ(StatusOf(ace).Number(), 3343);
}

TEST(ForeignFiles, Encoded) {
  EXPECT_THAT(StatusOf(WithHeaderByte("tesk_jet4", 0x3E, 1)),
              Fails(3251, "The database is encoded (page 0)"));
  EXPECT_THAT(StatusOf(WithHeaderByte("tesk_jet3", 0x41, 0x80)),
              Fails(3251, "The database is encoded (page 0)"));
}

TEST(ForeignFiles, WithAPassword) {
  for (const int at : {0x42, 0x42 + 39}) {
    EXPECT_THAT(StatusOf(WithHeaderByte("tesk_jet4", at, 0x55)),
                Fails(3031, "The database has a password (page 0)"));
  }
  for (const int at : {0x42, 0x42 + 19}) {
    EXPECT_THAT(StatusOf(WithHeaderByte("tesk_jet3", at, 0x55)),
                Fails(3031, "The database has a password (page 0)"));
  }
  EXPECT_THAT(StatusOf(WithHeaderByte("tesk_jet3", 0x42 + 20, 0x55)), IsOk()) << "behind it";
}

// The day of creation stands where no password does.  A day that is none is not looked at.
TEST(ForeignFiles, WithoutASensibleDayOfCreation) {
  EXPECT_THAT(StatusOf(WithHeaderByte("tesk_jet4", 0x79, 0x7F)), IsOk());
  EXPECT_THAT(StatusOf(WithHeaderByte("tesk_jet4", 0x79, 0xC0)), IsOk());
}

TEST(ForeignFiles, OfAnotherCodePage) {
  EXPECT_THAT(StatusOf(WithHeaderByte("tesk_jet3", 0x3C, 0xE3)),
              Fails(3251, "The database has code page 1251; only 1252 is supported (page 0)"));
  EXPECT_THAT(StatusOf(WithHeaderByte("tesk_jet4", 0x3C, 0xE3)), IsOk()) << "texts are Unicode";
}

TEST(ForeignFiles, CutOff) {
  Bytes bytes = test::SampleBytes("adox_jet4");
  bytes.resize(3 * 4096);
  EXPECT_THAT(StatusOf(bytes),
              Fails(3049, "The file is cut off: 12288 bytes are no database (page 0)"));
  bytes.resize(30);
  EXPECT_THAT(StatusOf(bytes),
              Fails(3049, "The file is cut off: 30 bytes are no database (page 0)"));
}

TEST(ForeignFiles, ThatThisProgramMayNotWrite) {
  const test::TemporaryFolder folder;
  const auto path = folder / "closed.mdb";
  std::filesystem::copy_file(test::SamplePath("adox_jet4"), path);
  const std::string before = test::ReadFile(path);
  std::unique_ptr<jet::Database> database;
  ASSERT_THAT(jet::Database::Open(path, jet::Access::ReadOnly, &database), IsOk());
  EXPECT_EQ(database->CreateTable({"T", {{.name = "N"}}}).Number(), 3027);
  database.reset();
  EXPECT_EQ(test::ReadFile(path), before);
}

TEST(ForeignFiles, ThatEndInsideAPageAreReadOnly) {
  Bytes bytes = test::SampleBytes("tesk_jet4");
  bytes.resize(bytes.size() + 100);
  test::MemoryDisk disk(bytes);
  const auto database = test::Open(disk);
  const auto records = test::OpenTable(*database, "Stations");
  EXPECT_EQ(records->RecordCount(), 128);
  EXPECT_THAT(
      records->AddNew(),
      Fails(3027, "The file ends in the middle of a page, so it can only be read (page 229)"));
  EXPECT_EQ(disk.content, bytes);
}

}  // namespace
