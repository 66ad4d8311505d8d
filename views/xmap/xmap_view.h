// SPDX-License-Identifier: MIT

#ifndef VIEWS_XMAP_XMAP_VIEW_H_
#define VIEWS_XMAP_XMAP_VIEW_H_

#include <QAction>
#include <QMenu>
#include <functional>
#include <optional>
#include <string_view>

#include "db/jet/record_set.h"
#include "model/locks.h"
#include "model/status.h"
#include "views/main_view.h"
#include "views/rules/xmap_grid.h"
#include "views/services.h"
#include "views/widgets/tool_band.h"
#include "views/xmap/inhibit_tool.h"
#include "views/xmap/pending_crosspoints.h"
#include "views/xmap/take_undo.h"
#include "views/xmap/xmap_model.h"

namespace views {

class XmapFind;
class XmapGridView;

class XmapView;

// What the map does on a key with Ctrl, in the view and from a menu of the window.
struct MapCommand {
  Qt::Key key;
  void (*run)(XmapView& view);
};
extern const MapCommand kFindChannel;
extern const MapCommand kGoToCrosspoint;
extern const MapCommand kZoomIn;
extern const MapCommand kZoomOut;
extern const MapCommand kZoomReset;

// The crosspoint map "frmXmap": a row per output, a column per input, a mark in every cell that
// holds a crosspoint or an inhibit, and the tools that make, break and inhibit them.
//
// Beside its tools it has aids for reading the map: crosshair, readout, search, zoom, and an
// outline while the switcher has not answered.  These never send a byte and never store anything.
class XmapView : public MainView, private model::LockObserver {
  Q_OBJECT

 public:
  // Builds the grid from the model and the stations.  A failure is reported and leaves the grid
  // as far as it got.
  explicit XmapView(const Services& services, QWidget* parent = nullptr);
  ~XmapView() override;

  // Draws the crosspoints of one output (from 1), or of all with model::kAll, from the model.
  // `mode` is the status value of the row, 0 or 1; with model::kAll each output's ChannelStatus
  // counts.  Each crosspoint reported for an inhibited cell is told to the operator.
  void UpdateXmap(int row, int mode);

  // Draws the inhibits of the whole map from the stations.
  void UpdateXmapInhibits();

  // The switcher has reported inhibits: draws them, then the crosspoints of all cells without one.
  // Drawing the inhibits removes all priority marks; those of standing calls must come back.
  void InhibitsReported();

  // The inhibits of one output (from 1) were stored elsewhere, the texts as the database has them:
  // draws the cells in which they differ.  Standing crosspoints stay in sight.
  void InhibitsStored(int output, std::string_view before, std::string_view after);

  // Writes all labels and numbers from the stations.
  void UpdateXmapAlphas();

  // The current cell, on which the tools act, in words:
  // "Out 02  Sta. 002  <  In 04  Inpt 004: Crosspoint".
  QString Readout() const { return readout_; }
  // What its output hears: "PROD 1 hears Inpt 004; by priority: none"; of several chosen cells
  // their number.
  QString Detail() const { return detail_; }

  // Says over the whole map that it may not be true any more; empty for nothing.
  void SetWarning(const QString& warning);

  // Opens the field for finding a channel, beginning with `text`, or for going to a crosspoint.
  void ShowFind(const QString& text = QString());
  void ShowGoTo();

  // Makes a crosspoint the current cell; without one, nothing happens.
  void GoTo(int output, int input);

  // Makes the row of an output, or the column of an input, the current one; without such a channel
  // nothing happens.
  void GoToOutput(int output);
  void GoToInput(int input);

  // The size of the grid in per cent, 75 to 200; steps are 75, 100, 125, 150, 175, 200.
  int Zoom() const;
  void SetZoom(int percent);
  void StepZoom(int step);  // 1 or -1

  bool HasCrosshair() const;
  void SetCrosshair(bool visible);

 Q_SIGNALS:
  // The command of a crosspoint, both from 1, was handed to the line with this action byte.
  void TakeSent(int output, int input, int action);
  // The tool that asks for the map anew.
  void RefreshRequested();
  // Readout() or Detail() is another.
  void ReadoutChanged(const QString& readout, const QString& detail);
  // The commands that lead to the programming of a station's buttons, and to the label of its
  // output or its input.
  void ProgramRequested(int station);
  void EditLabelRequested(int station, bool ofInput);

 protected:
  void FormResized() override { LayOut(); }
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct XmapTool;
  static const XmapTool kTools[];

  void AddTools();
  // aidUndoTake and the ways to the current channels' other views, which stand on no band.
  void AddAids();
  QAction* AddAid(const char* name, const QString& caption, const QString& icon,
                  const QKeySequence& shortcut, const std::function<void()>& run);
  // The menu of a channel in its header, the outputs' being the vertical one.  What is chosen stays
  // chosen, and nothing in it acts on that.
  void ShowHeaderMenu(Qt::Orientation side, int channel, const QPoint& globalPosition);
  void AddLocks(QMenu& menu, int output);
  void AddLockCommands();
  // What the commands of the locks say of the current output.
  void ShowLock();
  // Locks an output, or unlocks it with nothing.  Without an output nothing happens.
  void SetLock(int output, std::optional<model::Locks::Against> against);
  void LocksChanged() override;
  // Gives the grid its size, which goes by the form's, and the tool bar the room above it.
  void LayOut();
  // The menu of the current cell.
  void ShowMenu(const QPoint& globalPosition);
  // What the view itself does on a key, whatever has the focus in it; nothing for other keys.
  std::function<void()> KeyCommand(const QKeyEvent& key);

  void GenerateGrid();
  model::Status DrawEverything();
  model::Status DrawAlphas(jet::RecordSet& stations);
  model::Status DrawInhibits(jet::RecordSet& stations);

  void PerformAction(int action);
  void ToggleInhibit();
  void RefreshMap();
  void SendInhibits();
  // Puts the badge "not sent yet" on the tool that sends the inhibits, or takes it off.
  void ShowUnsent();

  void ReadCurrentCell();
  void SetReadout(const QString& readout, const QString& detail = {});
  void PlaceFind();

  const Services services_;
  rules::XmapGrid grid_;
  XmapModel cells_;
  ToolBand* tools_;
  QAction* undoTake_ = nullptr;
  QAction* programButtons_ = nullptr;
  QAction* editLabel_ = nullptr;
  QAction* programInput_ = nullptr;
  QAction* editInputLabel_ = nullptr;
  QAction* lockOutput_ = nullptr;
  QAction* lockForPanels_ = nullptr;
  XmapGridView* gridView_;
  XmapFind* find_;
  PendingCrosspoints pending_;
  InhibitTool* inhibitTool_;
  TakeUndo* takeUndo_;
  QString readout_;
  QString detail_;
};

}  // namespace views

#endif  // VIEWS_XMAP_XMAP_VIEW_H_
