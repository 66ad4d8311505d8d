// SPDX-License-Identifier: MIT

#include "app/shell/main_window.h"

#include <QAction>
#include <QChildEvent>
#include <QCloseEvent>
#include <QDialog>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QToolBar>
#include <QVBoxLayout>

#include "app/shell/command_letters.h"
#include "app/shell/focus_in_sight.h"
#include "app/shell/in_sight.h"
#include "views/widgets/icon.h"

namespace app {

namespace {

constexpr int kPollMilliseconds = 1000;
constexpr int kDecodeMilliseconds = 5;
constexpr int kToolIconSize = 22;

}  // namespace

MainWindow::MainWindow(const CommandTable& commands)
    : commands_(commands),
      area_(new QMdiArea),
      hints_(new HintStrip),
      statusBar_(new StatusBar(this)),
      blocked_(new BlockedLine({.window = *this, .status = *statusBar_, .hints = *hints_})) {
  setObjectName(QStringLiteral("frmMain"));
  setWindowTitle(QStringLiteral("Orvo Intercom Control"));
  setWindowIcon(views::Icon(QStringLiteral("teskctl")));

  area_->setObjectName(QStringLiteral("mdiArea"));
  area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  auto* const centre = new QWidget;
  auto* const layout = new QVBoxLayout(centre);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(area_, 1);
  layout->addWidget(hints_);
  setCentralWidget(centre);
  setStatusBar(statusBar_);
  new FocusInSight(*area_, this);
  new CommandLetters(this);

  pollTimer_.setParent(this);
  pollTimer_.setObjectName(QStringLiteral("tmrPoll"));
  pollTimer_.setInterval(kPollMilliseconds);
  decodeTimer_.setParent(this);
  decodeTimer_.setObjectName(QStringLiteral("tmrDecodeTCP"));
  decodeTimer_.setInterval(kDecodeMilliseconds);
  decodeTimer_.setTimerType(Qt::PreciseTimer);

  AddCommands();
  BuildMenus();
  BuildToolBar();

  AddWindowKeys();
}

// By itself the area has no keys for the next window nor for the menu with which a window is
// moved, resized and maximised without a mouse; that menu brings the desktop's key for closing.
void MainWindow::AddWindowKeys() {
  const auto add = [this](QKeyCombination keys, auto operation) {
    connect(new QShortcut(keys, this), &QShortcut::activated, area_, operation);
  };
  add(Qt::CTRL | Qt::Key_F6, &QMdiArea::activateNextSubWindow);
  add(Qt::ALT | Qt::Key_Minus, [this] {
    if (QMdiSubWindow* const active = area_->activeSubWindow()) active->showSystemMenu();
  });
}

void MainWindow::AddCommands() {
  for (const Command& command : AllCommands()) {
    const QString id = QLatin1String(command.id);
    auto* const action = new QAction(QString::fromUtf8(command.caption), this);
    action->setObjectName(id);
    QString tip = QString::fromUtf8(command.tip);
    const QKeySequence shortcut(QLatin1String(command.shortcut), QKeySequence::PortableText);
    if (!shortcut.isEmpty()) {
      action->setShortcut(shortcut);
      if (!tip.isEmpty()) tip += QStringLiteral(" (%1)").arg(shortcut.toString());
    }
    if (!tip.isEmpty()) action->setToolTip(tip);
    if (*command.icon != '\0') action->setIcon(views::Icon(QLatin1String(command.icon)));
    connect(action, &QAction::triggered, this, [this, id] { commands_.Run(id); });
  }
}

QAction* MainWindow::CommandAction(const char* id) const {
  return findChild<QAction*>(QLatin1String(id), Qt::FindDirectChildrenOnly);
}

QMenu* MainWindow::AddMenu(const char* id) {
  QAction* const heading = CommandAction(id);
  auto* const menu = new QMenu(heading->text(), this);
  heading->setMenu(menu);
  menuBar()->addAction(heading);
  return menu;
}

QAction* MainWindow::AddAid(QMenu& menu, const char* name, const QString& caption) {
  auto* const action = new QAction(caption, this);
  action->setObjectName(QLatin1String(name));
  menu.addAction(action);
  return action;
}

void MainWindow::BuildMenus() {
  QMenu* const file = AddMenu("ID_File");
  file->addAction(CommandAction("ID_SendData"));
  sendChanges_ = AddAid(*file, "aidSendChanges", tr("Send C&hanges…"));
  sendChanges_->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_H);
  sendChanges_->setToolTip(tr("Send what the switcher does not hold yet, and nothing else"));
  file->addAction(CommandAction("ID_RetreiveData"));
  compare_ = AddAid(*file, "aidCompare", tr("Co&mpare With Switcher…"));
  compare_->setIcon(views::Icon(QStringLiteral("compare")));
  compare_->setToolTip(tr("Show where the tables of the switcher differ from those here"));
  file->addAction(&DiscardCommand());
  file->addSeparator();
  saveCopy_ = AddAid(*file, "aidSaveCopy", tr("Save A &Copy As…"));
  saveCopy_->setIcon(views::Icon(QStringLiteral("save-copy")));
  restoreBackup_ = AddAid(*file, "aidRestoreBackup", tr("Restore &Backup…"));
  restoreBackup_->setIcon(views::Icon(QStringLiteral("restore-backup")));
  unsavedRuns_ = AddAid(*file, "aidUnsavedRuns", tr("&Unsaved Runs…"));
  unsavedRuns_->setIcon(views::Icon(QStringLiteral("unsaved-runs")));
  file->addSeparator();
  exportMenu_ = file->addMenu(views::Icon(QStringLiteral("export")), tr("&Export"));
  exportMenu_->setObjectName(QStringLiteral("aidExportMenu"));
  keySheets_ = AddAid(*file, "aidKeySheets", tr("Ke&y Sheets…"));
  keySheets_->setIcon(views::Icon(QStringLiteral("key-sheets")));
  keySheets_->setShortcut(Qt::CTRL | Qt::Key_P);
  keySheets_->setToolTip(tr("Print the keys of stations, or write them to a file"));
  import_ = AddAid(*file, "aidImportProgramming", tr("&Import Labels Or Programming…"));
  import_->setIcon(views::Icon(QStringLiteral("import")));
  file->addSeparator();
  settings_ = AddAid(*file, "aidSettings", tr("Settin&gs…"));
  settings_->setIcon(views::Icon(QStringLiteral("settings")));
  settings_->setToolTip(tr("Show and change the serial port, the panels and demo mode"));
  presets_ = AddAid(*file, "aidPresets", tr("&Presets Of The Map…"));
  presets_->setIcon(views::Icon(QStringLiteral("presets")));
  presets_->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_P);
  presets_->setToolTip(tr("Keep what the outputs hear under a name, and bring it back"));
  lockConsole_ = AddAid(*file, "aidLockConsole", tr("Loc&k Console"));
  lockConsole_->setIcon(views::Icon(QStringLiteral("lock")));
  lockConsole_->setToolTip(tr("Keep everything as it is: nothing is sent or stored from here"));
  file->addSeparator();
  file->addAction(CommandAction("ID_Exit"));

  editMenu_ = menuBar()->addMenu(tr("&Edit"));
  editMenu_->setObjectName(QStringLiteral("aidEditMenu"));

  viewMenu_ = menuBar()->addMenu(tr("&View"));
  viewMenu_->setObjectName(QStringLiteral("aidViewMenu"));

  windowMenu_ = AddMenu("ID_Window");
  for (const char* const id : {"ID_XpointMap", "ID_StationAlphas", "ID_ButtonProgramming",
                               "ID_ViewSourcelevelControl", "ID_ViewQDVStatus"}) {
    windowMenu_->addAction(CommandAction(id));
  }
  windowMenu_->addSeparator();
  for (const char* const id :
       {"ID_Cascade", "ID_TileHorizontal", "ID_TileVertical", "ID_ArrangeIcons"}) {
    windowMenu_->addAction(CommandAction(id));
  }
  windowMenu_->addSeparator();
  connect(windowMenu_, &QMenu::aboutToShow, this, &MainWindow::FillWindowList);

  QMenu* const help = AddMenu("ID_Help");
  help->addAction(CommandAction("ID_Contents"));
  help->addSeparator();
  help->addAction(CommandAction("ID_About"));
}

