// SPDX-License-Identifier: MIT

#include "app/log/log_keeper.h"

#include "views/change_words.h"
#include "views/compare/compare_rows.h"
#include "views/transfer/transfer_words.h"
#include "views/widgets/shown.h"
#include "views/words.h"

namespace app {

using Kind = EventLog::Kind;
using views::UnsentTables;

LogKeeper::LogKeeper(const Services& services)
    : services_(services), crosspoints_(services.labels) {
  connect(&services_.window, &MainWindow::LinkTextShown, this,
          [this](const QString& text) { Add(Kind::Link, text); });
  connect(&services_.window, &MainWindow::BlockedCodeShown, this, &LogKeeper::NoteBlockedCode);
  connect(&services_.views, &OpenViews::Loaded, this, &LogKeeper::FollowView);
  FollowTables();
  FollowTransfers();
  connect(&services_.boxes, &MessageBoxes::Reported, this,
          [this](const QString& title, const QString& text) {
            services_.log.AddRepeated(Kind::Report, QStringLiteral("%1: %2").arg(title, text));
          });
  connect(&services_.commands, &CommandTable::Runs, this,
          [this](const QString& id) { Add(Kind::Command, CommandWords(id)); });
}

void LogKeeper::FollowView(views::MainView* view) {
  connect(view, &views::MainView::NoteRequested, this, &LogKeeper::Note);
  const auto* const xmap = qobject_cast<views::XmapView*>(view);
  if (xmap == nullptr) return;
  connect(xmap, &views::XmapView::TakeSent, this, &LogKeeper::NoteTake);
  connect(xmap, &views::XmapView::RefreshRequested, this,
          [this] { Add(Kind::Command, tr("Refresh Map")); });
}

void LogKeeper::NoteTake(int output, int input, int action) {
  Add(Kind::Command, crosspoints_.Command(output, input, action));
}

void LogKeeper::FollowTables() {
  const UnsentTables& unsent = services_.unsent;
  connect(&unsent, &UnsentTables::Edited, this, [this](const switcher::TablePart& part) {
    Add(Kind::Table, tr("Edited: %1").arg(views::TableWords(part)));
  });
  connect(&unsent, &UnsentTables::Sent, this,
          [this](const switcher::TablePart& part, int messages) {
            Add(Kind::Table, tr("Sent: %1").arg(views::SentTableWords(part, messages)));
          });
  connect(&unsent, &UnsentTables::Failed, this, [this](const switcher::TablePart& part) {
    Add(Kind::Table, tr("Not sent: %1").arg(views::TableWords(part)));
  });
  connect(&unsent, &UnsentTables::NotConfirmed, this, [this](const UnsentTables::Parts& parts) {
    Add(Kind::Table, tr("Not confirmed by the switcher: %1").arg(views::PartWords(parts)));
  });
}

void LogKeeper::FollowTransfers() {
  const Transfers& transfers = services_.transfers;
  connect(&transfers, &Transfers::DownloadBegun, this, [this](std::int16_t mode) {
    Add(Kind::Table, mode == 0 ? tr("Download begun") : tr("Download of the buttons begun"));
  });
  connect(&transfers, &Transfers::DownloadEnded, this,
          [this](const switcher::DownloadResult& result) {
            Add(Kind::Table, views::DownloadWords(result));
          });
  connect(&transfers, &Transfers::SendingBegun, this,
          [this] { Add(Kind::Table, tr("Sending of changes begun")); });
  connect(&transfers, &Transfers::SendingEnded, this,
          [this](const switcher::DownloadResult& result) {
            Add(Kind::Table, views::SendingWords(result));
          });
  connect(&transfers, &Transfers::RetrievalBegun, this,
          [this] { Add(Kind::Table, tr("Retrieval begun")); });
  connect(&transfers, &Transfers::RetrievalEnded, this,
          [this](const switcher::RetrievalResult& result) {
            Add(Kind::Table, views::RetrievalWords(result));
          });
  connect(&transfers, &Transfers::ComparisonBegun, this,
          [this] { Add(Kind::Table, tr("Comparison begun")); });
  connect(&transfers, &Transfers::ComparisonEnded, this,
          [this](const switcher::ComparisonResult& result) {
            Add(Kind::Table, tr("Comparison ended: %1").arg(views::CompareSummary(result)));
          });
  connect(&transfers, &Transfers::TakenOver, this,
          [this](const std::vector<stations::Change>& changes) {
            Add(Kind::Table, views::ActTitle(changes));
          });
}

LogKeeper::~LogKeeper() {
  // Closed, so that it keeps its place.
  if (window_ != nullptr) window_->close();
  delete window_;
  services_.log.End();
}

void LogKeeper::Show() {
  if (window_ == nullptr) window_ = new EventLogWindow(services_.log);
  views::BringUp(*window_);
}

void LogKeeper::NoteBlockedCode(std::optional<std::uint8_t> code) {
  if (code.has_value()) {
    Add(Kind::Link, tr("Receiving blocked by unknown code %1").arg(views::ByteWords(*code)));
  }
}

void LogKeeper::ByteDiscarded(std::uint8_t byte) {
  Add(Kind::Link, tr("Discarded byte %1").arg(views::ByteWords(byte)));
}

}  // namespace app
