// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_LAST_REPORT_H_
#define VIEWS_WIDGETS_LAST_REPORT_H_

#include <QDateTime>
#include <QString>

namespace views {

// When the switcher reported what a window shows: "Last report 12:03:44", with the day when that
// was not today, or "No report since start" for a null time.
QString LastReportText(const QDateTime& reportedAt);

}  // namespace views

#endif  // VIEWS_WIDGETS_LAST_REPORT_H_
