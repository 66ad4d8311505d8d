// SPDX-License-Identifier: MIT

#include "views/widgets/contrast.h"

#include <algorithm>
#include <cmath>

namespace views {
namespace {

double Linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

}  // namespace

double Luminance(const QColor& colour) {
  return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) +
         0.0722 * Linear(colour.blueF());
}

bool IsDark(const QColor& ground) {
  // At this luminance black and white have the same contrast.
  return Luminance(ground) < 0.179;
}

double Contrast(const QColor& a, const QColor& b) {
  const double one = Luminance(a) + 0.05;
  const double other = Luminance(b) + 0.05;
  return std::max(one, other) / std::min(one, other);
}

QColor Blend(const QColor& colour, const QColor& ground, double share) {
  const auto mix = [share](int a, int b) {
    return static_cast<int>(std::lround(a * share + b * (1 - share)));
  };
  return QColor(mix(colour.red(), ground.red()), mix(colour.green(), ground.green()),
                mix(colour.blue(), ground.blue()));
}

}  // namespace views
