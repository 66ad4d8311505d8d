// SPDX-License-Identifier: MIT
//
// Files made and edited here, read back by mdbtools: software that knows nothing of this one.
// Without mdbtools the test fails; test.sh installs them.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "db/schema.h"
#include "tests/jet/jet_support.h"
#include "tests/jet/table_model.h"
#include "tests/support/run_program.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using jet::Value;
using test::IsOk;
using test::RunProgram;
using testing::HasSubstr;
using CsvRecord = std::vector<std::string>;

// Records separated by line feeds, fields by commas; texts in quotes, quotes inside doubled.
std::vector<CsvRecord> ParseCsv(const std::string& csv) {
  std::vector<CsvRecord> records;
  std::size_t at = 0;
  while (at < csv.size()) {
    CsvRecord& record = records.emplace_back();
    for (bool more = true; more;) {
      std::string field;
      const bool isQuoted = at < csv.size() && csv[at] == '"';
      if (isQuoted) ++at;
      for (; at < csv.size(); ++at) {
        if (isQuoted && csv[at] == '"') {
          if (at + 1 < csv.size() && csv[at + 1] == '"') {
            ++at;
          } else {
            ++at;
            break;
          }
        } else if (!isQuoted && (csv[at] == ',' || csv[at] == '\n')) {
          break;
        }
        field += csv[at];
      }
      record.push_back(std::move(field));
      more = at < csv.size() && csv[at] == ',';
      ++at;
    }
  }
  return records;
}

// The same of the current record as this engine reads it.  mdb-export does not tell null from "".
CsvRecord RecordOf(jet::RecordSet& records) {
  CsvRecord fields;
  for (int i = 0; i < records.FieldCount(); ++i) {
    Value value;
    EXPECT_THAT(records.Get(i, &value), IsOk());
    fields.push_back(value.GetKind() == Value::Kind::Int ? std::to_string(value.Int())
                                                         : value.Text());
  }
  return fields;
}

class MdbtoolsTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(RunProgram("mdb-ver", {"--version"}).exitCode, 0) << "mdbtools are needed";
  }

  std::string Tool(const std::string& tool, std::vector<std::string> arguments,
                   const std::string& input = "") {
    const test::ProgramResult result = RunProgram(tool, arguments, input);
    EXPECT_EQ(result.exitCode, 0) << tool << ": " << result.errors;
    return result.output;
  }

  void ExpectSameRecords(const std::string& table) {
    std::unique_ptr<jet::Database> database;
    ASSERT_THAT(jet::Database::Open(path_, jet::Access::ReadOnly, &database), IsOk());
    const auto records = test::OpenTable(*database, table);
    auto exported = ParseCsv(Tool("mdb-export", {path_.string(), table}));
    ASSERT_FALSE(exported.empty());
    EXPECT_EQ(exported[0], records->FieldNames());
    exported.erase(exported.begin());
    std::vector<CsvRecord> expected;
    while (records->HasRecord()) {
      expected.push_back(RecordOf(*records));
      ASSERT_THAT(records->MoveNext(), IsOk());
    }
    // They meet a record that has moved where it stands now, not at its home.
    std::sort(exported.begin(), exported.end());
    std::sort(expected.begin(), expected.end());
    ASSERT_EQ(exported.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
      ASSERT_EQ(exported[i], expected[i]) << table << ", record " << i;
    }
    EXPECT_EQ(Tool("mdb-count", {path_.string(), table}), std::to_string(expected.size()) + "\n");
  }

  const test::TemporaryFolder folder_;
  const fs::path path_ = folder_ / "file.mdb";
};

