// SPDX-License-Identifier: MIT

#include "db/jet/text_codec.h"

#include <cstring>

namespace jet {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char16_t kCompressionMark = 0xFEFF;
constexpr std::size_t kLeastCompressed = 3;
constexpr std::size_t kMostCompressed = 1024;

// Characters of the bytes 0x80 to 0x9F in code page 1252.
constexpr char16_t kHighControls[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendCharacter(char32_t c, std::string* text) {
  const auto put = [text](char32_t byte) { text->push_back(static_cast<char>(byte)); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | (c >> 6));
    put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    put(0xE0 | (c >> 12));
    put(0x80 | ((c >> 6) & 0x3F));
    put(0x80 | (c & 0x3F));
  } else {
    put(0xF0 | (c >> 18));
    put(0x80 | ((c >> 12) & 0x3F));
    put(0x80 | ((c >> 6) & 0x3F));
    put(0x80 | (c & 0x3F));
  }
}

// The number of leading bytes of `bytes` that are ASCII other than 0.
std::size_t AsciiRun(ByteView bytes) {
  constexpr std::uint64_t kHigh = 0x8080808080808080;
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  std::size_t i = 0;
  for (; i + 8 <= bytes.size(); i += 8) {
    std::uint64_t word;
    std::memcpy(&word, &bytes[i], 8);
    if (((word | (word - kOnes)) & kHigh) != 0) break;  // a high bit, or a zero that borrows
  }
  while (i < bytes.size() && bytes[i] != 0 && bytes[i] < 0x80) ++i;
  return i;
}

void AppendBytes(ByteView bytes, std::string* text) {
  text->append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

// Reads UTF-16 one unit after the other into UTF-8.
class UnitDecoder {
 public:
  explicit UnitDecoder(std::string* text) : text_(text) {}
  void Put(char32_t unit) {
    if (high_ != 0) {
      if (IsLowSurrogate(unit)) {
        AppendCharacter(0x10000 + ((high_ - 0xD800) << 10) + (unit - 0xDC00), text_);
        high_ = 0;
        return;
      }
      AppendCharacter(kReplacement, text_);
      high_ = 0;
    }
    if (IsHighSurrogate(unit)) {
      high_ = unit;
    } else {
      AppendCharacter(IsLowSurrogate(unit) ? kReplacement : unit, text_);
    }
  }
  void Finish() {
    if (high_ != 0) AppendCharacter(kReplacement, text_);
    high_ = 0;
  }

 private:
  std::string* text_;
  char32_t high_ = 0;
};

bool IsCompressed(ByteView stored) {
  return stored.size() >= 2 && stored[0] == 0xFF && stored[1] == 0xFE;
}

// Calls put(unit) for each unit of compressed text without its mark.  A zero byte where a unit
// begins switches between one and two bytes per unit.
template <typename Put>
void Decompress(ByteView stored, Put put) {
  bool wide = false;
  for (std::size_t i = 0; i < stored.size();) {
    if (stored[i] == 0) {
      wide = !wide;
      ++i;
    } else if (!wide) {
      put(stored[i++]);
    } else if (i + 1 < stored.size()) {
      put(GetU16(&stored[i]));
      i += 2;
    } else {
      put(kReplacement);
      ++i;
    }
  }
}

// Texts of ASCII, as most are, are moved in blocks of a size that is known when this is compiled,
// and by way of a copy that is known to be apart from both sides: the compiler makes a few
// instructions of one.
constexpr std::size_t kBlock = 16;

// Moves so many units to their places in a text; false when one of them is no ASCII.
bool TakeAsciiBlock(const std::uint8_t* stored, char* text) {
  std::uint16_t units[kBlock];
  std::uint16_t bits = 0;
  for (std::size_t i = 0; i < kBlock; ++i) units[i] = GetU16(stored + 2 * i);
  for (std::size_t i = 0; i < kBlock; ++i) bits |= units[i];
  for (std::size_t i = 0; i < kBlock; ++i) text[i] = static_cast<char>(units[i]);
  return bits < 0x80;
}

void DecodePlain(ByteView stored, std::string* text) {
  // As long as it is ASCII every other byte is a character.
  const std::size_t before = text->size();
  const std::size_t units = stored.size() / 2;
  text->resize(before + units);
  char* const out = text->data() + before;
  std::size_t i = 0;
  while (i + kBlock <= units && TakeAsciiBlock(&stored[2 * i], out + i)) i += kBlock;
  for (; i < units && GetU16(&stored[2 * i]) < 0x80; ++i) out[i] = static_cast<char>(stored[2 * i]);
  text->resize(before + i);

  UnitDecoder decoder(text);
  for (; i < units; ++i) decoder.Put(GetU16(&stored[2 * i]));
  decoder.Finish();
  if (stored.size() % 2 != 0) AppendCharacter(kReplacement, text);
}

// Reads one character of UTF-8; false when there is none.
bool NextCharacter(std::string_view text, std::size_t* at, char32_t* character) {
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  const std::uint8_t first = byte(*at);
  if (first < 0x80) {
    *character = first;
    ++*at;
    return true;
  }
  std::size_t length = 0;
  char32_t c = 0;
  char32_t least = 0;
  if ((first & 0xE0) == 0xC0) {
    length = 2, c = first & 0x1F, least = 0x80;
  } else if ((first & 0xF0) == 0xE0) {
    length = 3, c = first & 0x0F, least = 0x800;
  } else if ((first & 0xF8) == 0xF0) {
    length = 4, c = first & 0x07, least = 0x10000;
  } else {
    return false;
  }
  if (*at + length > text.size()) return false;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(*at + i) & 0xC0) != 0x80) return false;
    c = (c << 6) | (byte(*at + i) & 0x3F);
  }
  if (c < least || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) return false;
  *at += length;
  *character = c;
  return true;
}

