// SPDX-License-Identifier: MIT

#include "app/change_settings.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include "switcher/qt_serial_port.h"
#include "views/widgets/shown.h"

namespace app {
namespace {

// Whether both are names of one device: by a link, or without its folder.
bool IsSameDevice(const QString& a, const QString& b) {
  const auto place = [](const QString& name) {
    return QFileInfo(QDir(QStringLiteral("/dev")), name).canonicalFilePath();
  };
  return a == b || (!place(a).isEmpty() && place(a) == place(b));
}

// The link's own port is another object: it is not touched.
model::Status TryDevice(const QString& device) {
  switcher::QtSerialPort port([device](int) { return device; });
  model::Status status = port.Open(1);
  port.Close();
  return status;
}

}  // namespace

void ChangeSettings::Ask() {
  if (views::IsShown(dialog_)) return;
  dialog_ = new views::SettingsDialog(
      {.model = services_.model,
       .device = [this](int port) { return services_.file.SerialDevice(port); },
       .isInUse = [this](const QString& device) { return IsOpenDevice(device); },
       .tryDevice = TryDevice},
      &services_.window);
  dialog_->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog_, &views::SettingsDialog::Wanted, this,
          [this](const views::WantedSettings& wanted) {
            if (Apply(wanted) && dialog_ != nullptr) dialog_->accept();
          });
  dialog_->open();
}

bool ChangeSettings::IsOpenDevice(const QString& device) const {
  return services_.port.IsOpen() &&
         IsSameDevice(device, services_.file.SerialDevice(services_.model.ComPort));
}

bool ChangeSettings::IsLineChanged(const views::WantedSettings& wanted) const {
  return wanted.comPort != services_.model.ComPort || wanted.devices.contains(wanted.comPort);
}

bool ChangeSettings::Apply(const views::WantedSettings& wanted) {
  model::SystemModel& model = services_.model;
  const bool isLineChanged = IsLineChanged(wanted);
  if (isLineChanged && services_.isComparing()) {
    Refuse(tr("Not while the switcher sends what a comparison asked for"));
    return false;
  }
  const QString words = Words(wanted);
  if (words.isEmpty()) return true;
  if (services_.locks.IsConsoleLocked()) {
    Refuse(QString::fromStdString(model::ConsoleLocked().Description()));
    return false;
  }
  const bool arePanelsChanged =
      wanted.panels != model.SoftpanelSupport || wanted.ipPort != model.IpPort;
  if (arePanelsChanged && !ListenAs(wanted)) return false;
  model.SoftpanelSupport = wanted.panels;
  model.IpPort = wanted.ipPort;
  const bool isDemoChanged = wanted.demo != (model.DemoMode == 1);
  if (isDemoChanged) model.DemoMode = wanted.demo ? 1 : 0;
  if (const model::Status status = services_.file.Write(model, wanted.comPort, wanted.devices);
      !status.ok()) {
    model::ReportError(services_.reporter, "Writing Configuration File", status);
  }
  Q_EMIT NoteRequested(tr("Settings: %1").arg(words));
  if (arePanelsChanged) Q_EMIT PanelsChanged();
  if (isDemoChanged) Q_EMIT DemoModeChanged();
  // Behind the file, which names its device.
  if (isLineChanged) {
    if (const model::Status status = services_.link.MoveTo(wanted.comPort); !status.ok()) {
      Q_EMIT NoteRequested(tr("COM %1 cannot be opened: %2. It is tried again every second.")
                               .arg(wanted.comPort)
                               .arg(QString::fromStdString(status.Description())));
    }
  }
  return true;
}

// When the new port cannot be listened on, the old one is listened on again.
bool ChangeSettings::ListenAs(const views::WantedSettings& wanted) {
  const bool wasListening = services_.listener.IsListening();
  if (!wanted.panels) {
    services_.listener.Stop();
    return true;
  }
  const model::Status status = services_.listener.Start(wanted.ipPort);
  if (status.ok()) return true;
  if (wasListening) (void)services_.listener.Start(services_.model.IpPort);
  Refuse(tr("TCP port %1 cannot be used: %2. Nothing was changed.")
             .arg(wanted.ipPort)
             .arg(QString::fromStdString(status.Description())));
  return false;
}

// What is another than before: "COM 2, panels on TCP port 1300, demo mode".
QString ChangeSettings::Words(const views::WantedSettings& wanted) const {
  const model::SystemModel& model = services_.model;
  QStringList words;
  if (wanted.comPort != model.ComPort) words.append(tr("serial port COM %1").arg(wanted.comPort));
  for (const auto& [port, device] : wanted.devices) {
    words.append(device.isEmpty() ? tr("COM %1 is the computer's own port").arg(port)
                                  : tr("COM %1 is %2").arg(port).arg(device));
  }
  if (wanted.panels != model.SoftpanelSupport || wanted.ipPort != model.IpPort) {
    words.append(wanted.panels ? tr("panels on TCP port %1").arg(wanted.ipPort)
                               : tr("no panels (TCP port %1)").arg(wanted.ipPort));
  }
  if (wanted.demo != (model.DemoMode == 1)) {
    words.append(wanted.demo ? tr("demo mode on") : tr("demo mode off"));
  }
  return words.join(QStringLiteral(", "));
}

void ChangeSettings::Refuse(const QString& text) {
  if (dialog_ != nullptr) dialog_->Say(text);
}

}  // namespace app
