// SPDX-License-Identifier: MIT

#ifndef APP_PAPER_IMPORT_COMMAND_H_
#define APP_PAPER_IMPORT_COMMAND_H_

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>

#include "views/import_file/import_window.h"
#include "views/services.h"

namespace app {

// Brings labels or programming back that were exported, and changed in a spreadsheet.
class ImportCommand : public QObject {
  Q_OBJECT

 public:
  struct Services {
    QWidget& window;  // the main window
    views::Services data;
    // Stores what is typed into a view and not stored yet; false when that failed, which was
    // reported, and nothing is asked for.
    std::function<bool()> storeEdits;
  };

  // All must outlive the object.
  explicit ImportCommand(const Services& services) : services_(services) {}

  // Asks which file; while the console is locked it says so instead.
  void Ask();

  // Opens frmImport with a file.  One that cannot be read is reported.
  void Open(const QString& path);

 Q_SIGNALS:
  // It was stored.
  void NoteRequested(const QString& note);

 private:
  const Services services_;
  QPointer<views::ImportWindow> import_;
};

}  // namespace app

#endif  // APP_PAPER_IMPORT_COMMAND_H_
