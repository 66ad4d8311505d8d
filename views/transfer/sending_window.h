// SPDX-License-Identifier: MIT

#ifndef VIEWS_TRANSFER_SENDING_WINDOW_H_
#define VIEWS_TRANSFER_SENDING_WINDOW_H_

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
#include "views/transfer/link_line.h"
#include "views/unsent_tables.h"

namespace views {

// What the windows have in common that send tables to the switcher: OK and Cancel, then a status
// line and a bar that show how far they have got.  Closing the window is cancelling.
class SendingWindow : public QDialog, public switcher::DownloadDisplay {
  Q_OBJECT

 public:
  // What the window works with; all must outlive it.
  struct Services {
    model::SystemModel& model;
    const switcher::TableSenders& tables;
    switcher::PollSwitch& poll;
    UnsentTables& unsent;  // it is told of every table
  };

  // Cancels and closes at once, for a program that ends: the table that is being sent is sent to
  // its end before this returns.
  virtual void CancelNow() { download_.CancelNow(); }

  // The link is up or down.
  void LinkChanged() { link_->LinkChanged(); }

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
  // What was begun is over.
  void Ended(const switcher::DownloadResult& result);

 protected:
  // So wide is what asks the operator, at least.
  static constexpr int kTextCharacters = 60;

  // The object names of its parts.
  struct Names {
    const char* link;
    const char* status;
    const char* bar;
    const char* ok;
    const char* cancel;
  };
  SendingWindow(const Services& services, const Names& names, QWidget* parent);

  // Puts what asks the operator above the line about the link, and that above the status line.
  void LayOut(QLayout* question);

  // Sending begins: what asked makes way for the bar.
  virtual void ShowSending() = 0;

  // The window may have another size again than the question gave it.
  void FreeSize();

  // Tells what came of it, once, if it was begun.
  void TellEnd();

  switcher::Download& Sending() { return download_; }
  UnsentTables& Unsent() const { return unsent_; }
  const switcher::TableSenders& Tables() const { return tables_; }
  LinkLine& Link() { return *link_; }
  QLabel& Status() { return *status_; }
  QProgressBar& Bar() { return *bar_; }
  QPushButton& Ok() { return *ok_; }
  QPushButton& Cancel() { return *cancel_; }

 private:
  void MakeTimers(int spacingMilliseconds);

  UnsentTables& unsent_;
  const switcher::TableSenders& tables_;
  bool begun_ = false;
  LinkLine* link_;
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

#endif  // VIEWS_TRANSFER_SENDING_WINDOW_H_
