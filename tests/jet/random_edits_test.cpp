// SPDX-License-Identifier: MIT
//
// Thousands of random edits against a model, the file closed and inspected every so often.
// TESK_SEED=n repeats a run.

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "tests/jet/jet_support.h"
#include "tests/jet/table_model.h"

namespace {

using jet::FieldType;
using test::IsOk;
using test::Seed;

class RandomEditsTest : public testing::Test {
 protected:
  void CreateTable(jet::Database& database, const std::string& name, bool compressed) {
    const jet::TableSpec table = {name,
                                  {{.name = "Num", .type = FieldType::Integer},
                                   {.name = "Label",
                                    .type = FieldType::Text,
                                    .size = 40,
                                    .allowZeroLength = true,
                                    .compressed = compressed},
                                   {.name = "Other", .type = FieldType::Integer},
                                   {.name = "Text", .type = FieldType::Text, .size = 255},
                                   {.name = "Memo",
                                    .type = FieldType::Memo,
                                    .allowZeroLength = true,
                                    .compressed = compressed},
                                   {.name = "More", .type = FieldType::Memo}}};
    const std::vector<jet::IndexSpec> indexes = {
        {.name = "Num", .fields = {"Num"}, .primary = true},
        {.name = "Label", .fields = {"Label"}},
        {.name = "Text", .fields = {"Text", "Other"}}};
    ASSERT_THAT(database.CreateTable(table, indexes), IsOk());
  }

  using Models = std::vector<std::unique_ptr<test::TableModel>>;

  // Edits the tables in turn, a third of the time inside a batch; half of those are dropped.
  void Round(Models& models, jet::Database& database, int steps, std::mt19937& random) {
    constexpr int kRun = 30;  // steps of a batch
    for (int step = 0; step < steps; step += kRun) {
      std::optional<jet::Database::Batch> batch;
      if (random() % 3 == 0) {
        batch.emplace(database);
        for (const auto& model : models) model->Keep();
      }
      for (int i = 0; i < kRun; ++i) {
        models[static_cast<std::size_t>(i) % models.size()]->Step();
        ASSERT_FALSE(HasFailure()) << "step " << step + i;
      }
      if (batch && random() % 2 == 0) {
        ASSERT_THAT(batch->Commit(), IsOk());
      } else if (batch) {
        batch.reset();
        for (const auto& model : models) model->GoBack();
      }
    }
  }

  void Run(test::MemoryDisk& disk, Models& models, std::unique_ptr<jet::Database> database,
           int rounds, int steps) {
    std::mt19937 random(Seed());
    for (int round = 0; round < rounds; ++round) {
      Round(models, *database, steps, random);
      ASSERT_FALSE(HasFailure()) << "round " << round;
      ASSERT_EQ(test::Problems(*database), "") << "round " << round;
      database = test::Open(disk);
      ASSERT_EQ(test::Problems(*database), "") << "round " << round << ", reopened";
      for (const auto& model : models) {
        model->Reopen(*database);
        model->CompareAll();
        ASSERT_FALSE(HasFailure()) << "round " << round;
      }
    }
  }
};

TEST_F(RandomEditsTest, OfTablesCreatedHere) {
  test::MemoryDisk disk;
  std::unique_ptr<jet::Database> database;
  ASSERT_THAT(jet::Database::Create(disk.NewFile(), &database), IsOk());
  Models models;
  const std::vector<std::string> others = {"Label", "Text"};
  for (const char* name : {"One", "Two", "Three"}) {
    CreateTable(*database, name, models.empty());
    models.push_back(std::make_unique<test::TableModel>(
        *database, name, "Num", others, Seed() + static_cast<std::uint32_t>(models.size())));
  }
  Run(disk, models, std::move(database), 8, test::Repeated(3000));
}

class RandomEditsOfSampleTest : public RandomEditsTest,
                                public testing::WithParamInterface<const char*> {};

TEST_P(RandomEditsOfSampleTest, OfItsStations) {
  test::MemoryDisk disk(test::SampleBytes(GetParam()));
  auto database = test::Open(disk);
  Models models;
  models.push_back(std::make_unique<test::TableModel>(*database, "Stations", "StationNum",
                                                      std::vector<std::string>{"Label"}, Seed()));
  Run(disk, models, std::move(database), 4, test::Repeated(1000));
}

INSTANTIATE_TEST_SUITE_P(Samples, RandomEditsOfSampleTest,
                         testing::Values("tesk_jet3", "tesk_jet4", "tesk_jet4_edited"),
                         [](const auto& sample) { return std::string(sample.param); });

}  // namespace
