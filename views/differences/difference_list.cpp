// SPDX-License-Identifier: MIT

#include "views/differences/difference_list.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTreeView>

#include <algorithm>
#include <set>
#include <utility>

#include "views/widgets/row_height.h"
#include "views/widgets/tick_list.h"

namespace views {

namespace {

constexpr int kWhereCharacters = 21;
constexpr int kWhatCharacters = 16;
constexpr int kValueCharacters = 26;

}  // namespace

DifferenceList::DifferenceList(const Names& names, QWidget* parent)
    : QWidget(parent),
      shown_(all_),
      choice_(names.choice),
      filter_(new QLineEdit(this)),
      list_(new QTreeView(this)),
      count_(new QLabel(this)),
      tickAll_(new QPushButton(tr("Tick &All"), this)),
      tickNone_(new QPushButton(tr("Tick &None"), this)) {
  all_.SetHeadings(names.before, names.after);
  all_.SetRowHeight(RowHeight(fontMetrics()));
  MakeList(names);
  LayOut(names);
  setFocusProxy(list_);
  connect(filter_, &QLineEdit::textChanged, this, &DifferenceList::Filter);
  connect(tickAll_, &QPushButton::clicked, this, [this] { TickShown(true); });
  connect(tickNone_, &QPushButton::clicked, this, [this] { TickShown(false); });
  connect(&all_, &DifferenceModel::TicksChanged, this, &DifferenceList::Count);
  connect(&all_, &DifferenceModel::TicksChanged, this, &DifferenceList::TicksChanged);
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, filter_,
          qOverload<>(&QWidget::setFocus));
  Count();
}

void DifferenceList::MakeList(const Names& names) {
  list_->setObjectName(names.list);
  list_->setAccessibleName(tr("Differences"));
  list_->setModel(&shown_);
  SetUpTickList(*list_);
  list_->installEventFilter(this);

  QHeaderView& header = *list_->header();
  header.setSortIndicatorClearable(true);
  header.setSortIndicator(-1, Qt::AscendingOrder);
  list_->setSortingEnabled(true);
  const int character = fontMetrics().averageCharWidth();
  header.setMinimumSectionSize(3 * character);
  header.setSectionResizeMode(DifferenceModel::kTick, QHeaderView::ResizeToContents);
  header.resizeSection(DifferenceModel::kWhere, kWhereCharacters * character);
  header.resizeSection(DifferenceModel::kWhat, kWhatCharacters * character);
  header.resizeSection(DifferenceModel::kBefore, kValueCharacters * character);
  header.setSectionHidden(DifferenceModel::kTick, choice_ == Choice::None);
}

void DifferenceList::LayOut(const Names& names) {
  filter_->setObjectName(names.filter);
  filter_->setPlaceholderText(RowFilter::HintText());
  filter_->setAccessibleName(tr("Filter"));
  count_->setObjectName(QStringLiteral("aidDifferenceCount"));
  tickAll_->setToolTip(tr("Tick every row that is shown"));
  tickNone_->setToolTip(tr("Untick every row that is shown"));
  LayOutTickList(
      *this, *list_,
      {.find = *filter_, .count = *count_, .tickAll = *tickAll_, .tickNone = *tickNone_});
  for (QPushButton* const button : {tickAll_, tickNone_}) {
    button->setVisible(choice_ == Choice::Ticks);
  }
}

void DifferenceList::SetRows(std::vector<Difference> rows, bool ticked,
                             DifferenceModel::SayValues sayValues) {
  all_.SetRows(std::move(rows), ticked && choice_ == Choice::Ticks, std::move(sayValues));
}

std::vector<ChangeRow> DifferenceList::Ticked() const {
  std::vector<ChangeRow> ticked;
  for (int row = 0; row < all_.rowCount(); ++row) {
    if (all_.IsTicked(row)) ticked.push_back(all_.Row(row));
  }
  return ticked;
}

std::vector<ChangeRow> DifferenceList::Unticked() const {
  std::vector<ChangeRow> unticked;
  for (int row = 0; row < all_.rowCount(); ++row) {
    if (all_.CanBeTicked(row) && !all_.IsTicked(row)) unticked.push_back(all_.Row(row));
  }
  return unticked;
}

void DifferenceList::Untick(const std::vector<ChangeRow>& rows) {
  std::set<std::pair<QString, QString>> same;
  for (const ChangeRow& row : rows) same.emplace(row.where, row.what);
  std::vector<int> found;
  for (int row = 0; row < all_.rowCount() && !same.empty(); ++row) {
    if (same.contains({all_.Row(row).where, all_.Row(row).what})) found.push_back(row);
  }
  all_.SetTicked(found, false);
}

void DifferenceList::Filter(const QString& text) {
  shown_.SetFilter(RowFilter(text));
  Count();
}

void DifferenceList::TickShown(bool ticked) { all_.SetTicked(shown_.Rows(), ticked); }

// All of them get the same: a tick, unless all have one.  Without a selection it is the row with
// the focus.
void DifferenceList::TickSelected() {
  QModelIndexList chosen = list_->selectionModel()->selectedRows();
  if (chosen.isEmpty() && list_->currentIndex().isValid()) chosen.append(list_->currentIndex());
  std::vector<int> rows;
  for (const QModelIndex& index : chosen) rows.push_back(shown_.mapToSource(index).row());
  const bool allTicked = std::ranges::all_of(
      rows, [this](int row) { return all_.IsTicked(row) || !all_.CanBeTicked(row); });
  all_.SetTicked(rows, !allTicked);
}

bool DifferenceList::eventFilter(QObject* watched, QEvent* event) {
  if (watched == list_ && choice_ == Choice::Ticks && event->type() == QEvent::KeyPress) {
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (key.key() == Qt::Key_Space && key.modifiers() == Qt::NoModifier) {
      TickSelected();
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void DifferenceList::Count() {
  const bool isFiltered = shown_.rowCount() != all_.rowCount();
  QString text;
  if (all_.TickableCount() > 0 && choice_ == Choice::Ticks) {
    text = isFiltered ? tr("%1 of %2 ticked, %3 shown")
                            .arg(TickedCount())
                            .arg(all_.TickableCount())
                            .arg(shown_.rowCount())
                      : tr("%1 of %2 ticked").arg(TickedCount()).arg(all_.TickableCount());
  } else {
    text = isFiltered ? tr("%1 of %2 shown").arg(shown_.rowCount()).arg(RowCount()) : QString();
  }
  if (isFiltered && shown_.rowCount() == 0) text = RowFilter::NoneText();
  count_->setText(text);
  for (QPushButton* const button : {tickAll_, tickNone_}) {
    button->setEnabled(shown_.rowCount() > 0 && all_.TickableCount() > 0);
  }
}

}  // namespace views
