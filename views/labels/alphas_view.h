// SPDX-License-Identifier: MIT

#ifndef VIEWS_LABELS_ALPHAS_VIEW_H_
#define VIEWS_LABELS_ALPHAS_VIEW_H_

#include <QPoint>
#include <string>
#include <vector>

#include "model/status.h"
#include "stations/labels.h"
#include "views/labels/labels_model.h"
#include "views/main_view.h"
#include "views/services.h"

namespace views {

class LabelFind;
class LabelsGrid;
class ToolBand;

// The station labels "frmAlphas": labels, hidden flag, system input and output, and notes of
// every record of the stations in one grid.  An edited row is stored when the operator leaves it,
// also for another window, or presses Enter; Escape undoes the edit.
class AlphasView : public MainView {
  Q_OBJECT

 public:
  // Builds the grid from the stations.  A failure is reported and leaves what could be read.
  explicit AlphasView(const Services& services, QWidget* parent = nullptr);

  // Call after the database was written by others: reads all rows again, and keeps the current row,
  // the order, the scrolled place, and an edit that is not stored yet.  A failure is reported once,
  // until reading succeeds again.
  void UpdateLabels();

  // Stores the row being edited, if there is one.  False when that failed, or when the open editor
  // holds a text that its column does not take: this is reported, and the edit stays as it is.
  bool StoreRow();

  // Whether a row has values that are typed and not stored yet.
  bool HasEdit() const { return rows_.HasEdit(); }

  // Copies the selected cells, and pastes at the first of them, as the grid's keys do.
  void Copy();
  void Paste();
  // Makes a cell of a station the current one; nothing happens when there is no such station.
  void GoTo(int station, stations::LabelColumn column);

  // Opens the field for finding a label.
  void ShowFind();

 Q_SIGNALS:
  // A row was stored whose labels may be shown elsewhere.
  void LabelsChanged();
  // HasEdit() may have changed.
  void EditChanged();
  // The command aidShowInMap: the output of a station, or its input, is to be shown in the map.
  void ShowInMapRequested(int station, bool asInput);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void SetupAlphaView();
  void ConnectGrid();
  void FocusMoved(const QWidget* to);
  void PlaceFind();
  void ShowMenu(const QPoint& globalPosition);
  void ShowInMap();

  void SortBy(int column);
  void DownloadLabels();
  // Labels were stored.
  void Announce();
  void Refuse(const QString& text);

  const Services services_;
  LabelsModel rows_;
  ToolBand* tools_;
  QAction* showInMap_;
  LabelsGrid* grid_;
  LabelFind* find_;
  bool hadFocus_ = false;        // the focus was in this view when it was last in any
  std::string reportedFailure_;  // of the last reading
};

}  // namespace views

#endif  // VIEWS_LABELS_ALPHAS_VIEW_H_
