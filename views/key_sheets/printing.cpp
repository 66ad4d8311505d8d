// SPDX-License-Identifier: MIT

#include "views/key_sheets/printing.h"

#include <QPrintDialog>
#include <QPrinterInfo>
#include <QWidget>

#include "views/export/paged_document.h"

namespace views {
namespace {

void AskForPrinter(QWidget& window, const QString& document, const QPageLayout& pages,
                   const std::function<void(std::shared_ptr<QPrinter>)>& print) {
  auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
  printer->setCreator(QStringLiteral("Orvo Intercom Control"));
  printer->setDocName(document);
  printer->setPageLayout(pages);
  printer->setResolution(kDotsPerInch);
  printer->setDuplex(QPrinter::DuplexNone);  // what is on the back would be cut apart
  auto* const dialog = new QPrintDialog(printer.get(), &window);
  dialog->setObjectName(QStringLiteral("aidPrintDialog"));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  // A file has a button of its own, which replaces it as a whole.
  dialog->setOption(QAbstractPrintDialog::PrintToFile, false);
  dialog->setOption(QAbstractPrintDialog::PrintPageRange, false);
  QObject::connect(dialog, qOverload<QPrinter*>(&QPrintDialog::accepted), &window,
                   [printer, print] { print(printer); });
  dialog->open();
}

}  // namespace

Printing PrintersHere() {
  return {.isThere = [] { return !QPrinterInfo::availablePrinterNames().isEmpty(); },
          .ask = AskForPrinter};
}

}  // namespace views
