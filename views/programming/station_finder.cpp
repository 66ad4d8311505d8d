// SPDX-License-Identifier: MIT

#include "views/programming/station_finder.h"

#include <QApplication>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QScreen>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

#include "views/programming/page_metrics.h"

namespace views {
namespace {

constexpr int kFinderCharacters = 12;
constexpr int kFinderItems = 16;
constexpr int kBetweenFinderColumns = 2;  // characters
constexpr int kLabelRole = Qt::UserRole + 1;

// Items as high as what is clicked elsewhere.
class FinderItems : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return QStyledItemDelegate::sizeHint(option, index).expandedTo(QSize(0, kSmallestTarget));
  }
};

QString ItemOf(int number, const QString& label) {
  return QStringLiteral("%1  %2").arg(number).arg(label).trimmed();
}

}  // namespace

StationFinder::StationFinder(std::function<std::vector<PickableStation>()> stations,
                             QWidget* parent)
    : QComboBox(parent), read_(std::move(stations)) {
  setObjectName(QStringLiteral("aidStation"));
  setAccessibleName(tr("Go to station"));
  setToolTip(tr("Go to the station with this number or label"));
  setAccessibleDescription(toolTip());
  setEditable(true);
  setInsertPolicy(QComboBox::NoInsert);
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(kFinderCharacters);
  setMaxVisibleItems(kFinderItems);
  auto* const list = new QListView(this);
  list->setObjectName(QStringLiteral("aidStationList"));
  list->setWrapping(true);
  list->setResizeMode(QListView::Adjust);
  setView(list);
  setItemDelegate(new FinderItems(this));
  completer()->setCompletionMode(QCompleter::PopupCompletion);
  completer()->setFilterMode(Qt::MatchContains);
  completer()->setCaseSensitivity(Qt::CaseInsensitive);
  completer()->setMaxVisibleItems(kFinderItems);
  lineEdit()->setObjectName(QStringLiteral("aidStationText"));
  lineEdit()->setPlaceholderText(tr("Number or label"));
  connect(lineEdit(), &QLineEdit::returnPressed, this, &StationFinder::GoToText);
  connect(this, &QComboBox::activated, this, &StationFinder::GoTo);
}

void StationFinder::ShowStation(int number, const QString& label) {
  shown_ = number;
  current_ = number == 0 ? QString() : ItemOf(number, label);
  if (!lineEdit()->hasFocus()) setEditText(current_);
}

void StationFinder::Begin() {
  QWidget* const before = QApplication::focusWidget();
  if (before != this) backTo_ = before;
  setFocus(Qt::ShortcutFocusReason);
  lineEdit()->selectAll();
}

void StationFinder::Fill() {
  const QSignalBlocker quietly(this);
  const QString text = lineEdit()->text();
  clear();
  for (const PickableStation& station : read_()) {
    addItem(ItemOf(station.number, station.label), station.number);
    setItemData(count() - 1, station.label, kLabelRole);
  }
  setCurrentIndex(findData(shown_));
  setEditText(text);
}

// Where the screen is too narrow for all of them the list scrolls.
void StationFinder::FitColumns() {
  auto* const list = static_cast<QListView*>(view());
  const QSize item(
      list->sizeHintForColumn(0) + kBetweenFinderColumns * fontMetrics().averageCharWidth(),
      list->sizeHintForRow(0));
  list->setGridSize(item);
  const int columns = (count() + kFinderItems - 1) / kFinderItems;
  const int atMost = screen()->availableSize().width() / std::max(1, item.width()) - 1;
  const int frame = 2 * list->frameWidth() + 1;  // a column that just fits would be broken
  list->setMinimumSize(std::clamp(columns, 1, std::max(1, atMost)) * item.width() + frame,
                       std::min(count(), kFinderItems) * item.height() + frame);
}

void StationFinder::showPopup() {
  Fill();
  FitColumns();
  QComboBox::showPopup();
}

void StationFinder::focusInEvent(QFocusEvent* event) {
  // The list is a window of its own: closing it is no coming.
  if (event->reason() != Qt::PopupFocusReason) Fill();
  QComboBox::focusInEvent(event);
}

// Digits alone are the number of a station, or all of a label, but never a part of one.
int StationFinder::IndexOf(const QString& text) const {
  const bool isNumber = std::ranges::all_of(text, [](QChar c) { return c >= u'0' && c <= u'9'; });
  if (isNumber) {
    if (const int index = findData(text.toInt()); index >= 0) return index;
  }
  // What was completed is an item as a whole.
  if (const int index = findText(text, Qt::MatchFixedString); index >= 0) return index;
  if (const int index = findData(text, kLabelRole, Qt::MatchFixedString); index >= 0) return index;
  if (isNumber) return -1;
  if (const int index = findData(text, kLabelRole, Qt::MatchStartsWith); index >= 0) return index;
  return findData(text, kLabelRole, Qt::MatchContains);
}

void StationFinder::GoTo(int index) {
  const int station = itemData(index).toInt();
  // One choice can be told of twice: by the list and by Enter.
  if (station != 0 && station != shown_) Q_EMIT Chosen(station);
  Leave();
}

void StationFinder::GoToText() {
  const QString text = lineEdit()->text().trimmed();
  if (text.isEmpty() || text == current_) return Leave();
  const int index = IndexOf(text);
  if (index >= 0) return GoTo(index);
  lineEdit()->selectAll();
  Q_EMIT NotFound(text);
}

void StationFinder::Leave() {
  setEditText(current_);
  if (backTo_ != nullptr && backTo_->isVisible()) {
    backTo_->setFocus(Qt::OtherFocusReason);
  } else {
    lineEdit()->selectAll();
  }
  backTo_.clear();
}

void StationFinder::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Escape:
      return Leave();
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      // A box would choose the next item at once, and so leave the station with every press.
      return showPopup();
    default:
      QComboBox::keyPressEvent(event);
  }
}

void StationFinder::focusOutEvent(QFocusEvent* event) {
  QComboBox::focusOutEvent(event);
  if (event->reason() != Qt::PopupFocusReason) setEditText(current_);
}

// The wheel passes over it on its way, and would change the station.
void StationFinder::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace views
