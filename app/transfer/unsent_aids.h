// SPDX-License-Identifier: MIT

#ifndef APP_TRANSFER_UNSENT_AIDS_H_
#define APP_TRANSFER_UNSENT_AIDS_H_

#include <QAction>
#include <QObject>

#include "app/shell/hint_strip.h"
#include "app/shell/status_bar.h"
#include "model/system_model.h"
#include "views/unsent_tables.h"

namespace app {

// Shows in the main window what is unsent, and says when the switcher was never seen to hold any of
// the database.
class UnsentAids : public QObject {
  Q_OBJECT

 public:
  struct Services {
    const model::SystemModel& model;
    const views::UnsentTables& unsent;
    StatusBar& status;
    HintStrip& hints;
    QAction& sendChanges;  // it has a badge while something is unsent
  };

  // All must outlive the object.
  explicit UnsentAids(const Services& services);

  // Something was sent or edited, or the link is up or down.
  void Update();

 private:
  const Services services_;
  bool hasBadge_ = false;
};

}  // namespace app

#endif  // APP_TRANSFER_UNSENT_AIDS_H_
