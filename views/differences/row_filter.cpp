// SPDX-License-Identifier: MIT

#include "views/differences/row_filter.h"

#include <QCoreApplication>

#include <algorithm>

namespace views {
namespace {

struct FilterText {
  Q_DECLARE_TR_FUNCTIONS(RowFilter)
};

}  // namespace

RowFilter::RowFilter(const QString& text)
    : words_(text.simplified().split(u' ', Qt::SkipEmptyParts)) {
  if (words_.size() == 1) station_ = std::max(0, words_.front().toInt());
}

bool RowFilter::Accepts(int first, int last, int columns,
                        const std::function<QString(int column)>& text) const {
  if (station_ != 0) return first <= station_ && station_ <= last;
  return std::ranges::all_of(words_, [&](const QString& word) {
    for (int column = 0; column < columns; ++column) {
      if (text(column).contains(word, Qt::CaseInsensitive)) return true;
    }
    return false;
  });
}

QString RowFilter::HintText() { return FilterText::tr("A station's number, or words…"); }

QString RowFilter::NoneText() { return FilterText::tr("No row has all these words"); }

}  // namespace views
