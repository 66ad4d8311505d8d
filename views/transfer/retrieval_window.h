// SPDX-License-Identifier: MIT

#ifndef VIEWS_TRANSFER_RETRIEVAL_WINDOW_H_
#define VIEWS_TRANSFER_RETRIEVAL_WINDOW_H_

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include "model/system_model.h"
#include "switcher/retrieval.h"
#include "views/transfer/link_line.h"
#include "views/transfer/message_list.h"

namespace views {

// frmSysInfo: asks, then shows each message that the switcher sends of its tables, and at the end
// what came of it.  Closing the window is cancelling: it ends the wait for the switcher, or closes
// when there is none.
class RetrievalWindow : public QDialog, public switcher::RetrievalDisplay {
  Q_OBJECT

 public:
  // All must outlive the window.
  explicit RetrievalWindow(const switcher::Retrieval::Services& services,
                           QWidget* parent = nullptr);

  // Says under the question what would be lost; empty for nothing.
  void SetWarning(const QString& warning);

  // The link is up or down.
  void LinkChanged() { link_->LinkChanged(); }

  // Ends the wait, if there is one, and closes.
  void CancelNow();

  void reject() override { retrieval_.Cancel(); }

  // What the retrieval shows.
  void CloseViews() override { Q_EMIT ViewsOutdated(); }
  void ShowHistory() override;
  void SetWaiting(bool waiting) override;
  void AddMessage(std::string_view description, int byteCount,
                  switcher::DecodeStatus status) override;
  void ShowCaption(std::string_view caption) override;
  void ShowSilence(int seconds) override;
  void ShowLine(switcher::RetrievalLine line) override;
  void StartDelayTimer() override { delayTimer_.start(); }
  void StopDelayTimer() override { delayTimer_.stop(); }
  void Close() override;

 Q_SIGNALS:
  // The main views are to be closed now: they would show what is no longer true.
  void ViewsOutdated();
  // The operator has confirmed: the tables are asked for.
  void Begun();
  // The wait has ended.
  void Ended(const switcher::RetrievalResult& result);

 private:
  void LayOut();
  void ShowSign(QLabel& label, const QString& name);
  void ShowResult(const switcher::RetrievalResult& result);
  void MakeTimers();

  const model::SystemModel& model_;
  QLabel* text_;
  QWidget* warning_;
  QLabel* warningSign_;
  QLabel* warningText_;
  LinkLine* link_;
  MessageList* history_;
  QLabel* line_;
  QLabel* silence_;
  QLabel* sign_;
  QLabel* summary_;
  QPushButton* ok_;
  QPushButton* cancel_;
  QTimer delayTimer_;
  QTimer secondTimer_;
  switcher::Retrieval retrieval_;
};

}  // namespace views

#endif  // VIEWS_TRANSFER_RETRIEVAL_WINDOW_H_
