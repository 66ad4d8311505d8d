// SPDX-License-Identifier: MIT

#include "views/window_place/placement.h"

#include <array>

#include "views/window_place/twips.h"

namespace views {

namespace {

struct Side {
  const char* name;
  int (QRect::*of)() const;
};

constexpr std::array<Side, 4> kSides{{
    {"Left", &QRect::left},
    {"Top", &QRect::top},
    {"Width", &QRect::width},
    {"Height", &QRect::height},
}};

}  // namespace

Placement::Placement(config::WindowSettings& settings, const QString& prefix)
    : settings_(settings), prefix_(prefix) {}

QRect Placement::Stored() const {
  const auto pixels = [this](const char* side) {
    return ToPixels(settings_.Twips(prefix_ + QLatin1String(side)));
  };
  return {pixels("Left"), pixels("Top"), pixels("Width"), pixels("Height")};
}

void Placement::Save(const QRect& geometry) {
  for (const Side& side : kSides) {
    const QString key = prefix_ + QLatin1String(side.name);
    const int pixels = (geometry.*side.of)();
    const bool moved = !restored_.has_value() || pixels != ((*restored_).*side.of)();
    settings_.SetText(key, moved ? QString::number(ToTwips(pixels)) : settings_.Text(key));
  }
  restored_ = geometry;  // what the stored texts stand for now
}

}  // namespace views
