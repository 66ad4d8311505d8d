// SPDX-License-Identifier: MIT

#ifndef APP_KEPT_LOCK_KEEPER_H_
#define APP_KEPT_LOCK_KEEPER_H_

#include <QDeadlineTimer>
#include <QObject>
#include <QString>
#include <filesystem>
#include <functional>
#include <string>

#include "app/kept/text_file.h"
#include "app/shell/main_window.h"
#include "model/locks.h"
#include "model/status.h"

namespace app {

inline constexpr char kLocksFile[] = "Locks.json";

// Keeps what is locked from run to run, and locks and unlocks the console as a whole: its command,
// the question before it is unlocked, the badge in the status bar.  A file that cannot be read or
// written costs a hint.
class LockKeeper : public QObject, public model::LockObserver {
  Q_OBJECT

 public:
  struct Services {
    model::Locks& locks;
    std::filesystem::path file;
    MainWindow& window;
    std::function<bool()> storeEdits;  // stores what is typed; whether there is nothing left of it
  };

  // All that is referred to must outlive the object.
  explicit LockKeeper(const Services& services);
  ~LockKeeper() override;

  // Locks what was locked when the last run ended.  A file that is damaged or cannot be read is
  // kept under a name of its own, and never written over.
  void Begin();

  void LocksChanged() override;

  // Returns when the file holds what is locked, or cannot be written in that time.
  void Finish(QDeadlineTimer patience) { file_.Finish(patience); }

 Q_SIGNALS:
  // Something to say in passing, and to keep.
  void NoteRequested(const QString& note);

 private:
  QString WhyUnlocked(const model::Status& read);
  void Toggle();
  void ShowConsole();
  std::string Text() const;

  const Services services_;
  std::string asRead_;  // what the file held; it stays as it is while nothing is locked or unlocked
  bool hasChanged_ = false;
  TextFile file_;
};

}  // namespace app

#endif  // APP_KEPT_LOCK_KEEPER_H_
