// SPDX-License-Identifier: MIT

#include "views/labels/labels_delegate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

#include "views/labels/label_editors.h"
#include "views/labels/labels_model.h"
#include "views/rules/label_headings.h"
#include "views/widgets/find_field.h"

namespace views {

namespace {

constexpr int kFrameWidth = 2;  // of the match that the search has gone to

// Of a line of text in the middle of a cell: how far its baseline is below the middle.
int BelowMiddle(const QFont& font) {
  const QFontMetrics metrics(font);
  return metrics.ascent() - metrics.height() / 2;
}

const QStyle& StyleOf(const QStyleOptionViewItem& cell) {
  return cell.widget != nullptr ? *cell.widget->style() : *QApplication::style();
}

// As the style itself does behind the text of a cell.
void DrawFocus(const QStyleOptionViewItem& cell, QPainter& painter) {
  const bool isSelected = cell.state.testFlag(QStyle::State_Selected);
  QStyleOptionFocusRect focus;
  focus.QStyleOption::operator=(cell);
  focus.rect = StyleOf(cell).subElementRect(QStyle::SE_ItemViewItemFocusRect, &cell, cell.widget);
  focus.state |= QStyle::State_KeyboardFocusChange | QStyle::State_Item;
  focus.backgroundColor = cell.palette.color(isSelected ? QPalette::Highlight : QPalette::Window);
  StyleOf(cell).drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, cell.widget);
}

}  // namespace

using stations::LabelColumn;

int StepOfEnter(const QKeyEvent& event) {
  return event.modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1;
}

LabelsDelegate::LabelsDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

void LabelsDelegate::Forget(const QWidget* editor) {
  if (editor_ == editor) editor_ = nullptr;
}

stations::TextCheck LabelsDelegate::CheckEditor() const {
  const auto* const field = qobject_cast<const QLineEdit*>(editor_.data());
  if (field == nullptr || !field->isModified()) return {};
  const QString text = field->text();
  if (text == index_.data(Qt::EditRole).toString()) return {};
  return stations::CheckText(LabelsModel::Column(index_), text.toStdString());
}

void LabelsDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  if (index.data(LabelsModel::MatchRole).toBool()) {
    option->backgroundBrush = kMatchGround;
    option->palette.setColor(QPalette::Text, kMatchInk);
    // A selected match keeps the ground of a match, and gets a frame instead.
    option->state &= ~QStyle::State_Selected;
  }
}

// The labels have a font of their own, whose letters would stand higher or lower than those beside
// them: such a cell is painted larger at one side, so that its middle moves, and is cut to its
// size.  The line of the focus stays where the cell is.
void LabelsDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
  const int higher =
      2 * (BelowMiddle(index.data(Qt::FontRole).value<QFont>()) - BelowMiddle(option.font));
  QStyleOptionViewItem moved = option;
  moved.rect.adjust(0, std::min(0, -higher), 0, std::max(0, -higher));
  moved.state &= ~QStyle::State_HasFocus;
  painter->save();
  if (moved.rect != option.rect) painter->setClipRect(option.rect, Qt::IntersectClip);
  QStyledItemDelegate::paint(painter, moved, index);
  painter->restore();
  if (option.state.testFlag(QStyle::State_HasFocus)) {
    QStyleOptionViewItem focused = option;
    initStyleOption(&focused, index);
    DrawFocus(focused, *painter);
  }
  const bool isChosen = (option.state & QStyle::State_Selected) != 0;
  if (isChosen && index.data(LabelsModel::MatchRole).toBool()) {
    painter->save();
    painter->setPen(QPen(kMatchInk, kFrameWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter->drawRect(option.rect.adjusted(1, 1, -1, -1));
    painter->restore();
  }
  if (!index.data(LabelsModel::DuplicateRole).toBool()) return;
  QStyleOptionViewItem cell = moved;
  initStyleOption(&cell, index);
  const QStyle& style = StyleOf(cell);
  const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, cell.widget) + 1;
  const QRect text = style.subElementRect(QStyle::SE_ItemViewItemText, &cell, cell.widget)
                         .adjusted(margin, 0, -margin, 0);
  const int width = std::min(text.width(), cell.fontMetrics.horizontalAdvance(cell.text));
  const int baseline =
      text.top() + (text.height() - cell.fontMetrics.height()) / 2 + cell.fontMetrics.ascent();
  const bool isSelected = (cell.state & QStyle::State_Selected) != 0;
  painter->save();
  QPen pen(cell.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text), 1,
           Qt::DotLine);
  pen.setCosmetic(true);
  painter->setPen(pen);
  painter->drawLine(text.left(), baseline + 2, text.left() + width - 1, baseline + 2);
  painter->restore();
}

QWidget* LabelsDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                      const QModelIndex& index) const {
  const LabelColumn column = LabelsModel::Column(index);
  index_ = index;
  if (column == LabelColumn::Hidden) {
    auto* const choice = new HiddenEditor(parent);
    connect(choice, &QComboBox::activated, this, &LabelsDelegate::ChoiceMade);
    editor_ = choice;
  } else {
    auto* const field = new LabelTextEditor(index.data(Qt::EditRole).toString(),
                                            stations::Spec(column).maxLength, parent);
    QFont font = index.data(Qt::FontRole).value<QFont>();
    font.setItalic(false);
    field->setFont(font);
    connect(field, &QLineEdit::inputRejected, this, [this, column] { Q_EMIT Full(column); });
    editor_ = field;
  }
  editor_->setObjectName(QStringLiteral("edtLabel"));
  editor_->setAccessibleName(QString::fromLatin1(rules::Heading(column).caption));
  return editor_;
}

// An editor of text gets its text when it is made, not here: what is typed must survive when the
// database is read again.
void LabelsDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  if (auto* const field = qobject_cast<QLineEdit*>(editor)) {
    if (!field->isModified()) field->selectAll();
    return;
  }
  auto* const choice = qobject_cast<QComboBox*>(editor);
  if (choice == nullptr || choice->property("filled").toBool()) return;
  choice->setProperty("filled", true);
  const QVariant flag = index.data(Qt::EditRole);
  choice->setCurrentIndex(flag.isValid() ? flag.toInt() : -1);
}

void LabelsDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                  const QModelIndex& index) const {
  if (const auto* const choice = qobject_cast<QComboBox*>(editor)) {
    if (choice->currentIndex() >= 0) model->setData(index, choice->currentIndex());
    return;
  }
  const auto* const field = qobject_cast<QLineEdit*>(editor);
  if (field == nullptr || !field->isModified()) return;
  const QString text = field->text();
  if (text == index.data(Qt::EditRole).toString()) return;
  if (model->setData(index, text)) Q_EMIT TextTaken(index, text);
}

void LabelsDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                          const QModelIndex& /*index*/) const {
  editor->setGeometry(option.rect);
}

bool LabelsDelegate::eventFilter(QObject* watched, QEvent* event) {
  if (watched != editor_) return QStyledItemDelegate::eventFilter(watched, event);
  if (event->type() == QEvent::FocusOut) return false;
  if (event->type() != QEvent::KeyPress) return QStyledItemDelegate::eventFilter(watched, event);
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Q_EMIT EnterPressed(StepOfEnter(*static_cast<QKeyEvent*>(event)));
      return true;
    case Qt::Key_Tab:
      Q_EMIT TabPressed(1);
      return true;
    case Qt::Key_Backtab:
      Q_EMIT TabPressed(-1);
      return true;
    default:
      return QStyledItemDelegate::eventFilter(watched, event);
  }
}

}  // namespace views
