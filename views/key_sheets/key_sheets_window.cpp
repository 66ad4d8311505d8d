// SPDX-License-Identifier: MIT

#include "views/key_sheets/key_sheets_window.h"

#include <QHBoxLayout>
#include <QPdfWriter>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <numeric>
#include <string>
#include <utility>

#include "db/station_fields.h"
#include "stations/record.h"
#include "views/export/paged_document.h"
#include "views/key_sheets/usual_paper.h"
#include "views/pickable_stations.h"
#include "views/widgets/icon.h"
#include "views/widgets/plain_caption.h"
#include "views/widgets/save_dialog.h"
#include "views/window_place/on_screen.h"

namespace views {
namespace {

constexpr int kSheetsCharacters = 62;
constexpr int kSheetsRows = 8;
constexpr int kPrinterCharacters = 30;  // of a long name the beginning

int CurrentStation(const Services& services) {
  jet::RecordSet* const stations = services.stations();
  if (stations == nullptr || !stations->HasRecord()) return 0;
  return stations::Record(*stations).Number(db::kStationNumField);
}

QString SheetWords(int count) {
  return count == 1 ? KeySheetsWindow::tr("1 key sheet")
                    : KeySheetsWindow::tr("%1 key sheets").arg(count);
}

}  // namespace

struct KeySheetsWindow::Pdf {
  explicit Pdf(QPageSize::PageSizeId paper) {
    buffer.open(QIODevice::WriteOnly);  // memory can always be written
    writer = NewPdf(buffer, QStringLiteral("Key Sheets"), paper);
  }

