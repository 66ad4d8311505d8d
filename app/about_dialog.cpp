// SPDX-License-Identifier: MIT

#include "app/about_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "views/icon.h"

namespace app {

namespace {

constexpr int kIconSize = 64;

QLabel* NewText(const QString& name, const QString& text, QWidget* parent) {
  auto* const label = new QLabel(parent);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  // Also what shows the carriage return of the title as a line break.
  label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  label->setText(text);
  return label;
}

}  // namespace

AboutDialog::AboutDialog(const model::SystemModel& model, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmTeskAbout"));
  setWindowTitle(tr("About Orvo Intercom Control"));

  auto* const icon = new QLabel(this);
  icon->setPixmap(views::Icon(QStringLiteral("teskctl"))
                      .pixmap(QSize(kIconSize, kIconSize), devicePixelRatio()));
  auto* const title =
      NewText(QStringLiteral("lblTitle"),
              QStringLiteral("Orvo Intercom/IFB Control\rVersion 2.12 - 04/17/2002"), this);
  QFont large = title->font();
  large.setPointSizeF(large.pointSizeF() * 1.25);
  title->setFont(large);

  auto* const head = new QHBoxLayout;
  head->addWidget(icon);
  head->addSpacing(12);
  head->addWidget(title, 1);

  const QString folder = QString::fromStdString(model.AppPath);
  auto* const facts = new QFormLayout;
  facts->setLabelAlignment(Qt::AlignRight);
  auto* const path = NewText(QStringLiteral("lblAppPath"),
                             folder.isEmpty() ? QStringLiteral("Not Specified") : folder, this);
  path->setWordWrap(true);
  facts->addRow(tr("Program folder:"), path);
  facts->addRow(tr("Serial port:"), NewText(QStringLiteral("lblComPort"),
                                            QStringLiteral("COM %1").arg(model.ComPort), this));
  facts->addRow(
      tr("Switcher connected:"),
      NewText(QStringLiteral("lblConnected"),
              model.LinkStatus[0] == 1 ? QStringLiteral("Yes") : QStringLiteral("No"), this));
  facts->addRow(tr("System:"),
                NewText(QStringLiteral("lblStations"),
                        QStringLiteral("%1 Stations").arg(model.StationCount), this));
  facts->addRow(QString(), NewText(QStringLiteral("lblChannels"),
                                   QStringLiteral("%1 Channels").arg(model.ChannelCount), this));

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
}

}  // namespace app
