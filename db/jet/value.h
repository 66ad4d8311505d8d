// SPDX-License-Identifier: MIT

#ifndef DB_JET_VALUE_H_
#define DB_JET_VALUE_H_

#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace jet {

// What a field holds: null or a value of one of the kinds below.  Texts are UTF-8.  The empty
// text is a value, not null.
class Value {
 public:
  enum class Kind : std::uint8_t {
    Null,
    Bool,
    Int,       // Byte, Integer and Long fields
    Currency,  // in 1/10000
    Single,
    Double,
    DateTime,  // days since 1899-12-30, as a Double
    Text,      // Text and Memo fields
    Binary,    // Binary and OLE fields, and fields of types not known here
    Guid,      // 16 bytes, as stored
    Decimal,   // Numeric fields; read only, kept as decimal text such as "-3.50"
  };

  // Null.
  Value() = default;

  // Implicit on purpose: `records.Set("Hidden", 1)`.
  template <std::same_as<bool> T>
  Value(T value) : kind_(Kind::Bool), number_(value ? 1 : 0) {}
  Value(std::int32_t value) : kind_(Kind::Int), number_(value) {}
  Value(float value) : kind_(Kind::Single), real_(value) {}
  Value(double value) : kind_(Kind::Double), real_(value) {}
  Value(const char* text) : kind_(Kind::Text), bytes_(text) {}
  Value(std::string_view text) : kind_(Kind::Text), bytes_(text) {}
  Value(std::string text) : kind_(Kind::Text), bytes_(std::move(text)) {}

  // An amount in 1/10000 of the unit.
  static Value FromCurrency(std::int64_t tenThousandths);
  // Days since 1899-12-30 00:00; the fraction is the time of day.
  static Value FromDate(double days);
  static Value FromBytes(std::span<const std::uint8_t> bytes);

  Kind GetKind() const { return kind_; }
  bool IsNull() const { return kind_ == Kind::Null; }

  // The number cut to a whole one, true as -1; `otherwise` when null, not a number, or beyond
  // 32 bits.
  int Int(int otherwise = 0) const;
  // A number of any kind or a date as a Double, true as -1; `otherwise` when null or not a
  // number.
  double Real(double otherwise = 0) const;
  // True for a Bool that is true and for a number other than 0.
  bool Bool() const;
  // Ten-thousandths of a Currency value; 0 for other kinds.
  std::int64_t Currency() const { return kind_ == Kind::Currency ? number_ : 0; }
  // The text of a Text or Decimal value; "" for null and other kinds.  The reference stays
  // valid until the value is changed; of a value that is given away its text is, too.
  const std::string& Text() const&;
  std::string Text() &&;
  // The bytes of a Binary or Guid value; empty for other kinds.  Valid as Text() is.
  std::span<const std::uint8_t> Bytes() const;

  // For readers that fill one value again and again: keep the capacity of the text.
  void SetNull() { kind_ = Kind::Null; }
  void SetNumber(Kind kind, std::int64_t number) {
    kind_ = kind;
    number_ = number;
  }
  void SetReal(Kind kind, double real) {
    kind_ = kind;
    real_ = real;
  }
  // Makes this a value of `kind` (Text, Binary, Guid or Decimal) and returns its empty content
  // to be filled.
  std::string* SetContent(Kind kind) {
    kind_ = kind;
    bytes_.clear();
    return &bytes_;
  }

  // Same kind and same content, texts compared byte by byte.
  friend bool operator==(const Value& a, const Value& b);

 private:
  bool HoldsText() const { return kind_ == Kind::Text || kind_ == Kind::Decimal; }

  Kind kind_ = Kind::Null;
  union {
    std::int64_t number_ = 0;
    double real_;
  };
  std::string bytes_;
};

}  // namespace jet

#endif  // DB_JET_VALUE_H_
