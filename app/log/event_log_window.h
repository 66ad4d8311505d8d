// SPDX-License-Identifier: MIT

#ifndef APP_LOG_EVENT_LOG_WINDOW_H_
#define APP_LOG_EVENT_LOG_WINDOW_H_

#include <QSortFilterProxyModel>

#include "app/log/event_log.h"
#include "views/widgets/table_window.h"

namespace app {

// The event log in a window of its own: filter, copy, save as text.  It follows the newest line
// unless the operator has scrolled up.
class EventLogWindow : public views::TableWindow {
  Q_OBJECT

 public:
  // `log` must outlive the window.
  explicit EventLogWindow(EventLog& log, QWidget* parent = nullptr);

  // Writes the lines that are shown to a file as UTF-8, replacing it only when all of it could
  // be written.  False when it could not be; the window then says why.
  bool SaveTo(const QString& path);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // The selected lines, or all that are shown.
  QString Text(bool selectedOnly) const;
  void Copy();
  void AskWhereToSave();

  EventLog& log_;
  QSortFilterProxyModel shown_;
  bool atEnd_ = true;  // before the lines that are being added
};

}  // namespace app

#endif  // APP_LOG_EVENT_LOG_WINDOW_H_
