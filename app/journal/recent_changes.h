// SPDX-License-Identifier: MIT

#ifndef APP_JOURNAL_RECENT_CHANGES_H_
#define APP_JOURNAL_RECENT_CHANGES_H_

#include <QObject>
#include <QPointer>
#include <QString>
#include <cstdint>
#include <filesystem>

#include "app/journal/changes_window.h"
#include "app/journal/journal_keeper.h"
#include "app/shell/open_views.h"

namespace app {

// Opens the window of what was changed, and leads from it into the views.
class RecentChanges : public QObject {
  Q_OBJECT

 public:
  struct Services {
    std::filesystem::path journal;  // its file
    JournalKeeper& keeper;
    OpenViews& views;
    QWidget& window;  // the main window
  };

  // All must outlive the object.
  explicit RecentChanges(const Services& services);

  // Closes the window.
  ~RecentChanges() override;

  // Opens the window, or brings it up, with everything, or with one run alone under a title.
  void Show();
  void ShowRun(std::int64_t run, const QString& title);

 private:
  ChangesWindow& Window();
  void Lead(const ViewPlace& place);

  const Services services_;
  QPointer<ChangesWindow> window_;
};

}  // namespace app

#endif  // APP_JOURNAL_RECENT_CHANGES_H_
