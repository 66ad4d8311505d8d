// SPDX-License-Identifier: MIT

#include "app/transfer/transfers.h"

#include <QStringList>

#include "views/transfer/transfer_words.h"
#include "views/widgets/shown.h"

namespace app {

using views::IsShown;

Transfers::~Transfers() {
  // Before what they work with goes.
  delete download_;
  delete changes_;
  delete retrieval_;
  delete compare_;
}

bool Transfers::IsOpen() const {
  return IsShown(download_) || IsShown(changes_) || IsShown(retrieval_);
}

bool Transfers::MayBegin(bool isComparisonBusy) {
  if (views::RefusedByLock(services_.data)) return false;
  if (IsOpen()) {
    Q_EMIT NoteRequested(tr("Not while another transfer is open"));
    return false;
  }
  if (isComparisonBusy) {
    Q_EMIT NoteRequested(tr("Not while the switcher sends what a comparison asked for"));
    return false;
  }
  return services_.views.StoreEdits();
}

void Transfers::CloseComparison() {
  if (compare_ != nullptr) compare_->close();
}

void Transfers::SendData(std::int16_t mode) {
  // What is typed belongs to what is sent.
  if (!MayBegin(compare_ != nullptr && compare_->IsWaiting())) return;
  CloseComparison();
  services_.download.model.DownloadMode = mode;
  download_ = new views::DownloadWindow(services_.download, &services_.window);
  download_->setAttribute(Qt::WA_DeleteOnClose);
  connect(download_, &views::DownloadWindow::Begun, this,
          [this, mode] { Q_EMIT DownloadBegun(mode); });
  connect(download_, &views::DownloadWindow::Ended, this, &Transfers::FinishDownload);
  download_->open();
}

void Transfers::FinishDownload(const switcher::DownloadResult& result) {
  Q_EMIT DownloadEnded(result);
  Q_EMIT NoteRequested(
      result.notSent.empty()
          ? views::DownloadWords(result)
          : tr("Cancelled. Stages not sent: %1").arg(QString::fromStdString(result.notSent)));
}

void Transfers::SendChanges() {
  if (!MayBegin(compare_ != nullptr && compare_->IsWaiting())) return;
  CloseComparison();
  SendParts(services_.download.unsent.All(), &services_.window);
}

// Modal over `parent` and what that stands over.
void Transfers::SendParts(const views::UnsentTables::Parts& parts, QWidget* parent) {
  changes_ = new views::SendChangesWindow(services_.download, parts, parent);
  changes_->setAttribute(Qt::WA_DeleteOnClose);
  connect(changes_, &views::SendChangesWindow::Begun, this, &Transfers::SendingBegun);
  connect(changes_, &views::SendChangesWindow::Ended, this, &Transfers::SendingEnded);
  connect(changes_, &views::SendChangesWindow::Confirmed, this,
          [this](int messages, const views::UnsentTables::Parts& confirmed) {
            if (compare_ != nullptr) compare_->NoteSent(confirmed);
            Q_EMIT NoteRequested(messages == 1
                                     ? tr("1 message sent and confirmed")
                                     : tr("%1 messages sent and confirmed").arg(messages));
          });
  changes_->open();
}

void Transfers::RetrieveData() {
  // The views are closed for it: what is typed and cannot be stored would be lost.  What comes late
  // for a comparison would be taken for its answer.
  if (!MayBegin(compare_ != nullptr && compare_->IsListening())) return;
  CloseComparison();
  retrieval_ = new views::RetrievalWindow(services_.retrieval, &services_.window);
  retrieval_->setAttribute(Qt::WA_DeleteOnClose);
  const views::UnsentTables& unsent = services_.download.unsent;
  QStringList warnings;
  if (const QString names = unsent.Names(); !names.isEmpty()) {
    warnings += tr("Unsent: %1 will be lost").arg(names);
  }
  if (!unsent.NeverSeenWords().isEmpty()) {
    warnings += tr("What is here was never seen in the switcher and will be lost");
  }
  if (!warnings.isEmpty()) retrieval_->SetWarning(warnings.join(u'\n'));
  connect(retrieval_, &views::RetrievalWindow::ViewsOutdated, &services_.views,
          &OpenViews::CloseAll);
  connect(retrieval_, &QDialog::finished, &services_.views, &OpenViews::ShowAllInPlace);
  connect(retrieval_, &views::RetrievalWindow::Begun, this, &Transfers::RetrievalBegun);
  connect(retrieval_, &views::RetrievalWindow::Ended, this, &Transfers::FinishRetrieval);
  retrieval_->open();
}

void Transfers::FinishRetrieval(const switcher::RetrievalResult& result) {
  Q_EMIT RetrievalEnded(result);
}

void Transfers::CompareWithSwitcher() {
  if (!MayBegin(/*isComparisonBusy=*/false)) return;
  if (compare_ == nullptr) {
    using views::CompareWindow;
    compare_ = new CompareWindow(services_.compare, &services_.window);
    connect(compare_, &CompareWindow::Begun, this, &Transfers::ComparisonBegun);
    connect(compare_, &CompareWindow::Ended, this, &Transfers::ComparisonEnded);
    connect(compare_, &CompareWindow::Stored, this, &Transfers::TakenOver);
    connect(compare_, &CompareWindow::SendRequested, this,
            [this](const std::vector<switcher::TablePart>& parts) {
              if (MayBegin(/*isComparisonBusy=*/false)) SendParts(parts, compare_);
            });
  }
  compare_->Begin();
}

void Transfers::LinkChanged() {
  if (download_ != nullptr) download_->LinkChanged();
  if (changes_ != nullptr) changes_->LinkChanged();
  if (retrieval_ != nullptr) retrieval_->LinkChanged();
  if (compare_ != nullptr) compare_->LinkChanged();
}

void Transfers::CancelNow() {
  if (IsShown(download_)) download_->CancelNow();
  if (IsShown(changes_)) changes_->CancelNow();
  if (IsShown(retrieval_)) retrieval_->CancelNow();
  if (compare_ != nullptr) compare_->CancelNow();
}

}  // namespace app
