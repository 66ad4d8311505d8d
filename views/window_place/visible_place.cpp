// SPDX-License-Identifier: MIT

#include "views/window_place/visible_place.h"

#include <algorithm>

namespace views {
namespace {

// From the corner of the room, so that the frame shows.
constexpr int kInset = 40;

}  // namespace

QRect VisiblePlace(const QRect& place, const QList<QRect>& screens, const QRect& home) {
  if (std::ranges::any_of(screens, [&](const QRect& screen) { return screen.intersects(place); })) {
    return place;
  }
  const QSize room = home.size() - QSize(2 * kInset, 2 * kInset);
  return {home.topLeft() + QPoint(kInset, kInset), place.size().boundedTo(room)};
}

}  // namespace views
