// SPDX-License-Identifier: MIT

#include "views/copy_to/copy_to_window.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

#include "stations/carry_out.h"
#include "stations/navigation.h"
#include "views/change_words.h"
#include "views/pickable_stations.h"
#include "views/programming/button_page.h"
#include "views/widgets/icon.h"
#include "views/widgets/plain_caption.h"
#include "views/window_place/on_screen.h"

namespace views {
namespace {

constexpr int kCopyCharacters = 76;
constexpr int kCopyRows = 12;

constexpr std::string_view kPlanFailed = "Error Reading What Is To Be Copied";
constexpr std::string_view kCopyFailed = "Error Copying To Stations";

QString NameOf(int station, const QString& label) {
  return label.isEmpty() ? QString::number(station)
                         : QStringLiteral("%1 %2").arg(station).arg(label);
}

// What a station's part of the plan changes.
QString ChangeRemark(const stations::Change& change, const FieldLookup& lookup) {
  const std::vector<ChangeRow> rows = ChangeRows({&change, 1});
  if (rows.size() != 1) return CopyToWindow::tr("%1 buttons change").arg(rows.size());
  // With the operation where only the targets change, and the other way round.
  const ChangeRow row = ChangeRows({&change, 1}, lookup).front();
  return QStringLiteral("%1 → %2").arg(row.before, row.after);
}

}  // namespace

CopyToWindow::CopyToWindow(const Services& services, const CopySource& source, QWidget* parent)
    : QDialog(parent),
      services_(services),
      source_(source),
      button_(new QRadioButton(this)),
      page_(new QRadioButton(this)),
      all_(new QRadioButton(this)),
      relays_(new QRadioButton(this)),
      own_(new QCheckBox(this)),
      count_(new QLabel(this)),
      ok_(new QPushButton(tr("Cop&y"), this)),
      cancel_(new QPushButton(tr("Cancel"), this)) {
  setObjectName(QStringLiteral("frmCopyTo"));
  setWindowIcon(Icon(QStringLiteral("copy-to-stations")));
  ReadStations();
  setWindowTitle(tr("Copy To Stations"));
  picker_ = new StationPicker({.find = QStringLiteral("txtFindCopy"),
                               .list = QStringLiteral("lstStations"),
                               .remarks = tr("What It Gets")},
                              stations_, this);
  AddChoices();
  LayOut();
  for (QRadioButton* const choice : {button_, page_, all_, relays_}) {
    connect(choice, &QRadioButton::toggled, this, [this](bool checked) {
      if (!checked) return;
      Plan();
      ShowPlan();
    });
  }
  connect(own_, &QCheckBox::toggled, this, [this] {
    Plan();
    ShowPlan();
  });
  connect(picker_, &StationPicker::TicksChanged, this, &CopyToWindow::ShowCount);
  connect(ok_, &QPushButton::clicked, this, &CopyToWindow::Copy);
  connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
  Plan();
  ShowPlan();
}

void CopyToWindow::ReadStations() {
  read_ = ReadPickableStations(services_, &stations_);
  const auto own = std::ranges::find(stations_, source_.station, &PickableStation::number);
  if (own == stations_.end()) return;
  label_ = own->label;
  stations_.erase(own);
}

void CopyToWindow::AddChoices() {
  const int buttons = services_.model.ButtonCount;
  const int pageLast = std::min(source_.pageFirst + ButtonPage::kButtons - 1, buttons);
  struct Named {
    QRadioButton* option;
    const char* name;
    QString caption;
    Choice choice;
  };
  const Named choices[] = {
      {button_, "optCopyButton", tr("This &button: %1").arg(source_.button), Choice::Button},
      {page_, "optCopyPage",
       tr("This &page: buttons %1 to %2").arg(source_.pageFirst).arg(pageLast), Choice::Page},
      {all_, "optCopyAll", tr("&All %1 buttons").arg(buttons), Choice::All},
      {relays_, "optCopyRelays", tr("&Relays"), Choice::Relays},
  };
  for (const Named& each : choices) {
    each.option->setObjectName(QLatin1String(each.name));
    each.option->setText(each.caption);
    each.option->setChecked(each.choice == source_.choice);
  }
  own_->setObjectName(QStringLiteral("ckOwnStation"));
  own_->setText(tr("What points at station %1 &itself points at the copy's own station")
                    .arg(source_.station));
}

void CopyToWindow::LayOut() {
  auto* const what = new QGroupBox(
      tr("Copy From Station %1").arg(PlainCaption(NameOf(source_.station, label_))), this);
  what->setObjectName(QStringLiteral("aidCopyWhat"));
  auto* const options = new QHBoxLayout;
  for (QRadioButton* const choice : {button_, page_, all_, relays_}) options->addWidget(choice);
  options->addStretch();
  auto* const inside = new QVBoxLayout(what);
  inside->addLayout(options);
  inside->addWidget(own_);

  count_->setObjectName(QStringLiteral("aidCopyCount"));
  count_->setTextFormat(Qt::PlainText);
  ok_->setObjectName(QStringLiteral("cmdOkCopy"));
  ok_->setToolTip(tr("Store it for the stations that are ticked; nothing is sent"));
  cancel_->setObjectName(QStringLiteral("cmdCancelCopy"));
  cancel_->setAutoDefault(false);
  ok_->setDefault(true);

  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(count_, 1);
  buttons->addWidget(ok_);
  buttons->addWidget(cancel_);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(what);
  layout->addWidget(picker_, 1);
  layout->addLayout(buttons);
  const QSize wanted(kCopyCharacters * fontMetrics().averageCharWidth(),
                     sizeHint().height() + kCopyRows * fontMetrics().height() / 2);
  resize(SizeOnScreen(wanted.expandedTo(minimumSizeHint()), screen()->availableSize()));
  picker_->setFocus();
}

CopyToWindow::Choice CopyToWindow::Chosen() const {
  if (page_->isChecked()) return Choice::Page;
  if (all_->isChecked()) return Choice::All;
  return relays_->isChecked() ? Choice::Relays : Choice::Button;
}

stations::CopyOrder CopyToWindow::Order() const {
  stations::CopyOrder order{.from = source_.station,
                            .pointsAtOwn = own_->isChecked(),
                            .targetCount = services_.model.ChkBoxCount};
  const int buttons = services_.model.ButtonCount;
  switch (Chosen()) {
    case Choice::Button:
      order.firstButton = order.lastButton = source_.button;
      break;
    case Choice::Page:
      order.firstButton = source_.pageFirst;
      order.lastButton = std::min(source_.pageFirst + ButtonPage::kButtons - 1, buttons);
      break;
    case Choice::All:
      order.lastButton = buttons;
      break;
    case Choice::Relays:
      order.relays = true;
      break;
  }
  return order;
}

QString CopyToWindow::What() const {
  const stations::CopyOrder order = Order();
  if (order.relays) return tr("Relays");
  if (order.firstButton == order.lastButton) return tr("Button %1").arg(order.firstButton);
  return tr("Buttons %1 to %2").arg(order.firstButton).arg(order.lastButton);
}

void CopyToWindow::Plan() {
  std::vector<int> to;
  for (const PickableStation& station : stations_) to.push_back(station.number);
  const model::Status planned =
      !read_.ok() ? read_ : WithStations(services_, [&](jet::RecordSet& stations) {
        return stations::PlanCopy(stations, Order(), to, &plan_);
      });
  isPlanned_ = planned.ok();
  if (isPlanned_) return;
  plan_ = {};
  ShowFailure(services_, kPlanFailed, planned);
}

void CopyToWindow::ShowPlan() {
  own_->setEnabled(Chosen() != Choice::Relays);
  const FieldLookup lookup = [this](int station, std::string_view field) {
    jet::Value value;
    const model::Status read = WithStations(services_, [&](jet::RecordSet& stations) {
      if (model::Status found = stations::FindStation(stations, station); !found.ok()) return found;
      return model::Status(stations.Get(field, &value));
    });
    return read.ok() ? value : jet::Value();
  };
  std::map<int, StationPicker::Remark> said;
  for (const int station : plan_.cannotPoint) {
    said[station] = {.text = tr("no button can point at it"), .isObstacle = true};
  }
  for (const stations::Change& change : plan_.changes) {
    said[change.station] = {.text = ChangeRemark(change, lookup)};
  }
  const StationPicker::Remark other{.text = isPlanned_ ? tr("has it already") : QString()};
  std::vector<StationPicker::Remark> remarks;
  for (const PickableStation& station : stations_) {
    const auto found = said.find(station.number);
    remarks.push_back(found != said.end() ? found->second : other);
  }
  picker_->SetRemarks(remarks);  // which counts
}

std::vector<stations::Change> CopyToWindow::TickedChanges() const {
  const std::vector<int> ticked = picker_->Ticked();
  const std::set<int> wanted(ticked.begin(), ticked.end());
  std::vector<stations::Change> changes;
  std::ranges::copy_if(
      plan_.changes, std::back_inserter(changes),
      [&](const stations::Change& change) { return wanted.contains(change.station); });
  return changes;
}

void CopyToWindow::ShowCount() {
  const auto all = static_cast<qsizetype>(picker_->Ticked().size());
  const auto changing = static_cast<qsizetype>(TickedChanges().size());
  ok_->setEnabled(changing > 0);
  if (!isPlanned_) {
    count_->setText(tr("What is to be copied cannot be read"));
  } else if (all == 0) {
    count_->setText(tr("Tick the stations that are to get it"));
  } else {
    const QString stations = all == 1 ? tr("1 station") : tr("%1 stations").arg(all);
    count_->setText(
        tr("%1, %2 change, %3 have it already").arg(stations).arg(changing).arg(all - changing));
  }
}

// The stations may have been changed since the list was drawn.
void CopyToWindow::Copy() {
  const std::vector<stations::Change> shown = TickedChanges();
  const auto tickedCount = picker_->Ticked().size();
  Plan();
  const std::vector<stations::Change> changes = TickedChanges();
  if (changes != shown) {
    ShowPlan();
    if (isPlanned_)
      count_->setText(tr("The stations were changed meanwhile: see what they get now"));
    return;
  }
  const model::Status stored = WithStations(services_, [&](jet::RecordSet& stations) {
    return stations::CarryOut(stations, changes, stations::Direction::Again, services_.Operator());
  });
  if (!stored.ok()) {
    ShowFailure(services_, kCopyFailed, stored);
    Plan();
    ShowPlan();
    return;
  }
  Q_EMIT Copied(tr("%1 of station %2 copied: %3 of %4 stations changed")
                    .arg(What())
                    .arg(source_.station)
                    .arg(changes.size())
                    .arg(tickedCount));
  accept();
}

}  // namespace views
