// SPDX-License-Identifier: MIT

#include "app/journal/change_place.h"

#include <gtest/gtest.h>

namespace app {
namespace {

using Place = ViewPlace::Kind;

stations::Change ChangeOf(int station, const char* field, const jet::Value& before = {},
                          const jet::Value& after = {}) {
  return {stations::Origin::Operator, station, {{field, before, after}}};
}

TEST(ChangePlace, IsWhereAFieldIsShown) {
  const auto place = [](const char* field) { return PlaceOf(ChangeOf(17, field), field); };
  EXPECT_EQ(place("Label"), (ViewPlace{Place::Label, 17, 1}));
  EXPECT_EQ(place("InLabel"), (ViewPlace{Place::Label, 17, 2}));
  EXPECT_EQ(place("Notes"), (ViewPlace{Place::Label, 17, 6}));
  EXPECT_EQ(place("Relays"), (ViewPlace{Place::Relays, 17, 0}));
  EXPECT_EQ(place("OptoStations"), (ViewPlace{Place::Opto, 17, 0}));
  EXPECT_EQ(place("B3 Prog"), (ViewPlace{Place::Button, 17, 3}));
  EXPECT_EQ(place("Of Another Program"), (ViewPlace{Place::Label, 17, 1}));
}

TEST(ChangePlace, OfInhibitsIsTheFirstInputThatIsOtherNow) {
  const auto input = [](const char* before, const char* after) {
    return PlaceOf(ChangeOf(6, "Inhibits", before, after), "Inhibits").number;
  };
  EXPECT_EQ(input("0000", "0010"), 3);
  EXPECT_EQ(input("1000", "0010"), 1);
  EXPECT_EQ(input("0", "0001"), 4);
  EXPECT_EQ(input("0000", "0000"), 1);
}

}  // namespace
}  // namespace app
