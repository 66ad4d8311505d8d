// SPDX-License-Identifier: MIT
//
// Every sample file reads as an independent reader reads it.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/jet/jet_support.h"
#include "tests/jet/json_compare.h"

namespace {

using test::Differences;
using test::ParseJson;
using testing::IsEmpty;

class GoldenTest : public testing::TestWithParam<std::string> {};

TEST_P(GoldenTest, ReadsAsTheOtherReaderDoes) {
  const auto database = test::OpenSample(GetParam());
  ASSERT_NE(database, nullptr);
  EXPECT_THAT(Differences(test::Dump(*database), test::GoldenDump(GetParam())), IsEmpty());
}

TEST_P(GoldenTest, IsSound) { EXPECT_EQ(test::Problems(*test::OpenSample(GetParam())), ""); }

INSTANTIATE_TEST_SUITE_P(Samples, GoldenTest, testing::ValuesIn(test::SampleNames()),
                         [](const auto& sample) { return sample.param; });

TEST(Samples, AreAllThere) { EXPECT_EQ(test::SampleNames().size(), 15U); }

TEST(GoldenComparison, FindsEveryKindOfDifference) {
  const auto differences = [](const char* found, const char* expected) {
    return Differences(ParseJson(found), ParseJson(expected));
  };
  using List = std::vector<std::string>;
  EXPECT_EQ(differences(R"({"a":[1,{"b":"x"}]})", R"({"a":[1,{"b":"x"}]})"), List{});
  EXPECT_EQ(differences(R"({"a":[1,{"b":"x"}]})", R"({"a":[1,{"b":"y"}]})"),
            List{R"(/a/1/b: ["x"], expected ["y"])"});
  EXPECT_EQ(differences(R"({"a":[1,2]})", R"({"a":[1]})"), List{"/a/1: [2], expected (nothing)"});
  EXPECT_EQ(differences(R"({})", R"({"a":null})"), List{"/a: (nothing), expected [null]"});
}

}  // namespace
