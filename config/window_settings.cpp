// SPDX-License-Identifier: MIT

#include "config/window_settings.h"

#include <QDir>
#include <QFileInfo>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>

#include "config/profile_number.h"
#include "files/whole_file.h"

namespace config {

namespace {

constexpr char kPlacesGroup[] = "WINDOW PLACES";
constexpr char kPlacesKey[] = "Section";

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

constexpr char kOrganization[] = "Orvo";
constexpr char kApplication[] = "Orvo Intercom Control";

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)

constexpr std::uint64_t kLargestStore = std::uint64_t{1} << 20;

// Where the store's file is.  A store is read when it is made, so the folder is asked for with a
// name that nothing has.
QString StoreFile() {
  const QSettings nothing(QSettings::NativeFormat, QSettings::UserScope,
                          QStringLiteral("Orvo-nothing"));
  return QFileInfo(nothing.fileName())
      .dir()
      .filePath(QStringLiteral("%1/%2.conf")
                    .arg(QLatin1String(kOrganization), QLatin1String(kApplication)));
}

// The toolkit would wait for a pipe, read a device for ever and put a file in its place.
model::Status OpenStore(std::unique_ptr<QSettings>& store) {
  const QString name = StoreFile();
  std::string present;
  const files::Outcome read =
      files::ReadWhole(std::filesystem::path(name.toStdU16String()), kLargestStore, &present);
  if (!read.ok() && read.error != std::errc::no_such_file_or_directory) {
    return {model::kFileAccess, read.text};
  }
  store = std::make_unique<QSettings>(name, QSettings::NativeFormat);
  return {};
}

#else

model::Status OpenStore(std::unique_ptr<QSettings>& store) {
  store = std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                      QLatin1String(kOrganization), QLatin1String(kApplication));
  return {};
}

#endif

}  // namespace

QString PlacesSection(const IniFile& file) {
  return QString::fromStdString(file.Value(kPlacesGroup, kPlacesKey));
}

void SetPlacesSection(const QString& section, IniFile& file) {
  file.SetValue(kPlacesGroup, kPlacesKey, section.toStdString());
}

WindowSettings::WindowSettings(const QString& section)
    : problem_(OpenStore(store_)), section_(SectionInStore(section)) {}

QString WindowSettings::Text(const QString& key) const {
  const QString standard = QString::number(DefaultOf(key));
  return store_ ? store_->value(KeyInStore(key), standard).toString() : standard;
}

int WindowSettings::Twips(const QString& key) const {
  return static_cast<int>(ProfileNumber(Text(key).toStdString(), -kFarthest, kFarthest));
}

void WindowSettings::SetText(const QString& key, const QString& text) {
  if (!store_) return;
  store_->setValue(KeyInStore(key), text);
  if (std::exchange(isDue_, true)) return;
  QMetaObject::invokeMethod(this, &WindowSettings::Write, Qt::QueuedConnection);
}

void WindowSettings::Write() {
  isDue_ = false;
  if (!store_) return;
  // One that has failed says its first failure for good, and a garbled line is one that would hide
  // any other.  Another one of the same file has what it could not write.
  if (store_->status() != QSettings::NoError)
    store_ = std::make_unique<QSettings>(store_->fileName(), store_->format());
  store_->sync();
  const bool fails = store_->status() == QSettings::AccessError;
  if (std::exchange(hasFailed_, fails) == fails) return;
  if (fails) {
    Q_EMIT Failed(QStringLiteral("Cannot write ") + QFileInfo(store_->fileName()).fileName());
  } else {
    Q_EMIT Written();
  }
}

}  // namespace config
