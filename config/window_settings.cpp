// SPDX-License-Identifier: MIT

#include "config/window_settings.h"

#include <QCryptographicHash>
#include <QDir>

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

const QString kFolderKey = QStringLiteral("Console/Folder");

QString Organization() { return QStringLiteral("Orvo"); }
QString Title() { return QStringLiteral("Orvo Intercom Control"); }

// The folder of the console whose store it is; empty when it is nobody's.
QString FolderOf(const QSettings& store) { return store.value(kFolderKey).toString(); }

bool IsFree(const QString& owner) { return owner.isEmpty() || !QDir(owner).exists(); }

// The name of the store of the console in this folder.
QString StoreOf(const QString& folder) {
  const auto ownerOf = [](const QString& name) {
    return FolderOf(QSettings(QSettings::NativeFormat, QSettings::UserScope, Organization(), name));
  };
  constexpr int kDigits = 8;
  const QByteArray hash = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1);
  const QString own = Title() + u' ' + QString::fromLatin1(hash.toHex().left(kDigits));
  if (ownerOf(own) == folder) return own;
  const QString owner = ownerOf(Title());
  return owner == folder || IsFree(owner) ? Title() : own;
}

QString InSection(const QString& key) { return QStringLiteral("Settings/") + key; }

}  // namespace

WindowSettings::WindowSettings()
    : store_(QSettings::NativeFormat, QSettings::UserScope, Organization(), Title()) {}

WindowSettings::WindowSettings(const QString& folder)
    : store_(QSettings::NativeFormat, QSettings::UserScope, Organization(), StoreOf(folder)) {
  if (FolderOf(store_) == folder) return;
  store_.setValue(kFolderKey, folder);
  // At once: another console that starts must see whose it is.
  store_.sync();
}

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
