// SPDX-License-Identifier: MIT

#include "views/labels/labels_row_header.h"

#include <QPainter>
#include <QPolygonF>

#include "views/labels/labels_model.h"

namespace views {
namespace {

constexpr int kWidth = 22;

// Both marks in a square of ten from (0, 0).
const QPolygonF kTriangle({{3, 1}, {8, 5}, {3, 9}});
const QPolygonF kPencil({{0.5, 9.5}, {1.5, 6.5}, {7, 1}, {9, 3}, {3.5, 8.5}});
constexpr double kMarkSize = 10;

}  // namespace

LabelsRowHeader::LabelsRowHeader(QWidget* parent) : QHeaderView(Qt::Vertical, parent) {
  setObjectName(QStringLiteral("hdrRows"));
  setSectionResizeMode(Fixed);
  setSectionsClickable(true);
  setHighlightSections(false);
}

QSize LabelsRowHeader::sizeHint() const { return {kWidth, QHeaderView::sizeHint().height()}; }

void LabelsRowHeader::setSelectionModel(QItemSelectionModel* selection) {
  QHeaderView::setSelectionModel(selection);
  if (selection == nullptr) return;
  connect(selection, &QItemSelectionModel::currentRowChanged, this,
          [this] { viewport()->update(); });
}

void LabelsRowHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
  painter->save();
  QHeaderView::paintSection(painter, rect, section);
  painter->restore();
  const bool isEdited =
      model()->headerData(section, Qt::Vertical, LabelsModel::EditedRole).toBool();
  const bool isCurrent =
      selectionModel() != nullptr && selectionModel()->currentIndex().row() == section;
  if (!isEdited && !isCurrent) return;
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(Qt::NoPen);
  painter->setBrush(palette().color(QPalette::ButtonText));
  const QPointF centre = QRectF(rect).center();
  painter->translate(centre.x() - kMarkSize / 2, centre.y() - kMarkSize / 2);
  painter->drawPolygon(isEdited ? kPencil : kTriangle);
  painter->restore();
}

}  // namespace views
