// SPDX-License-Identifier: MIT

#ifndef VIEWS_DIFFERENCES_ROW_FILTER_H_
#define VIEWS_DIFFERENCES_ROW_FILTER_H_

#include <QString>
#include <QStringList>

#include <functional>

namespace views {

// What somebody looks for in a list of changes or of differences: a number alone is a station or
// an output, anything else words that must all stand in the row, in whatever column and case.
class RowFilter {
 public:
  // Lets every row through.
  RowFilter() = default;

  explicit RowFilter(const QString& text);

  // Whether it lets a row through that is of the stations, or outputs, from `first` to `last` and
  // has these texts: those of the columns from 0 to `columns` - 1.
  bool Accepts(int first, int last, int columns,
               const std::function<QString(int column)>& text) const;

  // What stands in the empty field.
  static QString HintText();
  // What is said when no row is let through.
  static QString NoneText();

 private:
  QStringList words_;
  int station_ = 0;  // 0: it is no number alone
};

}  // namespace views

#endif  // VIEWS_DIFFERENCES_ROW_FILTER_H_
