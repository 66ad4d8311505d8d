// SPDX-License-Identifier: MIT
//
// Window placements and the sizes of the crosspoint grid are kept in twips, 15 to a logical
// pixel.

#ifndef VIEWS_WINDOW_PLACE_TWIPS_H_
#define VIEWS_WINDOW_PLACE_TWIPS_H_

namespace views {

inline constexpr int kTwipsPerPixel = 15;

// To the nearest pixel; halves away from zero.
constexpr int ToPixels(int twips) {
  const int half = twips < 0 ? -kTwipsPerPixel / 2 : kTwipsPerPixel / 2;
  return (twips + half) / kTwipsPerPixel;
}

constexpr int ToTwips(int pixels) { return pixels * kTwipsPerPixel; }

}  // namespace views

#endif  // VIEWS_WINDOW_PLACE_TWIPS_H_
