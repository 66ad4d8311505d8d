// SPDX-License-Identifier: MIT

#include "views/settings/settings_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "views/widgets/elided_label.h"
#include "views/widgets/icon.h"
#include "views/widgets/plain_tip.h"
#include "views/window_place/on_screen.h"

namespace views {
namespace {

constexpr int kLargestIpPort = 65535;
constexpr int kDeviceCharacters = 28;
constexpr int kStateCharacters = 34;
constexpr int kFirstCharacters = 112;  // of the window, for what the system says of a device

QLabel* NewLine(const char* name, QWidget* parent) {
  auto* const line = new QLabel(parent);
  line->setObjectName(QLatin1String(name));
  line->setTextFormat(Qt::PlainText);
  line->setWordWrap(true);
  return line;
}

// A field that shows and cannot be typed in has the ground of what is around it.
void SetFixed(QLineEdit& field, bool fixed) {
  field.setReadOnly(fixed);
  QPalette palette = field.parentWidget()->palette();
  if (fixed) palette.setColor(QPalette::Base, palette.color(QPalette::Window));
  field.setPalette(palette);
}

}  // namespace

SettingsDialog::SettingsDialog(const Services& services, QWidget* parent)
    : QDialog(parent),
      services_(services),
      comPort_(new QComboBox(this)),
      devices_(),
      states_(),
      try_(new QPushButton(tr("&Try Devices"), this)),
      edit_(new QPushButton(tr("&Change Devices"), this)),
      panels_(new QCheckBox(tr("Serve network &panels"), this)),
      ipPort_(new QLineEdit(QString::number(services.model.IpPort), this)),
      demo_(new QCheckBox(tr("&Demo mode: the map draws its own takes"), this)),
      shown_(),
      said_(NewLine("aidSettingsSaid", this)),
      ok_(new QPushButton(tr("OK"), this)) {
  setObjectName(QStringLiteral("frmSettings"));
  setWindowTitle(tr("Settings"));
  setWindowIcon(Icon(QStringLiteral("settings")));
  ok_->setObjectName(QStringLiteral("cmdOkSettings"));
  auto* const cancel = new QPushButton(tr("Cancel"), this);
  cancel->setObjectName(QStringLiteral("cmdCancelSettings"));
  auto* const buttons = new QDialogButtonBox(this);
  buttons->addButton(ok_, QDialogButtonBox::AcceptRole);
  buttons->addButton(cancel, QDialogButtonBox::RejectRole);
  for (QPushButton* const button : {try_, edit_}) button->setAutoDefault(false);
  ok_->setDefault(true);

  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(MakeLine());
  layout->addWidget(MakePanels());
  layout->addWidget(MakeRest());
  layout->addWidget(said_);
  layout->addStretch();
  layout->addWidget(buttons);
  // What is said beside it moves nothing.
  said_->setMinimumHeight(2 * fontMetrics().lineSpacing());
  said_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  const QSize wanted(kFirstCharacters * fontMetrics().averageCharWidth(), sizeHint().height());
  resize(SizeOnScreen(wanted, screen()->availableSize()));

  connect(try_, &QPushButton::clicked, this, &SettingsDialog::TryDevices);
  connect(edit_, &QPushButton::clicked, this, &SettingsDialog::EditDevices);
  connect(ipPort_, &QLineEdit::textChanged, this, &SettingsDialog::CheckPort);
  connect(ok_, &QPushButton::clicked, this, [this] { Q_EMIT Wanted(Settings()); });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  QWidget* last = comPort_;
  const auto follow = [&last](QWidget* next) {
    setTabOrder(last, next);
    last = next;
  };
  for (QLineEdit* const field : devices_) follow(field);
  follow(try_);
  follow(edit_);
  follow(panels_);
  follow(ipPort_);
  follow(demo_);
  for (QLineEdit* const field : shown_) follow(field);
  follow(ok_);
  follow(cancel);
  comPort_->setFocus();
}

QGroupBox* SettingsDialog::MakeLine() {
  auto* const group = new QGroupBox(tr("Serial line to the switcher"), this);
  comPort_->setObjectName(QStringLiteral("cmbComPort"));
  comPort_->setToolTip(tr("The port that the console opens. Another one is opened at once."));
  try_->setObjectName(QStringLiteral("aidTryDevices"));
  try_->setToolTip(tr("Open and close each device, but for the one that is in use"));
  edit_->setObjectName(QStringLiteral("aidChangeDevices"));
  edit_->setToolTip(
      tr("Let the devices be edited. A wrong one takes the console off its switcher."));

  auto* const grid = new QGridLayout(group);
  auto* const caption = new QLabel(tr("&Serial port:"), group);
  caption->setBuddy(comPort_);
  grid->addWidget(caption, 0, 0);
  grid->addWidget(comPort_, 0, 1, Qt::AlignLeft);
  for (int i = 0; i < kPorts; ++i) {
    const auto at = static_cast<std::size_t>(i);
    const QString name = QStringLiteral("COM %1").arg(i + 1);
    comPort_->addItem(name);
    named_[at] = services_.device(i + 1);
    QLineEdit*& field = devices_[at];
    field = new QLineEdit(named_[at], group);
    field->setObjectName(QStringLiteral("txtDevice_%1").arg(i + 1));
    field->setAccessibleName(tr("Device of COM %1").arg(i + 1));
    field->setMinimumWidth(kDeviceCharacters * fontMetrics().averageCharWidth());
    SetFixed(*field, true);
    states_[at] = new ElidedLabel(group);
    states_[at]->setTextFormat(Qt::PlainText);
    states_[at]->setObjectName(QStringLiteral("aidDeviceState_%1").arg(i + 1));
    states_[at]->setMinimumWidth(kStateCharacters * fontMetrics().averageCharWidth());
    grid->addWidget(new QLabel(name, group), i + 1, 0, Qt::AlignRight);
    grid->addWidget(field, i + 1, 1);
    grid->addWidget(states_[at], i + 1, 2);
    // What was tried was another device.
    connect(field, &QLineEdit::textChanged, states_[at], &QLabel::clear);
  }
  comPort_->setCurrentIndex(services_.model.ComPort - 1);
  grid->setColumnStretch(2, 1);
  auto* const below = new QHBoxLayout;
  below->addWidget(try_);
  below->addWidget(edit_);
  below->addStretch();
  grid->addLayout(below, kPorts + 1, 1, 1, 2);
  return group;
}

QGroupBox* SettingsDialog::MakePanels() {
  auto* const group = new QGroupBox(tr("Network panels"), this);
  panels_->setObjectName(QStringLiteral("ckSoftpanel"));
  panels_->setChecked(services_.model.SoftpanelSupport);
  ipPort_->setObjectName(QStringLiteral("txtIpPort"));
  ipPort_->setValidator(new QIntValidator(1, kLargestIpPort, ipPort_));
  ipPort_->setMaximumWidth(12 * fontMetrics().averageCharWidth());
  QLabel* const note = NewLine("aidPanelsNote", group);
  note->setText(
      tr("Both take effect at once. A panel that is connected stays so until it leaves, or until "
         "the next start."));
  auto* const form = new QFormLayout(group);
  form->addRow(panels_);
  form->addRow(tr("TCP p&ort:"), ipPort_);
  form->addRow(note);
  return group;
}

QGroupBox* SettingsDialog::MakeRest() {
  auto* const group = new QGroupBox(tr("Others"), this);
  demo_->setObjectName(QStringLiteral("ckDemoMode"));
  demo_->setChecked(services_.model.DemoMode == 1);
  demo_->setToolTip(tr("Takes effect at once. Do not use it with a switcher."));
  auto* const form = new QFormLayout(group);
  form->addRow(demo_);
  const auto add = [&](const char* name, const QString& caption, const QString& text) {
    auto* const field = new QLineEdit(text, group);
    field->setObjectName(QLatin1String(name));
    field->setToolTip(tr("Written by the console; it sets nothing."));
    SetFixed(*field, true);
    form->addRow(caption, field);
    field->setCursorPosition(0);
    return field;
  };
  shown_ = {add("txtDownloadInterval", tr("Download Interval:"),
                tr("%1 ms").arg(services_.model.DownloadInterval)),
            add("txtAppPath", tr("App Path:"), QString::fromStdString(services_.model.AppPath))};
  return group;
}

QString SettingsDialog::DeviceWords(int port) const {
  const QString device = devices_[static_cast<std::size_t>(port - 1)]->text().trimmed();
  if (device.isEmpty()) return tr("The computer's own port");
  if (services_.isInUse(device)) return tr("In use by this console");
  const model::Status status = services_.tryDevice(device);
  return status.ok() ? tr("Can be opened")
                     : tr("Cannot be opened: %1").arg(QString::fromStdString(status.Description()));
}

void SettingsDialog::TryDevices() {
  for (int port = 1; port <= kPorts; ++port) {
    ElidedLabel& state = *states_[static_cast<std::size_t>(port - 1)];
    state.setText(DeviceWords(port));
    state.setToolTip(PlainTip(state.text()));
  }
}

void SettingsDialog::EditDevices() {
  for (QLineEdit* const field : devices_) SetFixed(*field, false);
  devices_[static_cast<std::size_t>(comPort_->currentIndex())]->setFocus();
  edit_->setEnabled(false);
  Say(
      tr("The device of the port in use is opened at once, another one when its port is chosen. "
         "An empty field stands for the computer's own port."));
}

// The number that is in force stands, whatever it is.
void SettingsDialog::CheckPort() {
  const bool isGood =
      ipPort_->hasAcceptableInput() || ipPort_->text() == QString::number(services_.model.IpPort);
  ok_->setEnabled(isGood);
  Say(isGood ? QString() : tr("The TCP port is a number from 1 to 65535."));
}

WantedSettings SettingsDialog::Settings() const {
  WantedSettings wanted{.comPort = comPort_->currentIndex() + 1,
                        .panels = panels_->isChecked(),
                        .ipPort = ipPort_->text().toInt(),
                        .demo = demo_->isChecked(),
                        .devices = {}};
  for (std::size_t i = 0; i < devices_.size(); ++i) {
    // On one line, whatever was pasted.
    const QString device = devices_[i]->text().simplified();
    if (device != named_[i].simplified()) wanted.devices[static_cast<int>(i) + 1] = device;
  }
  return wanted;
}

void SettingsDialog::Say(const QString& text) { said_->setText(text); }

}  // namespace views
