// SPDX-License-Identifier: MIT

#ifndef VIEWS_WHERE_USED_WHERE_USED_WINDOW_H_
#define VIEWS_WHERE_USED_WHERE_USED_WINDOW_H_

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>

#include <vector>

#include "stations/change.h"
#include "stations/where_used.h"
#include "views/services.h"

namespace views {

// frmWhereUsed: the buttons, optos and inhibits that point at a station.  It stays open while one
// after the other is gone to, and follows what is edited meanwhile.
class WhereUsedWindow : public QDialog, public stations::ChangeObserver {
  Q_OBJECT

 public:
  // What `services` refers to must outlive the window.
  explicit WhereUsedWindow(const Services& services, QWidget* parent = nullptr);

  // Lists what points at another station from now on.
  void ShowStation(int station);

  void Changed(std::span<const stations::Change> changes) override;

 Q_SIGNALS:
  // The operator goes to one of them.
  void GoToRequested(const stations::Use& use);

 private:
  void LayOut();
  void List();
  void GoToCurrent();
  QStringList Words(const stations::Use& use) const;
  // "12 STUDIO A", by its output's label or its input's.
  QString Name(int number, bool input) const;

  const Services services_;
  int station_ = 0;
  std::vector<stations::Use> uses_;
  std::vector<std::pair<QString, QString>> labels_;  // of output and input, of station 1 on
  QTreeWidget* list_;
  QLabel* summary_;
  QPushButton* goTo_;
  QPushButton* close_;
  QTimer settled_;  // a while after an edit
};

}  // namespace views

#endif  // VIEWS_WHERE_USED_WHERE_USED_WINDOW_H_
