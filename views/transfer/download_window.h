// SPDX-License-Identifier: MIT

#ifndef VIEWS_TRANSFER_DOWNLOAD_WINDOW_H_
#define VIEWS_TRANSFER_DOWNLOAD_WINDOW_H_

#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

#include "model/system_model.h"
#include "switcher/download.h"
#include "switcher/poll_switch.h"
#include "switcher/table.h"
#include "switcher/table_senders.h"
#include "views/unsent_tables.h"

namespace views {

// frmDownProg: asks, then shows how far the tables have got on their way to the switcher.  The
// model's DownloadMode says which tables; it is set by whoever opens the window.  Closing the
// window is cancelling.
class DownloadWindow : public QDialog, public switcher::DownloadDisplay {
  Q_OBJECT

 public:
  // What the window works with; all must outlive it.
  struct Services {
    model::SystemModel& model;
    const switcher::TableSenders& tables;
    switcher::PollSwitch& poll;
    UnsentTables& unsent;  // it is told of every table
  };
  explicit DownloadWindow(const Services& services, QWidget* parent = nullptr);

  // Cancels and closes at once, for a program that ends: the table that is being sent is sent to
  // its end before this returns.
  void CancelNow() { download_.CancelNow(); }

  void reject() override { download_.Cancel(); }

  // What the download shows.
  void ShowProgressBar(int maximum) override;
  void ShowCaption(std::string_view caption) override;
  void ShowStatus(std::string_view status) override;
  void ShowPosition(int position) override;
  void ShowCancelling() override;
  void StartDelayTimer() override { delayTimer_.start(); }
  void StartSpacingTimer() override { spacingTimer_.start(); }
  void RequestTurn() override { turnTimer_.start(); }
  void TableSent(const switcher::TablePart& part, int messages) override;
  void TableFailed(const switcher::TablePart& part) override;
  void Close() override;

 Q_SIGNALS:
  // The operator has confirmed.
  void Begun();
  // A download that was begun is over.
  void Ended(const switcher::DownloadResult& result);

 private:
  void LayOut();
  void MakeTimers(int spacingMilliseconds);

  UnsentTables& unsent_;
  bool begun_ = false;
  QLabel* text_;
  QLabel* status_;
  QProgressBar* bar_;
  QPushButton* ok_;
  QPushButton* cancel_;
  QTimer delayTimer_;
  QTimer spacingTimer_;
  QTimer turnTimer_;
  switcher::Download download_;
};

}  // namespace views

#endif  // VIEWS_TRANSFER_DOWNLOAD_WINDOW_H_
