// SPDX-License-Identifier: MIT

#include "views/rules/levels.h"

#include <algorithm>
#include <cstdlib>

namespace rules {

int SliderValue(int gain) { return std::clamp(kLargestSliderValue - gain, 0, kLargestSliderValue); }

int GainOf(int sliderValue) {
  return (kLargestSliderValue - sliderValue) % (kLargestSliderValue + 1);
}

int DecibelsOf(int sliderValue) { return kUnityValue - sliderValue; }

int SliderValueOfLevel(int decibels) { return kUnityValue - decibels; }

std::string LevelTip(int sliderValue) { return std::to_string(DecibelsOf(sliderValue)) + "db "; }

std::string MovingCaption(int index, int sliderValue) {
  return std::string(kLevelsCaption) + " [Chan " + std::to_string(index + 1) + "   " +
         LevelTip(sliderValue) + "]";
}

std::string LevelText(int sliderValue) {
  const int level = DecibelsOf(sliderValue);
  const char* sign = "";
  if (level > 0) sign = "+";
  if (level < 0) sign = "\u2212";
  return sign + std::to_string(std::abs(level)) + " dB";
}

}  // namespace rules
