// SPDX-License-Identifier: MIT

#ifndef APP_BACKUPS_SAVE_COPY_H_
#define APP_BACKUPS_SAVE_COPY_H_

#include <QObject>
#include <QString>
#include <QWidget>
#include <functional>

#include "app/kept/background_writer.h"
#include "db/database_files.h"
#include "model/error_reporter.h"

namespace app {

// Writes a copy of the database as it is now to where the operator wants it.
class SaveCopy : public QObject {
  Q_OBJECT

 public:
  struct Services {
    QWidget& window;  // the main window
    db::DatabaseFiles& files;
    BackgroundWriter& writer;  // its own: the disk of a copy may be one that is pulled out
    model::ErrorReporter& reporter;
    // Stores what is typed into a view and not stored yet; false when that failed, which was
    // reported, and nothing is asked for.
    std::function<bool()> storeEdits;
  };

  // All must outlive the object.
  explicit SaveCopy(const Services& services) : services_(services) {}

  // Asks the operator for a name, and writes the copy.
  void Ask();

  // Writes the copy: whole, or a file of that name stays as it was.  The console's own files, and
  // names that do not end in ".mdb", are refused.  A failure is reported.
  void Write(const QString& path);

 Q_SIGNALS:
  // The copy was written.
  void NoteRequested(const QString& note);

 private:
  void Refuse(const QString& text);

  const Services services_;
};

}  // namespace app

#endif  // APP_BACKUPS_SAVE_COPY_H_
