// SPDX-License-Identifier: MIT

#include "gateway/connection_type.h"

#include <gtest/gtest.h>

namespace gateway {
namespace {

struct TypeCase {
  int code;
  const char* name;
  bool accepted;
};

constexpr TypeCase kTypes[] = {
    {0, "Unknown Connection Request", false},
    {9, "Unknown Connection Request", false},
    {10, "LRM Connection", true},
    {11, "Unknown Connection Request", false},
    {20, "Unknown Connection Request", false},
    {29, "Unknown Connection Request", false},
    {30, "Automation Connection", true},
    {31, "Unknown Connection Request", false},
    {49, "Unknown Connection Request", false},
    {50, "Unknown Connection Request", true},
    {51, "TKM-8 SoftPanel Connection", true},
    {52, "TKN-8 SoftPanel Connection", true},
    {53, "Multi SoftPanel Connection", true},
    {54, "Mini SoftPanel Connection", true},
    {55, "Intercom SoftPanel Connection", true},
    {56, "Unknown Connection Request", true},
    {60, "Unknown Connection Request", true},
    {127, "Unknown Connection Request", true},
};

TEST(ConnectionType, NamesAndAcceptance) {
  for (const TypeCase& type : kTypes) {
    SCOPED_TRACE(type.code);
    EXPECT_EQ(ConnectionTypeName(type.code), type.name);
    EXPECT_EQ(IsAcceptedType(type.code), type.accepted);
  }
}

}  // namespace
}  // namespace gateway
