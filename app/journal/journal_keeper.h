// SPDX-License-Identifier: MIT

#ifndef APP_JOURNAL_JOURNAL_KEEPER_H_
#define APP_JOURNAL_JOURNAL_KEEPER_H_

#include <QDeadlineTimer>
#include <QFuture>
#include <QObject>
#include <QString>
#include <QThreadPool>
#include <QTimer>
#include <chrono>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>

#include "stations/change.h"
#include "stations/journal/act.h"
#include "stations/journal/journal.h"
#include "stations/journal/waiting_acts.h"

namespace app {

inline constexpr char kJournalFile[] = "Tesk.journal";

// Writes everything that is stored in the records of the stations into the journal, so that a crash
// loses nothing of it: what is stored at once is one act.
//
// A line is in the system's hands before the edit that it tells of is over; the disk has it a
// second later, without anybody waiting for that.
//
// Which database this is, is known some milliseconds after the start.  The first edit of the
// operator waits for that, for 250 ms at most; what is edited before it is known then is written
// when it is.
//
// An edit whose line cannot be written is made all the same: the line waits, and is tried again
// with the next one and from time to time.  A journal that cannot be read is left alone, and all
// lines wait.
class JournalKeeper : public QObject, public stations::ChangeObserver {
  Q_OBJECT

 public:
  // The file is replaced by one with less history at a start or a saved end, when it is larger than
  // the first; then it has as much history as the second says.
  static constexpr std::uint64_t kLargeBytes = 2 << 20;
  static constexpr std::uint64_t kKeptBytes = 3 << 19;

  // So long the first edit of a run waits at most until the digest of the database is known.
  static constexpr int kDigestMilliseconds = 250;

  // `changes` must outlive the object.  Nothing is read or written before Begin().
  JournalKeeper(stations::Changes& changes, const std::filesystem::path& journal,
                std::filesystem::path database, int digestMilliseconds = kDigestMilliseconds);

  // What is done elsewhere tells an object that is there.
  ~JournalKeeper() override { Finish(); }

  // Waits until nothing is done elsewhere any more.
  void Finish() { pool_.waitForDone(); }

  // Reads the journal.  To be called when the database of the run is the one that is in its file.
  void Begin();

  // The journal as it was found by Begin().
  const stations::JournalContents& Found() const { return journal_.Contents(); }

  // The digest of the database's file, in hexadecimal; empty when the file cannot be read.  It is
  // computed where nobody waits: nothing before DigestKnown().
  const std::optional<std::string>& Digest() const { return known_; }

  // The acts from BeginGroup() to EndGroup() that come from the switcher belong together.
  void BeginGroup();
  void EndGroup() { group_ = 0; }

  void Changed(std::span<const stations::Change> changes) override;

  // Whether all that was changed in this run is in the journal.
  bool IsComplete() const { return waiting_.IsEmpty(); }

  // What is not, the oldest first, as stations::WriteAct() writes it.
  const std::deque<std::string>& Waiting() const { return waiting_.Acts(); }

  // Says what became of an earlier run: Saved, Restored or Discarded.  False when that could not be
  // written.
  bool EndRun(std::int64_t run, stations::JournalLine::Kind kind);

  // The file of the database is about to be replaced, which takes a slow disk its time: what waits
  // for the digest is written first, and the disk has it all.  A disk that does not answer in
  // `patience` is not waited for any longer.
  void WriteBeforeSaving(QDeadlineTimer patience);

  // What this run has changed is in the file of the database.
  void RunSaved();

  // The number of this run in the journal; 0 before its first act.
  std::int64_t ThisRun() const { return journal_.ThisRun(); }

 Q_SIGNALS:
  // Once; of a small file perhaps in Begin() already.
  void DigestKnown(const std::string& digest);
  // An act of this run, whether it could be written or not.
  void ActAdded(const stations::Act& act);
  // The journal cannot be read or written, and why; told again after it went well in between.
  void Failed(const QString& why);
  // What could not be written is written now.
  void Recovered();

 private:
  void WaitForDigest();
  void WriteWaiting();
  std::uint64_t Bytes() const;
  bool IsLarge() const { return Bytes() > kLargeBytes; }
  void Compact();
  void NoteWriting(const files::Outcome& outcome);
  void NoteSyncing(const files::Outcome& outcome);
  void Note(const files::Outcome& outcome, bool* fails, bool otherFails);
  void SyncSoon();
  void TryAgain();
  void Sync();

  const std::filesystem::path path_;
  const std::filesystem::path database_;
  stations::Journal journal_;
  QFuture<std::string> digest_;
  int digestMilliseconds_;            // that are left to wait
  std::optional<std::string> known_;  // the digest, when it was told
  bool isUsable_ = false;
  bool hasBeginning_ = false;
  stations::WaitingActs waiting_;
  bool writingFails_ = false;
  bool syncingFails_ = false;
  std::int64_t group_ = 0;  // 0: no group
  std::int64_t groups_ = 0;
  QTimer syncTimer_;
  std::chrono::milliseconds pause_;  // until what has failed is tried again
  QFuture<files::Outcome> syncing_;
  QThreadPool pool_;
};

}  // namespace app

#endif  // APP_JOURNAL_JOURNAL_KEEPER_H_
