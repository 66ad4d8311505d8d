// SPDX-License-Identifier: MIT

#ifndef VIEWS_KEY_SHEETS_KEY_SHEETS_WINDOW_H_
#define VIEWS_KEY_SHEETS_KEY_SHEETS_WINDOW_H_

#include <QBuffer>
#include <QByteArray>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPdfWriter>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

#include "views/key_sheets/printing.h"
#include "views/key_sheets/sheet_run.h"
#include "views/rules/sheet_choice.h"
#include "views/services.h"
#include "views/widgets/station_picker.h"

namespace views {

// frmKeySheets: key sheets of one station, of some or of all, as a PDF file or on a printer.  They
// show what is stored at the time; nothing is changed.
class KeySheetsWindow : public QDialog {
  Q_OBJECT

 public:
  struct Outlets {
    Printing printing;
    // Replaces a file by these bytes.  False when that failed, which it has reported.
    std::function<bool(const QString& path, const QByteArray& bytes)> save;
  };

  // What `services` refers to must outlive the window.
  KeySheetsWindow(const Services& services, Outlets outlets, QWidget* parent = nullptr);

  // Writes the sheets of all stations to a file, on A4, and closes.
  void WriteAll(const QString& path);

  // A run in progress is cancelled first.
  void reject() override;

 Q_SIGNALS:
  // Sheets were written or printed, in words.
  void NoteRequested(const QString& note);

 private:
  // A PDF document on its way to a file.
  struct Pdf;

  void AddChoices();
  void LayOut();
  rules::SheetChoice Choice() const;
  std::vector<int> Stations() const;
  void ShowCount();
  void AskWhereTo();
  void WritePdf(const QString& path);
  void AskForPrinter();
  void Print(const std::shared_ptr<QPrinter>& printer);
  // Draws the sheets that are chosen; `finish` is run when the device has all of them.
  void Begin(std::shared_ptr<QPagedPaintDevice> device, const std::function<void()>& finish);
  void ShowProgress();
  void End();
  void Cancel();
  void ShowPrinterFailed(int count);

  const Services services_;
  const Outlets outlets_;
  rules::SheetStations stations_;  // but for the ticks
  QGroupBox* whose_;
  QRadioButton* this_;
  QRadioButton* chosen_;
  QRadioButton* all_;
  StationPicker* picker_;
  QLabel* paperCaption_;
  QComboBox* paper_;
  QLabel* count_;
  QLabel* state_;
  QProgressBar* bar_;
  QPushButton* pdf_;
  QPushButton* print_;
  QPushButton* close_;
  SheetRun* run_ = nullptr;            // null while nothing is drawn
  std::shared_ptr<QPrinter> printer_;  // of the latest run; null when that was to a file
  bool closesAtEnd_ = false;
};

}  // namespace views

#endif  // VIEWS_KEY_SHEETS_KEY_SHEETS_WINDOW_H_
