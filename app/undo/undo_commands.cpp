// SPDX-License-Identifier: MIT

#include "app/undo/undo_commands.h"

#include "db/database_files.h"
#include "views/change_words.h"
#include "views/rules/inhibit_refusal.h"

namespace app {
namespace {

using stations::Direction;
using stations::History;
using stations::Step;

// As the commands of the menus are written: "Label Of Station 17".
QString InTitleCase(const QString& title) {
  QString result = title;
  bool begins = true;
  for (QChar& character : result) {
    if (begins) character = character.toUpper();
    begins = character.isSpace();
  }
  return result;
}

}  // namespace

UndoCommands::UndoCommands(const Services& services)
    : services_(services), history_(services.data.changes) {
  connect(&services_.menu, &EditMenu::UndoRequested, this, [this] { Go(Direction::Back); });
  connect(&services_.menu, &EditMenu::RedoRequested, this, [this] { Go(Direction::Again); });
  connect(&services_.views, &OpenViews::EditsChanged, this, &UndoCommands::ShowNext);
  history_.SetListener([this] { ShowNext(); });
  ShowNext();
}

std::optional<QString> UndoCommands::NextTitle(Direction direction) const {
  const Step* const step = history_.Next(direction);
  return step == nullptr ? std::nullopt : std::optional(InTitleCase(views::ActTitle(*step)));
}

// What is typed and not stored yet is the latest edit; there is nothing to do again after it.
void UndoCommands::ShowNext() {
  if (services_.views.HasEdits()) {
    services_.menu.Offer(tr("Edited Row"), std::nullopt);
  } else {
    services_.menu.Offer(NextTitle(Direction::Back), NextTitle(Direction::Again));
  }
}

void UndoCommands::Go(Direction direction) {
  if (!services_.views.StoreEdits()) return;
  const Step* const step = history_.Next(direction);
  if (step == nullptr) return;
  const bool isUndo = direction == Direction::Back;
  const QString title = views::ActTitle(*step);
  const auto may = [&](const Step& next) {
    return !rules::WouldInhibitCrosspoint(next, direction, services_.data.model);
  };
  jet::Database* const database = services_.database();
  History::Outcome outcome = History::Outcome::Gone;
  const model::Status status =
      database == nullptr ? db::NotOpen() : history_.Go(*database, direction, may, &outcome);
  if (!status.ok()) {
    views::ShowFailure(services_.data, isUndo ? "Error Undoing An Edit" : "Error Redoing An Edit",
                       status);
    return;
  }
  switch (outcome) {
    case History::Outcome::Gone:
      Q_EMIT NoteRequested((isUndo ? tr("Undone: %1") : tr("Redone: %1")).arg(title));
      break;
    case History::Outcome::Refused:
      views::ShowRefusal(services_.data, "Inhibit Not Possible With Existing Crosspoint");
      break;
    case History::Outcome::Stale:
      Q_EMIT NoteRequested((isUndo ? tr("Not undone, was changed since: %1")
                                   : tr("Not redone, was changed since: %1"))
                               .arg(title));
      break;
  }
}

}  // namespace app
