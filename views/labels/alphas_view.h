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
// every record of the stations in one grid.  An edited row is stored when it is left, also for
// another window, or when Enter is pressed; Escape gives it back.
class AlphasView : public MainView {
  Q_OBJECT

 public:
  // Builds the grid from the stations.  A failure is reported and leaves what could be read.
  explicit AlphasView(const Services& services, QWidget* parent = nullptr);

  // Reads all rows anew from the stations, keeping the current row, the order and the place
  // scrolled to: the database was written from elsewhere.  An edit that is not stored yet is
  // kept.  What cannot be read is reported once, until it can be read again.
  void UpdateLabels();

  // Stores the row being edited, if there is one.  False when that failed, or when the open
  // editor holds a text that its column does not take; it is reported then, and the edit stays
  // as it is.
  bool StoreRow();

  // Opens the field for finding a label.
  void ShowFind();

 Q_SIGNALS:
  // A row was stored whose labels may be shown elsewhere.
  void LabelsChanged();

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

  void SortBy(int column);
  void Copy();
  void Paste();
  void DownloadLabels();
  // Tells the others what was stored.
  void Announce(const std::vector<stations::LabelEdit>& changes);
  void Refuse(const QString& text);

  const Services services_;
  LabelsModel model_;
  ToolBand* tools_;
  LabelsGrid* grid_;
  LabelFind* find_;
  bool wasHere_ = false;         // the focus, when it was somewhere last
  std::string reportedFailure_;  // of the last reading
};

}  // namespace views

#endif  // VIEWS_LABELS_ALPHAS_VIEW_H_
