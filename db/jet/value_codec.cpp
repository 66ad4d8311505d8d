// SPDX-License-Identifier: MIT

#include "db/jet/value_codec.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <string>

#include "db/jet/text_codec.h"

namespace jet {
namespace {

Status Mismatch(const Column& column, const char* what) {
  return Status(ErrorNumber::TypeMismatch, "Field \"" + column.name + "\" cannot take " + what);
}

bool IsNumber(const Value& value) {
  switch (value.GetKind()) {
    case Value::Kind::Int:
    case Value::Kind::Currency:
    case Value::Kind::Single:
    case Value::Kind::Double:
      return true;
    default:
      return false;
  }
}

// The whole number that the value is; false when it is none, or has a fraction.
bool WholeNumber(const Value& value, double* number) {
  if (!IsNumber(value)) return false;
  *number = value.Real();
  return value.GetKind() == Value::Kind::Int || std::trunc(*number) == *number;
}

Status EncodeInteger(const Column& column, const Value& value, double least, double most,
                     std::size_t size, Bytes* content) {
  double number = 0;
  if (!WholeNumber(value, &number)) return Mismatch(column, "a value that is no whole number");
  if (number < least || number > most) {
    return Mismatch(column, "a number outside its range");
  }
  const auto bits = static_cast<std::uint32_t>(static_cast<std::int64_t>(number));
  std::uint8_t bytes[4];
  PutU32(bytes, bits);
  content->insert(content->end(), bytes, bytes + size);
  return {};
}

Status EncodeCurrency(const Column& column, const Value& value, Bytes* content) {
  std::int64_t amount = value.Currency();
  if (value.GetKind() != Value::Kind::Currency) {
    const double scaled = IsNumber(value) ? value.Real() * 10000 : std::nan("");
    if (!(std::abs(scaled) < 9.2e18)) return Mismatch(column, "a value that is no amount");
    amount = std::llround(scaled);
  }
  content->resize(content->size() + 8);
  PutU64(content->data() + content->size() - 8, static_cast<std::uint64_t>(amount));
  return {};
}

Status EncodeFloating(const Column& column, const Value& value, Bytes* content) {
  const bool isDate = column.type == FieldType::DateTime;
  if (!IsNumber(value) && !(isDate && value.GetKind() == Value::Kind::DateTime)) {
    return Mismatch(column, isDate ? "a value that is no date" : "a value that is no number");
  }
  const std::size_t size = column.FixedSize();
  content->resize(content->size() + size);
  std::uint8_t* out = content->data() + content->size() - size;
  if (size == 4) {
    PutU32(out, std::bit_cast<std::uint32_t>(static_cast<float>(value.Real())));
  } else {
    PutU64(out, std::bit_cast<std::uint64_t>(value.Real()));
  }
  return {};
}

Status EncodeTextContent(const Format& format, const Column& column, const Value& value,
                         Bytes* content, std::size_t* characters) {
  if (value.GetKind() != Value::Kind::Text) return Mismatch(column, "a value that is no text");
  const std::size_t before = content->size();
  const EncodeResult result =
      EncodeText(format, value.Text(), column.MayCompress(), content, characters);
  if (result == EncodeResult::Ok) return {};
  content->resize(before);
  return Mismatch(column, result == EncodeResult::NotUtf8
                              ? "a text that is not valid UTF-8"
                              : "a character that the database's code page does not have");
}

Status EncodeBytes(const Column& column, const Value& value, std::size_t size, Bytes* content) {
  if (value.GetKind() != Value::Kind::Binary && value.GetKind() != Value::Kind::Guid) {
    return Mismatch(column, "a value that is no string of bytes");
  }
  const ByteView bytes = value.Bytes();
  if (column.type == FieldType::Guid && bytes.size() != size) {
    return Mismatch(column, "a value that is not 16 bytes");
  }
  if (bytes.size() > size) {
    return Status(ErrorNumber::ValueTooLong,
                  "Field \"" + column.name + "\" takes at most " + std::to_string(size) + " bytes");
  }
  Append(content, bytes);
  return {};
}

// Text in the fixed area is padded with spaces to the column's length.
void PadText(const Format& format, const Column& column, std::size_t before, Bytes* content) {
  while (content->size() - before + format.CharSize() <= column.length) {
    content->push_back(' ');
    if (format.CharSize() == 2) content->push_back(0);
  }
}

}  // namespace

void AppendDecimal(std::uint64_t high, std::uint64_t low, bool negative, int scale,
                   std::string* text) {
  std::string digits;
  while (high != 0 || low != 0) {
    // Divides the 128 bits by ten, 32 bits at a time.
    std::uint64_t rest = 0;
    const auto divide = [&rest](std::uint64_t* part) {
      const std::uint64_t top = (rest << 32) | (*part >> 32);
      const std::uint64_t bottom = ((top % 10) << 32) | (*part & 0xFFFFFFFF);
      *part = ((top / 10) << 32) | (bottom / 10);
      rest = bottom % 10;
    };
    divide(&high);
    divide(&low);
    digits.push_back(static_cast<char>('0' + rest));
  }
  while (digits.size() <= static_cast<std::size_t>(scale)) digits.push_back('0');
  if (negative) text->push_back('-');
  text->append(digits.rbegin(), digits.rend() - scale);
  if (scale > 0) text->append(".").append(digits.rend() - scale, digits.rend());
}

void DecodeContent(const Format& format, const Column& column, ByteView content, Value* value) {
  const auto size = static_cast<std::uint32_t>(content.size());
  const bool sized = size == column.FixedSize();
  value->SetNull();
  switch (column.type) {
    case FieldType::Boolean:
      value->SetNumber(Value::Kind::Bool, 1);
      break;
    case FieldType::Byte:
      if (sized) value->SetNumber(Value::Kind::Int, content[0]);
      break;
    case FieldType::Integer:
      if (sized) {
        value->SetNumber(Value::Kind::Int, static_cast<std::int16_t>(GetU16(content.data())));
      }
      break;
    case FieldType::Long:
      if (sized) {
        value->SetNumber(Value::Kind::Int, static_cast<std::int32_t>(GetU32(content.data())));
      }
      break;
    case FieldType::Currency:
      if (sized) {
        value->SetNumber(Value::Kind::Currency, static_cast<std::int64_t>(GetU64(content.data())));
      }
      break;
    case FieldType::Single:
      if (sized) {
        value->SetReal(Value::Kind::Single, std::bit_cast<float>(GetU32(content.data())));
      }
      break;
    case FieldType::Double:
      if (sized) {
        value->SetReal(Value::Kind::Double, std::bit_cast<double>(GetU64(content.data())));
      }
      break;
    case FieldType::DateTime:
      if (sized) {
        value->SetReal(Value::Kind::DateTime, std::bit_cast<double>(GetU64(content.data())));
      }
      break;
    case FieldType::Text:
    case FieldType::Memo:
      DecodeText(format, content, value->SetContent(Value::Kind::Text));
      break;
    case FieldType::Guid:
      if (sized) value->SetContent(Value::Kind::Guid)->assign(content.begin(), content.end());
      break;
    case FieldType::Numeric:
      if (sized) {
        const std::uint8_t* p = content.data();
        const auto word = [p](int i) { return std::uint64_t{GetU32(p + 1 + 4 * i)}; };
        AppendDecimal((word(0) << 32) | word(1), (word(2) << 32) | word(3), (p[0] & 0x80) != 0,
                      column.scale, value->SetContent(Value::Kind::Decimal));
      }
      break;
    default:
      value->SetContent(Value::Kind::Binary)->assign(content.begin(), content.end());
      break;
  }
}

Status EncodeContent(const Format& format, const Column& column, const Value& value, Bytes* content,
                     bool* isTrue) {
  switch (column.type) {
    case FieldType::Boolean:
      if (value.GetKind() != Value::Kind::Bool && !IsNumber(value)) {
        return Mismatch(column, "a value that is neither true nor false");
      }
      *isTrue = value.Bool();
      return {};
    case FieldType::Byte:
      return EncodeInteger(column, value, 0, 255, 1, content);
    case FieldType::Integer:
      return EncodeInteger(column, value, -32768, 32767, 2, content);
    case FieldType::Long:
      return EncodeInteger(column, value, std::numeric_limits<std::int32_t>::min(),
                           std::numeric_limits<std::int32_t>::max(), 4, content);
    case FieldType::Currency:
      return EncodeCurrency(column, value, content);
    case FieldType::Single:
    case FieldType::Double:
    case FieldType::DateTime:
      return EncodeFloating(column, value, content);
    case FieldType::Text:
    case FieldType::Memo: {
      std::size_t characters = 0;
      const std::size_t before = content->size();
      Status status = EncodeTextContent(format, column, value, content, &characters);
      if (!status.ok() || column.type == FieldType::Memo) return status;
      const std::size_t most = column.length / format.CharSize();
      if (characters > most) {
        content->resize(before);
        return Status(ErrorNumber::ValueTooLong, "Field \"" + column.name + "\" takes at most " +
                                                     std::to_string(most) + " characters");
      }
      if (column.IsFixed()) PadText(format, column, before, content);
      return {};
    }
    case FieldType::Binary:
    case FieldType::Guid:
      return EncodeBytes(column, value, column.FixedSize(), content);
    case FieldType::Ole:
      return EncodeBytes(column, value, std::numeric_limits<std::size_t>::max(), content);
    default:
      return Status(ErrorNumber::Unsupported,
                    "Field \"" + column.name + "\" is of a type that can only be read");
  }
}

bool EncodeSought(const Format& format, const Column& column, const Value& value, Bytes* content,
                  bool* isTrue) {
  if (column.IsText()) {
    std::size_t characters = 0;
    return EncodeTextContent(format, column, value, content, &characters).ok();
  }
  return EncodeContent(format, column, value, content, isTrue).ok();
}

}  // namespace jet
