// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_TABLE_WINDOW_H_
#define VIEWS_WIDGETS_TABLE_WINDOW_H_

#include <QString>
#include <QWidget>

#include <vector>

class QAbstractItemModel;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace views {

// A window of its own that lists many lines: above the table a field that filters them, below it
// what there is to say, and the buttons.  Ctrl+F goes to the field, Escape closes the window.
class TableWindow : public QWidget {
  Q_OBJECT

 protected:
  // How its parts are called, and what they say.
  struct Parts {
    QString window;  // object names
    QString filter;
    QString table;
    QString said;
    QString close;
    QString icon;
    QString hint;              // in the field, as long as it is empty
    QString lines;             // what a screen reader calls the table
    std::vector<int> columns;  // how wide they are at first, in characters
  };

  // It is deleted when it is closed.
  TableWindow(const Parts& parts, QWidget* parent);

  // What it lists; `lines` may be a part of the window.
  void SetLines(QAbstractItemModel& lines);

  QLineEdit& Filter() { return *filter_; }
  QTableView& Table() { return *table_; }
  const QTableView& Table() const { return *table_; }

  // A button left of Close.
  QPushButton& AddButton(const QString& name, const QString& caption, const QString& tip);

  // The line beside the buttons.
  void SetLine(const QString& text);

  // Large enough for all columns and 18 lines, in this font.
  QSize WantedSize() const;

 private:
  void LayOut(const Parts& parts);

  const std::vector<int> columns_;
  QLineEdit* filter_;
  QTableView* table_;
  QLabel* said_;
  QHBoxLayout* buttons_;
};

}  // namespace views

#endif  // VIEWS_WIDGETS_TABLE_WINDOW_H_
