// SPDX-License-Identifier: MIT

#include "tools/tesksetup/menu_entry.h"

#include <QCryptographicHash>
#include <QDir>
#include <QSaveFile>
#include <cerrno>

namespace tesksetup {

namespace {

// A text as the value of a key.
QString Value(QString text) {
  text.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
  text.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
  return text;
}

// A text as one argument of a command line, between quotes.
QString Argument(const QString& text) {
  QString quoted;
  for (const QChar c : text) {
    if (QStringLiteral("\"`$\\").contains(c)) quoted += QLatin1Char('\\');
    if (c == QLatin1Char('%')) quoted += c;
    quoted += c;
  }
  return QLatin1Char('"') + quoted + QLatin1Char('"');
}

}  // namespace

QString MenuEntryName(const QString& folder) {
  constexpr int kDigits = 12;
  const QByteArray hash =
      QCryptographicHash::hash(QDir::cleanPath(folder).toUtf8(), QCryptographicHash::Sha256)
          .toHex()
          .left(kDigits);
  return QStringLiteral("teskctl-%1.desktop").arg(QLatin1String(hash));
}

QByteArray MenuEntry(const ConsolePlan& plan, const QString& starter) {
  const QString command = Argument(starter) + QStringLiteral(" --start ") + Argument(plan.folder);
  const QString text = QStringLiteral(
                           "[Desktop Entry]\n"
                           "Type=Application\n"
                           "Name=Orvo Intercom Control - ") +
                       Value(plan.name) +
                       QStringLiteral(
                           "\n"
                           "GenericName=Intercom Console\n"
                           "Comment=") +
                       Value(plan.folder) + QStringLiteral("\nTryExec=") + Value(starter) +
                       QStringLiteral("\nExec=") + Value(command) +
                       QStringLiteral(
                           "\n"
                           "Icon=teskctl\n"
                           "Terminal=false\n"
                           "StartupNotify=true\n"
                           "Categories=AudioVideo;Audio;\n");
  return text.toUtf8();
}

bool IsInMenu(const QString& folder, const QString& menuFolder) {
  return QDir(menuFolder).exists(MenuEntryName(folder));
}

model::Status AddToMenu(const ConsolePlan& plan, const QString& starter,
                        const QString& menuFolder) {
  QDir().mkpath(menuFolder);  // when it fails, so does the next step
  QSaveFile file(QDir(menuFolder).filePath(MenuEntryName(plan.folder)));
  const QByteArray text = MenuEntry(plan, starter);
  if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit()) {
    return {};
  }
  return {EIO, "Cannot write " + file.fileName().toStdString() + ": " +
                   file.errorString().toStdString()};
}

}  // namespace tesksetup
