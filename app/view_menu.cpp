// SPDX-License-Identifier: MIT

#include "app/view_menu.h"

#include <QAction>

#include "views/icon.h"

namespace app {

ViewMenu::ViewMenu(QMenu& menu, OpenViews& views, QWidget& window,
                   const std::function<void()>& showEventLog)
    : menu_(menu), views_(views), crosshair_(new QAction(tr("&Crosshair"), &menu)) {
  crosshair_->setObjectName(QStringLiteral("aidCrosshair"));
  crosshair_->setCheckable(true);
  crosshair_->setChecked(true);
  connect(crosshair_, &QAction::toggled, this, [this](bool on) {
    if (views::XmapView* const xmap = views_.Xmap()) xmap->SetCrosshair(on);
  });
  menu_.addAction(crosshair_);
  mapActions_.append(crosshair_);

  AddMapAction("aidZoomIn", tr("Zoom &In"), QKeySequence(Qt::CTRL | Qt::Key_Plus),
               [](views::XmapView& xmap) { xmap.ZoomIn(); });
  AddMapAction("aidZoomOut", tr("Zoom &Out"), QKeySequence(Qt::CTRL | Qt::Key_Minus),
               [](views::XmapView& xmap) { xmap.ZoomOut(); });
  AddMapAction("aidZoomReset", tr("Zoom &100 %"), QKeySequence(Qt::CTRL | Qt::Key_0),
               [](views::XmapView& xmap) { xmap.SetZoom(100); });
  menu_.addSeparator();
  AddMapAction("aidFind", tr("&Find Channel…"), QKeySequence(Qt::CTRL | Qt::Key_F),
               [](views::XmapView& xmap) { xmap.ShowFind(); });
  AddMapAction("aidGoTo", tr("&Go To Crosspoint…"), QKeySequence(Qt::CTRL | Qt::Key_G),
               [](views::XmapView& xmap) { xmap.ShowGoTo(); });
  menu_.addSeparator();

  auto* const eventLog = new QAction(tr("&Event Log"), &menu);
  eventLog->setObjectName(QStringLiteral("aidEventLog"));
  eventLog->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_L));
  eventLog->setIcon(views::Icon(QStringLiteral("event-log")));
  connect(eventLog, &QAction::triggered, this, showEventLog);
  menu_.addAction(eventLog);

  auto* const fullScreen = new QAction(tr("F&ull Screen"), &menu);
  fullScreen->setObjectName(QStringLiteral("aidFullScreen"));
  fullScreen->setShortcut(QKeySequence(Qt::Key_F11));
  fullScreen->setCheckable(true);
  connect(fullScreen, &QAction::toggled, &window, [&window](bool on) {
    window.setWindowState(window.windowState().setFlag(Qt::WindowFullScreen, on));
  });
  menu_.addAction(fullScreen);

  connect(&views_, &OpenViews::XmapLoaded, this, &ViewMenu::Update, Qt::QueuedConnection);
  Update();
}

void ViewMenu::AddMapAction(const char* name, const QString& caption, const QKeySequence& shortcut,
                            void (*operation)(views::XmapView&)) {
  auto* const action = new QAction(caption, &menu_);
  action->setObjectName(QLatin1String(name));
  action->setShortcut(shortcut);
  connect(action, &QAction::triggered, this, [this, operation] {
    if (views::XmapView* const xmap = views_.Xmap()) operation(*xmap);
  });
  menu_.addAction(action);
  mapActions_.append(action);
}

// A map that was loaded anew takes over what the menu says.
void ViewMenu::Update() {
  views::XmapView* const xmap = views_.Xmap();
  for (QAction* const action : mapActions_) action->setEnabled(xmap != nullptr);
  if (xmap != nullptr) xmap->SetCrosshair(crosshair_->isChecked());
}

}  // namespace app
