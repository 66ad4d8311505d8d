// SPDX-License-Identifier: MIT

#include "config/window_settings.h"

#include "config/profile_number.h"

namespace config {

namespace {

constexpr char kPlaces[] = "WINDOW PLACES";
constexpr char kSection[] = "Section";

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

// A slash would lead to a section within a section.
QString SectionInStore(QString section) {
  if (section.isEmpty()) return QStringLiteral("Settings");
  return section.replace(u'/', u'-').replace(u'\\', u'-');
}

}  // namespace

QString PlacesSection(const IniFile& file) {
  return QString::fromStdString(file.Value(kPlaces, kSection));
}

void SetPlacesSection(const QString& section, IniFile& file) {
  file.SetValue(kPlaces, kSection, section.toStdString());
}

WindowSettings::WindowSettings(const QString& section)
    : store_(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Orvo"),
             QStringLiteral("Orvo Intercom Control")),
      section_(SectionInStore(section)) {}

QString WindowSettings::Text(const QString& key) const {
  return store_.value(KeyInStore(key), QString::number(DefaultOf(key))).toString();
}

int WindowSettings::Twips(const QString& key) const {
  return static_cast<int>(ProfileNumber(Text(key).toStdString(), -kFarthest, kFarthest));
}

void WindowSettings::SetText(const QString& key, const QString& text) {
  store_.setValue(KeyInStore(key), text);
}

}  // namespace config
