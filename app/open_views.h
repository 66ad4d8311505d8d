// SPDX-License-Identifier: MIT

#ifndef APP_OPEN_VIEWS_H_
#define APP_OPEN_VIEWS_H_

#include <QDateTime>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>

#include "app/unsent_tables.h"
#include "switcher/switcher_events.h"
#include "views/labels/alphas_view.h"
#include "views/levels/input_level_dialog.h"
#include "views/programming/buttons_view.h"
#include "views/services.h"
#include "views/tally/tally_dialog.h"
#include "views/xmap/xmap_view.h"

namespace app {

// The views that are open, by name, and the way of what the switcher reports to them.
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

  // Shows the three main views, each in the place that the settings say, also where it was open
  // in another.
  void ShowAllInPlace();

  // Opens the input levels or the tally, modal over the main window; one that is open already
  // stays as it is.  TallyViewOpen is true while the tally shows.
  void ShowLevels();
  void ShowTally();

  // Whether a main view of that name is loaded, compared without regard to case.
  bool IsOpen(const QString& name) const { return Find(name) != nullptr; }

  // The main views; null for one that is not open.
  views::XmapView* Xmap() const;
  views::AlphasView* Alphas() const;
  views::ButtonsView* Buttons() const;

  // Whether the view that the operator works in has a search of its own, and opening its field;
  // without one nothing happens.
  bool CanFind() const;
  void ShowFind();

  // A table was edited here, or handed to the line in so many messages: of one station or output
  // (from 1), or of all with model::kAll.
  void TableEdited(switcher::Table table, int station);
  void TableSent(switcher::Table table, int station, int messages);
  // A table could not be sent.
  void TableFailed(switcher::Table table, int station);
  // The database holds what the switcher holds.
  void NothingUnsent();

  // Stores what is typed into a view and not stored yet.  False when that failed.
  bool StoreEdits();

  // Stores what is typed, and unloads all views and dialogs; each main view keeps its place.
  void CloseAll();

  void CrosspointRowChanged(int output, int mode) override;
  void GainsChanged() override;
  void TallyChanged() override;
  void LabelsChanged(int selector) override;
  void InhibitsChanged(int output) override;
  void RelaysChanged(int output) override;
  void ButtonsChanged(int station) override;
  void OptosChanged() override;
  void MessageRefused(std::string_view description, switcher::DecodeStatus status) override;

 Q_SIGNALS:
  // The operator works in another view now, or in none.
  void ActiveViewChanged();
  // What the current cell of the map says; empty without a map.
  void ReadoutChanged(const QString& text);
  // The map was loaded or unloaded.
  void XmapLoaded(bool loaded);
  // The names of the tables edited in this run and not sent since; empty for none.
  void UnsentChanged(const QString& tables);
  // The QDV status tool of a view.
  void QdvStatusRequested();
  // The tool that sends all button programming.
  void SendButtonDataRequested();
  // The switcher reported this row of the map (from 1), with this status value.
  void MapReported(int output, int mode);
  // A message of the switcher was refused; `description` names it.
  void ReportRefused(const QString& description, switcher::DecodeStatus status);
  // The map sent the command of a crosspoint, both from 1, with this action byte.
  void TakeSent(int output, int input, int action);
  // The map is asked for anew.
  void MapRefreshRequested();
  // The same as TableEdited(), TableSent() and TableFailed() were told.
  void Edited(const switcher::TablePart& table);
  void Sent(const switcher::TablePart& table, int messages);
  void NotSent(const switcher::TablePart& table);
  // A tool of a view has sent a table; Sent() comes as well.
  void SentByTool(const switcher::TablePart& table, int messages);
  // Something to say in passing.
  void NoteRequested(const QString& note);

 private:
  QMdiSubWindow* Find(const QString& name) const;
  void Show(const QString& name, const std::function<views::MainView*()>& load);
  // The loaded view of that name; null when it is not open.
  template <typename View>
  View* Loaded(const QString& name) const;
  // The view that the operator works in, if it is of that kind; else null.
  template <typename View>
  View* Active() const;

  views::MainView* LoadXmap();
  views::MainView* LoadAlphas();
  views::MainView* LoadButtons();
  void Connect(views::MainView& view);
  void ShowUnsent();

  QMdiArea& area_;
  const views::Services services_;
  UnsentTables unsent_;
  QPointer<views::InputLevelDialog> levels_;
  QPointer<views::TallyDialog> tally_;
  // Null until the first report.
  QDateTime gainsReportedAt_;
  QDateTime tallyReportedAt_;
};

}  // namespace app

#endif  // APP_OPEN_VIEWS_H_
