// SPDX-License-Identifier: MIT

#ifndef APP_CHANGE_SETTINGS_H_
#define APP_CHANGE_SETTINGS_H_

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>

#include "app/run/settings_file.h"
#include "gateway/qt_sockets.h"
#include "model/error_reporter.h"
#include "model/locks.h"
#include "model/system_model.h"
#include "switcher/link.h"
#include "switcher/serial_port.h"
#include "views/settings/settings_dialog.h"

namespace app {

// Shows the settings of the installation, and puts into force and into the file what the operator
// changes of them.
class ChangeSettings : public QObject {
  Q_OBJECT

 public:
  struct Services {
    model::SystemModel& model;
    QWidget& window;  // the main window
    const SettingsFile& file;
    switcher::Link& link;
    switcher::SerialPort& port;
    gateway::Listener& listener;
    model::ErrorReporter& reporter;
    const model::Locks& locks;
    std::function<bool()> isComparing;  // then the line cannot be changed
  };

  // All must outlive the object.
  explicit ChangeSettings(const Services& services) : services_(services) {}

  // Opens frmSettings, modal over the main window.
  void Ask();

  // Puts these into force, and into the file.  False when they cannot be; then the dialog says why
  // and nothing is changed.  A serial port that cannot be opened now is tried again by the poll,
  // and a file that cannot be written is reported.
  bool Apply(const views::WantedSettings& wanted);

 Q_SIGNALS:
  // What was changed.
  void NoteRequested(const QString& note);
  // The model's SoftpanelSupport or IpPort, or its DemoMode, is another one.
  void PanelsChanged();
  void DemoModeChanged();

 private:
  bool IsLineChanged(const views::WantedSettings& wanted) const;
  bool IsOpenDevice(const QString& device) const;
  bool ListenAs(const views::WantedSettings& wanted);
  QString Words(const views::WantedSettings& wanted) const;
  void Refuse(const QString& text);

  const Services services_;
  QPointer<views::SettingsDialog> dialog_;
};

}  // namespace app

#endif  // APP_CHANGE_SETTINGS_H_
