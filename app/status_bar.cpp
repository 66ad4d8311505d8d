// SPDX-License-Identifier: MIT

#include "app/status_bar.h"

#include <QDir>
#include <QFontMetrics>

#include "app/elided_label.h"

namespace app {

namespace {

constexpr int kNoteMilliseconds = 5000;

// Room for "Out 064  Sta. 064  <  In 064  Inpt 064: Priority crosspoint".
constexpr int kReadoutCharacters = 60;

}  // namespace

StatusBar::StatusBar(QWidget* parent)
    : QStatusBar(parent),
      link_(new QLabel(this)),
      closedPort_(new QLabel(this)),
      blocked_(new QLabel(this)),
      panels_(new QLabel(this)),
      readout_(new ElidedLabel(this)),
      mapState_(new QLabel(this)),
      unsent_(new ElidedLabel(this)),
      note_(new ElidedLabel(this)),
      folder_(new ElidedLabel(this)),
      demo_(new QLabel(tr("DEMO"), this)) {
  setObjectName(QStringLiteral("sbStatusBar"));
  link_->setObjectName(QStringLiteral("sbStatusBar_1"));
  closedPort_->setObjectName(QStringLiteral("aidClosedPort"));
  blocked_->setObjectName(QStringLiteral("aidBlockedCode"));
  panels_->setObjectName(QStringLiteral("aidPanels"));
  readout_->setObjectName(QStringLiteral("aidReadout"));
  mapState_->setObjectName(QStringLiteral("aidMapState"));
  demo_->setObjectName(QStringLiteral("aidDemo"));
  unsent_->setObjectName(QStringLiteral("aidUnsent"));
  note_->setObjectName(QStringLiteral("aidNote"));
  folder_->setObjectName(QStringLiteral("aidFolder"));
  for (QLabel* const label : {link_, closedPort_, blocked_, panels_, readout_, mapState_, unsent_,
                              note_, folder_, demo_}) {
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(6, 0, 6, 0);
  }
  link_->setAccessibleName(tr("Link to the switcher"));
  readout_->setAccessibleName(tr("Current crosspoint"));

  addWidget(link_);
  addWidget(closedPort_);
  addWidget(blocked_);
  addWidget(panels_);
  addWidget(readout_, 1);
  addWidget(mapState_);
  addWidget(unsent_);
  addWidget(note_);
  addPermanentWidget(folder_);
  addPermanentWidget(demo_);
  closedPort_->hide();
  blocked_->hide();
  unsent_->hide();
  panels_->hide();
  note_->hide();
  mapState_->hide();
  folder_->hide();
  demo_->hide();
  closedPort_->setToolTip(
      tr("The serial port cannot be used now. It is tried again every second, and the link comes "
         "up by itself when it can."));
  mapState_->setToolTip(tr("When the switcher last reported a part of the crosspoint map"));
  demo_->setToolTip(tr("Demo mode: the map draws its own takes, whatever the switcher says"));
  // A frame makes it a badge without a colour of its own.
  demo_->setFrameShape(QFrame::Box);

  noteTime_.setSingleShot(true);
  noteTime_.setInterval(kNoteMilliseconds);
  connect(&noteTime_, &QTimer::timeout, note_, &QLabel::hide);
}

void StatusBar::SetLinkText(const QString& text) {
  link_->setText(text);
  link_->setMinimumWidth(link_->sizeHint().width());
  UpdateLegend();
}

void StatusBar::SetLegend(QWidget* legend) {
  legend_ = legend;
  // Without a minimum of its own it would keep the window from becoming narrow.
  legend_->setMinimumWidth(1);
  addPermanentWidget(legend_);
  UpdateLegend();
}

void StatusBar::WantLegend(bool wanted) {
  legendWanted_ = wanted;
  UpdateLegend();
}

void StatusBar::UpdateLegend() {
  if (legend_ == nullptr) return;
  const int readout = kReadoutCharacters * fontMetrics().averageCharWidth();
  int needed = link_->sizeHint().width() + legend_->sizeHint().width() + readout;
  for (const QLabel* const label : {closedPort_, mapState_, unsent_, folder_, demo_}) {
    if (!label->isHidden()) needed += label->sizeHint().width();
  }
  legend_->setVisible(legendWanted_ && width() >= needed);
}

void StatusBar::resizeEvent(QResizeEvent* event) {
  QStatusBar::resizeEvent(event);
  UpdateLegend();
}

void StatusBar::SetReadout(const QString& text) {
  readout_->setText(text);
  readout_->setToolTip(text);
}

void StatusBar::SetMapState(const QString& text) {
  mapState_->setText(text);
  mapState_->setVisible(!text.isEmpty());
  UpdateLegend();
}

void StatusBar::SetDemo(bool demo) {
  demo_->setVisible(demo);
  UpdateLegend();
}

void StatusBar::SetFolder(const QString& folder) {
  const QString path = QDir::toNativeSeparators(folder);
  folder_->setText(tr("Folder %1").arg(path));
  folder_->setToolTip(tr("The program's folder cannot be written. This console works on the "
                         "database and the settings in %1")
                          .arg(path));
  folder_->show();
  UpdateLegend();
}

void StatusBar::ShowNote(const QString& text) {
  note_->setText(text);
  note_->show();
  noteTime_.start();
}

void StatusBar::SetUnsent(const QString& tables) {
  unsent_->setText(tr("Unsent: %1").arg(tables));
  unsent_->setToolTip(tr("Edited here, and not sent to the switcher since"));
  unsent_->setVisible(!tables.isEmpty());
  UpdateLegend();
}

void StatusBar::SetPanels(const QStringList& panels) {
  panels_->setText(tr("Panels %1").arg(panels.size()));
  panels_->setToolTip(panels.isEmpty() ? tr("No network panel is connected")
                                       : panels.join(QLatin1Char('\n')));
  panels_->show();
}

void StatusBar::SetClosedPort(std::optional<int> number) {
  if (number.has_value()) closedPort_->setText(tr("COM %1 is not open").arg(*number));
  closedPort_->setVisible(number.has_value());
  UpdateLegend();
}

void StatusBar::SetBlockedCode(std::optional<std::uint8_t> code) {
  blocked_->setVisible(code.has_value());
  if (!code.has_value()) return;
  blocked_->setText(tr("⚠ Receiving blocked by unknown code 0x%1")
                        .arg(static_cast<int>(*code), 2, 16, QLatin1Char('0')));
  blocked_->setToolTip(
      tr("The switcher sent a message that this console does not know. Nothing that it sends is "
         "read until the link is opened anew: unplug the serial line and plug it in, or restart "
         "the console."));
}

}  // namespace app