void MainWindow::BuildToolBar() {
  QToolBar* const tools = addToolBar(tr("Commands"));
  tools->setObjectName(QStringLiteral("SSActiveToolBars1"));
  tools->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  tools->setIconSize(QSize(kToolIconSize, kToolIconSize));
  tools->setMovable(false);

  struct Tool {
    const char* id;  // null for a separator
    const char* caption;
  };
  constexpr Tool kTools[] = {
      {"ID_XpointMap", QT_TR_NOOP("Map")},
      {"ID_StationAlphas", QT_TR_NOOP("Labels")},
      {"ID_ButtonProgramming", QT_TR_NOOP("Buttons")},
      {nullptr, nullptr},
      {"ID_SourceLevelControl", QT_TR_NOOP("Levels")},
      {"ID_QDVStatus", QT_TR_NOOP("QDV")},
      {nullptr, nullptr},
      {"ID_SendData", QT_TR_NOOP("Send…")},
      {"ID_RetreiveData", QT_TR_NOOP("Retrieve…")},
      {nullptr, nullptr},
      {"ID_Contents", QT_TR_NOOP("Help")},
  };
  for (const Tool& tool : kTools) {
    if (tool.id == nullptr) {
      tools->addSeparator();
      continue;
    }
    QAction* const action = CommandAction(tool.id);
    action->setIconText(tr(tool.caption));
    tools->addAction(action);
  }
}

