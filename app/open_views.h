// SPDX-License-Identifier: MIT

#ifndef APP_OPEN_VIEWS_H_
#define APP_OPEN_VIEWS_H_

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QObject>
#include <QString>
#include <functional>

#include "config/window_settings.h"
#include "switcher/switcher_events.h"
#include "views/xmap_view.h"

namespace app {

// The views that are open, by name, and the way of what the switcher reports to them.
class OpenViews : public QObject, public switcher::SwitcherEvents {
  Q_OBJECT

 public:
  // All that is referred to must outlive the object.
  OpenViews(QMdiArea& area, const views::XmapServices& services);

  // Shows a main view: loads it in the place that the settings say, or brings it up as it is,
  // out of its minimised state.
  void ShowXmap();
  void ShowAlphas();
  void ShowButtons();

  // Whether a view of that name is loaded, compared without regard to case.
  bool IsOpen(const QString& name) const { return Find(name) != nullptr; }

  // The crosspoint map; null when it is not open.
  views::XmapView* Xmap() const;

  // Unloads all views; each keeps its place.
  void CloseAll();

  void CrosspointRowChanged(int output, int mode) override;
  void GainsChanged() override {}
  void TallyChanged() override {}
  void LabelsChanged(int selector) override;
  void InhibitsChanged(int output) override;
  void RelaysChanged(int /*output*/) override {}
  void ButtonsChanged(int /*station*/) override {}
  void OptosChanged() override {}

 Q_SIGNALS:
  // What the current cell of the map says; empty without a map.
  void ReadoutChanged(const QString& text);
  // The map was loaded or unloaded.
  void XmapLoaded(bool loaded);
  // The QDV status tool of a view.
  void QdvStatusRequested();

 private:
  QMdiSubWindow* Find(const QString& name) const;
  void Show(const QString& name, const std::function<views::MainView*()>& load);
  views::MainView* LoadXmap();
  void SetInhibitsUnsent(bool unsent);

  QMdiArea& area_;
  const views::XmapServices services_;
  bool inhibitsUnsent_ = false;  // edited in this run and not sent since
};

}  // namespace app

#endif  // APP_OPEN_VIEWS_H_
