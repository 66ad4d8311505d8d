// SPDX-License-Identifier: MIT

#ifndef VIEWS_WINDOW_PLACE_PLACEMENT_H_
#define VIEWS_WINDOW_PLACE_PLACEMENT_H_

#include <QRect>
#include <QString>
#include <optional>

#include "config/window_settings.h"

namespace views {

// The place of one window in the user's settings.  A side that was not moved keeps its text, so
// that a window never creeps because twips are rounded to pixels.
class Placement {
 public:
  // `prefix` begins the window's four keys ("Xmap").  `settings` must outlive the object.
  Placement(config::WindowSettings& settings, const QString& prefix);

  // The stored place in pixels.
  QRect Stored() const;

  // Where the window really stands after it was put at the stored place.
  void SetRestored(const QRect& geometry) { restored_ = geometry; }

  // Stores where the window stands now.  May be called again when the window lives on.
  void Save(const QRect& geometry);

 private:
  config::WindowSettings& settings_;
  const QString prefix_;
  std::optional<QRect> restored_;
};

}  // namespace views

#endif  // VIEWS_WINDOW_PLACE_PLACEMENT_H_
