// SPDX-License-Identifier: MIT

#include "views/window_place/on_screen.h"

#include <algorithm>

namespace views {
namespace {

// A window's frame and title.
constexpr QSize kFrame(16, 40);

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

void BringUp(QWidget& window) {
  if (window.isMinimized()) window.showNormal();
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace views