TEST_F(MdbtoolsTest, ReadTheConsolesNewDatabase) {
  const model::Status status = db::CreateDatabase(path_);
  ASSERT_TRUE(status.ok()) << status.Description();
  EXPECT_EQ(Tool("mdb-ver", {path_.string()}), "JET4\n");
  EXPECT_EQ(Tool("mdb-tables", {"-1", path_.string()}), "DbInfo\nStations\n");
  const std::string schema = Tool("mdb-schema", {path_.string()});
  EXPECT_THAT(schema, HasSubstr("[DbaseVer]\t\t\tText (64)"));
  EXPECT_THAT(schema, HasSubstr("[StationNum]\t\t\tInteger"));
  EXPECT_THAT(schema, HasSubstr("[Label]\t\t\tText (8)"));
  EXPECT_THAT(schema, HasSubstr("[B32 Prog]\t\t\tMemo/Hyperlink"));
  const std::string indexes = Tool("mdb-schema", {path_.string(), "postgres"});
  EXPECT_THAT(indexes, HasSubstr("PRIMARY KEY (\"stationnum\")"));
  EXPECT_THAT(indexes,
              HasSubstr("CREATE INDEX \"stations_label_idx\" ON \"stations\" (\"label\")"));
  EXPECT_THAT(Tool("mdb-prop", {path_.string(), "DbInfo"}),
              HasSubstr("name: DbaseVer\n\tAllowZeroLength: yes"));
  ExpectSameRecords("DbInfo");
  ExpectSameRecords("Stations");
}

TEST_F(MdbtoolsTest, FindRecordsByTheirIndexes) {
  const model::Status status = db::CreateDatabase(path_);
  ASSERT_TRUE(status.ok()) << status.Description();
  const std::string found = Tool("mdb-sql", {"-H", "-F", "-P", path_.string()},
                                 "select StationNum from Stations where StationNum = 77\n");
  EXPECT_EQ(found, "\n77\n");
}

TEST_F(MdbtoolsTest, ReadEveryKindOfText) {
  std::unique_ptr<jet::Database> database;
  ASSERT_THAT(jet::Database::Create(path_, &database), IsOk());
  using jet::FieldType;
  for (const bool compressed : {true, false}) {
    const std::string table = compressed ? "Compressed" : "Plain";
    ASSERT_THAT(database->CreateTable({table,
                                       {{.name = "Num"},
                                        {.name = "Text",
                                         .type = FieldType::Text,
                                         .size = 255,
                                         .allowZeroLength = true,
                                         .compressed = compressed},
                                        {.name = "Memo",
                                         .type = FieldType::Memo,
                                         .allowZeroLength = true,
                                         .compressed = compressed}}}),
                IsOk());
    const auto records = test::OpenTable(*database, table);
    const std::vector<Value> texts = {Value(),  "a",          "",           "say \"so\", twice",
                                      "äöüßÿ€", "two\nlines", "Жук 日本語", std::string(250, 'x')};
    int num = -3;
    for (const Value& text : texts) {
      for (const std::size_t size : {0, 1, 40, 500, 3000, 9000}) {
        ASSERT_THAT(records->AddNew(), IsOk());
        ASSERT_THAT(records->Set("Num", num++), IsOk());
        ASSERT_THAT(records->Set("Text", text), IsOk());
        ASSERT_THAT(records->Set("Memo", text.Text() + std::string(size, 'm')), IsOk());
        ASSERT_THAT(records->Update(), IsOk());
      }
    }
  }
  database.reset();
  ExpectSameRecords("Compressed");
  ExpectSameRecords("Plain");
}

// Copies of the samples in both versions, edited at random.  Not of the third: other software
// has marked deleted rows in it in a way that mdbtools do not know.
class MdbtoolsEditedTest : public MdbtoolsTest, public testing::WithParamInterface<const char*> {};

TEST_P(MdbtoolsEditedTest, ReadTheEditedSample) {
  fs::copy_file(test::SamplePath(GetParam()), path_);
  fs::permissions(path_, fs::perms::owner_write, fs::perm_options::add);
  std::unique_ptr<jet::Database> database;
  ASSERT_THAT(jet::Database::Open(path_, jet::Access::ReadWrite, &database), IsOk());
  test::TableModel model(*database, "Stations", "StationNum", {"Label"}, test::Seed());
  for (int i = 0; i < 400; ++i) model.Step();
  ASSERT_FALSE(HasFailure());
  database.reset();
  ExpectSameRecords("Stations");
  ExpectSameRecords("DbInfo");
}

INSTANTIATE_TEST_SUITE_P(Samples, MdbtoolsEditedTest, testing::Values("tesk_jet3", "tesk_jet4"),
                         [](const auto& sample) { return std::string(sample.param); });

}  // namespace
