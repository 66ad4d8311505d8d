// SPDX-License-Identifier: MIT

#include "db/jet/key_codec.h"

#include <algorithm>
#include <string>

#include "db/jet/sort_weights.h"
#include "db/jet/text_codec.h"

namespace jet {
namespace {

constexpr std::uint8_t kAscending = 0x7F;
constexpr std::uint8_t kNullKey = 0x00;
constexpr std::size_t kKeyCharacters = 255;

constexpr std::uint8_t kNoAccent = 0x02;
constexpr std::uint8_t kPartEnd = 0x01;
constexpr std::uint8_t kTextEnd = 0x00;
constexpr std::uint8_t kPositionMark = 0x06;
constexpr std::uint32_t kPositionBase = 0x8007;

// Stands for a character beyond the tables; greater than every main weight.
constexpr std::uint8_t kBeyond = 0xFF;

// Null when the character has no weight in the tables.  `control` is filled for the control
// characters that are in no code page.
const Weight4* FindWeight4(char16_t unit, Weight4* control) {
  if (unit >= 0x80 && unit < 0xA0) {
    *control = {0, 0, 0, static_cast<std::uint8_t>(0x1E + (unit - 0x80))};
    return control;
  }
  const int byte = ByteOfUnit(unit);
  return byte < 0 ? nullptr : &kWeights4[byte];
}

// The parts of a Jet 4 text key: main weights go straight into the key.
class TextKey4 {
 public:
  explicit TextKey4(Bytes* key) : key_(key) {}

  void Put(const Weight4& weight) {
    if (weight.position != 0) {
      const std::uint32_t position = kPositionBase + 4 * count_;
      positions_.push_back(static_cast<std::uint8_t>(position >> 8));
      positions_.push_back(static_cast<std::uint8_t>(position));
      positions_.push_back(kPositionMark);
      positions_.push_back(weight.position);
      return;
    }
    if (weight.first == 0) return;
    key_->push_back(weight.first);
    if (weight.second != 0) key_->push_back(weight.second);
    if (weight.accent != 0) {
      accents_.resize(count_, kNoAccent);
      accents_.push_back(weight.accent);
    }
    ++count_;
  }

  void PutBeyond(char32_t character) {
    key_->push_back(kBeyond);
    for (int shift = 16; shift >= 0; shift -= 8) {
      key_->push_back(static_cast<std::uint8_t>(character >> shift));
    }
    ++count_;
  }

  void Finish() {
    key_->push_back(kPartEnd);
    Append(key_, accents_);
    if (!positions_.empty()) {
      key_->insert(key_->end(), 3, kPartEnd);
      Append(key_, positions_);
    }
    key_->push_back(kTextEnd);
  }

