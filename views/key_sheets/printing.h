// SPDX-License-Identifier: MIT

#ifndef VIEWS_KEY_SHEETS_PRINTING_H_
#define VIEWS_KEY_SHEETS_PRINTING_H_

#include <QByteArray>
#include <QObject>
#include <QPageSize>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <functional>

#include "views/rules/printer_list.h"

namespace views {

// The printing system of this computer.  Its programs are asked as processes of their own: one that
// answers late, or never, holds nothing up.
class Printing : public QObject {
  Q_OBJECT

 public:
  struct Job {
    QString printer;
    QString title;
    QPageSize::PageSizeId paper = QPageSize::A4;
    QByteArray pdf = {};
  };

  explicit Printing(QObject* parent = nullptr) : QObject(parent) {}
  ~Printing() override;

  // Asks which printers there are: PrintersRead() follows, unless it is asked already.
  void ReadPrinters();
  bool IsReading() const { return list_ != nullptr; }

  // Gives a document to a printer, without scaling it, on one side of the paper: Given() or
  // Failed() follows.  One at a time.
  void Print(const Job& job);
  bool IsPrinting() const { return job_ != nullptr; }

  // Gives no more of it: no signal follows.  What the printer has by then may be printed.
  void Cancel();

 Q_SIGNALS:
  // These are there.  When they could not be asked for, `why` says it.
  void PrintersRead(const rules::PrinterList& printers, const QString& why);
  // The printing system has all of the document.
  void Given();
  void Failed(const QString& why);

 private:
  // Runs a program of the printing system; `then` gets why it failed, or nothing, and what it said.
  QProcess* Run(const QString& program, const QStringList& arguments,
                const std::function<void(const QString& why, const QByteArray& said)>& then);

  QProcess* list_ = nullptr;  // null while none runs
  QProcess* job_ = nullptr;
};

}  // namespace views

#endif  // VIEWS_KEY_SHEETS_PRINTING_H_
