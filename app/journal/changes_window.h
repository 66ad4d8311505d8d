// SPDX-License-Identifier: MIT

#ifndef APP_JOURNAL_CHANGES_WINDOW_H_
#define APP_JOURNAL_CHANGES_WINDOW_H_

#include <QSortFilterProxyModel>
#include <QString>
#include <QWidget>
#include <cstdint>
#include <filesystem>

#include "app/journal/change_place.h"
#include "app/journal/changes_model.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace app {

// Lets through the rows of the station whose number is looked for, or else those with a text.
class ChangesFilter : public QSortFilterProxyModel {
 public:
  using QSortFilterProxyModel::QSortFilterProxyModel;

  void Look(const QString& text);

 protected:
  bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

 private:
  QString text_;
  int station_ = 0;  // 0: the text is no number
};

// frmChanges: what was changed in this run and before it, as far back as the journal goes.
class ChangesWindow : public QWidget {
  Q_OBJECT

 public:
  explicit ChangesWindow(std::filesystem::path journal, QWidget* parent = nullptr);

  // Shows everything that the journal has, read anew.
  void ShowAll();
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
  void GoToRequested(const app::ChangePlace& place);

 private:
  void Build();
  void Read(std::int64_t run);
  void Update();
  void GoToCurrent();
  void AskWhereToExport();

  const std::filesystem::path journal_;
  std::int64_t run_ = 0;  // 0: all
  ChangesModel changes_;
  ChangesFilter shown_;
  QLineEdit* filter_;
  QTableView* list_;
  QLabel* said_;
  QPushButton* goTo_;
  QPushButton* export_;
};

}  // namespace app

#endif  // APP_JOURNAL_CHANGES_WINDOW_H_
