// SPDX-License-Identifier: MIT

#ifndef VIEWS_SETTINGS_SETTINGS_DIALOG_H_
#define VIEWS_SETTINGS_SETTINGS_DIALOG_H_

#include <QDialog>
#include <QString>

#include <array>
#include <cstdint>
#include <functional>
#include <map>

#include "model/status.h"
#include "model/system_model.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace views {

class ElidedLabel;

// What the operator wants.
struct WantedSettings {
  int comPort = 1;  // 1 to 4
  bool panels = false;
  std::int32_t ipPort = 0;
  bool demo = false;
  std::map<int, QString>
      devices;  // of the serial ports that get another one; empty: the platform's
};

// frmSettings: the settings of the installation.  It changes nothing by itself.
//
// Devices are shown and can be tried.  They can be edited when the operator has asked for that: a
// wrong one takes the console off its switcher.
class SettingsDialog : public QDialog {
  Q_OBJECT

 public:
  static constexpr int kPorts = 4;

  struct Services {
    const model::SystemModel& model;
    std::function<QString(int port)> device;  // as the settings file names it, or the platform
    // Whether the link to the switcher has this device open.
    std::function<bool(const QString& device)> isInUse;
    // Opens and closes a device.
    std::function<model::Status(const QString& device)> tryDevice;
  };
  // All must outlive the dialog.
  explicit SettingsDialog(const Services& services, QWidget* parent = nullptr);

  // Says in the dialog why it stays open.
  void Say(const QString& text);

 Q_SIGNALS:
  // The operator wants these.  The dialog stays open until it is accepted.
  void Wanted(const views::WantedSettings& settings);

 private:
  QGroupBox* MakeLine();
  QGroupBox* MakePanels();
  QGroupBox* MakeRest();
  void TryDevices();
  void EditDevices();
  QString DeviceWords(int port) const;
  void CheckPort();
  WantedSettings Settings() const;

  const Services services_;
  std::array<QString, kPorts> named_;  // the devices as they are now
  QComboBox* comPort_;
  std::array<QLineEdit*, kPorts> devices_;
  std::array<ElidedLabel*, kPorts> states_;
  QPushButton* try_;
  QPushButton* edit_;
  QCheckBox* panels_;
  QLineEdit* ipPort_;
  QCheckBox* demo_;
  std::array<QLineEdit*, 2> shown_;  // what is written by the console
  QLabel* said_;
  QPushButton* ok_;
};

}  // namespace views

#endif  // VIEWS_SETTINGS_SETTINGS_DIALOG_H_
