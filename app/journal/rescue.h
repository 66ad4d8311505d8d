// SPDX-License-Identifier: MIT

#ifndef APP_JOURNAL_RESCUE_H_
#define APP_JOURNAL_RESCUE_H_

#include <QAction>
#include <QObject>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "app/journal/journal_keeper.h"
#include "app/shell/hint_strip.h"
#include "db/jet/database.h"
#include "model/error_reporter.h"
#include "model/status.h"
#include "stations/carry_out.h"
#include "stations/change.h"
#include "stations/journal/unsaved_run.h"

namespace app {

// Offers what runs of the console have changed that ended without saving, the oldest first: to
// restore it, to show it, or to discard it.  Nothing is restored unasked, and nothing is forgotten:
// closing the hint decides nothing, and the command of the menu brings it back, or leads there, or,
// from there, to the next one of several.
//
// A run is restored on the database that it began with; on another one it can only be shown.
class Rescue : public QObject {
  Q_OBJECT

 public:
  struct Services {
    JournalKeeper& journal;
    std::function<jet::Database*()> database;  // null while it is not open
    stations::Changes& changes;
    HintStrip& hints;
    QAction& command;  // aidUnsavedRuns
    QWidget& window;   // the main window, which the questions are asked over
    model::ErrorReporter& reporter;
    // Stores what is typed into a view; false when that failed, which was reported.
    std::function<bool()> storeEdits;
  };

  // All must outlive the object.
  explicit Rescue(const Services& services);

  // The digest of the database is told to an object that is there.
  ~Rescue() override { services_.journal.Finish(); }

  // Behind the journal's Begin(): looks for such runs, and offers the first as soon as it is known
  // which database this is.  A run whose changes are all in the database is none of them: it ended
  // before it could say so.  A long run is read bit by bit: the operator does not wait for it.
  void Begin();

  // The console is to close, which may save Tesk.mdb: then what can be restored now can only be
  // shown.  False once for that: the operator is asked, and closes the main window all the same, or
  // restores it.
  bool MayClose();

 Q_SIGNALS:
  // The operator wants to see what this run has changed.
  void ShowRequested(qint64 run, const QString& title);
  // What has become of a run.
  void NoteRequested(const QString& note);

 private:
  struct Offer {
    stations::UnsavedRun run;
    std::size_t changes = 0;  // as many as are listed
    bool isOfThisDatabase = false;

    bool CanBeRestored() const { return isOfThisDatabase && changes > 0; }
  };

  // A run that is being read.
  struct Reading {
    stations::UnsavedRunReader run;
    std::size_t changes = 0;  // of what was read of it
  };

  QAction* AddAction(const char* name, const QString& caption, const QString& tip,
                     void (Rescue::*operation)());
  void Collect(const std::string& digest);
  void ReadOn();
  void Take(Reading reading);
  bool IsInPlace(const stations::UnsavedRun& run);
  // The run that is offered, or that of an id; null when there is none.
  const Offer* Current() const;
  const Offer* OfferOf(std::int64_t run) const;
  static QString CountOf(std::size_t changes);
  static QString CountOf(std::size_t changes, const Offer& of);
  void ShowOffer();
  void ShowNext();

  // What is done to the fields that were edited since.
  enum class Edited : std::uint8_t { Restore, Keep };
  void Restore();
  void AskAboutEdited(std::int64_t run, stations::Share share);
  bool FindConflicts(const std::vector<stations::Change>& changes,
                     std::vector<stations::Conflict>* conflicts);
  // `seen` is what the operator has decided about.  What has been edited since is left out and
  // named, and the run goes on being offered for it.
  void Store(std::int64_t run, stations::Share share, Edited edited,
             const std::vector<stations::Conflict>& seen);
  void Show();
  void Discard();
  void DiscardRun(std::int64_t run);
  // The run is decided about: it is offered no more.
  void Forget(std::int64_t run, const QString& note);
  // Whether nothing may be decided because the console is locked; says so.
  bool IsRefused();
  // Reports a failure; false for one.
  bool Succeeds(const model::Status& status);

  const Services services_;
  std::string database_;          // the digest of the database that is open
  std::deque<Reading> readings_;  // in the order in which they began
  std::vector<Offer> offers_;     // in the order in which they began
  std::size_t at_ = 0;
  bool hasAskedAtClose_ = false;
  QAction* restore_;
  QAction* show_;
  QAction* discard_;
};

}  // namespace app

#endif  // APP_JOURNAL_RESCUE_H_
