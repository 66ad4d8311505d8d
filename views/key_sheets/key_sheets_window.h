// SPDX-License-Identifier: MIT

#ifndef VIEWS_KEY_SHEETS_KEY_SHEETS_WINDOW_H_
#define VIEWS_KEY_SHEETS_KEY_SHEETS_WINDOW_H_

#include <QBuffer>
#include <QByteArray>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPageSize>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QString>

#include <functional>
#include <vector>

#include "model/status.h"
#include "views/key_sheets/printing.h"
#include "views/key_sheets/sheet_run.h"
#include "views/rules/sheet_choice.h"
#include "views/services.h"
#include "views/widgets/station_picker.h"

namespace views {

// frmKeySheets: key sheets of one station, of some or of all, as a PDF file or on a printer, which
// gets the same document.  They show what is stored at the time; nothing is changed.
class KeySheetsWindow : public QDialog {
  Q_OBJECT

 public:
  // Replaces a file by these bytes.  False when that failed, which it has reported.
  using Save = std::function<bool(const QString& path, const QByteArray& bytes)>;

  // What `services` refers to must outlive the window.
  KeySheetsWindow(const Services& services, Save save, QWidget* parent = nullptr);

  // Writes the sheets of all stations to a file, on A4, and closes.
  void WriteAll(const QString& path);

  // A run in progress is cancelled first.
  void reject() override;

 Q_SIGNALS:
  // What became of the sheets, in words.
  void NoteRequested(const QString& note);

 private:
  // A document that is drawn.
  struct Pdf;
  // Is run with a document that is drawn, of so many pages.
  using Then = std::function<void(const QByteArray& pdf, int pages)>;

  void AddChoices();
  void LayOut();
  rules::SheetChoice Choice() const;
  std::vector<int> Stations() const;
  QPageSize::PageSizeId Paper() const;
  // Whether sheets are drawn or given to a printer.
  bool IsBusy() const { return run_ != nullptr || printing_.IsPrinting(); }
  void ShowCount();
  void ChoiceChanged();
  void ShowPrinters(const rules::PrinterList& printers, const QString& why);
  void AskWhereTo();
  void WritePdf(const QString& path, const std::vector<int>& stations);
  void Print();
  void GiveToPrinter(const QByteArray& pdf, int pages);
  void Draw(const std::vector<int>& stations, const Then& then);
  void Drawn(const QByteArray& pdf, const Then& then);
  void ShowProgress();
  // The window is as it was before it drew.
  void End();
  void Cancel();
  // Shows what became of the sheets, and has it noted.
  void Tell(const QString& note);

  const Services services_;
  const Save save_;
  Printing printing_;
  model::Status read_;             // how reading the stations went
  rules::SheetStations stations_;  // but for the ticks
  QGroupBox* whose_;
  QRadioButton* this_;
  QRadioButton* chosen_;
  QRadioButton* all_;
  StationPicker* picker_;
  QLabel* paperCaption_;
  QComboBox* paper_;
  QLabel* printerCaption_;
  QComboBox* printer_;
  QString whyNoPrinter_;
  QLabel* count_;
  QLabel* state_;
  QProgressBar* bar_;
  QPushButton* pdf_;
  QPushButton* print_;
  QPushButton* close_;
  SheetRun* run_ = nullptr;  // null while nothing is drawn
  QPushButton* asked_;       // what was pressed last, of the file's button and the printer's
  int givenPages_ = 0;       // of what is printed
  bool closesAtEnd_ = false;
};

}  // namespace views

#endif  // VIEWS_KEY_SHEETS_KEY_SHEETS_WINDOW_H_
