// SPDX-License-Identifier: MIT

#include "config/window_settings.h"

#include <QCryptographicHash>

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

// The section of the console in this folder.
QString SectionOf(const QString& folder) {
  if (folder.isEmpty()) return {};
  constexpr int kDigits = 8;
  const QByteArray hash = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1);
  return QStringLiteral("Console ") + QString::fromLatin1(hash.toHex().left(kDigits));
}

QString KeyIn(const QString& section, const QString& key) { return section + u'/' + key; }

QString SharedKey(const QString& key) { return KeyIn(QStringLiteral("Settings"), key); }

}  // namespace

WindowSettings::WindowSettings(const QString& folder)
    : store_(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Orvo"),
             QStringLiteral("Orvo Intercom Control")),
      folder_(folder),
      own_(SectionOf(folder)) {}

QString WindowSettings::Text(const QString& key) const {
  const QVariant shared = store_.value(SharedKey(key), QString::number(DefaultOf(key)));
  if (own_.isEmpty()) return shared.toString();
  return store_.value(KeyIn(own_, key), shared).toString();
}

int WindowSettings::Twips(const QString& key) const {
  return static_cast<int>(ProfileNumber(Text(key).toStdString(), -kFarthest, kFarthest));
}

void WindowSettings::SetText(const QString& key, const QString& text) {
  store_.setValue(SharedKey(key), text);
  if (own_.isEmpty()) return;
  store_.setValue(KeyIn(own_, key), text);
  // For whoever reads the file: the section's number says nothing.
  store_.setValue(KeyIn(own_, QStringLiteral("Folder")), folder_);
}

}  // namespace config
