// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_MAIN_WINDOW_H_
#define APP_SHELL_MAIN_WINDOW_H_

#include <QMainWindow>
#include <QMdiArea>
#include <QTimer>
#include <functional>
#include <optional>
#include <string_view>

#include "app/shell/blocked_line.h"
#include "app/shell/command_table.h"
#include "app/shell/hint_strip.h"
#include "app/shell/status_bar.h"
#include "gateway/panel_gateway.h"
#include "switcher/link.h"
#include "switcher/poll_switch.h"

namespace app {

// frmMain: the frame with its menus, tool bar, child windows, status bar and the two timers
// that carry the traffic.  It does nothing by itself: commands run through the command table,
// closing asks the program.
class MainWindow : public QMainWindow,
                   public switcher::LinkDisplay,
                   public switcher::PollSwitch,
                   public gateway::DecodeTimer {
  Q_OBJECT

 public:
  // `commands` must outlive the window.
  explicit MainWindow(const CommandTable& commands);

  // Asked when the window is to close: whether it may.
  void SetCloseHandler(std::function<bool()> mayClose) { mayClose_ = std::move(mayClose); }

  // Greys out the commands that have no operation.
  void UpdateCommands();

  // The place of the window: the corner of its frame and its size without the frame, as they
  // are given to move() and resize().  Of a full screen the place that it goes back to: it is a
  // way of looking, not a place.
  QRect Place() const;

  // The parts of the window; they live as long as it does.
  QMdiArea& Area() { return *area_; }
  StatusBar& Status() { return *statusBar_; }
  HintStrip& Hints() { return *hints_; }

  // tmrPoll, once a second.
  QTimer& PollTimer() { return pollTimer_; }

  // tmrDecodeTCP, every 5 ms while there is work.
  QTimer& DecodeTimer() { return decodeTimer_; }

  // The command that discards a byte which blocks all receiving.
  QAction& DiscardCommand() { return blocked_->DiscardCommand(); }

  // The menu for undo, redo and the clipboard.
  QMenu& EditMenu() { return *editMenu_; }
  // aidSaveCopy and aidRestoreBackup: copies of the database.
  QAction& SaveCopyCommand() { return *saveCopy_; }
  QAction& RestoreBackupCommand() { return *restoreBackup_; }
  // aidCompare: compares the tables here with the switcher's.
  QAction& CompareCommand() { return *compare_; }
  // aidUnsavedRuns: what runs of the console changed that ended without saving.
  QAction& UnsavedRunsCommand() { return *unsavedRuns_; }
  // aidSettings: the settings of the installation.
  QAction& SettingsCommand() { return *settings_; }
  // aidPresets: presets of the map.
  QAction& PresetsCommand() { return *presets_; }
  // aidLockConsole: locks the console against slips, or unlocks it.
  QAction& LockConsoleCommand() { return *lockConsole_; }
  // aidSendChanges: sends what is unsent.
  QAction& SendChangesCommand() { return *sendChanges_; }

  // The menu for what can be exported.
  QMenu& ExportMenu() { return *exportMenu_; }
  QAction& ImportCommand() { return *import_; }
  // aidKeySheets: key sheets to print.
  QAction& KeySheetsCommand() { return *keySheets_; }

  // The menu for the aids of the map.
  QMenu& ViewMenu() { return *viewMenu_; }

  void ShowLinkText(std::string_view text) override;
  void StartDecodeTimer() override;
  void SetPolling(bool on) override;
  void ShowBlockedCode(std::optional<std::uint8_t> code) override;

 Q_SIGNALS:
  // The text of the serial link in the status bar, each time it is shown.
  void LinkTextShown(const QString& text);
  // The unknown code that blocks all receiving; nothing when the way is free again.
  void BlockedCodeShown(std::optional<std::uint8_t> code);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void childEvent(QChildEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void AddCommands();
  void AddWindowKeys();
  void BuildMenus();
  void BuildToolBar();
  void FillWindowList();
  void OfferManual(QObject* child);
  QAction* CommandAction(const char* id) const;
  QMenu* AddMenu(const char* id);
  QAction* AddAid(QMenu& menu, const char* name, const QString& caption);
  void MeasureFrame();

  const CommandTable& commands_;
  std::function<bool()> mayClose_;
  QMdiArea* area_;
  HintStrip* hints_;
  StatusBar* statusBar_;
  BlockedLine* blocked_;
  QMenu* editMenu_ = nullptr;
  QAction* saveCopy_ = nullptr;
  QAction* restoreBackup_ = nullptr;
  QAction* compare_ = nullptr;
  QAction* unsavedRuns_ = nullptr;
  QAction* settings_ = nullptr;
  QAction* sendChanges_ = nullptr;
  QAction* presets_ = nullptr;
  QAction* lockConsole_ = nullptr;
  QMenu* exportMenu_ = nullptr;
  QAction* import_ = nullptr;
  QAction* keySheets_ = nullptr;
  QMenu* viewMenu_ = nullptr;
  QMenu* windowMenu_ = nullptr;
  QList<QAction*> windowList_;
  QPoint frame_;  // from the corner of the frame to that of the window; a full screen has none
  QTimer pollTimer_;
  QTimer decodeTimer_;
};

}  // namespace app

#endif  // APP_SHELL_MAIN_WINDOW_H_
