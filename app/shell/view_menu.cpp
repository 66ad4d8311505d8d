// SPDX-License-Identifier: MIT

#include "app/shell/view_menu.h"

#include <QAction>

#include "views/widgets/icon.h"

namespace app {

ViewMenu::ViewMenu(const Services& services)
    : menu_(services.menu),
      views_(services.views),
      crosshair_(new QAction(tr("&Crosshair"), &menu_)) {
  crosshair_->setObjectName(QStringLiteral("aidCrosshair"));
  crosshair_->setCheckable(true);
  crosshair_->setChecked(true);
  connect(crosshair_, &QAction::toggled, this, [this](bool on) {
    if (views::XmapView* const xmap = views_.Xmap()) xmap->SetCrosshair(on);
  });
  menu_.addAction(crosshair_);
  mapActions_.append(crosshair_);

  AddMapAction("aidZoomIn", tr("Zoom &In"), views::kZoomIn);
  AddMapAction("aidZoomOut", tr("Zoom &Out"), views::kZoomOut);
  AddMapAction("aidZoomReset", tr("Zoom &100 %"), views::kZoomReset);
  menu_.addSeparator();
  find_ = AddAction("aidFind", tr("&Find Channel…"), Qt::CTRL | views::kFindChannel.key,
                    [this] { views_.ShowFind(); });
  AddMapAction("aidGoTo", tr("&Go To Crosspoint…"), views::kGoToCrosspoint);
  menu_.addSeparator();

  QAction* const eventLog =
      AddAction("aidEventLog", tr("&Event Log"), QKeySequence(Qt::CTRL | Qt::Key_L),
                [this] { Q_EMIT EventLogRequested(); });
  eventLog->setIcon(views::Icon(QStringLiteral("event-log")));

  QAction* const changes = AddAction("aidRecentChanges", tr("&Recent Changes"), QKeySequence(),
                                     [this] { Q_EMIT RecentChangesRequested(); });
  changes->setIcon(views::Icon(QStringLiteral("recent-changes")));

  auto* const fullScreen = new QAction(tr("F&ull Screen"), &menu_);
  fullScreen->setObjectName(QStringLiteral("aidFullScreen"));
  fullScreen->setShortcut(QKeySequence(Qt::Key_F11));
  fullScreen->setCheckable(true);
  connect(fullScreen, &QAction::toggled, this, [&window = services.window](bool on) {
    window.setWindowState(window.windowState().setFlag(Qt::WindowFullScreen, on));
  });
  menu_.addAction(fullScreen);

  connect(&views_, &OpenViews::XmapLoaded, this, &ViewMenu::Update, Qt::QueuedConnection);
  connect(&views_, &OpenViews::ActiveViewChanged, this,
          [this] { find_->setEnabled(views_.CanFind()); });
  find_->setEnabled(views_.CanFind());
  Update();
}

QAction* ViewMenu::AddAction(const char* name, const QString& caption, const QKeySequence& shortcut,
                             const std::function<void()>& operation) {
  auto* const action = new QAction(caption, &menu_);
  action->setObjectName(QLatin1String(name));
  action->setShortcut(shortcut);
  connect(action, &QAction::triggered, this, operation);
  menu_.addAction(action);
  return action;
}

void ViewMenu::AddMapAction(const char* name, const QString& caption,
                            const views::MapCommand& command) {
  mapActions_.append(AddAction(name, caption, Qt::CTRL | command.key, [this, command] {
    if (views::XmapView* const xmap = views_.Xmap()) command.run(*xmap);
  }));
}

// A map that was loaded anew takes over what the menu says.
void ViewMenu::Update() {
  views::XmapView* const xmap = views_.Xmap();
  for (QAction* const action : mapActions_) action->setEnabled(xmap != nullptr);
  if (xmap != nullptr) xmap->SetCrosshair(crosshair_->isChecked());
}

}  // namespace app
