// SPDX-License-Identifier: MIT

#ifndef APP_JOURNAL_CHANGES_WINDOW_H_
#define APP_JOURNAL_CHANGES_WINDOW_H_

#include <QSortFilterProxyModel>
#include <QString>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <memory>
#include <string>

#include "app/journal/change_place.h"
#include "app/journal/changes_model.h"
#include "views/differences/row_filter.h"
#include "views/widgets/table_window.h"

namespace app {

// The changes that a filter lets through.
class ChangesFilter : public QSortFilterProxyModel {
 public:
  using QSortFilterProxyModel::QSortFilterProxyModel;

  void SetFilter(const views::RowFilter& filter);

 protected:
  bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

 private:
  views::RowFilter filter_;
};

// frmChanges: what was changed in this run and before it, as far back as the journal goes.
class ChangesWindow : public views::TableWindow {
  Q_OBJECT

 public:
  explicit ChangesWindow(std::filesystem::path journal, QWidget* parent = nullptr);

  // Shows everything that the journal has, read anew, and what is not in it yet, as
  // stations::WriteAct() writes it, the oldest first.
  void ShowAll(std::deque<std::string> waiting);
  // Shows one run alone, under this title.
  void ShowRun(std::int64_t run, const QString& title);

  // Adds what was changed just now; it is in no run that ended.
  void Add(const stations::Act& act);

  // Says something beside the buttons.
  void Say(const QString& text);

  // Writes the rows that are shown to a file, replacing it only when all of it could be written.
  // False when it could not be; the window then says why.
  bool ExportTo(const QString& path);

 Q_SIGNALS:
  void GoToRequested(const app::ViewPlace& place);

 private:
  // What is in the journal's file, beginning anew with an empty filter; why it cannot be read is
  // said.
  std::unique_ptr<const stations::JournalContents> Read();
  void Look(const QString& text);
  void Update();
  QString State() const;
  void GoToCurrent();
  void AskWhereToExport();

  const std::filesystem::path journal_;
  std::int64_t run_ = 0;  // 0: all
  ChangesModel changes_;
  ChangesFilter shown_;
  QString said_;
  QPushButton& goTo_;
  QPushButton& export_;
};

}  // namespace app

#endif  // APP_JOURNAL_CHANGES_WINDOW_H_
