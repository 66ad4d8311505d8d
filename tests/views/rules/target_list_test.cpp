// SPDX-License-Identifier: MIT

#include "views/rules/target_list.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace rules {
namespace {

const std::vector<std::string> kLabels = {"MIC", "CAM 1", "MIC", "",   "A,B", "#7",
                                          "(8)", " X",    "12",  "VT", "K",   "L"};

std::string ReadList(const char* text) {
  std::string flags;
  const TargetListFault fault = ReadTargetList(text, kLabels, &flags);
  switch (fault.problem) {
    case TargetListProblem::None:
      return flags;
    case TargetListProblem::Unknown:
      return "unknown " + fault.target;
    case TargetListProblem::Ambiguous:
      return "ambiguous " + fault.target;
  }
  return "?";
}

TEST(TargetList, HasLabelsAndNumbersWhereALabelIsNotEnough) {
  EXPECT_EQ(WriteTargetList("010000000100", kLabels), "CAM 1, VT");
  EXPECT_EQ(WriteTargetList("101000000000", kLabels), "#1, #3") << "two have that label";
  EXPECT_EQ(WriteTargetList("000111111000", kLabels), "#4, #5, #6, #7, #8, 12");
  EXPECT_EQ(WriteTargetList("000000000000", kLabels), "");
  EXPECT_EQ(WriteTargetList("111111111111", kLabels),
            "(12) #1, CAM 1, #3, #4, #5, #6, #7, #8, 12, VT, K, L");
}

TEST(TargetList, WhatIsWrittenIsReadAgain) {
  for (const char* const flags : {"000000000000", "010000000100", "101000000000", "000111111000",
                                  "111111111111", "000000001011"}) {
    EXPECT_EQ(ReadList(WriteTargetList(flags, kLabels).c_str()), flags);
  }
}

TEST(TargetList, PeopleWriteItInTheirWays) {
  EXPECT_EQ(ReadList("  CAM 1 ,VT,"), "010000000100");
  EXPECT_EQ(ReadList("2"), "010000000000") << "a number that is nobody's label";
  EXPECT_EQ(ReadList("12"), "000000001000") << "a label before all";
  EXPECT_EQ(ReadList("#12"), "000000000001");
  EXPECT_EQ(ReadList("(3) VT"), "000000000100") << "the count is for reading";
  EXPECT_EQ(ReadList("VT, VT"), "000000000100");
}

TEST(TargetList, ALabelThatBeginsLikeACountIsALabel) {
  const std::vector<std::string> labels = {"CAM", "(2)CAM", "VT"};
  std::string flags;
  EXPECT_EQ(ReadTargetList("(2)CAM", labels, &flags).problem, TargetListProblem::None);
  EXPECT_EQ(flags, "010");
  EXPECT_EQ(ReadTargetList("(2)CAM, VT", labels, &flags).problem, TargetListProblem::None);
  EXPECT_EQ(flags, "011");
  EXPECT_EQ(ReadTargetList("(2) CAM, VT", labels, &flags).problem, TargetListProblem::None);
  EXPECT_EQ(flags, "101");
}

TEST(TargetList, WhatIsNobodyOrSeveralIsRefused) {
  EXPECT_EQ(ReadList("CAM 1, CAM 9"), "unknown CAM 9");
  EXPECT_EQ(ReadList("#13"), "unknown #13");
  EXPECT_EQ(ReadList("0"), "unknown 0");
  EXPECT_EQ(ReadList("cam 1"), "unknown cam 1");
  EXPECT_EQ(ReadList("MIC"), "ambiguous MIC");
  EXPECT_EQ(ReadList("99999999999999999999"), "unknown 99999999999999999999");
}

}  // namespace
}  // namespace rules
