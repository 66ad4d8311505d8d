// SPDX-License-Identifier: MIT

#include "views/labels/label_editors.h"

#include <QLabel>
#include <QStyle>
#include <QValidator>
#include <QWheelEvent>

#include <algorithm>

namespace views {
namespace {

constexpr int kCountMargin = 3;

class LengthValidator : public QValidator {
 public:
  LengthValidator(qsizetype limit, QObject* parent) : QValidator(parent), limit_(limit) {}

  State validate(QString& text, int& /*position*/) const override {
    return text.size() <= limit_ ? Acceptable : Invalid;
  }

 private:
  const qsizetype limit_;
};

}  // namespace

// A validator instead of the field's own limit, which would cut a pasted text, or one that is too
// long already.
LabelTextEditor::LabelTextEditor(const QString& text, int maxLength, QWidget* parent)
    : QLineEdit(text, parent), maxLength_(maxLength), count_(new QLabel(this)) {
  setFrame(false);
  setAutoFillBackground(true);
  setValidator(new LengthValidator(std::max<qsizetype>(maxLength, text.size()), this));
  count_->setObjectName(QStringLiteral("aidLength"));
  count_->setAttribute(Qt::WA_TransparentForMouseEvents);
  count_->setForegroundRole(QPalette::PlaceholderText);
  QFont small = count_->font();
  small.setPointSizeF(small.pointSizeF() * 0.8);
  count_->setFont(small);
  connect(this, &QLineEdit::textChanged, this, &LabelTextEditor::ShowCount);
  ShowCount();
}

void LabelTextEditor::ShowCount() {
  count_->setText(QStringLiteral("%1/%2").arg(text().size()).arg(maxLength_));
  count_->adjustSize();
  const int room = count_->width() + kCountMargin;
  setTextMargins(0, 0, room, 0);
  count_->move(width() - room, (height() - count_->height()) / 2);
}

void LabelTextEditor::resizeEvent(QResizeEvent* event) {
  QLineEdit::resizeEvent(event);
  ShowCount();
}

HiddenEditor::HiddenEditor(QWidget* parent) : QComboBox(parent) {
  addItem(QStringLiteral("No"));
  addItem(QStringLiteral("Yes"));
}

void HiddenEditor::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace views
