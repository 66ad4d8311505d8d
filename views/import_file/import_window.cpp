// SPDX-License-Identifier: MIT

#include "views/import_file/import_window.h"

#include <QHBoxLayout>
#include <QScreen>
#include <QVBoxLayout>
#include <utility>
#include <vector>

#include "stations/carry_out.h"
#include "stations/navigation.h"
#include "views/change_words.h"
#include "views/import_file/import_words.h"
#include "views/widgets/icon.h"
#include "views/window_place/on_screen.h"

namespace views {
namespace {

constexpr int kImportCharacters = 100;
constexpr int kImportRows = 24;

constexpr std::string_view kImportReadFailed = "Error Reading What A File Would Change";
constexpr std::string_view kImportFailed = "Error Importing A File";

}  // namespace

ImportWindow::ImportWindow(const Services& services, QString name, std::string bytes,
                           QWidget* parent)
    : QDialog(parent),
      services_(services),
      name_(std::move(name)),
      bytes_(std::move(bytes)),
      summary_(new QLabel(this)),
      list_(new DifferenceList({.filter = QStringLiteral("aidFilterImport"),
                                .list = QStringLiteral("lstImport"),
                                .before = tr("Now"),
                                .after = tr("File")},
                               this)),
      faults_(new QListWidget(this)),
      ok_(new QPushButton(tr("&Import"), this)),
      cancel_(new QPushButton(tr("Cancel"), this)) {
  setObjectName(QStringLiteral("frmImport"));
  setWindowTitle(tr("Import: %1").arg(name_));
  setWindowIcon(Icon(QStringLiteral("import")));
  LayOut();
  connect(list_, &DifferenceList::TicksChanged, this,
          [this] { ok_->setEnabled(list_->TickedCount() > 0); });
  connect(ok_, &QPushButton::clicked, this, &ImportWindow::Store);
  connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
  if (Plan()) ShowPlan(true);
}

void ImportWindow::LayOut() {
  summary_->setObjectName(QStringLiteral("aidImportSummary"));
  summary_->setTextFormat(Qt::PlainText);
  summary_->setWordWrap(true);
  faults_->setObjectName(QStringLiteral("aidImportFaults"));
  faults_->setAccessibleName(tr("What is wrong with the file"));
  faults_->setAlternatingRowColors(true);
  faults_->setWordWrap(true);
  faults_->hide();
  ok_->setObjectName(QStringLiteral("cmdOkImport"));
  ok_->setToolTip(tr("Store what is ticked; nothing is sent"));
  ok_->setEnabled(false);
  cancel_->setObjectName(QStringLiteral("cmdCancelImport"));
  // Enter in the list or in the filter presses none of them.
  for (QPushButton* const button : {ok_, cancel_}) button->setAutoDefault(false);

  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(ok_);
  buttons->addWidget(cancel_);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(summary_);
  layout->addWidget(list_, 1);
  layout->addWidget(faults_, 1);
  layout->addLayout(buttons);
  const QSize wanted(kImportCharacters * fontMetrics().averageCharWidth(),
                     kImportRows * fontMetrics().lineSpacing());
  resize(SizeOnScreen(wanted.expandedTo(minimumSizeHint()), screen()->availableSize()));
  list_->setFocus();
}

bool ImportWindow::Plan() {
  const model::Status planned = WithStations(services_, [this](jet::RecordSet& stations) {
    return rules::PlanImport(bytes_, stations, services_.model, &plan_);
  });
  if (!planned.ok()) ShowFailure(services_, kImportReadFailed, planned);
  return planned.ok();
}

void ImportWindow::ShowPlan(bool ticked) {
  const bool isFaulty = plan_.faultCount > 0;
  list_->setVisible(!isFaulty);
  faults_->setVisible(isFaulty);
  if (isFaulty) {
    ShowFaults();
  } else {
    ShowDifferences(ticked);
  }
}

void ImportWindow::ShowFaults() {
  faults_->clear();
  for (const rules::ImportFault& fault : plan_.faults) faults_->addItem(FaultWords(fault));
  const int rest = plan_.faultCount - static_cast<int>(plan_.faults.size());
  if (rest > 0) faults_->addItem(tr("… and %1 more").arg(rest));
  faults_->setFocus();
  ok_->setEnabled(false);
  cancel_->setText(tr("Close"));
  summary_->setText(
      tr("Nothing of this file is imported. Mend what is listed, and choose the file again."));
}

void ImportWindow::ShowDifferences(bool ticked) {
  const FieldLookup lookup = [this](int station, std::string_view field) {
    jet::Value value;
    const model::Status read = WithStations(services_, [&](jet::RecordSet& stations) {
      if (model::Status found = stations::FindStation(stations, station); !found.ok()) return found;
      return model::Status(stations.Get(field, &value));
    });
    return read.ok() ? value : jet::Value();
  };
  std::vector<Difference> rows;
  for (ChangeRow& row : ChangeRows(plan_.changes, lookup)) rows.emplace_back(std::move(row));
  list_->SetRows(std::move(rows), ticked);
  ok_->setEnabled(list_->TickedCount() > 0);
  QString summary =
      plan_.changes.empty()
          ? tr("This file holds what is stored already. Rows of the file: %1.").arg(plan_.rows)
          : tr("What is ticked becomes as it is in the file. Nothing is sent. Rows "
               "of the file: %1.")
                .arg(plan_.rows);
  if (const QString ignored = ReadOnlyWords(plan_); !ignored.isEmpty()) summary += u'\n' + ignored;
  summary_->setText(summary);
}

// The stations may have been changed since the list was drawn: nothing is stored that it did not
// say.
void ImportWindow::Store() {
  const std::vector<stations::Change> shown = std::move(plan_.changes);
  if (!Plan()) return ok_->setEnabled(false);
  if (plan_.faultCount > 0 || plan_.changes != shown) {
    ShowPlan(false);
    if (plan_.faultCount > 0) return;
    summary_->setText(
        tr("The stations were changed meanwhile. Tick what is to become as it is in "
           "the file."));
    return;
  }
  const std::vector<stations::Change> changes = Chosen(plan_.changes, list_->Ticked());
  const model::Status stored = WithStations(services_, [&](jet::RecordSet& stations) {
    return stations::CarryOut(stations, changes, stations::Direction::Again,
                              {services_.changes, stations::Origin::File});
  });
  if (!stored.ok()) return ShowFailure(services_, kImportFailed, stored);
  Q_EMIT Imported(QStringLiteral("%1 (%2)").arg(ActTitle(changes), name_));
  accept();
}

}  // namespace views
