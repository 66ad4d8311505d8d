// SPDX-License-Identifier: MIT

#include "views/transfer/message_list.h"

#include <QHeaderView>
#include <QResizeEvent>
#include <QScrollBar>

#include <algorithm>

#include "views/widgets/icon.h"
#include "views/widgets/row_height.h"

namespace views {

namespace {

enum Column { kDescription, kSize, kStatus, kColumnCount };

constexpr int kSizeWidth = 90;
constexpr int kStatusWidth = 110;

// Whether a message was not stored, kept with its row.
constexpr int kRefused = Qt::UserRole;

// Wider than the signs, which stand in the middle of it, apart from the sizes.
constexpr QSize kSignRoom(26, 16);

// The width of the widest word with its sign, in a font.
int WordWidth(const QFontMetrics& metrics) {
  using switcher::DecodeStatus;
  int width = 0;
  for (const DecodeStatus status :
       {DecodeStatus::Ok, DecodeStatus::ChecksumFailed, DecodeStatus::WrongSize,
        DecodeStatus::WrongChannel, DecodeStatus::MissingEnd}) {
    width =
        std::max(width, metrics.horizontalAdvance(QString::fromUtf8(switcher::StatusWord(status))));
  }
  return kSignRoom.width() + width + 5 * metrics.averageCharWidth() / 2;
}

}  // namespace

MessageList::MessageList(QWidget* parent)
    : QTreeWidget(parent),
      passed_(Icon(QStringLiteral("msg-ok"))),
      failed_(Icon(QStringLiteral("msg-fail"))) {
  setObjectName(QStringLiteral("lstMsgHistory"));
  setAccessibleName(tr("Messages received"));
  setColumnCount(kColumnCount);
  setHeaderLabels({tr("Message"), tr("Size"), tr("Status")});
  headerItem()->setTextAlignment(kSize, Qt::AlignRight | Qt::AlignVCenter);
  // Apart from the size that ends where it would begin.
  headerItem()->setTextAlignment(kStatus, Qt::AlignCenter);
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAlternatingRowColors(true);
  setIconSize(kSignRoom);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  // A list to read: Tab goes on to the buttons.
  setTabKeyNavigation(false);
  header()->setSectionsMovable(false);
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(kDescription, QHeaderView::Stretch);
  header()->setMinimumSectionSize(kSizeWidth);
  header()->resizeSection(kSize, kSizeWidth);
  header()->resizeSection(kStatus, std::max(kStatusWidth, WordWidth(fontMetrics())));
}

void MessageList::AddMessage(const QString& description, int byteCount,
                             switcher::DecodeStatus status) {
  const QScrollBar& bar = *verticalScrollBar();
  const bool atEnd = bar.value() == bar.maximum();
  const QString word = QString::fromUtf8(switcher::StatusWord(status));
  auto* const row =
      new QTreeWidgetItem({description, QStringLiteral("%1 Bytes").arg(byteCount), word});
  row->setSizeHint(kDescription, QSize(0, RowHeight(fontMetrics())));
  row->setTextAlignment(kSize, Qt::AlignRight | Qt::AlignVCenter);
  const bool refused = status != switcher::DecodeStatus::Ok;
  row->setIcon(kStatus, refused ? failed_ : passed_);
  row->setData(kStatus, kRefused, refused);
  addTopLevelItem(row);
  if (atEnd) scrollToBottom();
}

// The newest row stays in sight when a line beside the list takes some of its room.
void MessageList::resizeEvent(QResizeEvent* event) {
  const bool atEnd = verticalScrollBar()->value() == verticalScrollBar()->maximum();
  QTreeWidget::resizeEvent(event);
  if (atEnd) scrollToBottom();
}

void MessageList::ShowFirstRefused() {
  for (int i = 0; i < topLevelItemCount(); ++i) {
    QTreeWidgetItem* const row = topLevelItem(i);
    if (!row->data(kStatus, kRefused).toBool()) continue;
    setCurrentItem(row);
    scrollToItem(row, QAbstractItemView::PositionAtCenter);
    return;
  }
}

}  // namespace views
