// SPDX-License-Identifier: MIT

#ifndef APP_PAPER_EXPORT_MENU_H_
#define APP_PAPER_EXPORT_MENU_H_

#include <QMenu>
#include <QObject>
#include <QString>
#include <cstdint>
#include <functional>

#include "views/services.h"

namespace app {

// What can be exported, and as what.
enum class Export : std::uint8_t { MapCsv, MapPdf, LabelsCsv, LabelsPdf, ProgrammingCsv };

// Writes what the console holds into files for people and spreadsheets: all but key sheets, which
// take their time (key_sheets_command.h).  It changes nothing.
class ExportMenu : public QObject {
  Q_OBJECT

 public:
  struct Services {
    QMenu& menu;      // filled with what can be exported
    QWidget& window;  // the main window
    views::Services data;
    // Stores what is typed into a view and not stored yet, before anything is exported; false when
    // that failed, and nothing is.
    std::function<bool()> storeEdits;
  };

  // All must outlive the object.
  explicit ExportMenu(const Services& services);

  // Writes a file, replacing it only when all of it could be written.  A failure is reported.
  bool Write(Export what, const QString& path);

 Q_SIGNALS:
  void NoteRequested(const QString& note);

 private:
  void AskWhereTo(Export what, const QString& title, const QString& fileName);

  const Services services_;
};

}  // namespace app

#endif  // APP_PAPER_EXPORT_MENU_H_