  QByteArray bytes;
  QBuffer buffer{&bytes};
  std::unique_ptr<QPdfWriter> writer;
};

KeySheetsWindow::KeySheetsWindow(const Services& services, Save save, QWidget* parent)
    : QDialog(parent),
      services_(services),
      save_(std::move(save)),
      whose_(new QGroupBox(tr("Key Sheets Of"), this)),
      this_(new QRadioButton(this)),
      chosen_(new QRadioButton(tr("&Chosen stations"), this)),
      all_(new QRadioButton(this)),
      paperCaption_(new QLabel(tr("Pap&er"), this)),
      paper_(new QComboBox(this)),
      printerCaption_(new QLabel(tr("Prin&ter"), this)),
      printer_(new QComboBox(this)),
      count_(new QLabel(this)),
      state_(new QLabel(this)),
      bar_(new QProgressBar(this)),
      pdf_(new QPushButton(tr("Save As &PDF…"), this)),
      print_(new QPushButton(tr("P&rint"), this)),
      close_(new QPushButton(tr("Close"), this)),
      asked_(pdf_) {
  setObjectName(QStringLiteral("frmKeySheets"));
  setWindowTitle(tr("Key Sheets"));
  setWindowIcon(Icon(QStringLiteral("key-sheets")));
  std::vector<PickableStation> pickable;
  read_ = ReadPickableStations(services_, &pickable);
  if (!read_.ok()) pickable.clear();  // they are not all
  stations_.current = CurrentStation(services_);
  for (const PickableStation& station : pickable) stations_.all.push_back(station.number);
  picker_ = new StationPicker(
      {.find = QStringLiteral("txtFindSheets"), .list = QStringLiteral("lstSheetStations")},
      pickable, this);
  const auto current = std::ranges::find(pickable, stations_.current, &PickableStation::number);
  const QString name = current == pickable.end()
                           ? tr("none")
                           : QStringLiteral("%1 %2").arg(current->number).arg(current->label);
  this_->setText(tr("This &station: %1").arg(PlainCaption(name.trimmed())));
  all_->setText(tr("&All %1 stations").arg(pickable.size()));
  AddChoices();
  LayOut();
  connect(picker_, &StationPicker::TicksChanged, this, &KeySheetsWindow::ChoiceChanged);
  connect(pdf_, &QPushButton::clicked, this, &KeySheetsWindow::AskWhereTo);
  connect(print_, &QPushButton::clicked, this, &KeySheetsWindow::Print);
  connect(&printing_, &Printing::PrintersRead, this, &KeySheetsWindow::ShowPrinters);
  connect(&printing_, &Printing::Given, this, [this] {
    End();
    Tell(tr("Given to the printer: %1 (%2)").arg(SheetWords(givenPages_), printer_->currentText()));
  });
  connect(&printing_, &Printing::Failed, this, [this](const QString& why) {
    End();
    ShowRefusal(services_, tr("%1 could not be given to the printer %2: %3")
                               .arg(SheetWords(givenPages_), printer_->currentText(), why)
                               .toStdString());
  });
  connect(close_, &QPushButton::clicked, this, &KeySheetsWindow::reject);
  ShowCount();
  printing_.ReadPrinters();
}

void KeySheetsWindow::AddChoices() {
  this_->setObjectName(QStringLiteral("optSheetsThis"));
  chosen_->setObjectName(QStringLiteral("optSheetsChosen"));
  all_->setObjectName(QStringLiteral("optSheetsAll"));
  this_->setEnabled(rules::CurrentHasSheet(stations_));
  const bool proposesThis = rules::ProposedChoice(stations_) == rules::SheetChoice::This;
  (proposesThis ? this_ : all_)->setChecked(true);
  for (QRadioButton* const choice : {this_, chosen_, all_}) {
    connect(choice, &QRadioButton::toggled, this, [this](bool isChosen) {
      if (isChosen) ChoiceChanged();
    });
  }
  paper_->setObjectName(QStringLiteral("cmbSheetPaper"));
  paper_->addItem(QStringLiteral("A4"), QPageSize::A4);
  paper_->addItem(QStringLiteral("Letter"), QPageSize::Letter);
  paper_->setCurrentIndex(paper_->findData(UsualPaper(PaperLocale())));
  paperCaption_->setBuddy(paper_);
  printer_->setObjectName(QStringLiteral("cmbSheetPrinter"));
  printer_->setPlaceholderText(tr("Looking…"));
  printer_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  printer_->setMaximumWidth(kPrinterCharacters * fontMetrics().averageCharWidth());
  printer_->setEnabled(false);
  printerCaption_->setBuddy(printer_);
}

void KeySheetsWindow::LayOut() {
  whose_->setObjectName(QStringLiteral("aidSheetsOf"));
  count_->setObjectName(QStringLiteral("aidSheetsCount"));
  state_->setObjectName(QStringLiteral("aidSheetsState"));
  for (QLabel* const label : {count_, state_}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
  }
  state_->setMinimumHeight(fontMetrics().lineSpacing());
  bar_->setObjectName(QStringLiteral("aidSheetsBar"));
  QSizePolicy keepsPlace(QSizePolicy::Expanding, QSizePolicy::Fixed);
  keepsPlace.setRetainSizeWhenHidden(true);
  bar_->setSizePolicy(keepsPlace);
  bar_->hide();
  pdf_->setObjectName(QStringLiteral("cmdPdfSheets"));
  pdf_->setToolTip(tr("Write these sheets to a file"));
  pdf_->setDefault(true);
  print_->setObjectName(QStringLiteral("cmdPrintSheets"));
  print_->setToolTip(tr("Give these sheets to the printer"));
  close_->setObjectName(QStringLiteral("cmdCloseSheets"));
  close_->setAutoDefault(false);

  auto* const options = new QHBoxLayout;
  for (QRadioButton* const choice : {this_, chosen_, all_}) options->addWidget(choice);
  options->addStretch();
  auto* const inside = new QVBoxLayout(whose_);
  inside->addLayout(options);
  inside->addWidget(picker_, 1);
  auto* const what = new QHBoxLayout;
  what->addWidget(count_, 1);
  what->addWidget(paperCaption_);
  what->addWidget(paper_);
  what->addWidget(printerCaption_);
  what->addWidget(printer_);
  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(bar_, 1);
  for (QPushButton* const button : {pdf_, print_, close_}) buttons->addWidget(button);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(whose_, 1);
  layout->addLayout(what);
  layout->addWidget(state_);
  layout->addLayout(buttons);
  const QSize wanted(kSheetsCharacters * fontMetrics().averageCharWidth(),
                     sizeHint().height() + kSheetsRows * fontMetrics().height() / 2);
  resize(SizeOnScreen(wanted.expandedTo(minimumSizeHint()), screen()->availableSize()));
  // From left to right and down: the list was made last.
  QWidget* last = picker_->findChild<QPushButton*>(QStringLiteral("aidTickNone"));
  for (QWidget* const next :
       std::initializer_list<QWidget*>{paper_, printer_, pdf_, print_, close_}) {
    setTabOrder(last, next);
    last = next;
  }
  pdf_->setFocus();
}

rules::SheetChoice KeySheetsWindow::Choice() const {
  if (this_->isChecked()) return rules::SheetChoice::This;
  return chosen_->isChecked() ? rules::SheetChoice::Chosen : rules::SheetChoice::All;
}

std::vector<int> KeySheetsWindow::Stations() const {
  rules::SheetStations stations = stations_;
  stations.ticked = picker_->Ticked();
  return rules::StationsOf(Choice(), stations);
}

QPageSize::PageSizeId KeySheetsWindow::Paper() const {
  return static_cast<QPageSize::PageSizeId>(paper_->currentData().toInt());
}

void KeySheetsWindow::ShowCount() {
  const auto count = static_cast<int>(Stations().size());
  picker_->setEnabled(chosen_->isChecked());
  pdf_->setEnabled(count > 0);
  print_->setEnabled(count > 0);
  if (count > 0) {
    count_->setText(SheetWords(count));
  } else if (!read_.ok()) {
    count_->setText(
        tr("The stations cannot be read: %1").arg(QString::fromStdString(read_.Description())));
  } else if (stations_.all.empty()) {
    count_->setText(tr("There are no stations"));
  } else {
    count_->setText(tr("Tick the stations whose sheets you want"));
  }
}

void KeySheetsWindow::ChoiceChanged() {
  state_->clear();
  ShowCount();
}

void KeySheetsWindow::ShowPrinters(const rules::PrinterList& printers, const QString& why) {
  printer_->clear();
  for (const std::string& name : printers.names) printer_->addItem(QString::fromStdString(name));
  printer_->setPlaceholderText(tr("None"));
  printer_->setCurrentIndex(
      printer_->count() == 0
          ? -1
          : std::max(0, printer_->findText(QString::fromStdString(printers.usual))));
  printer_->setEnabled(printer_->count() > 0 && !IsBusy());
  whyNoPrinter_ = why;
}

void KeySheetsWindow::AskWhereTo() {
  const std::vector<int> stations = Stations();
  AskWhereToSave(
      *this, *this,
      {.name = QStringLiteral("aidSheetsDialog"),
       .title = tr("Key Sheets As PDF"),
       .filters =
           tr("%1 files (*.%2);;All files (*)").arg(QStringLiteral("PDF"), QStringLiteral("pdf")),
       .fileName = stations.size() == 1 ? QStringLiteral("key-sheet-%1.pdf").arg(stations.front())
                                        : QStringLiteral("key-sheets.pdf")},
      [this, stations](const QString& path) { WritePdf(path, stations); });
}

void KeySheetsWindow::WritePdf(const QString& path, const std::vector<int>& stations) {
  asked_ = pdf_;
  Draw(stations, [this, path](const QByteArray& pdf, int /*pages*/) {
    End();
    if (save_(path, pdf)) Tell(tr("Written: %1").arg(path));
  });
}

// Whatever could be read when the window was opened: what cannot be read is to be told, not left
// out.
void KeySheetsWindow::WriteAll(const QString& path) {
  all_->setChecked(true);
  paper_->setCurrentIndex(paper_->findData(QPageSize::A4));
  closesAtEnd_ = true;
  std::vector<int> stations(static_cast<std::size_t>(services_.model.StationCount));
  std::iota(stations.begin(), stations.end(), 1);
  WritePdf(path, stations);
}

void KeySheetsWindow::Print() {
  if (printing_.IsReading()) {
    state_->setText(tr("The printers are still being looked for. Save a PDF, or try again."));
    return;
  }
  if (printer_->currentIndex() < 0) {
    state_->setText(
        whyNoPrinter_.isEmpty()
            ? tr("There is no printer. Save a PDF, and print it where there is one.")
            : tr("There is no printer (%1). Save a PDF, and print it where there is one.")
                  .arg(whyNoPrinter_));
    printing_.ReadPrinters();  // one may be set up meanwhile
    pdf_->setFocus();
    return;
  }
  asked_ = print_;
  Draw(Stations(), [this](const QByteArray& pdf, int pages) { GiveToPrinter(pdf, pages); });
}

void KeySheetsWindow::GiveToPrinter(const QByteArray& pdf, int pages) {
  givenPages_ = pages;
  state_->setText(tr("Giving them to the printer"));
  printing_.Print({.printer = printer_->currentText(),
                   .title = tr("Key Sheets"),
                   .paper = Paper(),
                   .pdf = pdf});
}

void KeySheetsWindow::Draw(const std::vector<int>& stations, const Then& then) {
  const auto pdf = std::make_shared<Pdf>(Paper());
  run_ = new SheetRun(services_, stations,
                      std::shared_ptr<QPagedPaintDevice>(pdf, pdf->writer.get()), this);
  connect(run_, &SheetRun::Progressed, this, &KeySheetsWindow::ShowProgress);
  connect(run_, &SheetRun::Done, this, [this, pdf, then] { Drawn(pdf->bytes, then); });
  connect(run_, &SheetRun::DeviceFailed, this, [this] {
    End();
    ShowRefusal(
        services_,
        tr("The key sheets could not be drawn. Nothing was written or printed.").toStdString());
  });
  connect(run_, &SheetRun::ReadFailed, this, [this](const model::Status& status) {
    End();
    ShowFailure(services_, "Error Reading What Is To Be Exported", status);
  });
  for (QWidget* const part :
       std::initializer_list<QWidget*>{whose_, paper_, printer_, pdf_, print_}) {
    part->setEnabled(false);
  }
  close_->setText(tr("Cancel"));
  close_->setFocus();
  bar_->setRange(0, run_->Count());
  bar_->show();
  ShowProgress();
}

void KeySheetsWindow::Drawn(const QByteArray& pdf, const Then& then) {
  const int pages = run_->PageCount();
  run_->deleteLater();
  run_ = nullptr;
  if (pages > 0) return then(pdf, pages);
  End();
  ShowRefusal(services_, tr("None of these stations has a key sheet. Nothing was written or "
                            "printed.")
                             .toStdString());
}

void KeySheetsWindow::ShowProgress() {
  bar_->setValue(run_->DoneCount());
  state_->setText(tr("Drawing: %1 of %2 stations").arg(run_->DoneCount()).arg(run_->Count()));
}

void KeySheetsWindow::End() {
  if (run_ != nullptr) run_->deleteLater();
  run_ = nullptr;
  bar_->hide();
  state_->clear();
  close_->setText(tr("Close"));
  whose_->setEnabled(true);
  paper_->setEnabled(true);
  printer_->setEnabled(printer_->count() > 0);
  ShowCount();
  asked_->setFocus();
  if (closesAtEnd_) accept();
}

// A printing system that cannot take back what it has prints it.
void KeySheetsWindow::Cancel() {
  const bool isGiven = printing_.IsPrinting();
  if (run_ != nullptr) run_->Stop();
  printing_.Cancel();
  End();
  Tell(isGiven            ? tr("Cancelled: what the printer has may be printed")
       : asked_ == print_ ? tr("Cancelled: nothing was printed")
                          : tr("Cancelled: nothing was written"));
}

void KeySheetsWindow::Tell(const QString& note) {
  state_->setText(note);
  Q_EMIT NoteRequested(note);
}

void KeySheetsWindow::reject() {
  if (IsBusy()) {
    Cancel();
  } else {
    QDialog::reject();
  }
}

}  // namespace views
