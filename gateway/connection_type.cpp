// SPDX-License-Identifier: MIT

#include "gateway/connection_type.h"

namespace gateway {

namespace {

struct ConnectionType {
  int code;
  std::string_view name;
};

constexpr ConnectionType kConnectionTypes[] = {
    {10, "LRM Connection"},
    {30, "Automation Connection"},
    {51, "TKM-8 SoftPanel Connection"},
    {52, "TKN-8 SoftPanel Connection"},
    {53, "Multi SoftPanel Connection"},
    {54, "Mini SoftPanel Connection"},
    {55, "Intercom SoftPanel Connection"},
};

}  // namespace

std::string_view ConnectionTypeName(int code) {
  for (const ConnectionType& type : kConnectionTypes) {
    if (type.code == code) return type.name;
  }
  return "Unknown Connection Request";
}

bool IsAcceptedType(int code) { return code == 10 || code >= 50 || code == 30; }

}  // namespace gateway
