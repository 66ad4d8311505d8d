// SPDX-License-Identifier: MIT
//
// The gain of an input as the operator sees it: the value of a slider, and its texts.
//
// Gain step g stands for g - 100 dB, from 0 (-100 dB) to 127 (+27 dB).  Slider values run the other
// way: 0, at the top, is the loudest.

#ifndef VIEWS_RULES_LEVELS_H_
#define VIEWS_RULES_LEVELS_H_

#include <string>

namespace rules {

inline constexpr int kLargestSliderValue = 127;
inline constexpr int kUnityValue = 27;  // where a slider stands for 0 dB

// The slider value of a gain step.  A step outside 0..127 gives the nearer end of the slider.
int SliderValue(int gain);

// The gain step, 0..127, of a slider value.
int GainOf(int sliderValue);

// The level of a slider value in dB, 27 to -100.
int DecibelsOf(int sliderValue);

// The slider value of a level in dB.  REQUIRES: -100 <= decibels <= 27
int SliderValueOfLevel(int decibels);

// "-36db ", with a space at the end: a slider's tip.
std::string LevelTip(int sliderValue);

// "Input Level Controls", and while input `index` (from 0) is moved
// "Input Level Controls [Chan 1   27db ]".
inline constexpr char kLevelsCaption[] = "Input Level Controls";
std::string MovingCaption(int index, int sliderValue);

// The level for reading, as UTF-8 with a real minus sign: "−36 dB", "0 dB", "+27 dB".
std::string LevelText(int sliderValue);

}  // namespace rules

#endif  // VIEWS_RULES_LEVELS_H_
