// SPDX-License-Identifier: MIT

#include "app/shell/status_bar.h"

#include <QDir>
#include <QEvent>
#include <QFontMetrics>
#include <QSizeGrip>
#include <QStyle>
#include <algorithm>

#include "app/shell/link_lamp.h"
#include "views/widgets/elided_label.h"
#include "views/widgets/icon.h"
#include "views/widgets/link_colours.h"
#include "views/widgets/plain_tip.h"
#include "views/words.h"

namespace app {

using views::ElidedLabel;

namespace {

constexpr int kNoteMilliseconds = 5000;

// Room for "Out 064  Sta. 064  <  In 064  Inpt 064: Priority crosspoint".
constexpr int kReadoutCharacters = 60;

// So many characters of a panel that is elided must be left.
constexpr int kLeastWarning = 12;
constexpr int kLeastText = 8;

// Room for "Unsent since 22 Nov…".
constexpr int kLeastUnsent = 22;

// What the bar has between two panels, and before the first and behind the last one.
constexpr int kBetween = 6;
constexpr int kEnds = 12;

// What a panel has on either side of its text.
constexpr int kTextMargin = 6;

}  // namespace

StatusBar::StatusBar(QWidget* parent)
    : QStatusBar(parent),
      link_(new QLabel(this)),
      lamp_(new LinkLamp(this)),
      closedPort_(new ElidedLabel(this)),
      blocked_(new ElidedLabel(this)),
      panels_(new QLabel(this)),
      controllers_(new QLabel(this)),
      readout_(new ElidedLabel(this)),
      mapState_(new QLabel(this)),
      unsent_(new ElidedLabel(this)),
      unsentSign_(new QLabel(this)),
      note_(new ElidedLabel(this)),
      folder_(new ElidedLabel(this, Qt::ElideMiddle)),
      demo_(new QLabel(tr("DEMO"), this)),
      locked_(new QLabel(tr("LOCKED"), this)),
      // The folder stands for the whole run: it gives way, but for what it can do with.
      shares_{{.widget = blocked_, .leastCharacters = kLeastWarning, .isWarning = true},
              {.widget = closedPort_, .leastCharacters = kLeastWarning, .isWarning = true},
              {.widget = locked_, .isWarning = true},
              {.widget = note_, .leastCharacters = kLeastText},
              {.widget = unsent_,
               .leastCharacters = kLeastUnsent,
               .isWarning = true,
               .sign = unsentSign_},
              {.widget = readout_, .leastCharacters = kLeastText},
              {.widget = demo_},
              {.widget = mapState_},
              {.widget = panels_},
              {.widget = controllers_},
              {.widget = folder_, .leastCharacters = kLeastWarning, .isWarning = true}} {
  setObjectName(QStringLiteral("sbStatusBar"));
  link_->setObjectName(QStringLiteral("sbStatusBar_1"));
  closedPort_->setObjectName(QStringLiteral("aidClosedPort"));
  blocked_->setObjectName(QStringLiteral("aidBlockedCode"));
  panels_->setObjectName(QStringLiteral("aidPanels"));
  controllers_->setObjectName(QStringLiteral("aidControllers"));
  readout_->setObjectName(QStringLiteral("aidReadout"));
  mapState_->setObjectName(QStringLiteral("aidMapState"));
  demo_->setObjectName(QStringLiteral("aidDemo"));
  locked_->setObjectName(QStringLiteral("aidLocked"));
  unsent_->setObjectName(QStringLiteral("aidUnsent"));
  unsentSign_->setObjectName(QStringLiteral("aidUnsentSign"));
  unsentSign_->setContentsMargins(kTextMargin, 0, kTextMargin, 0);
  unsentSign_->hide();
  note_->setObjectName(QStringLiteral("aidNote"));
  folder_->setObjectName(QStringLiteral("aidFolder"));
  for (QLabel* const label : {link_, closedPort_, blocked_, panels_, controllers_, readout_,
                              mapState_, unsent_, note_, folder_, demo_, locked_}) {
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(kTextMargin, 0, kTextMargin, 0);
  }
  link_->setAccessibleName(tr("Link to the switcher"));
  readout_->setAccessibleName(tr("Current crosspoint"));

  addWidget(link_);
  addWidget(lamp_);
  addWidget(closedPort_);
  addWidget(blocked_);
  addWidget(panels_);
  addWidget(controllers_);
  addWidget(readout_, 1);
  addWidget(mapState_);
  addWidget(unsent_);
  addWidget(unsentSign_);
  addWidget(note_);
  addPermanentWidget(folder_);
  addPermanentWidget(demo_);
  addPermanentWidget(locked_);
  closedPort_->setToolTip(
      tr("The serial port cannot be used now. It is tried again every second, and the link comes "
         "up by itself when it can."));
  mapState_->setToolTip(tr("When the switcher last reported a part of the crosspoint map"));
  demo_->setToolTip(tr("Demo mode: the map draws its own takes, whatever the switcher says"));
  // A frame makes it a badge without a colour of its own.
  demo_->setFrameShape(QFrame::Box);
  locked_->setToolTip(
      tr("The console is locked: nothing is sent or stored by the operator. The File menu unlocks "
         "it."));
  locked_->setFrameShape(QFrame::Box);
  Want(readout_, true);

  noteTime_.setSingleShot(true);
  noteTime_.setInterval(kNoteMilliseconds);
  connect(&noteTime_, &QTimer::timeout, this, [this] { Want(note_, false); });
  SetConnected(false);
}

void StatusBar::SetLinkText(const QString& text) {
  link_->setText(text);
  ShareRoom();
}

void StatusBar::SetConnected(bool connected) {
  lamp_->SetConnected(connected);
  QPalette colours;
  if (!connected) {
    colours.setColor(QPalette::Window, views::kLinkDownGround);
    colours.setColor(QPalette::WindowText, views::kLinkDownInk);
  }
  link_->setPalette(colours);
  link_->setAutoFillBackground(!connected);
}

void StatusBar::SetLegend(QWidget* legend) {
  legend_ = legend;
  addPermanentWidget(legend_);
  ShareRoom();
}

void StatusBar::WantLegend(bool wanted) {
  legendWanted_ = wanted;
  ShareRoom();
}

QSize StatusBar::minimumSizeHint() const { return {0, QStatusBar::minimumSizeHint().height()}; }

void StatusBar::Want(const QWidget* widget, bool wanted) {
  std::ranges::find(shares_, widget, &Panel::widget)->wanted = wanted;
  ShareRoom();
}

int StatusBar::WidthOf(int characters) const {
  return characters * fontMetrics().averageCharWidth() + 2 * kTextMargin + kBetween;
}

int StatusBar::FullWidth(const Panel& panel) const {
  if (panel.widget != readout_) return panel.widget->sizeHint().width() + kBetween;
  // What stands beside the readout does not come and go with the cell that it is about.
  return WidthOf(readout_->text().isEmpty() ? 0 : kReadoutCharacters);
}

int StatusBar::LeastWidth(const Panel& panel) const {
  const int full = FullWidth(panel);
  // Beside a note, a part of the readout would only take the eye off it.
  const bool isWhole =
      panel.leastCharacters == 0 || (panel.widget == readout_ && noteTime_.isActive());
  return isWhole ? full : std::min(full, WidthOf(panel.leastCharacters));
}

int StatusBar::RoomForPanels() const {
  int room = width() - kEnds - link_->sizeHint().width() - kBetween - lamp_->sizeHint().width();
  if (const auto* const grip = findChild<const QSizeGrip*>(); grip != nullptr) {
    room -= grip->sizeHint().width();
  }
  return room;
}

// First the warnings get the least that they can do with.  Then each in its turn gets all that it
// would take, and where the room ends the less important get nothing.  What is over may be the
// legend's.
void StatusBar::ShareRoom() {
  link_->setMinimumWidth(link_->sizeHint().width());
  int room = std::max(RoomForPanels(), 0);
  for (Panel& panel : shares_) {
    panel.width = 0;
    panel.isOnlySign = false;
  }
  const auto grow = [&room](Panel& panel, int least, int most) {
    if (!panel.wanted || panel.width + room < least) return;
    const int growth = std::min(most - panel.width, room);
    panel.width += growth;
    room -= growth;
  };
  for (Panel& panel : shares_) {
    if (!panel.isWarning) continue;
    grow(panel, LeastWidth(panel), LeastWidth(panel));
    if (panel.sign == nullptr || !panel.wanted || panel.width > 0) continue;
    const int sign = panel.sign->sizeHint().width() + kBetween;
    panel.isOnlySign = sign <= room;
    if (panel.isOnlySign) room -= sign;
  }
  for (Panel& panel : shares_) {
    grow(panel, LeastWidth(panel), FullWidth(panel));
    if (panel.wanted && panel.width < FullWidth(panel)) room = 0;
  }
  const bool hasAll = std::ranges::all_of(shares_, [this](const Panel& panel) {
    return !panel.wanted || panel.width == FullWidth(panel);
  });
  for (const Panel& panel : shares_) {
    panel.widget->setVisible(panel.width > 0);
    if (panel.sign != nullptr) panel.sign->setVisible(panel.isOnlySign);
    // The readout has what nobody else wants.
    if (panel.widget != readout_ && panel.width > 0) {
      panel.widget->setFixedWidth(panel.width - kBetween);
    }
  }
  if (legend_ == nullptr) return;
  legend_->setVisible(legendWanted_ && hasAll && legend_->sizeHint().width() + kBetween <= room);
}

void StatusBar::changeEvent(QEvent* event) {
  QStatusBar::changeEvent(event);
  if (event->type() == QEvent::FontChange) ShareRoom();
}

void StatusBar::resizeEvent(QResizeEvent* event) {
  QStatusBar::resizeEvent(event);
  ShareRoom();
}

void StatusBar::SetReadout(const QString& text, const QString& detail) {
  readout_->setText(detail.isEmpty() ? text : QStringLiteral("%1. %2").arg(text, detail));
  readout_->setToolTip(views::PlainTip(detail.isEmpty() ? text : text + u'\n' + detail));
  ShareRoom();
}

void StatusBar::SetMapState(const QString& text) {
  mapState_->setText(text);
  Want(mapState_, !text.isEmpty());
}

void StatusBar::SetDemo(bool demo) { Want(demo_, demo); }

void StatusBar::SetConsoleLocked(bool locked) { Want(locked_, locked); }

void StatusBar::SetFolder(const QString& folder) {
  const QString path = QDir::toNativeSeparators(folder);
  folder_->setText(tr("Folder %1").arg(path));
  folder_->setToolTip(tr("The program's folder cannot be written. This console works on the "
                         "database and the settings in %1")
                          .arg(path));
  Want(folder_, true);
}

void StatusBar::ShowNote(const QString& text) {
  note_->setText(text);
  note_->setToolTip(views::PlainTip(text));
  noteTime_.start();
  Want(note_, true);
}

void StatusBar::SetUnsent(const QString& words) {
  unsent_->setText(words);
  unsent_->setToolTip(words + QStringLiteral("\n") +
                      tr("The switcher was last known to hold something else."));
  const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
  const QIcon sign = views::Icon(QStringLiteral("send-changes"), QStringLiteral("unsent-badge"));
  unsentSign_->setPixmap(sign.pixmap(QSize(size, size), devicePixelRatioF()));
  unsentSign_->setAccessibleName(words);
  unsentSign_->setToolTip(unsent_->toolTip());
  Want(unsent_, !words.isEmpty());
}

void StatusBar::SetPanels(const QStringList& panels) {
  panels_->setText(tr("Panels %1").arg(panels.size()));
  panels_->setToolTip(panels.isEmpty() ? tr("No network panel is connected")
                                       : views::PlainTip(panels.join(QLatin1Char('\n'))));
  Want(panels_, true);
}

void StatusBar::SetControllers(const QStringList& controllers) {
  controllers_->setText(tr("Controllers %1").arg(controllers.size()));
  controllers_->setToolTip(controllers.isEmpty() ? tr("No controller is on the open gateway")
                                                 : views::PlainTip(controllers.join(u'\n')));
  Want(controllers_, true);
}

void StatusBar::SetClosedPort(std::optional<int> number) {
  if (number.has_value()) closedPort_->setText(tr("COM %1 is not open").arg(*number));
  Want(closedPort_, number.has_value());
}

void StatusBar::SetBlockedCode(std::optional<std::uint8_t> code) {
  if (!code.has_value()) {
    Want(blocked_, false);
    return;
  }
  blocked_->setText(tr("⚠ Receiving blocked by unknown code %1").arg(views::ByteWords(*code)));
  blocked_->setToolTip(
      tr("The switcher sent a message that this console does not know. Nothing that it sends is "
         "read until that byte is discarded, with the command in the menu File, or the line is "
         "opened anew."));
  Want(blocked_, true);
}

}  // namespace app
