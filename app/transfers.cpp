// SPDX-License-Identifier: MIT

#include "app/transfers.h"

#include "app/log/event_words.h"
#include "views/window_place/on_screen.h"

namespace app {

using views::IsShown;

Transfers::Transfers(QWidget& window, OpenViews& views, const views::DownloadServices& download,
                     const views::RetrievalServices& retrieval)
    : window_(window), views_(views), downloadServices_(download), retrievalServices_(retrieval) {
  retrievalServices_.closeViews = [&views] { views.CloseAll(); };
}

Transfers::~Transfers() {
  // Before what they work with goes.
  delete download_;
  delete retrieval_;
}

void Transfers::SendData(std::int16_t mode) {
  if (IsShown(download_) || IsShown(retrieval_)) return;
  // What is typed belongs to what is sent.
  if (!views_.StoreEdits()) return;
  downloadServices_.model.DownloadMode = mode;
  download_ = new views::DownloadWindow(downloadServices_, &window_);
  download_->setAttribute(Qt::WA_DeleteOnClose);
  connect(download_, &views::DownloadWindow::Begun, this,
          [this, mode] { Q_EMIT DownloadBegun(mode); });
  connect(download_, &views::DownloadWindow::Ended, this, &Transfers::FinishDownload);
  connect(download_, &views::DownloadWindow::Sent, &views_, &OpenViews::TableSent);
  connect(download_, &views::DownloadWindow::Failed, &views_, &OpenViews::TableFailed);
  download_->open();
}

void Transfers::FinishDownload(const switcher::DownloadResult& result) {
  Q_EMIT DownloadEnded(result);
  Q_EMIT NoteRequested(
      result.notSent.empty()
          ? DownloadWords(result)
          : tr("Cancelled. Stages not sent: %1").arg(QString::fromStdString(result.notSent)));
}

void Transfers::RetrieveData() {
  if (IsShown(download_) || IsShown(retrieval_)) return;
  // The views are closed for it: what is typed and cannot be stored would be lost.
  if (!views_.StoreEdits()) return;
  retrieval_ = new views::RetrievalWindow(retrievalServices_, &window_);
  retrieval_->setAttribute(Qt::WA_DeleteOnClose);
  connect(retrieval_, &QDialog::finished, &views_, &OpenViews::ShowAllInPlace);
  connect(retrieval_, &views::RetrievalWindow::Begun, this, &Transfers::RetrievalBegun);
  connect(retrieval_, &views::RetrievalWindow::Ended, this, &Transfers::FinishRetrieval);
  retrieval_->open();
}

void Transfers::FinishRetrieval(const switcher::RetrievalResult& result) {
  // What was edited here is overwritten by what the switcher holds.
  if (result.IsWhole()) views_.NothingUnsent();
  Q_EMIT RetrievalEnded(result);
}

void Transfers::CancelNow() {
  if (IsShown(download_)) download_->CancelNow();
  if (IsShown(retrieval_)) retrieval_->CancelNow();
}

}  // namespace app
