// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QStandardPaths>

#include "app/launch.h"
#include "views/widgets/console_style.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QCoreApplication::setOrganizationName(QStringLiteral("Orvo"));
  QCoreApplication::setApplicationName(QStringLiteral("Orvo Intercom Control"));
  QApplication::setStyle(new views::ConsoleStyle);
  // The program ends when its shut-down is through, not when a window happens to be the last.
  QApplication::setQuitOnLastWindowClosed(false);

  app::Launch launch(QCoreApplication::applicationDirPath(),
                     QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
  launch.Begin();
  return QApplication::exec();
}
