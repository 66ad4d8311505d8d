// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_OPEN_VIEWS_H_
#define APP_SHELL_OPEN_VIEWS_H_

#include <QDateTime>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>

#include "switcher/switcher_events.h"
#include "views/labels/alphas_view.h"
#include "views/levels/input_level_dialog.h"
#include "views/programming/buttons_view.h"
#include "views/services.h"
#include "views/tally/tally_dialog.h"
#include "views/xmap/xmap_view.h"

namespace app {

// The views that are open: loaded, brought up, found by name and closed.  What the switcher reports
// refreshes those that show it.
class OpenViews : public QObject, public switcher::SwitcherEvents {
  Q_OBJECT

 public:
  // All that is referred to must outlive the object.
  OpenViews(QMdiArea& area, const views::Services& services);

  // Closes the dialogs that are still open.
  ~OpenViews() override;

  // Shows a main view: loads it in the place that the settings say, or brings it up where it is,
  // in its normal state and in sight.
  void ShowXmap();
  void ShowAlphas();
  void ShowButtons();

  // Shows the programming of a station, the label of its output or its input, or its row or column
  // in the map.  Of a station that is not there only the view is shown.
  void ShowButtonsOf(int station);
  void ShowLabelOf(int station, bool ofInput);
  void ShowInMap(int station, bool asInput);

  // Shows the three main views, each in the place that the settings say, also where it was open
  // in another.
  void ShowAllInPlace();

  // Opens the input levels or the tally, modal over the main window; one that is open already
  // stays as it is.  TallyViewOpen is true while the tally shows.
  void ShowLevels();
  void ShowTally();

  // Says over the map, whenever it is open, that it may not be true any more; empty for nothing.
  void SetMapWarning(const QString& warning);

  // Whether a main view of that name is loaded, compared without regard to case.
  bool IsOpen(const QString& name) const { return Find(name) != nullptr; }

  // The main views; null for one that is not open.
  views::XmapView* Xmap() const;
  views::AlphasView* Alphas() const;
  views::ButtonsView* Buttons() const;

  // Whether the map is the view that the operator works in, or worked in before another window came
  // up.
  bool IsMapCurrent() const;

  // Whether the view that the operator works in has a search of its own, and opening its field;
  // without one nothing happens.
  bool CanFind() const;
  void ShowFind();

  // Whether something is typed into a view and not stored yet.
  bool HasEdits() const;

  // Stores what is typed into a view and not stored yet.  False when that failed.
  bool StoreEdits();

  // Stores what is typed, and unloads all views and dialogs; each main view keeps its place.
  void CloseAll();

  // Shows the labels that are stored now in all views and dialogs that have labels.
  void UpdateLabels();

  void CrosspointRowChanged(int output, int mode) override;
  void GainsChanged() override;
  void TallyChanged() override;
  void LabelsChanged(int selector) override;
  void InhibitsChanged(int output) override;
  void RelaysChanged(int output) override;
  void ButtonsChanged(int station) override;
  void OptosChanged() override;

 Q_SIGNALS:
  // The operator works in another view now, or in none.
  void ActiveViewChanged();
  // HasEdits() may have changed.
  void EditsChanged();
  // A main view was loaded, and is about to be shown.
  void Loaded(views::MainView* view);
  // The map was loaded or unloaded.
  void XmapLoaded(bool loaded);
  // The operator has set a gain.
  void GainSet();

 private:
  QMdiSubWindow* Find(const QString& name) const;
  void Show(const QString& name, const std::function<views::MainView*()>& load);
  // The loaded view of that name; null when it is not open.
  template <typename View>
  View* FindView(const QString& name) const;
  // The view that the operator works in, if it is of that kind; else null.
  template <typename View>
  View* Active() const;

  // Tells the tally the names of the stations, as far as they can be read.
  void NameStations();
  views::MainView* LoadXmap();
  views::MainView* LoadAlphas();

  QMdiArea& area_;
  const views::Services services_;
  QString mapWarning_;
  QPointer<views::InputLevelDialog> levels_;
  QPointer<views::TallyDialog> tally_;
  // Null until the first report.
  QDateTime gainsReportedAt_;
  QDateTime tallyReportedAt_;
};

}  // namespace app

#endif  // APP_SHELL_OPEN_VIEWS_H_
