// SPDX-License-Identifier: MIT

#ifndef APP_TRANSFER_TRANSFERS_H_
#define APP_TRANSFER_TRANSFERS_H_

#include <QObject>
#include <QPointer>
#include <cstdint>
#include <vector>

#include "app/shell/open_views.h"
#include "views/compare/compare_window.h"
#include "views/transfer/download_window.h"
#include "views/transfer/retrieval_window.h"
#include "views/transfer/send_changes_window.h"

namespace app {

// The windows that carry the configuration to the switcher and back, each open at most once and
// modal over the main window, and the one that compares the two sides, which is beside it.  Only
// one of them works at a time: while tables come for the comparison the others begin nothing, with
// a note why; when one of them opens, the comparison closes, because it will not hold any more.
// While the console is locked none of them begins.
class Transfers : public QObject {
  Q_OBJECT

 public:
  struct Services {
    QWidget& window;  // the main window
    OpenViews& views;
    views::Services data;
    views::SendingWindow::Services download;
    switcher::Retrieval::Services retrieval;
    views::CompareWindow::Services compare;
  };

  // All that is referred to must outlive the object.
  explicit Transfers(const Services& services) : services_(services) {}

  // Closes what is still open.
  ~Transfers() override;

  // Opens frmDownProg for what `mode` says: 0 for everything, -1 for the button programming.  It
  // becomes the model's DownloadMode when the window opens.  All operations first store what is
  // typed into a view; where that fails, which is reported, they open nothing.
  void SendData(std::int16_t mode);

  // Opens frmSendChanges for what is unsent.
  void SendChanges();

  // Opens frmSysInfo.  When it closes the three main views are shown again in their stored
  // places.
  void RetrieveData();

  // Opens frmCompare and compares, or brings it up.
  void CompareWithSwitcher();

  // Whether tables come for the comparison, or may still come.
  bool IsComparing() const { return compare_ != nullptr && compare_->IsListening(); }

  // The link is up or down: what is open says so.
  void LinkChanged();

  // Cancels and closes what is open, for a program that ends.
  void CancelNow();

 Q_SIGNALS:
  // The operator has confirmed a download for what `mode` says; what came of it.
  void DownloadBegun(std::int16_t mode);
  void DownloadEnded(const switcher::DownloadResult& result);
  // The same of sending changes.
  void SendingBegun();
  void SendingEnded(const switcher::DownloadResult& result);
  // The same of a retrieval.
  void RetrievalBegun();
  void RetrievalEnded(const switcher::RetrievalResult& result);
  // The same of a comparison; what the operator took over from the switcher is stored.
  void ComparisonBegun();
  void ComparisonEnded(const switcher::ComparisonResult& result);
  void TakenOver(const std::vector<stations::Change>& changes);
  // Something to say in passing.
  void NoteRequested(const QString& note);

 private:
  bool IsOpen() const;
  void SendParts(const views::UnsentTables::Parts& parts, QWidget* parent);
  bool MayBegin(bool isComparisonBusy);
  void CloseComparison();
  void FinishDownload(const switcher::DownloadResult& result);
  void FinishRetrieval(const switcher::RetrievalResult& result);

  const Services services_;
  QPointer<views::DownloadWindow> download_;
  QPointer<views::SendChangesWindow> changes_;
  QPointer<views::RetrievalWindow> retrieval_;
  QPointer<views::CompareWindow> compare_;  // closed it stays, for late answers
};

}  // namespace app

#endif  // APP_TRANSFER_TRANSFERS_H_
