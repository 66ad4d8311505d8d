// SPDX-License-Identifier: MIT
//
// The keys of index entries, byte by byte: other software finds records by them.

#include <gtest/gtest.h>

#include <bit>
#include <string>
#include <string_view>

#include "db/jet/key_codec.h"
#include "db/jet/text_codec.h"
#include "tests/support/hex.h"

namespace jet {
namespace {

enum Order { kUp, kDown };

Column ColumnOf(FieldType type) {
  Column column;
  column.type = type;
  column.sortOrder = 0x0409;
  column.length = 510;
  return column;
}

std::string KeyOf(const Format& format, FieldType type, const Bytes& content, Order order) {
  const ByteView view = content;
  Bytes key;
  const bool known = AppendKey(format, ColumnOf(type), order == kUp, &view, &key);
  return known ? test::Hex(key) : "unknown";
}

std::string TextKey(const Format& format, std::string_view text, Order order = kUp) {
  Bytes stored;
  std::size_t characters = 0;
  EXPECT_EQ(EncodeText(format, text, true, &stored, &characters), EncodeResult::Ok) << text;
  return KeyOf(format, FieldType::Text, stored, order);
}

std::string NullKey(FieldType type, Order order) {
  Bytes key;
  EXPECT_TRUE(AppendKey(kJet4, ColumnOf(type), order == kUp, nullptr, &key));
  return test::Hex(key);
}

std::string IntegerKey(int number, Order order = kUp) {
  Bytes content(2);
  PutU16(content.data(), static_cast<std::uint32_t>(number));
  return KeyOf(kJet4, FieldType::Integer, content, order);
}

std::string DoubleKey(double number, Order order = kUp) {
  Bytes content(8);
  PutU64(content.data(), std::bit_cast<std::uint64_t>(number));
  return KeyOf(kJet4, FieldType::Double, content, order);
}

TEST(IntegerKeys, OrderAsTheNumbersDo) {
  EXPECT_EQ(IntegerKey(-32768), "7F 00 00");
  EXPECT_EQ(IntegerKey(-2), "7F 7F FE");
  EXPECT_EQ(IntegerKey(-1), "7F 7F FF");
  EXPECT_EQ(IntegerKey(0), "7F 80 00");
  EXPECT_EQ(IntegerKey(1), "7F 80 01");
  EXPECT_EQ(IntegerKey(128), "7F 80 80");
  EXPECT_EQ(IntegerKey(32767), "7F FF FF");
}

TEST(IntegerKeys, AreInvertedDescending) {
  EXPECT_EQ(IntegerKey(-2, kDown), "80 80 01");
  EXPECT_EQ(IntegerKey(1, kDown), "80 7F FE");
}

TEST(NullKeys, AreOneByteWithoutAValue) {
  EXPECT_EQ(NullKey(FieldType::Integer, kUp), "00");
  EXPECT_EQ(NullKey(FieldType::Integer, kDown), "FF");
  EXPECT_EQ(NullKey(FieldType::Text, kUp), "00");
  EXPECT_EQ(NullKey(FieldType::Text, kDown), "FF");
}

TEST(NumberKeys, OfTheOtherTypes) {
  EXPECT_EQ(KeyOf(kJet4, FieldType::Byte, {0x05}, kUp), "7F 05");
  EXPECT_EQ(KeyOf(kJet4, FieldType::Long, {1, 0, 0, 0}, kUp), "7F 80 00 00 01");
  EXPECT_EQ(KeyOf(kJet4, FieldType::Long, {1, 0, 0, 0}, kDown), "80 7F FF FF FE");
  EXPECT_EQ(KeyOf(kJet4, FieldType::Currency, {0x10, 0x27, 0, 0, 0, 0, 0, 0}, kUp),
            "7F 80 00 00 00 00 00 27 10");
  EXPECT_EQ(DoubleKey(1.0), "7F BF F0 00 00 00 00 00 00");
  EXPECT_EQ(DoubleKey(-1.0), "7F 40 0F FF FF FF FF FF FF");
  EXPECT_EQ(KeyOf(kJet4, FieldType::Single, {0, 0, 0x80, 0x3F}, kUp), "7F BF 80 00 00");
}

TEST(BooleanKeys, PutTrueFirst) {
  EXPECT_EQ(KeyOf(kJet4, FieldType::Boolean, {}, kUp), "7F 00");
  Bytes isFalse;
  EXPECT_TRUE(AppendKey(kJet4, ColumnOf(FieldType::Boolean), true, nullptr, &isFalse));
  EXPECT_EQ(test::Hex(isFalse), "7F FF");
}

TEST(TextKeys4, OfPlainTexts) {
  EXPECT_EQ(TextKey(kJet4, ""), "7F 01 00");
  EXPECT_EQ(TextKey(kJet4, "Sta. 001"), "7F 6B 6D 4A 1C 07 36 36 38 01 00");
  EXPECT_EQ(TextKey(kJet4, "a b"), "7F 4A 07 4C 01 00");
  EXPECT_EQ(TextKey(kJet4, "09Z"), "7F 36 48 78 01 00");
}

TEST(TextKeys4, LetterCaseDoesNotCount) {
  EXPECT_EQ(TextKey(kJet4, "abc"), "7F 4A 4C 4D 01 00");
  EXPECT_EQ(TextKey(kJet4, "ABC"), "7F 4A 4C 4D 01 00");
  EXPECT_EQ(TextKey(kJet4, "É"), TextKey(kJet4, "é"));
}

TEST(TextKeys4, SpacesAtTheEndDoNotCount) {
  EXPECT_EQ(TextKey(kJet4, "abc   "), "7F 4A 4C 4D 01 00");
  EXPECT_EQ(TextKey(kJet4, "   "), "7F 01 00");
  EXPECT_EQ(TextKey(kJet4, " a"), "7F 07 4A 01 00");
}

TEST(TextKeys4, AccentsComeAfterAllLetters) {
  EXPECT_EQ(TextKey(kJet4, "é"), "7F 51 01 0E 00");
  EXPECT_EQ(TextKey(kJet4, "éa"), "7F 51 4A 01 0E 00");
  EXPECT_EQ(TextKey(kJet4, "añb"), "7F 4A 62 4C 01 02 19 00");
  EXPECT_EQ(TextKey(kJet4, "ÿ"), "7F 76 01 13 00");
  EXPECT_EQ(TextKey(kJet4, "Š"), "7F 6B 01 14 00");
}

TEST(TextKeys4, HyphenAndApostropheComeLastOfAll) {
  EXPECT_EQ(TextKey(kJet4, "-"), "7F 01 01 01 01 80 07 06 82 00");
  EXPECT_EQ(TextKey(kJet4, "a-b"), "7F 4A 4C 01 01 01 01 80 0B 06 82 00");
  EXPECT_EQ(TextKey(kJet4, "a'b"), "7F 4A 4C 01 01 01 01 80 0B 06 80 00");
  EXPECT_EQ(TextKey(kJet4, "é-1"), "7F 51 38 01 0E 01 01 01 80 0B 06 82 00");
  EXPECT_EQ(TextKey(kJet4, "äöü-x"), "7F 4A 64 6F 75 01 13 13 13 01 01 01 80 13 06 82 00");
}

TEST(TextKeys4, SomeCharactersHaveTwoWeights) {
  EXPECT_EQ(TextKey(kJet4, "ß"), "7F 6B 6B 01 00");
  EXPECT_EQ(TextKey(kJet4, "ß"), TextKey(kJet4, "ss"));
  EXPECT_EQ(TextKey(kJet4, "Æ"), "7F 4A 51 01 00");
  EXPECT_EQ(TextKey(kJet4, "€5"), "7F 35 A1 40 01 00");
}

TEST(TextKeys4, DescendingAreInvertedAndClosed) {
  EXPECT_EQ(TextKey(kJet4, "A", kDown), "80 B5 FE FF 00");
  EXPECT_EQ(TextKey(kJet4, "", kDown), "80 FE FF 00");
}

TEST(TextKeys4, CountOnly255Characters) {
  EXPECT_EQ(TextKey(kJet4, std::string(300, 'a')), TextKey(kJet4, std::string(255, 'a')));
  EXPECT_NE(TextKey(kJet4, std::string(255, 'a')), TextKey(kJet4, std::string(254, 'a')));
}

TEST(TextKeys4, CharactersBeyondTheCodePageHaveNone) {
  EXPECT_EQ(TextKey(kJet4, "Ж"), "unknown");
  EXPECT_EQ(TextKey(kJet4, "abcЖ", kDown), "unknown");
}

TEST(TextKeys3, OfPlainTexts) {
  EXPECT_EQ(TextKey(kJet3, ""), "7F 00");
  EXPECT_EQ(TextKey(kJet3, "abc"), "7F 60 61 62 00");
  EXPECT_EQ(TextKey(kJet3, "ABC  "), "7F 60 61 62 00");
  EXPECT_EQ(TextKey(kJet3, "Sta. 001"), "7F 76 77 60 1F 11 56 56 57 00");
  EXPECT_EQ(TextKey(kJet3, "a-b"), "7F 60 1E 61 00");
}

TEST(TextKeys3, AccentsFollowAsHalfBytes) {
  EXPECT_EQ(TextKey(kJet3, "Umsätze"), "7F 78 6F 76 60 77 7E 66 02 26 00");
  EXPECT_EQ(TextKey(kJet3, "ÿ"), "7F 7D 06 00");
  EXPECT_EQ(TextKey(kJet3, "aßé"), "7F 60 76 76 66 02 22 40");
}

TEST(TextKeys3, DescendingAreInverted) {
  EXPECT_EQ(TextKey(kJet3, "abc", kDown), "80 9F 9E 9D FF");
}

TEST(UnknownKeys, OfBinaryGuidAndOtherSortOrders) {
  EXPECT_EQ(KeyOf(kJet4, FieldType::Binary, {1, 2}, kUp), "unknown");
  EXPECT_EQ(KeyOf(kJet4, FieldType::Guid, Bytes(16), kUp), "unknown");
  Column column = ColumnOf(FieldType::Text);
  column.sortOrder = 0x0407;
  EXPECT_FALSE(HasKnownKeys(column));
  column.sortOrder = 0x0409;
  EXPECT_TRUE(HasKnownKeys(column));
  column.sortVersion = 1;
  EXPECT_FALSE(HasKnownKeys(column));
}

}  // namespace
}  // namespace jet
