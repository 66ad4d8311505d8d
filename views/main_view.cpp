// SPDX-License-Identifier: MIT

#include "views/main_view.h"

#include <QCloseEvent>
#include <QMdiSubWindow>

namespace views {

MainView::MainView(const QString& name, const QString& title, const QString& settingsPrefix,
                   config::WindowSettings& settings, QWidget* parent)
    : QWidget(parent), placement_(settings, settingsPrefix) {
  setObjectName(name);
  setWindowTitle(title);
}

QWidget* MainView::Form() { return const_cast<QWidget*>(std::as_const(*this).Form()); }

const QWidget* MainView::Form() const {
  const auto* const subWindow = qobject_cast<const QMdiSubWindow*>(parentWidget());
  return subWindow != nullptr ? static_cast<const QWidget*>(subWindow) : this;
}

QRect MainView::FormGeometry() const { return Form()->geometry(); }

void MainView::RestorePlacement() {
  Form()->setGeometry(placement_.Stored());
  placement_.SetRestored(FormGeometry());
  wasRestored_ = true;
}

bool MainView::event(QEvent* event) {
  if (event->type() == QEvent::ParentChange) {
    if (watched_ != nullptr) watched_->removeEventFilter(this);
    watched_ = parentWidget();
    if (watched_ != nullptr) watched_->installEventFilter(this);
  }
  return QWidget::event(event);
}

bool MainView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == watched_ && event->type() == QEvent::Resize) FormResized();
  return QWidget::eventFilter(watched, event);
}

void MainView::showEvent(QShowEvent* event) {
  if (!wasRestored_) RestorePlacement();
  QWidget::showEvent(event);
}

void MainView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FormResized();
}

void MainView::closeEvent(QCloseEvent* event) {
  if (!Form()->isMinimized()) placement_.Save(FormGeometry());
  QWidget::closeEvent(event);
  // A form that is closed by itself takes the frame around it along.
  if (auto* const frame = qobject_cast<QMdiSubWindow*>(parentWidget())) {
    QMetaObject::invokeMethod(
        frame,
        [frame] {
          if (!frame->isHidden()) frame->close();
        },
        Qt::QueuedConnection);
  }
}

}  // namespace views
