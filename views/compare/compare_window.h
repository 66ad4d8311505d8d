// SPDX-License-Identifier: MIT

#ifndef VIEWS_COMPARE_COMPARE_WINDOW_H_
#define VIEWS_COMPARE_COMPARE_WINDOW_H_

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <functional>
#include <vector>

#include "stations/change.h"
#include "switcher/comparison/comparison.h"
#include "switcher/table.h"
#include "views/differences/difference_list.h"
#include "views/transfer/link_line.h"

namespace views {

// frmCompare: shows where the tables of the switcher differ from those here, row by row, and stores
// or sends those that the operator ticks.  Other windows can be used beside it.
//
// Closing it while it waits ends the wait; closed, it stays as it is until the next Begin(), for
// late answers of the switcher must be kept from the database.
class CompareWindow : public QDialog, public switcher::ComparisonDisplay {
  Q_OBJECT

 public:
  struct Services {
    switcher::Comparison::Services comparison;
    stations::Changes& changes;  // what is stored is announced there
    // Stores what is typed into a view; false when that failed, which was reported.
    std::function<bool()> storeEdits;
  };
  // All must outlive the window.
  explicit CompareWindow(const Services& services, QWidget* parent = nullptr);

  // Shows the window and compares, unless it is shown already.
  void Begin();

  // Ends the wait, if there is one, and closes.
  void CancelNow();

  // The link is up or down.
  void LinkChanged() { link_->LinkChanged(); }

  // These were sent, and the switcher has confirmed them: rows of them cannot be chosen any more.
  void NoteSent(const std::vector<switcher::TablePart>& parts);

  // The tables are on their way, so that none may be sent or asked for meanwhile.
  bool IsWaiting() const { return comparison_.IsWaiting(); }
  // The same, and the switcher may still send some after the wait has ended.
  bool IsListening() const { return comparison_.IsListening(); }

  // The database with what the switcher reported; null before the first wait.
  jet::Database* ReportedDatabase() const { return comparison_.ReportedDatabase(); }

  void reject() override;

  // What the comparison shows.
  void ShowHeldUp() override;
  void ShowWaiting() override;
  void ShowProgress(int messages, int bytes) override;
  void ShowSilence(int seconds) override;
  void ShowLine(switcher::RetrievalLine line) override;
  void ShowResult(const switcher::ComparisonResult& result) override;
  void StartDelayTimer() override { delayTimer_.start(); }
  void StopDelayTimer() override { delayTimer_.stop(); }

 Q_SIGNALS:
  // The tables are asked for.
  void Begun();
  // The wait has ended.
  void Ended(const switcher::ComparisonResult& result);
  // The operator has chosen to take these over, and they are stored.
  void Stored(const std::vector<stations::Change>& changes);
  // The operator has chosen to send these tables.
  void SendRequested(const std::vector<switcher::TablePart>& parts);

 private:
  void LayOut();
  void MakeTimers();
  void SetWaiting(bool waiting);
  void ShowSign(const QString& name);
  void FocusList();
  void ShowChoice();
  void Store();
  void ShowStored(const std::vector<ChangeRow>& stored, const std::vector<ChangeRow>& skipped);
  void Send();

  const Services services_;
  std::vector<stations::Change> differences_;  // as they were found
  std::vector<Difference> rows_;               // as they are listed
  bool isBegun_ = false;                       // and its end is not announced yet
  QLabel* sign_;
  QLabel* summary_;
  LinkLine* link_;
  QLabel* line_;
  QLabel* silence_;
  DifferenceList* list_;
  QLabel* choice_;
  QPushButton* again_;
  QPushButton* store_;
  QPushButton* send_;
  QPushButton* close_;
  QTimer delayTimer_;
  QTimer secondTimer_;
  switcher::Comparison comparison_;
};

}  // namespace views

#endif  // VIEWS_COMPARE_COMPARE_WINDOW_H_
