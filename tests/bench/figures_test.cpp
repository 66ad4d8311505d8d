// SPDX-License-Identifier: MIT

#include "bench/figures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"

namespace bench {
namespace {

class FiguresTest : public testing::Test {
 protected:
  // The figures of a program that was started with these words.
  Figures Started(std::vector<std::string> words) {
    words_ = std::move(words);
    words_.insert(words_.begin(), "some_bench");
    arguments_.clear();
    for (std::string& word : words_) arguments_.push_back(word.data());
    arguments_.push_back(nullptr);
    count_ = static_cast<int>(words_.size());
    return {&count_, arguments_.data()};
  }

  Figures WithFile() { return Started({"--figures=" + path_.string()}); }

  std::string File() const {
    std::ostringstream text;
    text << std::ifstream(path_).rdbuf();
    return text.str();
  }

  // What is left of the command line.
  std::vector<std::string> Left() const {
    return {arguments_.begin(), arguments_.begin() + count_};
  }

 private:
  const test::TemporaryFolder folder_;
  const std::filesystem::path path_ = folder_ / "figures.tsv";
  std::vector<std::string> words_;
  std::vector<char*> arguments_;
  int count_ = 0;
};

TEST_F(FiguresTest, AFigureIsHeldAgainstItsLimit) {
  Figures figures = WithFile();
  figures.Add({.what = "opened", .value = 15.996, .unit = "ms", .limit = 16});
  EXPECT_EQ(figures.Finish(), 0);
  EXPECT_EQ(File(), "opened\t16.0\tms\t\t\t\t16 ms\tok\n");
}

TEST_F(FiguresTest, AMissedLimitIsSaidAndEndsWithOne) {
  Figures figures = WithFile();
  figures.Add({.what = "opened", .value = 16.01, .unit = "ms", .limit = 16});
  figures.Add({.what = "closed", .value = 1, .unit = "ms", .limit = 16});
  EXPECT_EQ(figures.Finish(), 1);
  EXPECT_EQ(File(),
            "opened\t16.0\tms\t\t\t\t16 ms\tmissed\n"
            "closed\t1.00\tms\t\t\t\t16 ms\tok\n");
}

TEST_F(FiguresTest, AFigureWithoutALimitHasNoVerdict) {
  Figures figures = WithFile();
  figures.Add({.what = "painted", .value = 0.0123, .unit = "µs"});
  EXPECT_EQ(figures.Finish(), 0);
  EXPECT_EQ(File(), "painted\t0.0123\tµs\t\t\t\t\t\n");
}

TEST_F(FiguresTest, ARatioIsHeldAgainstItsLimit) {
  Figures figures = WithFile();
  figures.Add({.what = "created",
               .value = 2100,
               .unit = "µs",
               .other = Other{.name = "SQLite", .value = 1000},
               .ratioLimit = 2});
  EXPECT_EQ(figures.Finish(), 1);
  EXPECT_EQ(File(), "created\t2100\tµs\tSQLite\t1000\t2.10\tratio 2\tmissed\n");
}

TEST_F(FiguresTest, BothLimitsCount) {
  Figures figures = WithFile();
  figures.Add({.what = "a",
               .value = 9,
               .unit = "s",
               .limit = 8,
               .other = Other{.name = "b", .value = 9},
               .ratioLimit = 2});
  EXPECT_EQ(figures.Finish(), 1);
  EXPECT_EQ(File(), "a\t9.00\ts\tb\t9.00\t1.00\t8 s, ratio 2\tmissed\n");
}

TEST_F(FiguresTest, AMissingFigureEndsWithTwo) {
  Figures figures = WithFile();
  figures.Add({.what = "missed", .value = 2, .unit = "s", .limit = 1});
  figures.AddMissing("taken", "a take was lost");
  figures.Add(
      {.what = "compared", .value = 2, .unit = "s", .other = Other{.name = "nothing", .value = 0}});
  EXPECT_EQ(figures.Finish(), 2);
  EXPECT_THAT(File(), testing::HasSubstr("taken\t\t\t\t\t\t\tno result\n"));
  EXPECT_THAT(File(), testing::HasSubstr("compared\t\t\t\t\t\t\tno result\n"));
}

TEST_F(FiguresTest, TheFileIsAppendedTo) {
  for (const char* const what : {"first", "second"}) {
    Figures figures = WithFile();
    figures.Add({.what = what, .value = 100, .unit = "ms"});
    EXPECT_EQ(figures.Finish(), 0);
  }
  EXPECT_EQ(File(), "first\t100\tms\t\t\t\t\t\nsecond\t100\tms\t\t\t\t\t\n");
}

TEST_F(FiguresTest, AFileThatCannotBeWrittenIsAFailure) {
  EXPECT_EQ(Started({"--figures=/nowhere/at/all"}).Finish(), 2);
}

TEST_F(FiguresTest, ItsOwnWordsAreTakenOutOfTheCommandLine) {
  const Figures figures = Started({"--benchmark_filter=x", "--quick", "more"});
  EXPECT_TRUE(figures.Quick());
  EXPECT_THAT(Left(), testing::ElementsAre("some_bench", "--benchmark_filter=x", "more"));
  EXPECT_FALSE(Started({}).Quick());
}

}  // namespace
}  // namespace bench
