// SPDX-License-Identifier: MIT

#include "gateway/ember/ber.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <string_view>

#include "tests/support/hex.h"

namespace ember {
namespace {

using test::FromHex;
using test::Hex;
using testing::ElementsAre;
using testing::Optional;

// Keeps the bytes that its value refers to.
class OneValue {
 public:
  explicit OneValue(std::string_view hex) : bytes_(FromHex(hex)), values_(ParseBer(bytes_)) {}

  const Tlv* Get() const { return values_ && values_->size() == 1 ? &values_->front() : nullptr; }
  bool IsRefused() const { return !values_.has_value(); }

 private:
  const Bytes bytes_;
  const std::optional<std::vector<Tlv>> values_;
};

std::optional<std::int64_t> Integer(std::string_view hex) {
  return ReadInteger(OneValue(hex).Get());
}

double Real(std::string_view hex) { return ReadReal(OneValue(hex).Get()).value_or(std::nan("")); }

TEST(Ber, Integers) {
  const std::pair<int, const char*> integers[] = {
      {0, "02 01 00"},       {1, "02 01 01"},      {-1, "02 01 FF"},
      {127, "02 01 7F"},     {128, "02 02 00 80"}, {-128, "02 01 80"},
      {-129, "02 02 FF 7F"}, {255, "02 02 00 FF"}, {65535, "02 03 00 FF FF"}};
  for (const auto& [number, bytes] : integers) {
    EXPECT_EQ(Hex(BerInteger(number)), bytes);
    EXPECT_THAT(Integer(bytes), Optional(number));
  }
  EXPECT_EQ(Hex(BerInteger(2147483647)), "02 04 7F FF FF FF");
  EXPECT_EQ(Hex(BerInteger(-2147483647 - 1)), "02 04 80 00 00 00");
  EXPECT_THAT(Integer("02 08 7F FF FF FF FF FF FF FF"), Optional(9223372036854775807));
  EXPECT_EQ(Integer("02 09 00 00 00 00 00 00 00 00 00"), std::nullopt);
  EXPECT_EQ(Integer("02 00"), std::nullopt);
  EXPECT_EQ(Integer("01 01 00"), std::nullopt);
}

TEST(Ber, BooleansAndTexts) {
  EXPECT_EQ(Hex(BerBoolean(true)), "01 01 FF");
  EXPECT_EQ(Hex(BerBoolean(false)), "01 01 00");
  EXPECT_THAT(ReadBoolean(OneValue("01 01 01").Get()), Optional(true));
  EXPECT_THAT(ReadBoolean(OneValue("01 01 00").Get()), Optional(false));
  EXPECT_EQ(Hex(BerUtf8("\xC3\xA9")), "0C 02 C3 A9");
  EXPECT_THAT(ReadUtf8(OneValue("0C 02 C3 A9").Get()), Optional(std::string("\xC3\xA9")));
}

TEST(Ber, Paths) {
  EXPECT_EQ(Hex(BerOid(Path{1, 4, 2, 200, 1})), "0D 06 01 04 02 81 48 01");
  EXPECT_EQ(Hex(BerOid(Path{})), "0D 00");
  EXPECT_EQ(Hex(BerOid(Path{0, 127, 128, 16384})), "0D 07 00 7F 81 00 81 80 00");
  EXPECT_THAT(ReadOid(OneValue("0D 06 01 04 02 81 48 01").Get()),
              Optional(ElementsAre(1, 4, 2, 200, 1)));
  EXPECT_THAT(ReadOid(OneValue("0D 00").Get()), Optional(ElementsAre()));
  // A number that does not end, and one that is too large.
  EXPECT_EQ(ReadOid(OneValue("0D 02 01 81").Get()), std::nullopt);
  EXPECT_EQ(ReadOid(OneValue("0D 05 88 80 80 80 00").Get()), std::nullopt);
}

TEST(Ber, Reals) {
  EXPECT_EQ(Real("09 00"), 0.0);
  EXPECT_EQ(Real("09 03 80 00 01"), 1.0);
  EXPECT_EQ(Real("09 03 C0 02 0D"), -6.5);
  EXPECT_EQ(Real("09 09 C0 02 1A 00 00 00 00 00 00"), -6.5);
  EXPECT_EQ(Real("09 03 C0 FF 0D"), -0.8125);
  EXPECT_EQ(Real("09 01 40"), INFINITY);
  EXPECT_EQ(Real("09 01 41"), -INFINITY);
  EXPECT_TRUE(std::isnan(Real("09 01 42")));
  EXPECT_EQ(ReadReal(OneValue("09 02 80 00").Get()), std::nullopt);
}

TEST(Ber, LengthsInAllForms) {
  EXPECT_EQ(Hex(BerValue(0x30, Bytes(128, 0x05))).substr(0, 11), "30 81 80 05");
  EXPECT_EQ(Hex(BerValue(0x30, Bytes(256, 0x05))).substr(0, 14), "30 82 01 00 05");
  EXPECT_THAT(Integer("02 84 00 00 00 01 05"), Optional(5));
  EXPECT_THAT(Integer("02 81 01 05"), Optional(5));
}

TEST(Ber, IndefiniteLengths) {
  const OneValue outer("30 80 02 01 05 31 03 02 01 06 00 00");
  ASSERT_NE(outer.Get(), nullptr);
  ASSERT_EQ(outer.Get()->children.size(), 2U);
  EXPECT_THAT(ReadInteger(&outer.Get()->children[0]), Optional(5));
  EXPECT_THAT(ReadInteger(&outer.Get()->children[1].children[0]), Optional(6));
  const OneValue inner("30 07 31 80 02 01 06 00 00");
  ASSERT_NE(inner.Get(), nullptr);
  EXPECT_THAT(ReadInteger(&inner.Get()->children[0].children[0]), Optional(6));
}

TEST(Ber, RefusesWhatDoesNotFit) {
  EXPECT_TRUE(OneValue("30 03 02 02 05").IsRefused());           // beyond its parent
  EXPECT_TRUE(OneValue("02 05 00").IsRefused());                 // beyond the end
  EXPECT_TRUE(OneValue("02").IsRefused());                       // no length
  EXPECT_TRUE(OneValue("02 85 00 00 00 00 01 05").IsRefused());  // five bytes of length
  EXPECT_TRUE(OneValue("02 84 FF FF FF FF 05").IsRefused());     // huge
  EXPECT_TRUE(OneValue("30 80 02 01 05").IsRefused());           // no end
  EXPECT_TRUE(OneValue("02 80 05 00 00").IsRefused());           // of a plain value
  EXPECT_TRUE(OneValue("31 03 30 80 05").IsRefused());           // the end is its parent's
}

// Two bytes of a message are a value, and each of them costs more than its bytes.
TEST(Ber, HasSoManyValues) {
  const auto values = [](std::size_t count) {
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i) bytes.insert(bytes.end(), {0x05, 0x00});
    return bytes;
  };
  EXPECT_TRUE(ParseBer(values(16384)).has_value());
  EXPECT_FALSE(ParseBer(values(16385)).has_value());
  EXPECT_TRUE(ParseBer(BerValue(kSequence, values(16383))).has_value());
  EXPECT_FALSE(ParseBer(BerValue(kSequence, values(16384))).has_value()) << "its parent is one";
}

TEST(Ber, NestsThirtyTwoDeep) {
  const auto nested = [](int depth) {
    Bytes value = BerInteger(5);
    for (int i = 1; i < depth; ++i) value = BerValue(kSequence, value);
    return value;
  };
  EXPECT_TRUE(ParseBer(nested(32)).has_value());
  EXPECT_FALSE(ParseBer(nested(33)).has_value());
  // As deep as a message goes.
  Bytes endless;
  for (int i = 0; i < 100000; ++i) endless.insert(endless.end(), {0x30, 0x80});
  EXPECT_FALSE(ParseBer(endless).has_value());
}

}  // namespace
}  // namespace ember
