// SPDX-License-Identifier: MIT

#include "app/shell/message_boxes.h"

#include <QApplication>
#include <QMetaObject>
#include <QPushButton>
#include <QStringList>
#include <algorithm>
#include <utility>

#include "app/shell/help_window.h"

namespace app {

MessageBoxes::MessageBoxes(QObject* parent) : QObject(parent) {}

MessageBoxes::~MessageBoxes() { delete box_; }

void MessageBoxes::ShowOver(QWidget* window) {
  window_ = window;
  started_ = true;
  ShowNext();
}

void MessageBoxes::Show(Icon icon, std::string_view title, std::string_view text) {
  ShowOffering(icon, title, text, {});
}

void MessageBoxes::ShowOffering(Icon icon, std::string_view title, std::string_view text,
                                std::vector<Offer> offers) {
  Report report{.icon = icon == Icon::Critical ? QMessageBox::Critical : QMessageBox::Warning,
                .title = QString::fromUtf8(title),
                .text = QString::fromUtf8(text),
                .offers = std::move(offers)};
  Q_EMIT Reported(report.title, report.text);
  const auto same = std::find_if(reports_.begin(), reports_.end(), [&](const Report& other) {
    return other.title == report.title && other.text == report.text;
  });
  if (same != reports_.end()) {
    ++same->count;
    ShowCount();
    return;
  }
  reports_.push_back(std::move(report));
  // From the event loop: the handler that reports runs to its end first.
  QMetaObject::invokeMethod(this, &MessageBoxes::ShowNext, Qt::QueuedConnection);
}

void MessageBoxes::ShowNext() {
  if (!started_ || box_ != nullptr || reports_.empty()) return;
  const Report& report = reports_.front();
  QWidget* const dialog = QApplication::activeModalWidget();
  box_ = new QMessageBox(report.icon, report.title, QString(), QMessageBox::Ok,
                         dialog != nullptr ? dialog : window_.data());
  box_->setAttribute(Qt::WA_DeleteOnClose);
  box_->setTextFormat(Qt::PlainText);
  // A selectable text shows a carriage return as a line break, which a plain label does not.
  box_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  box_->setText(report.text);
  for (const Offer& offer : report.offers) {
    QPushButton* const button = box_->addButton(offer.caption, QMessageBox::ActionRole);
    button->setObjectName(offer.name);
    button->setToolTip(offer.tip);
    connect(button, &QPushButton::clicked, this, offer.action, Qt::QueuedConnection);
  }
  box_->setDefaultButton(QMessageBox::Ok);
  box_->setEscapeButton(QMessageBox::Ok);
  ShowCount();
  connect(box_, &QMessageBox::finished, this, &MessageBoxes::OnClosed);
  // A box that goes away unread, with the dialog it stands over, is shown again.
  connect(box_, &QObject::destroyed, this, &MessageBoxes::ShowNext, Qt::QueuedConnection);
  box_->open();
}

void MessageBoxes::OnClosed() {
  box_ = nullptr;
  const Report closed = std::move(reports_.front());
  reports_.pop_front();
  Q_EMIT Closed(closed.title, closed.text);
  if (reports_.empty()) {
    Q_EMIT Emptied();
  } else {
    QMetaObject::invokeMethod(this, &MessageBoxes::ShowNext, Qt::QueuedConnection);
  }
}

void MessageBoxes::ShowCount() {
  if (box_ == nullptr) return;
  QStringList lines;
  if (const int count = reports_.front().count; count > 1) {
    lines.append(tr("Reported %1 times").arg(count));
  }
  if (!ManualPlace(box_).isEmpty()) lines.append(tr("F1 explains it"));
  box_->setInformativeText(lines.join(u'\n'));
}

}  // namespace app
