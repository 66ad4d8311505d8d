// SPDX-License-Identifier: MIT

#include "app/journal/recent_changes.h"

#include <QApplication>

#include "views/widgets/shown.h"

namespace app {

RecentChanges::RecentChanges(const Services& services) : services_(services) {
  connect(&services_.keeper, &JournalKeeper::ActAdded, this, [this](const stations::Act& act) {
    if (views::IsShown(window_)) window_->Add(act);
  });
}

RecentChanges::~RecentChanges() { delete window_; }

void RecentChanges::Show() {
  Window().ShowAll(services_.keeper.Waiting());
  views::BringUp(*window_);
}

void RecentChanges::ShowRun(std::int64_t run, const QString& title) {
  Window().ShowRun(run, title);
  views::BringUp(*window_);
}

ChangesWindow& RecentChanges::Window() {
  if (!views::IsShown(window_)) {
    window_ = new ChangesWindow(services_.journal);
    connect(window_, &ChangesWindow::GoToRequested, this, &RecentChanges::Lead);
  }
  return *window_;
}

// A dialog of the main window keeps its views closed or out of reach.
void RecentChanges::Lead(const ViewPlace& place) {
  if (QApplication::activeModalWidget() != nullptr) {
    window_->Say(tr("Close the open dialog first"));
    return;
  }
  views::BringUp(services_.window);
  services_.views.GoTo(place);
}

}  // namespace app
