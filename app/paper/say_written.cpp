// SPDX-License-Identifier: MIT

#include "app/paper/say_written.h"

#include <QCoreApplication>

namespace app {

bool SayWritten(const views::Services& services, const QString& path,
                const files::Outcome& outcome) {
  if (outcome.ok()) return true;
  views::ShowRefusal(services,
                     QCoreApplication::translate("SayWritten", "%1 could not be written: %2")
                         .arg(path, QString::fromStdString(outcome.text))
                         .toStdString());
  return false;
}

}  // namespace app
