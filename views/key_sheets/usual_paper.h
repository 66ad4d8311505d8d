// SPDX-License-Identifier: MIT

#ifndef VIEWS_KEY_SHEETS_USUAL_PAPER_H_
#define VIEWS_KEY_SHEETS_USUAL_PAPER_H_

#include <QLocale>
#include <QPageSize>

namespace views {

// The paper that is usual where this locale is: Letter in North America and some countries south of
// it, A4 everywhere else.
QPageSize::PageSizeId UsualPaper(const QLocale& locale);

// The locale of the user for paper, which may be another than that of texts.
QLocale PaperLocale();

}  // namespace views

#endif  // VIEWS_KEY_SHEETS_USUAL_PAPER_H_
