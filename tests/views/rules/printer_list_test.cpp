// SPDX-License-Identifier: MIT

#include "views/rules/printer_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace rules {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(PrinterList, HasThePrintersAndTheUsualOne) {
  const PrinterList list =
      ReadPrinterList("Office\nStudio-1/draft\nsystem default destination: Studio-1/draft\n");
  EXPECT_THAT(list.names, ElementsAre("Office", "Studio-1/draft"));
  EXPECT_EQ(list.usual, "Studio-1/draft");
}

TEST(PrinterList, MayHaveNoUsualOne) {
  const PrinterList list = ReadPrinterList("Office\nno system default destination\n");
  EXPECT_THAT(list.names, ElementsAre("Office"));
  EXPECT_EQ(list.usual, "");
}

TEST(PrinterList, AUsualOneThatIsNotThereIsNone) {
  EXPECT_EQ(ReadPrinterList("Office\nsystem default destination: Cellar\n").usual, "");
}

TEST(PrinterList, NothingSaidIsNoPrinter) {
  EXPECT_THAT(ReadPrinterList("").names, IsEmpty());
  EXPECT_THAT(ReadPrinterList("\n\n").names, IsEmpty());
  EXPECT_THAT(ReadPrinterList("lpstat: No destinations added.\n").names, IsEmpty());
}

TEST(PrinterList, TheLastLineNeedsNoEnd) {
  EXPECT_THAT(ReadPrinterList("Office\nStudio").names, ElementsAre("Office", "Studio"));
}

}  // namespace
}  // namespace rules
