// SPDX-License-Identifier: MIT
//
// The bytes of files made from nothing.  Wherever they are literal here they are those of files
// that other software reads.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <vector>

#include "db/jet/header.h"
#include "db/jet/store.h"
#include "tests/jet/jet_support.h"
#include "tests/support/hex.h"

namespace {

using jet::FieldType;
using test::IsOk;
using Bytes = std::vector<std::uint8_t>;

std::string HexAt(const Bytes& bytes, std::size_t offset, std::size_t count) {
  return test::Hex({bytes.data() + offset, count});
}

// The literal as Hex() writes it, so that tests may break it into lines.
std::string Literal(std::string_view hex) { return test::Hex(test::FromHex(hex)); }

bool IsZero(const Bytes& bytes, std::size_t from, std::size_t to) {
  return std::all_of(bytes.begin() + static_cast<std::ptrdiff_t>(from),
                     bytes.begin() + static_cast<std::ptrdiff_t>(to),
                     [](std::uint8_t byte) { return byte == 0; });
}

class EmptyFileTest : public testing::Test {
 protected:
  void SetUp() override {
    std::unique_ptr<jet::Database> database;
    ASSERT_THAT(jet::Database::Create(disk_.NewFile(), &database), IsOk());
  }

  Bytes Page(std::size_t number) const {
    const auto begin = disk_.content.begin() + static_cast<std::ptrdiff_t>(number * 4096);
    return {begin, begin + 4096};
  }

  test::MemoryDisk disk_;
};

TEST_F(EmptyFileTest, HasSixteenPages) { EXPECT_EQ(disk_.content.size(), 65536U); }

TEST_F(EmptyFileTest, HasTheHeaderOfAJet4File) {
  EXPECT_EQ(HexAt(Page(0), 0, 0xA0), Literal("00 01 00 00 53 74 61 6e 64 61 72 64 20 4a 65 74"
                                             "20 44 42 00 01 00 00 00 b5 6e 03 62 60 09 c2 55"
                                             "e9 a9 67 72 40 3f 00 9c 7e 9f 90 ff 85 9a 31 c5"
                                             "79 ba ed 30 bc df cc 9d 63 d9 e4 c3 9f 46 fb 8a"
                                             "bc 4e 79 6f ec 37 a2 d0 9c fa 39 ca 28 e6 ec 22"
                                             "8a 60 ab 00 7b 36 0a e6 df b1 88 60 13 43 30 3b"
                                             "b1 33 cb f5 79 5b 6d 21 7c 2a af d0 7c 99 08 1f"
                                             "98 fd ae 3d 55 e9 9d a1 82 66 5f 95 f8 d0 89 24"
                                             "85 67 c6 1f 27 44 d2 ee cf 65 ed ff 07 c7 46 a1"
                                             "78 16 0c ed e9 2d 62 d4 54 06 00 00 34 2e 30 00"));
  EXPECT_TRUE(IsZero(Page(0), 0xA0, 0xE00));
  for (std::size_t at = 0xE00; at < 4096; at += 2) {
    ASSERT_EQ(HexAt(Page(0), at, 2), "00 01") << at;
  }
}

TEST_F(EmptyFileTest, HasItsFirstPagesUsedInTheGlobalMap) {
  EXPECT_EQ(HexAt(Page(1), 0, 18), "01 01 64 0F 01 00 00 00 00 00 00 00 02 00 BB 0F 76 0F");
  EXPECT_EQ(HexAt(Page(1), 0xFBB, 9), "00 00 00 00 00 00 00 FF FF");
  EXPECT_TRUE(IsZero(Page(1), 0xF76, 0xFBB));
}

// The bare engine's own empty file differs only where it keeps dates, ids and rubbish.
TEST_F(EmptyFileTest, EqualsTheRealEnginesEmptyFile) {
  const Bytes real = test::SampleBytes("adox_jet4");
  ASSERT_EQ(real.size(), disk_.content.size());
  for (const std::size_t page : {1, 5, 6, 7, 8, 9, 10, 11, 12, 13}) {
    const auto from = real.begin() + static_cast<std::ptrdiff_t>(page * 4096);
    EXPECT_TRUE(std::equal(from, from + 4096, Page(page).begin())) << "page " << page;
  }
  for (const std::size_t page : {2, 3, 4, 14, 15}) {
    EXPECT_EQ(HexAt(Page(page), 0, 0x10), HexAt(real, page * 4096, 0x10)) << "page " << page;
  }
}

TEST_F(EmptyFileTest, IsSound) {
  const auto database = test::Open(disk_);
  EXPECT_EQ(test::Problems(*database), "");
  EXPECT_EQ(database->Version(), 4);
  EXPECT_TRUE(database->TableNames().empty());
}

// One table, two indexes, three records; pages 16 to 22.
class DemoFileTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_THAT(jet::Database::Create(disk_.NewFile(), &database_), IsOk());
    database_->GetStore().SetNow(45000.5);
    const jet::TableSpec demo = {
        "Demo",
        {{.name = "Num", .type = FieldType::Integer},
         {.name = "Txt", .type = FieldType::Text, .size = 8, .allowZeroLength = true},
         {.name = "Mem", .type = FieldType::Memo, .allowZeroLength = true, .compressed = true}}};
    const std::array indexes = {jet::IndexSpec{.name = "Num", .fields = {"Num"}, .primary = true},
                                jet::IndexSpec{.name = "Txt", .fields = {"Txt"}}};
    ASSERT_THAT(database_->CreateTable(demo, indexes), IsOk());
    const auto records = test::OpenTable(*database_, "Demo");
    Add(*records, 1, "Sta. 001", "hello");
    Add(*records, -2, "é-1", std::string(70, '0'));
    Add(*records, 3, "", jet::Value());
  }

  static void Add(jet::RecordSet& records, int num, const char* txt, const jet::Value& mem) {
    ASSERT_THAT(records.AddNew(), IsOk());
    ASSERT_THAT(records.Set("Num", num), IsOk());
    ASSERT_THAT(records.Set("Txt", txt), IsOk());
    ASSERT_THAT(records.Set("Mem", mem), IsOk());
    ASSERT_THAT(records.Update(), IsOk());
  }

  std::string Get(std::size_t page, std::size_t offset, std::size_t count) const {
    return HexAt(disk_.content, page * 4096 + offset, count);
  }

  test::MemoryDisk disk_;
  std::unique_ptr<jet::Database> database_;
};

