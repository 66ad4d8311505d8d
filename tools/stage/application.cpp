// SPDX-License-Identifier: MIT

#include "tools/stage/application.h"

#include <QFile>
#include <QSettings>

#include "views/widgets/console_style.h"

namespace stage {
namespace {

QtMessageHandler previousHandler = nullptr;

void WithoutPlatform(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (message.startsWith(QLatin1String("This plugin does not support"))) return;
  previousHandler(type, context, message);
}

}  // namespace

Application::Application(int& argc, char** argv) : application_(argc, argv) {
  // Not every machine has one.
  qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder_.path()));
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder_.path());
  QApplication::setStyle(new views::ConsoleStyle(QStringLiteral("Fusion")));
  previousHandler = qInstallMessageHandler(WithoutPlatform);
}

}  // namespace stage
