// SPDX-License-Identifier: MIT

#ifndef APP_PAPER_KEY_SHEETS_COMMAND_H_
#define APP_PAPER_KEY_SHEETS_COMMAND_H_

#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>

#include "views/key_sheets/key_sheets_window.h"
#include "views/services.h"

namespace app {

// Writes or prints key sheets.  It changes nothing.
class KeySheetsCommand : public QObject {
  Q_OBJECT

 public:
  struct Services {
    QWidget& window;  // the main window
    QMenu& exports;   // gets the item that writes those of all stations
    views::Services data;
    // Stores what is typed into a view and not stored yet; false when that failed, which was
    // reported, and nothing is asked for.
    std::function<bool()> storeEdits;
  };

  // All must outlive the object.
  explicit KeySheetsCommand(const Services& services);

  // Opens frmKeySheets; one that is open already stays as it is.
  void Ask();

  // Writes those of all stations to a file, which frmKeySheets shows the progress of.  A failure is
  // reported, and so is that it is open already.
  void WriteAll(const QString& path);

 Q_SIGNALS:
  // What became of sheets.
  void NoteRequested(const QString& note);

 private:
  void AskWhereToWriteAll();
  views::KeySheetsWindow& Open();

  const Services services_;
  QPointer<views::KeySheetsWindow> sheets_;
};

}  // namespace app

#endif  // APP_PAPER_KEY_SHEETS_COMMAND_H_
