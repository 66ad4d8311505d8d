// SPDX-License-Identifier: MIT

#include "app/transfers.h"

#include "views/on_screen.h"

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

void Transfers::SendData() {
  if (IsShown(download_) || IsShown(retrieval_)) return;
  // What is typed belongs to what is sent.
  if (!views_.StoreEdits()) return;
  download_ = new views::DownloadWindow(downloadServices_, &window_);
  download_->setAttribute(Qt::WA_DeleteOnClose);
  connect(download_, &views::DownloadWindow::Begun, this, [this] {
    Q_EMIT Happened(downloadServices_.model.DownloadMode == 0
                        ? tr("Download begun")
                        : tr("Download of the buttons begun"));
  });
  connect(download_, &views::DownloadWindow::Finished, this, [this](int failures) {
    Q_EMIT Happened(failures == 0 ? tr("Download finished")
                                  : tr("Download finished, tables not sent: %1").arg(failures));
  });
  connect(download_, &views::DownloadWindow::Cancelled, this, [this](const QString& notSent) {
    Q_EMIT Happened(tr("Download cancelled, stages not sent: %1").arg(notSent));
    Q_EMIT NoteRequested(tr("Cancelled. Stages not sent: %1").arg(notSent));
  });
  connect(download_, &views::DownloadWindow::Sent, &views_, &OpenViews::TableSent);
  connect(download_, &views::DownloadWindow::Failed, &views_, &OpenViews::TableFailed);
  download_->open();
}

void Transfers::RetrieveData() {
  if (IsShown(download_) || IsShown(retrieval_)) return;
  // The views are closed for it: what is typed and cannot be stored would be lost.
  if (!views_.StoreEdits()) return;
  retrieval_ = new views::RetrievalWindow(retrievalServices_, &window_);
  retrieval_->setAttribute(Qt::WA_DeleteOnClose);
  connect(retrieval_, &QDialog::finished, &views_, &OpenViews::ShowAllInPlace);
  // What was edited here is overwritten by what the switcher holds.
  connect(retrieval_, &views::RetrievalWindow::Retrieved, &views_, &OpenViews::NothingUnsent);
  connect(retrieval_, &views::RetrievalWindow::Begun, this,
          [this] { Q_EMIT Happened(tr("Retrieval begun")); });
  connect(retrieval_, &views::RetrievalWindow::Finished, this, [this](bool refused) {
    Q_EMIT Happened(refused ? tr("Retrieval finished, some tables were refused")
                            : tr("Retrieval finished"));
  });
  connect(retrieval_, &views::RetrievalWindow::Cancelled, this,
          [this] { Q_EMIT Happened(tr("Retrieval cancelled")); });
  retrieval_->open();
}

void Transfers::CancelNow() {
  if (IsShown(download_)) download_->CancelNow();
  if (IsShown(retrieval_)) retrieval_->CancelNow();
}

}  // namespace app
