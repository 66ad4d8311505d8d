// SPDX-License-Identifier: MIT

#include "app/shell/about_dialog.h"

#include <QDialogButtonBox>
#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/shell/version.h"
#include "views/widgets/icon.h"

namespace app {

namespace {

constexpr int kIconSize = 64;

QLabel* NewText(const char* name, QWidget* parent) {
  auto* const label = new QLabel(parent);
  label->setObjectName(QLatin1String(name));
  label->setTextFormat(Qt::PlainText);
  // Also what shows the carriage return of the title as a line break.
  label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  return label;
}

}  // namespace

AboutDialog::AboutDialog(const model::SystemModel& model, QWidget* parent)
    : QDialog(parent),
      model_(model),
      title_(NewText("lblTitle", this)),
      path_(NewText("lblAppPath", this)),
      port_(NewText("lblComPort", this)),
      connected_(NewText("lblConnected", this)),
      stations_(NewText("lblStations", this)),
      channels_(NewText("lblChannels", this)) {
  setObjectName(QStringLiteral("frmTeskAbout"));
  setWindowTitle(tr("About Orvo Intercom Control"));

  auto* const icon = new QLabel(this);
  icon->setPixmap(views::Icon(QStringLiteral("teskctl"))
                      .pixmap(QSize(kIconSize, kIconSize), devicePixelRatio()));
  QFont large = title_->font();
  large.setPointSizeF(large.pointSizeF() * 1.25);
  title_->setFont(large);

  auto* const head = new QHBoxLayout;
  head->addWidget(icon);
  head->addSpacing(12);
  head->addWidget(title_, 1);

  auto* const facts = new QFormLayout;
  facts->setLabelAlignment(Qt::AlignRight);
  path_->setWordWrap(true);
  facts->addRow(tr("Program folder:"), path_);
  facts->addRow(tr("Serial port:"), port_);
  facts->addRow(tr("Switcher connected:"), connected_);
  facts->addRow(tr("System:"), stations_);
  facts->addRow(QString(), channels_);

  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOk"));
  buttons->button(QDialogButtonBox::Ok)->setFocus();

  auto* const layout = new QVBoxLayout(this);
  layout->setSpacing(14);
  layout->addLayout(head);
  layout->addLayout(facts);
  layout->addStretch();
  layout->addWidget(buttons);
  setMinimumWidth(420);
  Fill();
}

void AboutDialog::Fill() {
  const QString folder = QString::fromStdString(model_.AppPath);
  path_->setText(folder.isEmpty() ? QStringLiteral("Not Specified") : folder);
  port_->setText(QStringLiteral("COM %1").arg(model_.ComPort));
  connected_->setText(model_.LinkStatus[0] == 1 ? QStringLiteral("Yes") : QStringLiteral("No"));
  stations_->setText(QStringLiteral("%1 Stations").arg(model_.StationCount));
  channels_->setText(QStringLiteral("%1 Channels").arg(model_.ChannelCount));
  title_->setText(QStringLiteral("Orvo Intercom/IFB Control\rVersion %1 - 04/17/2002")
                      .arg(QLatin1String(kVersion)));
}

bool AboutDialog::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) Fill();
  return QDialog::event(event);
}

}  // namespace app