 private:
  Bytes* key_;
  Bytes accents_;
  Bytes positions_;
  std::uint32_t count_ = 0;
};

void AppendText3(ByteView text, Bytes* key) {
  // Two to a byte, the high half first.
  Bytes nibbles;
  std::size_t letters = 0;  // since the last accent
  for (const std::uint8_t byte : text) {
    const Weight3& weight = kWeights3[byte];
    key->push_back(weight.first);
    if (weight.second != 0) key->push_back(weight.second);
    if (weight.accent == 0) {
      letters += weight.letters;
      continue;
    }
    if (nibbles.empty()) nibbles.push_back(0);
    nibbles.insert(nibbles.end(), letters, kNoAccent);
    nibbles.push_back(weight.accent);
    letters = 0;
  }
  if (nibbles.empty()) {
    key->push_back(kTextEnd);
    return;
  }
  nibbles.push_back(0);
  if (nibbles.size() % 2 != 0) nibbles.push_back(0);
  for (std::size_t i = 0; i < nibbles.size(); i += 2) {
    key->push_back(static_cast<std::uint8_t>((nibbles[i] << 4) | nibbles[i + 1]));
  }
}

ByteView DropSpaces3(ByteView text) {
  while (!text.empty() && text.back() == ' ') text = text.first(text.size() - 1);
  return text;
}

void DropSpaces4(std::u16string* units) {
  while (!units->empty() && units->back() == u' ') units->pop_back();
}

bool AppendText4(const Format& format, ByteView content, Bytes* key) {
  std::u16string units;
  DecodeUnits(format, content, &units);
  if (units.size() > kKeyCharacters) units.resize(kKeyCharacters);
  DropSpaces4(&units);
  TextKey4 text(key);
  for (const char16_t unit : units) {
    Weight4 control{};
    const Weight4* weight = FindWeight4(unit, &control);
    if (weight == nullptr) return false;
    text.Put(*weight);
  }
  text.Finish();
  return true;
}

// A two's complement number of `size` bytes.
void AppendSigned(ByteView content, std::size_t size, Bytes* key) {
  for (std::size_t i = size; i-- > 0;) key->push_back(content[i]);
  (*key)[key->size() - size] ^= 0x80;
}

void AppendFloating(ByteView content, std::size_t size, Bytes* key) {
  const bool negative = (content[size - 1] & 0x80) != 0;
  for (std::size_t i = size; i-- > 0;) {
    key->push_back(negative ? static_cast<std::uint8_t>(~content[i]) : content[i]);
  }
  if (!negative) (*key)[key->size() - size] |= 0x80;
}

// The value bytes in ascending form.
bool AppendAscending(const Format& format, const Column& column, ByteView content, Bytes* key) {
  const std::uint32_t size = column.FixedSize();
  switch (column.type) {
    case FieldType::Byte:
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Currency:
    case FieldType::Single:
    case FieldType::Double:
    case FieldType::DateTime:
      if (content.size() != size) return false;
      break;
    default:
      break;
  }
  switch (column.type) {
    case FieldType::Byte:
      key->push_back(content[0]);
      return true;
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Currency:
      AppendSigned(content, size, key);
      return true;
    case FieldType::Single:
    case FieldType::Double:
    case FieldType::DateTime:
      AppendFloating(content, size, key);
      return true;
    case FieldType::Text:
    case FieldType::Memo:
      if (format.IsJet4()) return AppendText4(format, content, key);
      content = content.first(std::min(content.size(), kKeyCharacters));
      AppendText3(DropSpaces3(content), key);
      return true;
    default:
      return false;
  }
}

}  // namespace

bool HasKnownKeys(const Column& column) {
  switch (column.type) {
    case FieldType::Boolean:
    case FieldType::Byte:
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Currency:
    case FieldType::Single:
    case FieldType::Double:
    case FieldType::DateTime:
      return true;
    case FieldType::Text:
    case FieldType::Memo:
      return column.sortOrder == kGeneralSortOrder && column.sortVersion == 0;
    default:
      return false;
  }
}

bool AppendKey(const Format& format, const Column& column, bool ascending, const ByteView* content,
               Bytes* key) {
  const std::size_t before = key->size();
  if (column.IsBoolean()) {
    key->push_back(kAscending);
    key->push_back(content != nullptr ? 0x00 : 0xFF);
  } else if (content == nullptr) {
    key->push_back(kNullKey);
  } else {
    key->push_back(kAscending);
    if (!HasKnownKeys(column) || !AppendAscending(format, column, *content, key)) {
      key->resize(before);
      return false;
    }
  }
  if (!ascending) {
    for (std::size_t i = before; i < key->size(); ++i) {
      (*key)[i] = static_cast<std::uint8_t>(~(*key)[i]);
    }
    const bool isText4 = format.IsJet4() && column.IsText() && content != nullptr;
    if (isText4) key->push_back(kTextEnd);
  }
  return true;
}

void AppendTextOrder(const Format& format, ByteView stored, Bytes* key) {
  if (!format.IsJet4()) {
    AppendText3(DropSpaces3(stored), key);
    return;
  }
  std::u16string units;
  DecodeUnits(format, stored, &units);
  DropSpaces4(&units);
  TextKey4 text(key);
  for (std::size_t i = 0; i < units.size(); ++i) {
    Weight4 control{};
    const Weight4* weight = FindWeight4(units[i], &control);
    if (weight != nullptr) {
      text.Put(*weight);
      continue;
    }
    char32_t character = units[i];
    if (character >= 0xD800 && character < 0xDC00 && i + 1 < units.size()) {
      character = 0x10000 + ((character & 0x3FF) << 10) + (units[++i] & 0x3FF);
    }
    text.PutBeyond(character);
  }
  text.Finish();
}

}  // namespace jet
