// SPDX-License-Identifier: MIT

#include "config/window_settings.h"

#include "config/profile_number.h"

namespace config {

namespace {

struct Default {
  const char* key;
  int twips;
};

constexpr Default kDefaults[] = {
    {"MainLeft", 1000},  {"MainTop", 1000},  {"MainWidth", 6500},    {"MainHeight", 6500},
    {"ButnsLeft", 0},    {"ButnsTop", 0},    {"ButnsWidth", 8900},   {"ButnsHeight", 6100},
    {"AlphasLeft", 300}, {"AlphasTop", 300}, {"AlphasWidth", 10000}, {"AlphasHeight", 9000},
    {"XmapLeft", 500},   {"XmapTop", 500},   {"XmapWidth", 10000},   {"XmapHeight", 9000},
};

constexpr int kFarthest = 1'000'000;

int DefaultOf(const QString& key) {
  for (const Default& entry : kDefaults) {
    if (key == QLatin1String(entry.key)) return entry.twips;
  }
  return 0;
}

QString InSection(const QString& key) { return QStringLiteral("Settings/") + key; }

}  // namespace

WindowSettings::WindowSettings()
    : store_(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Orvo"),
             QStringLiteral("Orvo Intercom Control")) {}

QString WindowSettings::Text(const QString& key) const {
  return store_.value(InSection(key), QString::number(DefaultOf(key))).toString();
}

int WindowSettings::Twips(const QString& key) const {
  return static_cast<int>(ProfileNumber(Text(key).toStdString(), -kFarthest, kFarthest));
}

void WindowSettings::SetText(const QString& key, const QString& text) {
  store_.setValue(InSection(key), text);
}

}  // namespace config
