// SPDX-License-Identifier: MIT

#ifndef VIEWS_IMPORT_FILE_IMPORT_WINDOW_H_
#define VIEWS_IMPORT_FILE_IMPORT_WINDOW_H_

#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QString>

#include <string>

#include "views/differences/difference_list.h"
#include "views/rules/import_file.h"
#include "views/services.h"

namespace views {

// frmImport: what a file of labels or programming would change, row by row, or what is wrong with
// the file.  What is ticked is stored as one act; nothing is sent.
class ImportWindow : public QDialog {
  Q_OBJECT

 public:
  // `name` is that of the file, `bytes` are its contents.  What `services` refers to must outlive
  // the window.
  ImportWindow(const Services& services, QString name, std::string bytes,
               QWidget* parent = nullptr);

 Q_SIGNALS:
  // It was stored, in words.
  void Imported(const QString& note);

 private:
  void LayOut();
  bool Plan();
  // Shows what is planned; the differences are ticked, or are not.
  void ShowPlan(bool ticked);
  void ShowFaults();
  void ShowDifferences(bool ticked);
  void Store();

  const Services services_;
  const QString name_;
  const std::string bytes_;
  rules::ImportPlan plan_;
  QLabel* summary_;
  DifferenceList* list_;
  QListWidget* faults_;
  QPushButton* ok_;
  QPushButton* cancel_;
};

}  // namespace views

#endif  // VIEWS_IMPORT_FILE_IMPORT_WINDOW_H_
