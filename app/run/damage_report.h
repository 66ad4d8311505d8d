// SPDX-License-Identifier: MIT

#ifndef APP_RUN_DAMAGE_REPORT_H_
#define APP_RUN_DAMAGE_REPORT_H_

#include <QCoreApplication>

#include "app/shell/message_boxes.h"
#include "db/database_files.h"

namespace app {

// Tells the operator that the database is damaged, where, and what that means, and offers to
// salvage what survives into a new file.
class DamageReport {
  Q_DECLARE_TR_FUNCTIONS(DamageReport)

 public:
  // Both must outlive the object.
  DamageReport(const db::DatabaseFiles& files, MessageBoxes& boxes)
      : files_(files), boxes_(boxes) {}

  // Reports what opening the database has found, if anything.
  void Tell();

 private:
  void Salvage(db::Fill fill);

  const db::DatabaseFiles& files_;
  MessageBoxes& boxes_;
};

}  // namespace app

#endif  // APP_RUN_DAMAGE_REPORT_H_
