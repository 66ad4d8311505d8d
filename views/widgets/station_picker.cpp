// SPDX-License-Identifier: MIT

#include "views/widgets/station_picker.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QTreeWidget>

#include <algorithm>
#include <functional>
#include <utility>

#include "views/widgets/plain_tip.h"
#include "views/widgets/row_height.h"
#include "views/widgets/tick_list.h"

namespace views {
namespace {

enum PickerColumn { kPickNumber, kPickLabel, kPickRemark };

constexpr int kNumberCharacters = 13;
constexpr int kLabelCharacters = 18;
constexpr int kPickerRows = 10;

bool IsTicked(const QTreeWidgetItem& item) { return item.checkState(kPickNumber) == Qt::Checked; }

bool CanBeTicked(const QTreeWidgetItem& item) { return item.flags().testFlag(Qt::ItemIsEnabled); }

// Tells of each box that was clicked, and whether Shift was held then.
class ClickedBoxes : public QStyledItemDelegate {
 public:
  using Tell = std::function<void(int row, bool withShift)>;

  ClickedBoxes(Tell tell, QObject* parent) : QStyledItemDelegate(parent), tell_(std::move(tell)) {}

 protected:
  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
    const bool isTaken = QStyledItemDelegate::editorEvent(event, model, option, index);
    if (isTaken && event->type() == QEvent::MouseButtonRelease) {
      const auto& mouse = static_cast<const QMouseEvent&>(*event);
      tell_(index.row(), mouse.modifiers().testFlag(Qt::ShiftModifier));
    }
    return isTaken;
  }

 private:
  const Tell tell_;
};

}  // namespace

StationPicker::StationPicker(const Names& names, const std::vector<PickableStation>& stations,
                             QWidget* parent)
    : QWidget(parent),
      find_(new QLineEdit(this)),
      list_(new QTreeWidget(this)),
      count_(new QLabel(this)),
      tickAll_(new QPushButton(tr("Tick Al&l"), this)),
      tickNone_(new QPushButton(tr("Tick &None"), this)) {
  MakeList(names, stations);
  LayOut(names);
  setFocusProxy(find_);
  connect(find_, &QLineEdit::textChanged, this, &StationPicker::ShowOnly);
  connect(list_, &QTreeWidget::itemChanged, this, [this] {
    Count();
    Q_EMIT TicksChanged();
  });
  connect(tickAll_, &QPushButton::clicked, this, [this] { Tick(Shown(), true); });
  connect(tickNone_, &QPushButton::clicked, this, [this] {
    lastRow_ = -1;
    Tick(Shown(), false);
  });
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, find_,
          qOverload<>(&QWidget::setFocus));
  Count();
}

void StationPicker::MakeList(const Names& names, const std::vector<PickableStation>& stations) {
  list_->setObjectName(names.list);
  list_->setAccessibleName(tr("Stations"));
  QStringList headings{tr("Station"), tr("Label")};
  if (!names.remarks.isEmpty()) headings.append(names.remarks);
  list_->setHeaderLabels(headings);
  SetUpTickList(*list_);
  list_->installEventFilter(this);
  list_->setItemDelegate(
      new ClickedBoxes([this](int row, bool withShift) { BoxClicked(row, withShift); }, list_));
  const int character = fontMetrics().averageCharWidth();
  list_->header()->resizeSection(kPickNumber, kNumberCharacters * character);
  list_->header()->resizeSection(kPickLabel, kLabelCharacters * character);
  list_->setMinimumHeight(kPickerRows / 2 * RowHeight(fontMetrics()));
  for (const PickableStation& station : stations) {
    auto* const item = new QTreeWidgetItem({QString::number(station.number), station.label});
    item->setCheckState(kPickNumber, Qt::Unchecked);
    // Of the column whose width is not that of its contents.
    item->setSizeHint(kPickLabel, QSize(0, RowHeight(fontMetrics())));
    list_->addTopLevelItem(item);
  }
  if (!stations.empty()) {
    list_->setCurrentItem(list_->topLevelItem(0), kPickNumber, QItemSelectionModel::NoUpdate);
  }
}

void StationPicker::LayOut(const Names& names) {
  find_->setObjectName(names.find);
  find_->setPlaceholderText(tr("Show only stations with…"));
  find_->setAccessibleName(tr("Find a station"));
  find_->installEventFilter(this);
  count_->setObjectName(QStringLiteral("aidPickedCount"));
  tickAll_->setToolTip(tr("Tick every station that is shown"));
  tickNone_->setToolTip(tr("Untick every station that is shown"));
  LayOutTickList(*this, *list_,
                 {.find = *find_, .count = *count_, .tickAll = *tickAll_, .tickNone = *tickNone_});
}

