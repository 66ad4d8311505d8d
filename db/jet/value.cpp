// SPDX-License-Identifier: MIT

#include "db/jet/value.h"

#include <cmath>
#include <limits>
#include <utility>

namespace jet {
namespace {

const std::string kNoText;

}  // namespace

Value Value::FromCurrency(std::int64_t tenThousandths) {
  Value value;
  value.SetNumber(Kind::Currency, tenThousandths);
  return value;
}

Value Value::FromDate(double days) {
  Value value;
  value.SetReal(Kind::DateTime, days);
  return value;
}

Value Value::FromBytes(std::span<const std::uint8_t> bytes) {
  Value value;
  value.SetContent(Kind::Binary)->assign(bytes.begin(), bytes.end());
  return value;
}

int Value::Int(int otherwise) const {
  switch (kind_) {
    case Kind::Bool:
      return number_ != 0 ? -1 : 0;
    case Kind::Int:
      return static_cast<int>(number_);
    case Kind::Currency:
    case Kind::Single:
    case Kind::Double: {
      const double whole = std::trunc(Real());
      const bool fits = whole >= std::numeric_limits<std::int32_t>::min() &&
                        whole <= std::numeric_limits<std::int32_t>::max();
      return fits ? static_cast<int>(whole) : otherwise;
    }
    default:
      return otherwise;
  }
}

double Value::Real(double otherwise) const {
  switch (kind_) {
    case Kind::Bool:
      return number_ != 0 ? -1 : 0;
    case Kind::Int:
      return static_cast<double>(number_);
    case Kind::Currency:
      return static_cast<double>(number_) / 10000;
    case Kind::Single:
    case Kind::Double:
    case Kind::DateTime:
      return real_;
    default:
      return otherwise;
  }
}

bool Value::Bool() const {
  switch (kind_) {
    case Kind::Bool:
    case Kind::Int:
    case Kind::Currency:
      return number_ != 0;
    case Kind::Single:
    case Kind::Double:
      return real_ != 0;
    default:
      return false;
  }
}

const std::string& Value::Text() const& { return HoldsText() ? bytes_ : kNoText; }

std::string Value::Text() && { return HoldsText() ? std::move(bytes_) : kNoText; }

std::span<const std::uint8_t> Value::Bytes() const {
  if (kind_ != Kind::Binary && kind_ != Kind::Guid) return {};
  return {reinterpret_cast<const std::uint8_t*>(bytes_.data()), bytes_.size()};
}

bool operator==(const Value& a, const Value& b) {
  if (a.kind_ != b.kind_) return false;
  switch (a.kind_) {
    case Value::Kind::Null:
      return true;
    case Value::Kind::Bool:
    case Value::Kind::Int:
    case Value::Kind::Currency:
      return a.number_ == b.number_;
    case Value::Kind::Single:
    case Value::Kind::Double:
    case Value::Kind::DateTime:
      return a.real_ == b.real_;
    default:
      return a.bytes_ == b.bytes_;
  }
}

}  // namespace jet
