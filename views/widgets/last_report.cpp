// SPDX-License-Identifier: MIT

#include "views/widgets/last_report.h"

#include <QCoreApplication>

namespace views {

QString LastReportText(const QDateTime& reportedAt) {
  if (!reportedAt.isValid()) {
    return QCoreApplication::translate("LastReport", "No report since start");
  }
  // A console may run for days: yesterday's time alone would be taken for today's.
  const bool today = reportedAt.date() == QDate::currentDate();
  return QCoreApplication::translate("LastReport", "Last report %1")
      .arg(reportedAt.toString(today ? QStringLiteral("HH:mm:ss")
                                     : QStringLiteral("yyyy-MM-dd HH:mm:ss")));
}

}  // namespace views
