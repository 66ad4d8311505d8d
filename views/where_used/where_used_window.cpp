// SPDX-License-Identifier: MIT

#include "views/where_used/where_used_window.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

#include "db/station_fields.h"
#include "stations/navigation.h"
#include "stations/operations.h"
#include "stations/record.h"
#include "views/widgets/icon.h"
#include "views/widgets/row_height.h"
#include "views/window_place/on_screen.h"

namespace views {
namespace {

enum UseColumn { kUseWhere, kUseWhat, kUseHow };

constexpr int kUseCharacters = 78;
constexpr int kUseRows = 16;
constexpr int kUseWhereCharacters = 22;
constexpr int kUseWhatCharacters = 14;
constexpr int kSettledMilliseconds = 500;

constexpr std::string_view kFindFailed = "Error Finding Where A Station Is Used";

}  // namespace

WhereUsedWindow::WhereUsedWindow(const Services& services, QWidget* parent)
    : QDialog(parent),
      ChangeObserver(services.changes),
      services_(services),
      list_(new QTreeWidget(this)),
      summary_(new QLabel(this)),
      goTo_(new QPushButton(tr("&Go There"), this)),
      close_(new QPushButton(tr("Close"), this)) {
  setObjectName(QStringLiteral("frmWhereUsed"));
  setWindowIcon(Icon(QStringLiteral("where-used")));
  LayOut();
  settled_.setSingleShot(true);
  settled_.setInterval(kSettledMilliseconds);
  connect(&settled_, &QTimer::timeout, this, &WhereUsedWindow::List);
  connect(list_, &QTreeWidget::itemActivated, this, &WhereUsedWindow::GoToCurrent);
  connect(list_, &QTreeWidget::currentItemChanged, this,
          [this](const QTreeWidgetItem* current) { goTo_->setEnabled(current != nullptr); });
  connect(goTo_, &QPushButton::clicked, this, &WhereUsedWindow::GoToCurrent);
  connect(close_, &QPushButton::clicked, this, &QDialog::reject);
}

void WhereUsedWindow::LayOut() {
  list_->setObjectName(QStringLiteral("lstWhereUsed"));
  list_->setAccessibleName(tr("Where Used"));
  list_->setHeaderLabels({tr("Where"), tr("What"), tr("How")});
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAlternatingRowColors(true);
  list_->setAllColumnsShowFocus(true);
  list_->setTabKeyNavigation(false);
  list_->header()->setSectionsMovable(false);
  const int character = fontMetrics().averageCharWidth();
  list_->header()->resizeSection(kUseWhere, kUseWhereCharacters * character);
  list_->header()->resizeSection(kUseWhat, kUseWhatCharacters * character);
  list_->setMinimumHeight(kUseRows / 3 * RowHeight(fontMetrics()));
  summary_->setObjectName(QStringLiteral("aidUseSummary"));
  summary_->setTextFormat(Qt::PlainText);
  summary_->setWordWrap(true);
  goTo_->setObjectName(QStringLiteral("aidGoToUse"));
  goTo_->setToolTip(tr("Show the selected place in its window; Enter does so, too"));
  goTo_->setEnabled(false);
  close_->setObjectName(QStringLiteral("aidCloseUse"));
  for (QPushButton* const button : {goTo_, close_}) button->setAutoDefault(false);

  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(goTo_);
  buttons->addWidget(close_);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(summary_);
  layout->addWidget(list_, 1);
  layout->addLayout(buttons);
  const QSize wanted(kUseCharacters * fontMetrics().averageCharWidth(),
                     kUseRows * RowHeight(fontMetrics()));
  resize(SizeOnScreen(wanted.expandedTo(minimumSizeHint()), screen()->availableSize()));
  list_->setFocus();
}

void WhereUsedWindow::ShowStation(int station) {
  station_ = station;
  list_->clear();
  List();
  if (list_->topLevelItemCount() > 0) list_->setCurrentItem(list_->topLevelItem(0));
}

// Many edits can follow each other, as in a retrieval: it looks when they have come to rest.
void WhereUsedWindow::Changed(std::span<const stations::Change> /*changes*/) {
  if (isVisible()) settled_.start();
}

QString WhereUsedWindow::Name(int number, bool input) const {
  if (number > static_cast<int>(labels_.size())) return QString::number(number);
  const auto& labels = labels_[static_cast<std::size_t>(number - 1)];
  return QStringLiteral("%1 %2").arg(number).arg(input ? labels.second : labels.first).trimmed();
}

QStringList WhereUsedWindow::Words(const stations::Use& use) const {
  using Kind = stations::Use::Kind;
  const QString operation = QString::fromLatin1(stations::OperationOf(use.type).label);
  switch (use.kind) {
    case Kind::Button:
      return {tr("Station %1").arg(Name(use.station, false)), tr("Button %1").arg(use.part),
              operation};
    case Kind::Opto:
      return {tr("Opto %1").arg(use.part), tr("Opto target"), operation};
    case Kind::OptoChannel:
      return {tr("Opto %1").arg(use.part), tr("Opto channel"), operation};
    case Kind::Inhibit:
      return {tr("Output %1").arg(Name(use.station, false)), tr("Inhibit"),
              tr("must not hear input %1").arg(Name(use.part, true))};
  }
  return {};
}

void WhereUsedWindow::List() {
  labels_.clear();
  const int last = std::max<int>(services_.model.StationCount, services_.model.ChannelCount);
  const model::Status found = WithStations(services_, [&](jet::RecordSet& stations) {
    for (int number = 1; number <= last; ++number) {
      auto& labels = labels_.emplace_back();
      if (!stations::FindStation(stations, number).ok() || stations.NoMatch()) continue;
      stations::Record record(stations);
      labels = {QString::fromStdString(record.Text(db::kLabelField)),
                QString::fromStdString(record.Text(db::kInLabelField))};
    }
    return stations::FindUses(stations, station_, services_.model, &uses_);
  });
  if (!found.ok()) ShowFailure(services_, kFindFailed, found);

  setWindowTitle(tr("Where Used: Station %1").arg(Name(station_, false)));
  const int row = list_->indexOfTopLevelItem(list_->currentItem());
  list_->clear();
  for (const stations::Use& use : uses_) {
    auto* const item = new QTreeWidgetItem(Words(use));
    item->setSizeHint(kUseHow, QSize(0, RowHeight(fontMetrics())));
    list_->addTopLevelItem(item);
  }
  list_->setCurrentItem(
      list_->topLevelItem(std::min(std::max(row, 0), list_->topLevelItemCount() - 1)));
  const auto count = [this](bool inhibits) {
    return std::ranges::count_if(uses_, [&](const stations::Use& use) {
      return (use.kind == stations::Use::Kind::Inhibit) == inhibits;
    });
  };
  summary_->setText(tr("Buttons and optos that point at it: %1. Inhibits of its output and input: "
                       "%2.")
                        .arg(count(false))
                        .arg(count(true)));
}

void WhereUsedWindow::GoToCurrent() {
  const int row = list_->indexOfTopLevelItem(list_->currentItem());
  if (row >= 0) Q_EMIT GoToRequested(uses_[static_cast<std::size_t>(row)]);
}

}  // namespace views
