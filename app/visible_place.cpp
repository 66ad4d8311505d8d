// SPDX-License-Identifier: MIT

#include "app/visible_place.h"

#include <algorithm>

namespace app {
namespace {

// So much of the upper edge must be on a screen, in pixels: a piece of title bar to grab.
constexpr int kGripWidth = 40;
constexpr int kGripHeight = 20;

// From the corner of the screen, so that a window manager's own panel does not cover the grip.
constexpr int kInset = 40;

}  // namespace

QRect VisiblePlace(const QRect& place, const QList<QRect>& screens) {
  const QRect grip(place.topLeft(), QSize(place.width(), kGripHeight));
  const bool reachable = std::ranges::any_of(screens, [&](const QRect& screen) {
    const QRect seen = screen.intersected(grip);
    return seen.width() >= std::min(kGripWidth, place.width()) && seen.height() == kGripHeight;
  });
  if (reachable || screens.isEmpty()) return place;
  const QRect& primary = screens.front();
  const QSize room = primary.size() - QSize(2 * kInset, 2 * kInset);
  return {primary.topLeft() + QPoint(kInset, kInset), place.size().boundedTo(room)};
}

}  // namespace app
