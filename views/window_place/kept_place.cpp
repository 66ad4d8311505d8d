// SPDX-License-Identifier: MIT

#include "views/window_place/kept_place.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>

#include "config/window_settings.h"
#include "views/window_place/on_screen.h"
#include "views/window_place/placement.h"

namespace views {
namespace {

const QString kAidsSection = QStringLiteral("Aids");

}  // namespace

KeptPlace::KeptPlace(QWidget& window, const QString& prefix)
    : QObject(&window), window_(window), prefix_(prefix) {
  Restore();
  window_.installEventFilter(this);
}

bool KeptPlace::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Close) Save();
  return QObject::eventFilter(watched, event);
}

void KeptPlace::Restore() {
  config::WindowSettings settings(kAidsSection);
  const QRect stored = Placement(settings, prefix_).Stored();
  if (stored.isEmpty()) return;
  QList<QRect> screens;
  for (const QScreen* const screen : QGuiApplication::screens()) screens += screen->geometry();
  const QScreen* const primary = QGuiApplication::primaryScreen();
  const QRect home = primary == nullptr ? QRect() : primary->availableGeometry();
  const QRect place = VisiblePlace(stored, screens, home);
  window_.move(place.topLeft());
  window_.resize(place.size());
}

// A minimised window, or one as large as the screen, keeps the place that it goes back to.
void KeptPlace::Save() {
  if (window_.isMinimized() || window_.isMaximized() || window_.isFullScreen()) return;
  config::WindowSettings settings(kAidsSection);
  Placement(settings, prefix_).Save(QRect(window_.pos(), window_.size()));
}

}  // namespace views
