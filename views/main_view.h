// SPDX-License-Identifier: MIT

#ifndef VIEWS_MAIN_VIEW_H_
#define VIEWS_MAIN_VIEW_H_

#include <QPointer>
#include <QString>
#include <QWidget>

#include "config/window_settings.h"
#include "views/window_place/placement.h"

namespace views {

// What the three main views have in common: a form in a sub-window of the main window whose
// place is kept in the settings.
//
// Shown for the first time, the form takes its place from the settings; closed, it leaves its
// place there, unless it is minimised.  Its place is that of its normal state, in the own
// coordinates of the work area: neither maximising it nor scrolling the area changes it.
class MainView : public QWidget {
  Q_OBJECT

 public:
  // `name` is the fixed name of the form, `settingsPrefix` begins its keys ("Xmap").
  // `settings` must outlive the view.
  MainView(const QString& name, const QString& title, const QString& settingsPrefix,
           config::WindowSettings& settings, QWidget* parent = nullptr);

  // Puts the form where the settings say.
  void RestorePlacement();

  // What has the focus when the view comes up: nothing that sends.
  virtual QWidget& FirstFocus() { return *this; }

 Q_SIGNALS:
  // The tool for the QDV status was clicked.
  void QdvStatusRequested();
  // Something to say in passing.
  void NoteRequested(const QString& note);

 protected:
  // The outer frame of the form, in its parent's coordinates: the sub-window, or the widget
  // itself while it is in none.
  QRect FormGeometry() const;

  // The form's outer size has changed.
  virtual void FormResized() {}

  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* Form();
  const QWidget* Form() const;
  // Goes by the state of the sub-window, which was `old`.
  void StateChanged(Qt::WindowStates old);

  Placement placement_;
  QPointer<QWidget> watched_;  // the sub-window whose size and state are followed
  QRect normalPlace_;          // where it stood when it was in its normal state last
  bool wasRestored_ = false;
};

}  // namespace views

#endif  // VIEWS_MAIN_VIEW_H_