EncodeResult EncodeWestern(std::string_view text, Bytes* stored, std::size_t* characters) {
  const std::size_t before = stored->size();
  for (std::size_t i = 0; i < text.size();) {
    char32_t c = 0;
    if (!NextCharacter(text, &i, &c)) return EncodeResult::NotUtf8;
    const int byte = c < 0x10000 ? ByteOfUnit(static_cast<char16_t>(c)) : -1;
    if (byte < 0) return EncodeResult::NotInCodePage;
    stored->push_back(static_cast<std::uint8_t>(byte));
  }
  *characters = stored->size() - before;
  return EncodeResult::Ok;
}

// The same back: so many characters of ASCII as units.
void PutAsciiBlock(const char* text, std::uint8_t* stored) {
  char characters[kBlock];
  for (std::size_t i = 0; i < kBlock; ++i) characters[i] = text[i];
  for (std::size_t i = 0; i < kBlock; ++i) {
    stored[2 * i] = static_cast<std::uint8_t>(characters[i]);
    stored[2 * i + 1] = 0;
  }
}

void AppendPlainAscii(std::string_view text, Bytes* stored) {
  const std::size_t before = stored->size();
  stored->resize(before + 2 * text.size());
  std::uint8_t* const out = stored->data() + before;
  std::size_t i = 0;
  for (; i + kBlock <= text.size(); i += kBlock) PutAsciiBlock(text.data() + i, out + 2 * i);
  for (; i < text.size(); ++i) out[2 * i] = static_cast<std::uint8_t>(text[i]);  // the rest is 0
}

void AppendMark(Bytes* stored) {
  stored->push_back(0xFF);
  stored->push_back(0xFE);
}

}  // namespace

void DecodeText(const Format& format, ByteView stored, std::string* text) {
  if (!format.IsJet4()) {
    for (std::size_t i = 0; i < stored.size();) {
      const std::size_t run = AsciiRun(stored.subspan(i));
      AppendBytes(stored.subspan(i, run), text);
      i += run;
      if (i < stored.size()) AppendCharacter(UnitOfByte(stored[i++]), text);
    }
  } else if (IsCompressed(stored)) {
    stored = stored.subspan(2);
    const std::size_t run = AsciiRun(stored);
    AppendBytes(stored.first(run), text);
    UnitDecoder decoder(text);
    Decompress(stored.subspan(run), [&](char32_t unit) { decoder.Put(unit); });
    decoder.Finish();
  } else {
    DecodePlain(stored, text);
  }
}

void DecodeUnits(const Format& format, ByteView stored, std::u16string* units) {
  if (!format.IsJet4()) {
    for (const std::uint8_t byte : stored) units->push_back(UnitOfByte(byte));
  } else if (IsCompressed(stored)) {
    Decompress(stored.subspan(2),
               [&](char32_t unit) { units->push_back(static_cast<char16_t>(unit)); });
  } else {
    for (std::size_t i = 0; i + 2 <= stored.size(); i += 2) units->push_back(GetU16(&stored[i]));
  }
}

EncodeResult EncodeText(const Format& format, std::string_view text, bool mayCompress,
                        Bytes* stored, std::size_t* characters) {
  if (!format.IsJet4()) return EncodeWestern(text, stored, characters);

  const ByteView bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  if (AsciiRun(bytes) == text.size()) {
    *characters = text.size();
    if (mayCompress && text.size() >= kLeastCompressed && text.size() <= kMostCompressed) {
      AppendMark(stored);
      Append(stored, bytes);
    } else {
      AppendPlainAscii(text, stored);
    }
    return EncodeResult::Ok;
  }
  std::u16string units;
  if (!AppendUnits(text, &units)) return EncodeResult::NotUtf8;
  // Plain text that begins with the mark would be read as compressed.
  while (!units.empty() && units.front() == kCompressionMark) units.erase(0, 1);
  *characters = units.size();
  bool narrow = mayCompress && units.size() >= kLeastCompressed && units.size() <= kMostCompressed;
  for (const char16_t unit : units) narrow = narrow && unit > 0 && unit <= 0xFF;
  if (narrow) {
    AppendMark(stored);
    for (const char16_t unit : units) stored->push_back(static_cast<std::uint8_t>(unit));
  } else {
    for (const char16_t unit : units) AppendU16(stored, unit);
  }
  return EncodeResult::Ok;
}

void AppendUtf8(std::u16string_view units, std::string* text) {
  UnitDecoder decoder(text);
  for (const char16_t unit : units) decoder.Put(unit);
  decoder.Finish();
}

bool AppendUnits(std::string_view text, std::u16string* units) {
  for (std::size_t i = 0; i < text.size();) {
    char32_t c = 0;
    if (!NextCharacter(text, &i, &c)) return false;
    if (c >= 0x10000) {
      units->push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
      units->push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
    } else {
      units->push_back(static_cast<char16_t>(c));
    }
  }
  return true;
}

char16_t UnitOfByte(std::uint8_t byte) {
  return byte >= 0x80 && byte < 0xA0 ? kHighControls[byte - 0x80] : byte;
}

int ByteOfUnit(char16_t unit) {
  if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return unit;
  for (int i = 0; i < 32; ++i) {
    if (kHighControls[i] == unit) return 0x80 + i;
  }
  return -1;
}

}  // namespace jet
