// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QStandardPaths>

#include "app/app_folder.h"
#include "app/console.h"
#include "app/instance_lock.h"
#include "app/message_boxes.h"
#include "views/console_style.h"

namespace {

// Says that another console works in the folder, and ends when that was read.
int SayItRuns() {
  app::MessageBoxes boxes;
  QObject::connect(&boxes, &app::MessageBoxes::Emptied, qApp, &QCoreApplication::quit,
                   Qt::QueuedConnection);
  boxes.Show(model::ErrorReporter::Icon::Exclamation, "Orvo Intercom Control",
             "Orvo Intercom Control is already running in this folder.");
  boxes.ShowOver(nullptr);
  QApplication::exec();
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QCoreApplication::setOrganizationName(QStringLiteral("Orvo"));
  QCoreApplication::setApplicationName(QStringLiteral("Orvo Intercom Control"));
  QApplication::setStyle(new views::ConsoleStyle);

  model::Status prepared;
  const QString folder = app::AppFolder(
      QCoreApplication::applicationDirPath(),
      QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation), &prepared);
  app::InstanceLock lock;
  if (lock.Take(folder) == app::InstanceLock::Result::HeldByAnother) return SayItRuns();

  // The program ends when its shut-down is through, not when a window happens to be the last.
  QApplication::setQuitOnLastWindowClosed(false);
  app::Console console(folder);
  console.Start(prepared);
  return QApplication::exec();
}
