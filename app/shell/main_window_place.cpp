// SPDX-License-Identifier: MIT

#include "app/shell/main_window_place.h"

#include <QGuiApplication>
#include <QScreen>

#include "views/window_place/on_screen.h"

namespace app {

namespace {

// The largest main window: all screens together, and no less than this many pixels each way.
// The picture of a window takes memory, and a mistyped setting must not ask for more than there
// is.
constexpr int kLeastLimit = 8192;

QSize Bounded(const QSize& size) {
  const QSize screens = QGuiApplication::primaryScreen()->virtualSize();
  return size.boundedTo(screens.expandedTo(QSize(kLeastLimit, kLeastLimit)));
}

}  // namespace

void MainWindowPlace::Restore() {
  QList<QRect> screens;
  for (const QScreen* const screen : QGuiApplication::screens()) {
    screens.append(screen->geometry());
  }
  QRect stored = placement_.Stored();
  stored.setSize(Bounded(stored.size()));
  const QRect place =
      views::VisiblePlace(stored, screens, QGuiApplication::primaryScreen()->availableGeometry());
  window_.move(place.topLeft());
  window_.resize(place.size());
  placement_.SetRestored(window_.Place());
  if (place != stored) {
    window_.Hints().Give(Hint::WindowRescued,
                         tr("The stored place of this window is on no screen: it is shown here."));
  }
}

void MainWindowPlace::Save() {
  if (!window_.isMinimized()) placement_.Save(window_.Place());
}

}  // namespace app
