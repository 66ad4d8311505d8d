// SPDX-License-Identifier: MIT

#include "views/main_view.h"

#include <QCloseEvent>
#include <QMdiSubWindow>

#include "views/window_place/area_place.h"

namespace views {
namespace {

bool IsNormal(Qt::WindowStates state) {
  return (state & (Qt::WindowMinimized | Qt::WindowMaximized)) == 0;
}

// What the sub-window sets for itself on its way to a state, by overriding, is no change.
bool LeavesNormal(const QWindowStateChangeEvent& change, Qt::WindowStates state) {
  return !change.isOverride() && IsNormal(change.oldState()) && !IsNormal(state);
}

}  // namespace

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
  PutInArea(*Form(), placement_.Stored());
  placement_.SetRestored(PlaceInArea(*Form()));
  wasRestored_ = true;
}

bool MainView::event(QEvent* event) {
  if (event->type() == QEvent::ParentChange) {
    if (watched_ != nullptr) {
      watched_->removeEventFilter(this);
      watched_->disconnect(this);
    }
    watched_ = parentWidget();
    if (watched_ != nullptr) watched_->installEventFilter(this);
    if (auto* const frame = qobject_cast<QMdiSubWindow*>(parentWidget())) {
      connect(frame, &QMdiSubWindow::windowStateChanged, this,
              [this](Qt::WindowStates old) { StateChanged(old); });
    }
  }
  return QWidget::event(event);
}

bool MainView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == watched_ && event->type() == QEvent::Resize) FormResized();
  // Before the sub-window itself goes by its new state.
  if (watched == watched_ && event->type() == QEvent::WindowStateChange &&
      LeavesNormal(*static_cast<QWindowStateChangeEvent*>(event), watched_->windowState())) {
    normalPlace_ = PlaceInArea(*watched_);
  }
  return QWidget::eventFilter(watched, event);
}

// By itself the sub-window goes back to where it was seen, however the area was scrolled since.
void MainView::StateChanged(Qt::WindowStates old) {
  if (!IsNormal(old) && IsNormal(Form()->windowState())) PutInArea(*Form(), normalPlace_);
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
  if (!Form()->isMinimized()) {
    placement_.Save(Form()->isMaximized() ? normalPlace_ : PlaceInArea(*Form()));
  }
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
