// SPDX-License-Identifier: MIT

#include "views/window_place/on_screen.h"

#include <algorithm>

namespace views {
namespace {

// A window's frame and title.
constexpr QSize kFrame(16, 40);

// Of a place that is not the stored one, from the corner of the room, so that the frame shows.
constexpr int kInset = 40;

int Start(int start, int length, int roomStart, int roomLength) {
  return std::max(roomStart, std::min(start, roomStart + roomLength - length));
}

}  // namespace

QSize SizeOnScreen(const QSize& wanted, const QSize& room) {
  return wanted.boundedTo(room - kFrame);
}

QPoint CornerOnScreen(const QRect& frame, const QRect& room) {
  return {Start(frame.left(), frame.width(), room.left(), room.width()),
          Start(frame.top(), frame.height(), room.top(), room.height())};
}

QRect VisiblePlace(const QRect& place, const QList<QRect>& screens, const QRect& home) {
  if (std::ranges::any_of(screens, [&](const QRect& screen) { return screen.intersects(place); })) {
    return place;
  }
  const QSize room = home.size() - QSize(2 * kInset, 2 * kInset);
  return {home.topLeft() + QPoint(kInset, kInset), place.size().boundedTo(room)};
}

}  // namespace views
