// SPDX-License-Identifier: MIT

#include "app/journal/journal_keeper.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QPromise>
#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "files/whole_file.h"
#include "stations/journal/compaction.h"
#include "stations/journal/unsaved_run.h"
#include "views/change_words.h"

namespace app {
namespace {

using Kind = stations::JournalLine::Kind;

constexpr std::chrono::milliseconds kSoon = std::chrono::seconds(1);
constexpr std::chrono::milliseconds kRarest = std::chrono::minutes(1);
constexpr std::uint64_t kPieceBytes = 1 << 18;
constexpr char kNothing[] = "{}";

// Does something that may take its time where nobody waits for it.
template <typename Result, typename Work>
QFuture<Result> Elsewhere(QThreadPool& pool, Work work) {
  const auto promise = std::make_shared<QPromise<Result>>();
  QFuture<Result> result = promise->future();
  promise->start();
  pool.start([promise, work = std::move(work)] {
    promise->addResult(work());
    promise->finish();
  });
  return result;
}

std::string DigestOf(const std::filesystem::path& path) {
  files::File file;
  std::uint64_t size = 0;
  if (files::File::OpenToRead(path, &file) || file.Size(&size)) return {};
  QCryptographicHash hash(QCryptographicHash::Sha256);
  std::vector<std::uint8_t> piece;
  for (std::uint64_t at = 0; at < size; at += piece.size()) {
    piece.resize(std::min(size - at, kPieceBytes));
    if (file.Read(at, piece)) return {};
    hash.addData(QByteArrayView(piece));
  }
  return hash.result().toHex().toStdString();
}

// With what the clock on the wall is ahead of the world's.
std::string TimeNow() {
  const QDateTime now = QDateTime::currentDateTime();
  return now.toOffsetFromUtc(now.offsetFromUtc()).toString(Qt::ISODate).toStdString();
}

}  // namespace

JournalKeeper::JournalKeeper(stations::Changes& changes, const std::filesystem::path& journal,
                             std::filesystem::path database, int digestMilliseconds)
    : ChangeObserver(changes),
      path_(journal),
      database_(std::move(database)),
      journal_(journal),
      digestMilliseconds_(digestMilliseconds),
      pause_(kSoon) {
  syncTimer_.setSingleShot(true);
  connect(&syncTimer_, &QTimer::timeout, this, [this] {
    WriteWaiting();
    Sync();
  });
}

void JournalKeeper::Begin() {
  digest_ = Elsewhere<std::string>(pool_, [database = database_] { return DigestOf(database); });
  digest_.then(this, [this](const std::string& digest) {
    known_ = digest;
    WriteWaiting();
    Q_EMIT DigestKnown(digest);
  });
  const files::Outcome read = journal_.Read();
  isUsable_ = read.ok();
  NoteWriting(read);
  if (isUsable_ && IsLarge()) Compact();
}

void JournalKeeper::BeginGroup() { group_ = ++groups_; }

void JournalKeeper::Changed(std::span<const stations::Change> changes) {
  const stations::Origin origin = changes.front().origin;
  const stations::Act act{.title = views::ActTitle(changes).toStdString(),
                          .time = TimeNow(),
                          .origin = origin,
                          .group = origin == stations::Origin::Switcher ? group_ : 0,
                          .changes = {changes.begin(), changes.end()}};
  waiting_.Add(stations::WriteAct(act));
  // Tables of the switcher come again; the decoder waits for nothing.
  if (origin != stations::Origin::Switcher) WaitForDigest();
  WriteWaiting();
  Q_EMIT ActAdded(act);
}

// A disk that takes longer is not waited for, and not again for the next act.
void JournalKeeper::WaitForDigest() {
  if (!isUsable_ || digest_.isFinished()) return;
  pool_.waitForDone(std::exchange(digestMilliseconds_, 0));
}

void JournalKeeper::WriteWaiting() {
  if (!isUsable_ || waiting_.IsEmpty()) return;
  if (!hasBeginning_) {
    if (!digest_.isFinished()) return;
    journal_.SetBeginning(stations::WriteBeginning(digest_.result()));
    hasBeginning_ = true;
  }
  while (!waiting_.IsEmpty()) {
    const files::Outcome added = journal_.AddAct(waiting_.First());
    NoteWriting(added);
    if (!added.ok()) return TryAgain();
    waiting_.RemoveFirst();
  }
  pause_ = kSoon;
  SyncSoon();
}

bool JournalKeeper::EndRun(std::int64_t run, Kind kind) {
  const files::Outcome ended = journal_.EndRun(run, kind, kNothing);
  NoteWriting(ended);
  if (ended.ok()) SyncSoon();
  return ended.ok();
}

void JournalKeeper::WriteBeforeSaving(QDeadlineTimer patience) {
  if (waiting_.IsEmpty() && !syncTimer_.isActive() && !syncing_.isRunning()) return;
  const auto waitForDisk = [&] { pool_.waitForDone(static_cast<int>(patience.remainingTime())); };
  waitForDisk();
  WriteWaiting();
  if (!syncTimer_.isActive()) return;
  syncTimer_.stop();
  Sync();
  waitForDisk();
}

void JournalKeeper::RunSaved() {
  waiting_.Clear();
  const std::int64_t run = journal_.ThisRun();
  if (run == 0) return;
  // What is not said to be saved is compared with the database at the next start.
  if (EndRun(run, Kind::Saved) && IsLarge() && journal_.Read().ok()) Compact();
}

std::uint64_t JournalKeeper::Bytes() const {
  std::error_code error;
  const std::uint64_t bytes = std::filesystem::file_size(path_, error);
  return error ? 0 : bytes;
}

// When that fails, the journal is as it was, and serves as well.
void JournalKeeper::Compact() {
  const std::string text = stations::Compact(journal_.Contents(), kKeptBytes);
  if (text.size() < Bytes()) (void)journal_.Replace(text);
}

void JournalKeeper::NoteWriting(const files::Outcome& outcome) {
  Note(outcome, &writingFails_, syncingFails_);
}

void JournalKeeper::NoteSyncing(const files::Outcome& outcome) {
  Note(outcome, &syncingFails_, writingFails_);
}

// Told is the first failure of either, and when neither fails any more.
void JournalKeeper::Note(const files::Outcome& outcome, bool* fails, bool otherFails) {
  const bool did = std::exchange(*fails, !outcome.ok());
  if (did == *fails || otherFails) return;
  if (*fails) {
    Q_EMIT Failed(QString::fromStdString(outcome.text));
  } else {
    Q_EMIT Recovered();
  }
}

// What is new does not wait as long as what has failed.
void JournalKeeper::SyncSoon() {
  if (!syncTimer_.isActive() || syncTimer_.intervalAsDuration() > kSoon) syncTimer_.start(kSoon);
}

// A disk that works again has what was edited before, though nobody edits any more.
void JournalKeeper::TryAgain() {
  if (!syncTimer_.isActive()) syncTimer_.start(pause_);
  pause_ = std::min(2 * pause_, kRarest);
}

void JournalKeeper::Sync() {
  if (journal_.File() == nullptr) return;       // it was replaced by a file that is on the disk
  if (syncing_.isRunning()) return SyncSoon();  // a slow disk
  syncing_ = Elsewhere<files::Outcome>(pool_, [file = journal_.File(), path = path_] {
    if (const std::error_code error = file->Sync()) return files::Failure("write", path, error);
    files::SyncFolder(path.parent_path());
    return files::Outcome();
  });
  syncing_.then(this, [this](const files::Outcome& outcome) {
    NoteSyncing(outcome);
    if (!outcome.ok()) TryAgain();
  });
}

}  // namespace app