TEST_F(DemoFileTest, IsSoundAndAsLongAsItsPages) {
  EXPECT_EQ(test::Problems(*database_), "");
  EXPECT_EQ(disk_.content.size(), 23U * 4096);
}

TEST_F(DemoFileTest, HasItsPagesUsedInTheGlobalMap) {
  EXPECT_EQ(Get(1, 0xFBB, 10), "00 00 00 00 00 00 00 80 FF FF");
}

TEST_F(DemoFileTest, Definition) {
  EXPECT_EQ(Get(16, 0, 0x57), Literal("02 01 82 0e 00 00 00 00 76 01 00 00 59 06 00 00"
                                      "03 00 00 00 00 00 00 00 01 00 00 00 00 00 00 00"
                                      "00 00 00 00 00 00 00 00 4e 03 00 02 00 03 00 02"
                                      "00 00 00 02 00 00 00 00 11 00 00 01 11 00 00"
                                      "00 00 00 00 03 00 00 00 00 00 00 00"
                                      "00 00 00 00 03 00 00 00 00 00 00 00"));
  EXPECT_EQ(Get(16, 0x57, 0x4B),
            Literal("03 59 06 00 00 00 00 00 00 00 00 09 04 00 00 03 00 00 00 00 00 00 00 02 00"
                    "0a 59 06 00 00 01 00 00 00 01 00 09 04 00 00 02 01 00 00 00 00 00 00 10 00"
                    "0c 59 06 00 00 02 00 01 00 02 00 09 04 00 00 02 01 00 00 00 00 00 00 00 00"));
  EXPECT_EQ(Get(16, 0xA2, 24),
            Literal("06 00 4e 00 75 00 6d 00 06 00 54 00 78 00 74 00 06 00 4d 00 65 00 6d 00"));
}

TEST_F(DemoFileTest, IndexesInTheDefinition) {
  const std::string unused =
      "ff ff 00 ff ff 00 ff ff 00 ff ff 00 ff ff 00 ff ff 00"
      "ff ff 00 ff ff 00 ff ff 00";
  EXPECT_EQ(Get(16, 0xBA, 0x68),
            Literal("83 07 00 00 00 00 01" + unused +
                    "02 11 00 00 12 00 00 00 00 00 00 00 89 00 00 00 00 00"
                    "83 07 00 00 01 00 01" +
                    unused + "03 11 00 00 13 00 00 00 00 00 00 00 80 00 00 00 00 00"));
  EXPECT_EQ(Get(16, 0x122, 0x54),
            Literal("59 06 00 00 00 00 00 00 00 00 00 00 00 ff ff ff ff 00 00 00 00 04 04 01"
                    "00 00 00 00 59 06 00 00 01 00 00 00 01 00 00 00 00 ff ff ff ff 00 00 00"
                    "00 04 04 00 00 00 00 00 06 00 4e 00 75 00 6d 00 06 00 54 00 78 00 74 00"
                    "02 00 04 11 00 00 05 11 00 00 ff ff"));
}

