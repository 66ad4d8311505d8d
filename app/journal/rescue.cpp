// SPDX-License-Identifier: MIT

#include "app/journal/rescue.h"

#include <QDateTime>
#include <QLocale>
#include <QStringList>
#include <QTimer>
#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "db/database_files.h"
#include "model/locks.h"
#include "stations/fold.h"
#include "views/change_words.h"
#include "views/widgets/question.h"

namespace app {
namespace {

using Kind = stations::JournalLine::Kind;
using stations::Direction;
using stations::Share;

// So many of the fields that were edited since are named.
constexpr std::size_t kMostNamed = 5;

// So much of the journal is read before the operator has his turn again: half a millisecond.
// What he does takes several turns, and so does the start.
constexpr std::size_t kBytesAtOnce = 16 << 10;

QString DayAndTime(const std::string& time) {
  const QDateTime at = QDateTime::fromString(QString::fromStdString(time), Qt::ISODate);
  return QLocale::c().toString(at.toLocalTime(), QStringLiteral("d MMM HH:mm"));
}

// What is stored as long as it lives.
class Stored : public stations::ChangeObserver {
 public:
  using ChangeObserver::ChangeObserver;
  void Changed(std::span<const stations::Change> changes) override {
    rows_ += views::CountRows(changes);
  }
  std::size_t Rows() const { return rows_; }

