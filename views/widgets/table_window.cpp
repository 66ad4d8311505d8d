// SPDX-License-Identifier: MIT

#include "views/widgets/table_window.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTableView>
#include <QVBoxLayout>

#include <numeric>

#include "views/widgets/icon.h"
#include "views/widgets/row_height.h"

namespace views {
namespace {

constexpr int kLinesShown = 18;

}  // namespace

TableWindow::TableWindow(const Parts& parts, QWidget* parent)
    : QWidget(parent, Qt::Window),
      columns_(parts.columns),
      filter_(new QLineEdit(this)),
      table_(new QTableView(this)),
      said_(new QLabel(this)),
      buttons_(new QHBoxLayout) {
  setObjectName(parts.window);
  setWindowIcon(Icon(parts.icon));
  setAttribute(Qt::WA_DeleteOnClose);
  LayOut(parts);
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, filter_,
          qOverload<>(&QWidget::setFocus));
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
  filter_->setFocus();
}

void TableWindow::LayOut(const Parts& parts) {
  filter_->setObjectName(parts.filter);
  filter_->setPlaceholderText(parts.hint);
  filter_->setAccessibleName(tr("Filter"));
  filter_->setClearButtonEnabled(true);

  table_->setObjectName(parts.table);
  table_->setAccessibleName(parts.lines);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setTabKeyNavigation(false);
  table_->setShowGrid(false);
  table_->setAlternatingRowColors(true);
  table_->setWordWrap(false);
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setDefaultSectionSize(RowHeight(fontMetrics()));
  QHeaderView& header = *table_->horizontalHeader();
  header.setStretchLastSection(true);
  header.setHighlightSections(false);
  header.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);

  said_->setObjectName(parts.said);
  said_->setTextFormat(Qt::PlainText);
  auto* const close = new QPushButton(tr("Close"), this);
  close->setObjectName(parts.close);
  connect(close, &QPushButton::clicked, this, &QWidget::close);
  buttons_->addWidget(said_, 1);
  buttons_->addWidget(close);

  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(filter_);
  layout->addWidget(table_, 1);
  layout->addLayout(buttons_);
}

void TableWindow::SetLines(QAbstractItemModel& lines) {
  table_->setModel(&lines);
  for (std::size_t i = 0; i + 1 < columns_.size(); ++i) {
    table_->setColumnWidth(static_cast<int>(i), columns_[i] * fontMetrics().averageCharWidth());
  }
}

QPushButton& TableWindow::AddButton(const QString& name, const QString& caption,
                                    const QString& tip) {
  auto* const button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setToolTip(tip);
  buttons_->insertWidget(buttons_->count() - 1, button);
  return *button;
}

void TableWindow::SetLine(const QString& text) { said_->setText(text); }

QSize TableWindow::WantedSize() const {
  const int characters = std::accumulate(columns_.begin(), columns_.end(), 0);
  const QSize beside = sizeHint() - table_->sizeHint();
  return {beside.width() + characters * fontMetrics().averageCharWidth(),
          beside.height() + (kLinesShown + 1) * RowHeight(fontMetrics())};
}

}  // namespace views