TEST_F(DemoFileTest, UsageMaps) {
  const auto row = [this](int index) { return Get(17, 4096 - 69 * (index + 1), 69); };
  const auto map = [](int page) {
    Bytes expected(69);
    expected[5 + static_cast<std::size_t>(page / 8)] = static_cast<std::uint8_t>(1 << (page % 8));
    return test::Hex(expected);
  };
  EXPECT_EQ(Get(17, 0, 2), "01 01");
  EXPECT_EQ(Get(17, 4, 10), "00 00 00 00 00 00 00 00 06 00");
  EXPECT_EQ(row(0), map(21)) << "owned";
  EXPECT_EQ(row(1), map(21)) << "free space";
  EXPECT_EQ(row(2), map(18)) << "index Num";
  EXPECT_EQ(row(3), map(19)) << "index Txt";
  EXPECT_EQ(row(4), map(22)) << "Mem, owned";
  EXPECT_EQ(row(5), map(22)) << "Mem, free space";
}

TEST_F(DemoFileTest, DataPage) {
  EXPECT_EQ(Get(21, 0, 20), "01 01 97 0F 10 00 00 00 00 00 00 00 03 00 D6 0F B8 0F AB 0F");
  EXPECT_EQ(Get(21, 0xFD6, 42), Literal("03 00 01 00 ff fe 53 74 61 2e 20 30 30 31"
                                        "07 00 00 80 00 00 00 00 00 00 00 00 ff fe 68 65 6c 6c 6f"
                                        "21 00 0e 00 04 00 02 00 07"));
  EXPECT_EQ(Get(21, 0xFB8, 30), Literal("03 00 FE FF FF FE E9 2D 31 48 00 00 40 00 16 00 00 00 00"
                                        "00 00 15 00 09 00 04 00 02 00 07"));
  EXPECT_EQ(Get(21, 0xFAB, 13), "03 00 03 00 04 00 04 00 04 00 02 00 03");
}

TEST_F(DemoFileTest, LongValuePage) {
  EXPECT_EQ(Get(22, 0, 16), "01 01 A8 0F 4C 56 41 4C 00 00 00 00 01 00 B8 0F");
  EXPECT_EQ(Get(22, 0xFB8, 6), "FF FE 30 30 30 30");
}

TEST_F(DemoFileTest, IndexPages) {
  EXPECT_EQ(Get(18, 0, 8), "04 01 0B 0E 10 00 00 00");
  EXPECT_EQ(Get(18, 8, 19), Literal("00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"));
  EXPECT_EQ(Get(18, 0x1B, 4), "80 40 20 00");
  EXPECT_EQ(Get(18, 0x1E0, 21), Literal("7F 7F FE 00 00 15 01 7F 80 01 00 00 15 00"
                                        "7F 80 03 00 00 15 02"));
  EXPECT_EQ(Get(19, 0, 8), "04 01 F9 0D 10 00 00 00");
  EXPECT_EQ(Get(19, 0x1B, 6), "80 00 00 01 80 00");
  EXPECT_EQ(Get(19, 0x1E0, 39), Literal("7F 01 00 00 00 15 02"
                                        "7F 51 38 01 0E 01 01 01 80 0B 06 82 00 00 00 15 01"
                                        "7F 6B 6D 4A 1C 07 36 36 38 01 00 00 00 15 00"));
}

TEST_F(DemoFileTest, CatalogueRow) {
  const std::size_t slots = 14 + 2 * 8;
  const std::size_t at =
      disk_.content[14 * 4096 + slots] + std::size_t{disk_.content[14 * 4096 + slots + 1]} * 256;
  EXPECT_EQ(Get(14, at, 83),
            Literal("11 00 10 00 00 00 01 00 00 0F 01 00 00 00 00 00 10 F9 E5 40 00 00 00 00"
                    "10 F9 E5 40 00 00 00 00 44 00 65 00 6D 00 6F 00 A6 33 60 00 00 40 00 14"
                    "00 00 00 00 00 00 36 00 36 00 36 00 2A 00 2A 00 2A 00 2A 00 2A 00 2A 00"
                    "2A 00 28 00 20 00 0B 00 FF 40 00"));
}

TEST_F(DemoFileTest, Properties) {
  EXPECT_EQ(Get(20, 4, 4), "4C 56 41 4C");
  EXPECT_EQ(Get(20, 4096 - 96, 96),
            Literal("4D 52 32 00 26 00 00 00 80 00 1E 00 41 00 6C 00 6C 00 6F 00 77 00 5A 00 65 00"
                    "72 00 6F 00 4C 00 65 00 6E 00 67 00 74 00 68 00"
                    "1B 00 00 00 01 00 0C 00 00 00 06 00 54 00 78 00 74 00 09 00 01 01 00 00 01"
                    "00 01"
                    "1B 00 00 00 01 00 0C 00 00 00 06 00 4D 00 65 00 6D 00 09 00 01 01 00 00 01"
                    "00 01"));
}

}  // namespace
