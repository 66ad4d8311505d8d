// SPDX-License-Identifier: MIT

#ifndef VIEWS_KEY_SHEETS_PRINTING_H_
#define VIEWS_KEY_SHEETS_PRINTING_H_

#include <QPageLayout>
#include <QPrinter>
#include <QString>

#include <functional>
#include <memory>

class QWidget;

namespace views {

// How to get at a printer.
struct Printing {
  // Whether there is any.
  std::function<bool()> isThere;

  // Asks which printer shall print `document` on pages like these, modal over the window.  `print`
  // is run with the one that the operator has chosen, unless the window is gone by then.
  std::function<void(QWidget& window, const QString& document, const QPageLayout& pages,
                     const std::function<void(std::shared_ptr<QPrinter>)>& print)>
      ask;
};

// The printers of this computer, which are looked for each time they are asked for.
Printing PrintersHere();

}  // namespace views

#endif  // VIEWS_KEY_SHEETS_PRINTING_H_
