// SPDX-License-Identifier: MIT

#include "tests/views/gui_support.h"

#include <QFile>
#include <QSettings>

#include "views/widgets/console_style.h"

namespace test {
namespace {

QtMessageHandler previousHandler = nullptr;

void WithoutPlatform(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (message.startsWith(QLatin1String("This plugin does not support"))) return;
  previousHandler(type, context, message);
}

}  // namespace

GuiApplication::GuiApplication(int& argc, char** argv) : application_(argc, argv) {
  // Not every machine that tests has one.
  qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder_.path()));
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder_.path());
  QApplication::setStyle(new views::ConsoleStyle(QStringLiteral("Fusion")));
  previousHandler = qInstallMessageHandler(WithoutPlatform);
}

QList<QDialog*> ShownDialogs(const QWidget& window, const char* name) {
  QList<QDialog*> shown;
  for (auto* const dialog : window.findChildren<QDialog*>(QLatin1String(name))) {
    if (dialog->isVisible()) shown.append(dialog);
  }
  return shown;
}

QMdiSubWindow* SubWindow(const QMdiArea& area, const char* name) {
  for (QMdiSubWindow* const window : area.subWindowList()) {
    if (!window->isHidden() && window->widget()->objectName() == QLatin1String(name)) return window;
  }
  return nullptr;
}

}  // namespace test