// The open windows, numbered, at the end of the Window menu.
void MainWindow::FillWindowList() {
  qDeleteAll(windowList_);
  windowList_.clear();
  for (QMdiSubWindow* const window : area_->subWindowList(QMdiArea::CreationOrder)) {
    if (!window->isVisible()) continue;
    auto* const action = new QAction(
        QStringLiteral("&%1 %2").arg(windowList_.size() + 1).arg(window->windowTitle()), this);
    action->setCheckable(true);
    action->setChecked(window == area_->activeSubWindow());
    connect(action, &QAction::triggered, window, [this, window] {
      if (window->isMinimized()) window->showNormal();
      area_->setActiveSubWindow(window);
      BringInSight(*area_, *window, window->rect());
    });
    windowMenu_->addAction(action);
    windowList_.append(action);
  }
}

void MainWindow::UpdateCommands() {
  for (const Command& command : AllCommands()) {
    QAction* const action = CommandAction(command.id);
    if (action->menu() == nullptr) action->setEnabled(commands_.Has(QLatin1String(command.id)));
  }
}

void MainWindow::ShowLinkText(std::string_view text) {
  const QString shown = QString::fromUtf8(text);
  statusBar_->SetLinkText(shown);
  Q_EMIT LinkTextShown(shown);
}

void MainWindow::StartDecodeTimer() {
  if (!decodeTimer_.isActive()) decodeTimer_.start();
}

void MainWindow::SetPolling(bool on) {
  if (on) {
    pollTimer_.start();
  } else {
    pollTimer_.stop();
  }
}

void MainWindow::ShowBlockedCode(std::optional<std::uint8_t> code) {
  blocked_->Show(code);
  Q_EMIT BlockedCodeShown(code);
}

QRect MainWindow::Place() const {
  if (!isFullScreen()) return {pos(), size()};
  return {normalGeometry().topLeft() - frame_, normalGeometry().size()};
}

void MainWindow::MeasureFrame() {
  if (!isFullScreen()) frame_ = geometry().topLeft() - pos();
}

void MainWindow::moveEvent(QMoveEvent* event) {
  QMainWindow::moveEvent(event);
  MeasureFrame();
}

void MainWindow::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  MeasureFrame();
}

void MainWindow::childEvent(QChildEvent* event) {
  QMainWindow::childEvent(event);
  if (event->polished()) OfferManual(event->child());
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ChildPolished) {
    OfferManual(static_cast<QChildEvent*>(event)->child());
  }
  return QMainWindow::eventFilter(watched, event);
}

// A dialog keeps out the keys of this window; the manual is to be had in it all the same, and in
// the boxes over it.
void MainWindow::OfferManual(QObject* child) {
  auto* const dialog = qobject_cast<QDialog*>(child);
  if (dialog == nullptr) return;
  dialog->addAction(CommandAction("ID_Contents"));
  dialog->installEventFilter(this);
}

void MainWindow::closeEvent(QCloseEvent* event) { event->setAccepted(!mayClose_ || mayClose_()); }

}  // namespace app
