// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_STORED_ELSEWHERE_H_
#define APP_SHELL_STORED_ELSEWHERE_H_

#include <span>

#include "app/shell/open_views.h"
#include "stations/change.h"

namespace app {

// Refreshes the open views after records were stored by none of them nor by a table of the
// switcher: by undo and redo, from an unsaved run, a comparison or a backup.  What is typed and not
// stored yet stays as it is.
class StoredElsewhere : public stations::ChangeObserver {
 public:
  // Both must outlive the object.
  StoredElsewhere(stations::Changes& changes, OpenViews& views)
      : ChangeObserver(changes), views_(views) {}

  void Changed(std::span<const stations::Change> changes) override;

 private:
  void ShowLabels(std::span<const stations::Change> changes);
  void ShowInhibits(std::span<const stations::Change> changes);
  void ShowProgramming(std::span<const stations::Change> changes);

  OpenViews& views_;
};

}  // namespace app

#endif  // APP_SHELL_STORED_ELSEWHERE_H_
