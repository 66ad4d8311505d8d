// SPDX-License-Identifier: MIT

#include "app/open_views.h"

#include "views/main_view.h"

namespace app {

namespace {

const QString kXmap = QStringLiteral("frmXmap");
const QString kAlphas = QStringLiteral("frmAlphas");
const QString kButtons = QStringLiteral("frmButtons");

}  // namespace

OpenViews::OpenViews(QMdiArea& area, const views::XmapServices& services)
    : area_(area), services_(services) {}

QMdiSubWindow* OpenViews::Find(const QString& name) const {
  for (QMdiSubWindow* const window : area_.subWindowList()) {
    // A window that was closed is hidden until it is deleted.
    if (window->isHidden() || window->widget() == nullptr) continue;
    if (window->widget()->objectName().compare(name, Qt::CaseInsensitive) == 0) return window;
  }
  return nullptr;
}

void OpenViews::Show(const QString& name, const std::function<views::MainView*()>& load) {
  QMdiSubWindow* window = Find(name);
  if (window == nullptr) {
    views::MainView* const view = load();
    window = area_.addSubWindow(view);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowIcon(view->windowIcon());
  } else if (window->isMinimized()) {
    window->showNormal();
  }
  window->show();
  area_.setActiveSubWindow(window);
}

void OpenViews::ShowXmap() {
  Show(kXmap, [this] { return LoadXmap(); });
}

void OpenViews::ShowAlphas() {
  Show(kAlphas, [this] {
    return new views::MainView(kAlphas, QStringLiteral("Station Labels"), QStringLiteral("Alphas"),
                               services_.settings);
  });
}

void OpenViews::ShowButtons() {
  Show(kButtons, [this] {
    return new views::MainView(kButtons, QStringLiteral("Station Button Programming"),
                               QStringLiteral("Butns"), services_.settings);
  });
}

views::MainView* OpenViews::LoadXmap() {
  auto* const view = new views::XmapView(services_);
  connect(view, &views::XmapView::ReadoutChanged, this, &OpenViews::ReadoutChanged);
  connect(view, &views::XmapView::QdvStatusRequested, this, &OpenViews::QdvStatusRequested);
  connect(view, &views::XmapView::InhibitsEdited, this, [this] { SetInhibitsUnsent(true); });
  connect(view, &views::XmapView::InhibitsSent, this, [this] { SetInhibitsUnsent(false); });
  view->SetInhibitsUnsent(inhibitsUnsent_);
  connect(view, &QObject::destroyed, this, [this] {
    Q_EMIT ReadoutChanged({});
    Q_EMIT XmapLoaded(false);
  });
  Q_EMIT XmapLoaded(true);
  Q_EMIT ReadoutChanged(view->Readout());
  return view;
}

void OpenViews::SetInhibitsUnsent(bool unsent) {
  inhibitsUnsent_ = unsent;
  if (views::XmapView* const xmap = Xmap()) xmap->SetInhibitsUnsent(unsent);
}

views::XmapView* OpenViews::Xmap() const {
  const QMdiSubWindow* const window = Find(kXmap);
  return window == nullptr ? nullptr : qobject_cast<views::XmapView*>(window->widget());
}

void OpenViews::CloseAll() {
  for (QMdiSubWindow* const window : area_.subWindowList()) {
    if (!window->isHidden()) window->close();
  }
}

void OpenViews::CrosspointRowChanged(int output, int mode) {
  if (views::XmapView* const xmap = Xmap()) xmap->UpdateXmap(output, mode);
}

void OpenViews::LabelsChanged(int /*selector*/) {
  if (views::XmapView* const xmap = Xmap()) xmap->UpdateXmapAlphas();
}

void OpenViews::InhibitsChanged(int /*output*/) {
  if (views::XmapView* const xmap = Xmap()) xmap->UpdateXmapInhibits();
}

}  // namespace app
