// SPDX-License-Identifier: MIT

#include "views/rules/levels.h"

#include <gtest/gtest.h>

namespace rules {
namespace {

TEST(Levels, TheLoudestGainIsAtTheTop) {
  EXPECT_EQ(SliderValue(127), 0);
  EXPECT_EQ(SliderValue(100), 27);
  EXPECT_EQ(SliderValue(64), 63);
  EXPECT_EQ(SliderValue(0), 127);
}

TEST(Levels, AGainOutsideTheRangeStandsAtTheNearerEnd) {
  EXPECT_EQ(SliderValue(128), 0);
  EXPECT_EQ(SliderValue(32767), 0);
  EXPECT_EQ(SliderValue(-1), 127);
  EXPECT_EQ(SliderValue(-32768), 127);
}

TEST(Levels, EverySliderValueIsAGainAndBack) {
  EXPECT_EQ(GainOf(0), 127);
  EXPECT_EQ(GainOf(27), 100);
  EXPECT_EQ(GainOf(127), 0);
  for (int value = 0; value <= 127; ++value) EXPECT_EQ(SliderValue(GainOf(value)), value);
}

TEST(Levels, TipEndsInASpace) {
  EXPECT_EQ(LevelTip(63), "-36db ");
  EXPECT_EQ(LevelTip(27), "0db ");
  EXPECT_EQ(LevelTip(0), "27db ");
  EXPECT_EQ(LevelTip(127), "-100db ");
}

TEST(Levels, CaptionNamesTheInputThatIsMoved) {
  EXPECT_EQ(MovingCaption(0, 0), "Input Level Controls [Chan 1   27db ]");
  EXPECT_EQ(MovingCaption(11, 63), "Input Level Controls [Chan 12   -36db ]");
  EXPECT_EQ(MovingCaption(63, 27), "Input Level Controls [Chan 64   0db ]");
}

TEST(Levels, TextForReadingHasASign) {
  EXPECT_EQ(LevelText(63),
            "\xE2\x88\x92"
            "36 dB");
  EXPECT_EQ(LevelText(27), "0 dB");
  EXPECT_EQ(LevelText(0), "+27 dB");
  EXPECT_EQ(LevelText(127),
            "\xE2\x88\x92"
            "100 dB");
}

}  // namespace
}  // namespace rules
