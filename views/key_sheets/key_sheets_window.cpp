// SPDX-License-Identifier: MIT

#include "views/key_sheets/key_sheets_window.h"

#include <QHBoxLayout>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <initializer_list>
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

int CurrentStation(const Services& services) {
  jet::RecordSet* const stations = services.stations();
  if (stations == nullptr || !stations->HasRecord()) return 0;
  return stations::Record(*stations).Number(db::kStationNumField);
}

// "12 stations, 12 pages": each has one.
QString CountWords(int count) {
  return count == 1 ? KeySheetsWindow::tr("1 station, 1 page")
                    : KeySheetsWindow::tr("%1 stations, %1 pages").arg(count);
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

KeySheetsWindow::KeySheetsWindow(const Services& services, Outlets outlets, QWidget* parent)
    : QDialog(parent),
      services_(services),
      outlets_(std::move(outlets)),
      whose_(new QGroupBox(tr("Key Sheets Of"), this)),
      this_(new QRadioButton(this)),
      chosen_(new QRadioButton(tr("&Chosen stations"), this)),
      all_(new QRadioButton(this)),
      paperCaption_(new QLabel(tr("Pap&er"), this)),
      paper_(new QComboBox(this)),
      count_(new QLabel(this)),
      state_(new QLabel(this)),
      bar_(new QProgressBar(this)),
      pdf_(new QPushButton(tr("Save As &PDF…"), this)),
      print_(new QPushButton(tr("P&rint…"), this)),
      close_(new QPushButton(tr("Close"), this)) {
  setObjectName(QStringLiteral("frmKeySheets"));
  setWindowTitle(tr("Key Sheets"));
  setWindowIcon(Icon(QStringLiteral("key-sheets")));
  const std::vector<PickableStation> pickable = ReadPickableStations(services_);
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
  connect(picker_, &StationPicker::TicksChanged, this, &KeySheetsWindow::ShowCount);
  connect(pdf_, &QPushButton::clicked, this, &KeySheetsWindow::AskWhereTo);
  connect(print_, &QPushButton::clicked, this, &KeySheetsWindow::AskForPrinter);
  connect(close_, &QPushButton::clicked, this, &KeySheetsWindow::reject);
  ShowCount();
}

void KeySheetsWindow::AddChoices() {
  this_->setObjectName(QStringLiteral("optSheetsThis"));
  chosen_->setObjectName(QStringLiteral("optSheetsChosen"));
  all_->setObjectName(QStringLiteral("optSheetsAll"));
  this_->setEnabled(rules::CurrentHasSheet(stations_));
  const bool proposesThis = rules::ProposedChoice(stations_) == rules::SheetChoice::This;
  (proposesThis ? this_ : all_)->setChecked(true);
  for (QRadioButton* const choice : {this_, chosen_, all_}) {
    connect(choice, &QRadioButton::toggled, this, &KeySheetsWindow::ShowCount);
  }
  paper_->setObjectName(QStringLiteral("cmbSheetPaper"));
  paper_->addItem(QStringLiteral("A4"), QPageSize::A4);
  paper_->addItem(QStringLiteral("Letter"), QPageSize::Letter);
  paper_->setCurrentIndex(paper_->findData(UsualPaper(PaperLocale())));
  paperCaption_->setBuddy(paper_);
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
  print_->setToolTip(tr("Choose a printer for these sheets"));
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

void KeySheetsWindow::ShowCount() {
  const auto count = static_cast<int>(Stations().size());
  picker_->setEnabled(chosen_->isChecked());
  state_->clear();
  pdf_->setEnabled(count > 0);
  print_->setEnabled(count > 0);
  if (count > 0) {
    count_->setText(CountWords(count));
  } else if (stations_.all.empty()) {
    count_->setText(tr("There are no stations"));
  } else {
    count_->setText(tr("Tick the stations whose sheets you want"));
  }
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
      [this](const QString& path) { WritePdf(path); });
}

void KeySheetsWindow::WritePdf(const QString& path) {
  const auto pdf =
      std::make_shared<Pdf>(static_cast<QPageSize::PageSizeId>(paper_->currentData().toInt()));
  const auto save = [this, pdf, path] {
    if (!outlets_.save(path, pdf->bytes)) return;
    const QString note = tr("Written: %1").arg(path);
    state_->setText(note);
    Q_EMIT NoteRequested(note);
  };
  // Memory takes every page.
  printer_ = nullptr;
  Begin(std::shared_ptr<QPagedPaintDevice>(pdf, pdf->writer.get()), save);
}

void KeySheetsWindow::WriteAll(const QString& path) {
  all_->setChecked(true);
  paper_->setCurrentIndex(paper_->findData(QPageSize::A4));
  closesAtEnd_ = true;
  WritePdf(path);
}

void KeySheetsWindow::AskForPrinter() {
  if (!outlets_.printing.isThere()) {
    state_->setText(
        tr("This computer has no printer. Save a PDF, and print it where there is one."));
    pdf_->setFocus();
    return;
  }
  state_->clear();
  outlets_.printing.ask(
      *this, tr("Key Sheets"),
      LandscapeOn(static_cast<QPageSize::PageSizeId>(paper_->currentData().toInt())),
      [this](const std::shared_ptr<QPrinter>& printer) { Print(printer); });
}

void KeySheetsWindow::Print(const std::shared_ptr<QPrinter>& printer) {
  printer_ = printer;
  const auto count = static_cast<int>(Stations().size());
  Begin(printer, [this, printer, count] {
    const QPrinter::PrinterState state = printer->printerState();
    if (state == QPrinter::Error || state == QPrinter::Aborted) {
      ShowPrinterFailed(count);
      return;
    }
    const QString note = tr("Printed: %1 (%2)").arg(SheetWords(count), printer->printerName());
    state_->setText(note);
    Q_EMIT NoteRequested(note);
  });
}

void KeySheetsWindow::Begin(std::shared_ptr<QPagedPaintDevice> device,
                            const std::function<void()>& finish) {
  run_ = new SheetRun(services_, Stations(), std::move(device), this);
  connect(run_, &SheetRun::Progressed, this, &KeySheetsWindow::ShowProgress);
  connect(run_, &SheetRun::Done, this, [this, finish] {
    End();
    finish();
  });
  connect(run_, &SheetRun::DeviceFailed, this, [this, count = run_->Count()] {
    End();
    ShowPrinterFailed(count);
  });
  connect(run_, &SheetRun::ReadFailed, this, [this](const model::Status& status) {
    End();
    ShowFailure(services_, "Error Reading What Is To Be Exported", status);
  });
  for (QWidget* const part : std::initializer_list<QWidget*>{whose_, paper_, pdf_, print_}) {
    part->setEnabled(false);
  }
  close_->setText(tr("Cancel"));
  close_->setFocus();
  bar_->setRange(0, run_->Count());
  bar_->show();
  ShowProgress();
}

void KeySheetsWindow::ShowProgress() {
  bar_->setValue(run_->DrawnCount());
  state_->setText(tr("Drawing: %1 of %2 pages").arg(run_->DrawnCount()).arg(run_->Count()));
}

void KeySheetsWindow::End() {
  run_->deleteLater();
  run_ = nullptr;
  bar_->hide();
  close_->setText(tr("Close"));
  whose_->setEnabled(true);
  paper_->setEnabled(true);
  ShowCount();
  (printer_ == nullptr ? pdf_ : print_)->setFocus();
  if (closesAtEnd_) accept();
}

// A printing system that cannot take back what it has prints it.
void KeySheetsWindow::Cancel() {
  const QString drawn =
      tr("Cancelled: %1 of %2 pages may be printed").arg(run_->DrawnCount()).arg(run_->Count());
  run_->Stop();
  if (printer_ != nullptr) printer_->abort();
  End();
  state_->setText(printer_ == nullptr ? tr("Cancelled: nothing was written") : drawn);
  if (printer_ != nullptr) Q_EMIT NoteRequested(drawn);
}

void KeySheetsWindow::ShowPrinterFailed(int count) {
  ShowRefusal(services_, tr("Printing %1 has failed: not everything is on paper. Print again, or "
                            "save a PDF.")
                             .arg(SheetWords(count))
                             .toStdString());
}

void KeySheetsWindow::reject() {
  if (run_ != nullptr) {
    Cancel();
  } else {
    QDialog::reject();
  }
}

}  // namespace views