void StationPicker::SetRemarks(const std::vector<Remark>& remarks) {
  {
    const QSignalBlocker quietly(list_);
    for (std::size_t row = 0; row < remarks.size(); ++row) {
      QTreeWidgetItem* const item = list_->topLevelItem(static_cast<int>(row));
      item->setText(kPickRemark, remarks[row].text);
      item->setToolTip(kPickRemark, PlainTip(remarks[row].text));
      item->setFlags(item->flags().setFlag(Qt::ItemIsEnabled, !remarks[row].isObstacle));
    }
  }
  list_->viewport()->update();
  Count();
  Q_EMIT TicksChanged();
}

std::vector<int> StationPicker::Ticked() const {
  std::vector<int> ticked;
  for (int row = 0; row < list_->topLevelItemCount(); ++row) {
    const QTreeWidgetItem& item = *list_->topLevelItem(row);
    if (IsTicked(item) && CanBeTicked(item)) ticked.push_back(item.text(kPickNumber).toInt());
  }
  return ticked;
}

int StationPicker::WaitingCount() const {
  int waiting = 0;
  for (int row = 0; row < list_->topLevelItemCount(); ++row) {
    const QTreeWidgetItem& item = *list_->topLevelItem(row);
    if (IsTicked(item) && !CanBeTicked(item)) ++waiting;
  }
  return waiting;
}

void StationPicker::ShowOnly(const QString& text) {
  const QString wanted = text.simplified();
  for (int row = 0; row < list_->topLevelItemCount(); ++row) {
    QTreeWidgetItem& item = *list_->topLevelItem(row);
    item.setHidden(!item.text(kPickNumber).startsWith(wanted) &&
                   !item.text(kPickLabel).contains(wanted, Qt::CaseInsensitive));
  }
  Count();
}

QList<QTreeWidgetItem*> StationPicker::Shown() const {
  QList<QTreeWidgetItem*> shown;
  for (int row = 0; row < list_->topLevelItemCount(); ++row) {
    QTreeWidgetItem* const item = list_->topLevelItem(row);
    if (!item->isHidden()) shown.append(item);
  }
  return shown;
}

void StationPicker::Tick(const QList<QTreeWidgetItem*>& items, bool ticked) {
  {
    const QSignalBlocker quietly(list_);
    for (QTreeWidgetItem* const item : items) {
      if (ticked && !CanBeTicked(*item)) continue;
      item->setCheckState(kPickNumber, ticked ? Qt::Checked : Qt::Unchecked);
    }
  }
  list_->viewport()->update();
  Count();
  Q_EMIT TicksChanged();
}

// All of them get the same: a tick, unless all have one.
void StationPicker::TickSelected() {
  QList<QTreeWidgetItem*> chosen = list_->selectedItems();
  chosen.removeIf([](const QTreeWidgetItem* item) { return item->isHidden(); });
  if (chosen.isEmpty() && list_->currentItem() != nullptr) chosen.append(list_->currentItem());
  const bool allTicked = std::ranges::all_of(
      chosen, [](const QTreeWidgetItem* item) { return IsTicked(*item) || !CanBeTicked(*item); });
  Tick(chosen, !allTicked);
}

void StationPicker::BoxClicked(int row, bool withShift) {
  const int from = std::exchange(lastRow_, row);
  if (!withShift || from < 0) return;
  QList<QTreeWidgetItem*> same = Shown();
  same.removeIf([&](QTreeWidgetItem* each) {
    const int at = list_->indexOfTopLevelItem(each);
    return at < std::min(from, row) || at > std::max(from, row);
  });
  Tick(same, IsTicked(*list_->topLevelItem(row)));
}

bool StationPicker::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const auto& key = *static_cast<QKeyEvent*>(event);
  if (watched == list_ && key.key() == Qt::Key_Space && key.modifiers() == Qt::NoModifier) {
    TickSelected();
    return true;
  }
  // What was found is gone to; Enter there is the window's.
  if (watched == find_ &&
      (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter || key.key() == Qt::Key_Down)) {
    const QList<QTreeWidgetItem*> shown = Shown();
    if (!shown.isEmpty()) list_->setCurrentItem(shown.front());
    list_->setFocus();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void StationPicker::Count() {
  const int all = list_->topLevelItemCount();
  const auto shown = Shown().size();
  const auto ticked = static_cast<int>(Ticked().size());
  QString text = shown == all ? tr("%1 of %2 ticked").arg(ticked).arg(all)
                              : tr("%1 of %2 ticked, %3 shown").arg(ticked).arg(all).arg(shown);
  if (const int waiting = WaitingCount(); waiting > 0) {
    text = tr("%1, and %2 that cannot get it").arg(text).arg(waiting);
  }
  if (shown == 0 && all > 0) text = tr("No station has this number or label");
  count_->setText(text);
  for (QPushButton* const button : {tickAll_, tickNone_}) button->setEnabled(shown > 0);
}

}  // namespace views