 private:
  std::size_t rows_ = 0;
};

// What stands in the way, from what a field holds to what it is to hold.
std::vector<stations::Change> InTheWay(const std::vector<stations::Conflict>& conflicts) {
  std::vector<stations::Change> changes;
  for (const stations::Conflict& conflict : conflicts) {
    if (conflict.field.empty()) continue;  // a station without a record: nothing can be done
    changes.push_back({stations::Origin::Restore,
                       conflict.station,
                       {{conflict.field, conflict.present, conflict.wanted}}});
  }
  return stations::Fold(changes);
}

// What stands in the way and did not, or held something else, when the operator was asked.
std::vector<stations::Conflict> Unseen(std::vector<stations::Conflict> conflicts,
                                       const std::vector<stations::Conflict>& seen) {
  std::erase_if(conflicts, [&seen](const stations::Conflict& conflict) {
    return conflict.field.empty() || std::ranges::find(seen, conflict) != seen.end();
  });
  return conflicts;
}

// Takes out of *changes the rows that are in conflict, and returns them.
std::vector<views::ChangeRow> LeaveOut(const std::vector<stations::Conflict>& conflicts,
                                       std::vector<stations::Change>* changes) {
  if (conflicts.empty()) return {};
  std::vector<views::ChangeRow> rows = views::ChangeOutline(*changes);
  std::vector<views::ChangeRow> leftOut = views::TakeOut(conflicts, &rows);
  *changes = views::Chosen(*changes, rows);
  return leftOut;
}

}  // namespace

Rescue::Rescue(const Services& services)
    : services_(services),
      restore_(AddAction("aidRestore", tr("Restore"),
                         tr("Store what that run changed, as one step that can be undone"),
                         &Rescue::Restore)),
      show_(
          AddAction("aidShowChanges", tr("Show"), tr("List what that run changed"), &Rescue::Show)),
      discard_(AddAction("aidDiscard", tr("Discard"), tr("Offer it no more"), &Rescue::Discard)) {
  connect(&services_.command, &QAction::triggered, this, &Rescue::ShowNext);
  services_.command.setToolTip(tr("Offer the changes of a run that ended without saving"));
  services_.command.setEnabled(false);
}

QAction* Rescue::AddAction(const char* name, const QString& caption, const QString& tip,
                           void (Rescue::*operation)()) {
  auto* const action = new QAction(caption, this);
  action->setObjectName(QLatin1String(name));
  action->setToolTip(tip);
  connect(action, &QAction::triggered, this, operation);
  return action;
}

void Rescue::Begin() {
  const auto& runs = services_.journal.Found().Runs();
  if (std::ranges::none_of(runs, &stations::JournalRun::IsUnsaved)) return;
  if (const std::optional<std::string>& digest = services_.journal.Digest()) {
    Collect(*digest);
  } else {
    connect(&services_.journal, &JournalKeeper::DigestKnown, this, &Rescue::Collect);
  }
}

void Rescue::Collect(const std::string& digest) {
  database_ = digest;
  for (const stations::JournalRun& run : services_.journal.Found().Runs()) {
    if (run.IsUnsaved()) readings_.push_back({.run = stations::UnsavedRunReader(run)});
  }
  ReadOn();
}

void Rescue::ReadOn() {
  for (std::size_t bytes = 0; bytes < kBytesAtOnce && !readings_.empty();) {
    Reading& reading = readings_.front();
    bytes += reading.run.NextBytes();
    const stations::Act* const act = reading.run.ReadNext();
    // As many as the window of the changes lists.
    if (act != nullptr) reading.changes += views::CountRows(act->changes);
    if (!reading.run.IsDone()) continue;
    Take(std::move(reading));
    readings_.pop_front();
  }
  if (readings_.empty()) return ShowOffer();
  QTimer::singleShot(0, this, &Rescue::ReadOn);
}

void Rescue::Take(Reading reading) {
  stations::UnsavedRun run = reading.run.Take();
  if (IsInPlace(run)) {
    services_.journal.EndRun(run.id, Kind::Saved);
    return;
  }
  const bool isOfThisDatabase = !database_.empty() && run.database == database_;
  offers_.push_back(
      {.run = std::move(run), .changes = reading.changes, .isOfThisDatabase = isOfThisDatabase});
}

// "12 changes".
QString Rescue::CountOf(std::size_t changes) {
  if (changes == 0) return tr("no changes");
  return changes == 1 ? tr("1 change") : tr("%1 changes").arg(changes);
}

// "12 changes of 21 Nov 18:05".
QString Rescue::CountOf(std::size_t changes, const Offer& of) {
  return tr("%1 of %2").arg(CountOf(changes), DayAndTime(of.run.Time()));
}

bool Rescue::IsInPlace(const stations::UnsavedRun& run) {
  jet::Database* const database = services_.database();
  if (database == nullptr || run.unreadable > 0) return false;
  bool inPlace = false;
  const model::Status status =
      stations::AreInPlace(*database, stations::ChangesOf(run, Share::All), &inPlace);
  return status.ok() && inPlace;
}

const Rescue::Offer* Rescue::Current() const {
  return at_ < offers_.size() ? &offers_[at_] : nullptr;
}

const Rescue::Offer* Rescue::OfferOf(std::int64_t run) const {
  const auto offer = std::ranges::find(offers_, run, [](const Offer& each) { return each.run.id; });
  return offer == offers_.end() ? nullptr : &*offer;
}

void Rescue::ShowOffer() {
  services_.hints.Withdraw(Hint::UnsavedRun);
  services_.command.setEnabled(!offers_.empty());
  const Offer* const offer = Current();
  if (offer == nullptr) return;
  QString text = tr("The console ended without saving on %1: %2")
                     .arg(DayAndTime(offer->run.Time()), CountOf(offer->changes));
  if (offer->run.unreadable > 0) text += tr(", and some that cannot be read");
  if (offer->run.acts.empty())
    text =
        tr("The console ended without saving, and what it changed "
           "cannot be read");
  if (!offer->isOfThisDatabase) text += tr(", made in another Tesk.mdb");
  if (offers_.size() > 1) text += tr(" (run %1 of %2)").arg(at_ + 1).arg(offers_.size());
  QList<QAction*> commands{show_, discard_};
  if (offer->CanBeRestored()) commands.prepend(restore_);
  services_.hints.Give(Hint::UnsavedRun, text, commands);
}

void Rescue::ShowNext() {
  const bool isSeen = services_.hints.Has(Hint::UnsavedRun) &&
                      services_.hints.isAncestorOf(services_.window.focusWidget());
  if (isSeen) at_ = (at_ + 1) % offers_.size();
  ShowOffer();
  services_.hints.TakeFocus();
}

bool Rescue::MayClose() {
  const auto offer = std::ranges::find_if(offers_, &Offer::CanBeRestored);
  if (offer == offers_.end() || std::exchange(hasAskedAtClose_, true)) return true;
  at_ = static_cast<std::size_t>(offer - offers_.begin());
  ShowOffer();
  views::Ask(services_.window, *this,
             {.name = QStringLiteral("aidAskClose"),
              .text = tr("Close Without Restoring?\r\rThe console ended without saving on %1: %2. "
                         "Once Tesk.mdb has been saved, that can only be shown.")
                          .arg(DayAndTime(offer->run.Time()), CountOf(offer->changes)),
              .answers = {{.name = QStringLiteral("aidRestoreFirst"),
                           .caption = tr("Restore"),
                           .run = [this] { Restore(); }},
                          {.name = QStringLiteral("aidCloseAllTheSame"),
                           .caption = tr("Close All The Same"),
                           .run = [this] { services_.window.close(); }}}});
  return false;
}

bool Rescue::IsRefused() {
  if (services_.changes.MayStore(stations::Origin::Restore)) return false;
  model::ShowConsoleLocked(services_.reporter);
  return true;
}

void Rescue::Restore() {
  const Offer* const offer = Current();
  if (offer == nullptr || IsRefused() || !services_.storeEdits()) return;
  const std::int64_t run = offer->run.id;
  if (!offer->run.HasReceived()) return AskAboutEdited(run, Share::All);
  views::Question question{
      .name = QStringLiteral("aidAskReceived"),
      .text = tr("Restore What The Switcher Sent?\r\rSome of these changes are tables "
                 "that the switcher sent, in a retrieval or by itself. It has them "
                 "still, and can be asked for them at any time."),
      .answers = {{.name = QStringLiteral("aidRestoreAll"),
                   .caption = tr("Restore All"),
                   .run = [this, run] { AskAboutEdited(run, Share::All); }}}};
  if (offer->run.HasEdits()) {
    question.answers.push_back({.name = QStringLiteral("aidRestoreEdits"),
                                .caption = tr("Restore Only What Was Edited"),
                                .run = [this, run] { AskAboutEdited(run, Share::Edits); }});
  }
  views::Ask(services_.window, *this, question);
}

// Fields that were edited since would lose that: the operator decides.
void Rescue::AskAboutEdited(std::int64_t run, Share share) {
  const Offer* const offer = OfferOf(run);
  std::vector<stations::Conflict> conflicts;
  if (offer == nullptr || !FindConflicts(ChangesOf(offer->run, share), &conflicts)) return;
  const std::vector<views::ChangeRow> rows = views::ChangeRows(InTheWay(conflicts));
  if (rows.empty()) return Store(run, share, Edited::Restore, conflicts);
  QStringList named;
  for (const views::ChangeRow& row : std::span(rows).first(std::min(rows.size(), kMostNamed))) {
    named.append(tr("%1, %2: %3 now, %4 then").arg(row.where, row.what, row.before, row.after));
  }
  if (rows.size() > kMostNamed) named.append(tr("and %1 more").arg(rows.size() - kMostNamed));
  views::Ask(
      services_.window, *this,
      {.name = QStringLiteral("aidAskEdited"),
       .text = tr("Restore What Was Edited Since?\r\rThese were edited again after the crash:") +
               QStringLiteral("\r\r") + named.join(u'\r'),
       .answers = {{.name = QStringLiteral("aidRestoreEdited"),
                    .caption = tr("Restore Them, Too"),
                    .run = [this, run, share,
                            conflicts] { Store(run, share, Edited::Restore, conflicts); }},
                   {.name = QStringLiteral("aidKeepEdited"),
                    .caption = tr("Keep What They Hold"),
                    .run = [this, run, share, conflicts] {
                      Store(run, share, Edited::Keep, conflicts);
                    }}}});
}

bool Rescue::FindConflicts(const std::vector<stations::Change>& changes,
                           std::vector<stations::Conflict>* conflicts) {
  jet::Database* const database = services_.database();
  return Succeeds(database == nullptr
                      ? db::NotOpen()
                      : stations::FindConflicts(*database, changes, Direction::Again, conflicts));
}

void Rescue::Store(std::int64_t run, Share share, Edited edited,
                   const std::vector<stations::Conflict>& seen) {
  const Offer* const offer = OfferOf(run);
  if (offer == nullptr || IsRefused()) return;
  std::vector<stations::Change> changes = ChangesOf(offer->run, share);
  std::vector<stations::Conflict> conflicts;
  if (!FindConflicts(changes, &conflicts)) return;
  if (edited == Edited::Keep) changes = stations::Without(changes, seen);
  const std::vector<views::ChangeRow> leftOut = LeaveOut(Unseen(conflicts, seen), &changes);
  Stored stored(services_.changes);
  jet::Database* const database = services_.database();
  if (!Succeeds(database == nullptr
                    ? db::NotOpen()
                    : stations::CarryOut(*database, changes, Direction::Again,
                                         {services_.changes, stations::Origin::Restore}))) {
    return;
  }
  QString note = tr("Restored: %1").arg(CountOf(stored.Rows(), *offer));
  const auto gone = std::ranges::count_if(
      conflicts, [](const stations::Conflict& conflict) { return conflict.field.empty(); });
  if (gone == 1) note += tr(", 1 station has no record");
  if (gone > 1) note += tr(", %1 stations have no record").arg(gone);
  if (!leftOut.empty()) {
    Q_EMIT NoteRequested(tr("%1. Left out, because they were edited here since: %2")
                             .arg(note, views::RowNames(leftOut)));
    return;
  }
  // A restore that is in no journal is lost with this run: then the next one offers it again.
  if (services_.journal.IsComplete()) services_.journal.EndRun(run, Kind::Restored);
  Forget(run, note);
}

void Rescue::Show() {
  const Offer* const offer = Current();
  if (offer == nullptr) return;
  Q_EMIT ShowRequested(offer->run.id, tr("Not Saved On %1").arg(DayAndTime(offer->run.Time())));
}

void Rescue::Discard() {
  const Offer* const offer = Current();
  if (offer == nullptr || IsRefused()) return;
  const std::int64_t run = offer->run.id;
  views::Ask(
      services_.window, *this,
      {.name = QStringLiteral("aidAskDiscard"),
       .text = tr("Discard What Was Not Saved?\r\rThese changes will not be offered any more. "
                  "Recent Changes goes on listing them."),
       .answers = {{.name = QStringLiteral("aidDiscardRun"),
                    .caption = tr("Discard"),
                    .run = [this, run] { DiscardRun(run); }}}});
}

void Rescue::DiscardRun(std::int64_t run) {
  const Offer* const offer = OfferOf(run);
  if (offer == nullptr || IsRefused()) return;
  if (services_.journal.EndRun(run, Kind::Discarded)) {
    Forget(run, tr("Discarded: %1").arg(CountOf(offer->changes, *offer)));
  } else {
    Q_EMIT NoteRequested(tr("Not discarded: %1").arg(CountOf(offer->changes, *offer)));
  }
}

void Rescue::Forget(std::int64_t run, const QString& note) {
  std::erase_if(offers_, [run](const Offer& offer) { return offer.run.id == run; });
  at_ = 0;
  ShowOffer();
  Q_EMIT NoteRequested(note);
}

bool Rescue::Succeeds(const model::Status& status) {
  if (status.ok()) return true;
  services_.reporter.Show(model::ErrorReporter::Icon::Critical, "Database Error",
                          model::ErrorText("Error Restoring Changes", status));
  return false;
}

}  // namespace app
