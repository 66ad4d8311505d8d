// SPDX-License-Identifier: MIT

#include "views/programming/station_navigator.h"

#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QShortcut>
#include <QStyle>
#include <QToolButton>

#include <algorithm>
#include <utility>

#include "views/widgets/icon.h"

namespace views {
namespace {

using stations::Movement;

// The commands from left to right, at the places they have beside a selector and without one.
struct Command {
  const char* name;
  const char* tip;
  const char* icon;
  Movement movement;
  int left;
  int leftWithoutSelector;
};

constexpr Command kCommandTable[] = {
    {"cmdFirst", "Backup To The First Station", "first", Movement::First, 8, 8},
    {"cmdBack10", "Backup 10 Stations", "back10", Movement::Back10, 28, 28},
    {"cmdPrev", "Backup To The Previous Station", "prev", Movement::Previous, 48, 48},
    {"cmdNext", "Advance To The Next Station", "next", Movement::Next, 282, 82},
    {"cmdFwd10", "Advance 10 Stations", "fwd10", Movement::Forward10, 302, 102},
    {"cmdLast", "Advance To The Last Station", "last", Movement::Last, 322, 122},
};

constexpr int kWidth = 380;
constexpr int kCommandSize = 20;
constexpr int kIconSize = 16;
constexpr int kSelectorLeft = 74;
constexpr int kSelectorRight = 276;
// A channel's label needs more room than the number of a button.
constexpr int kOptoShift = 34;
constexpr int kPromptGap = 4;
constexpr int kRowHeight = 24;
constexpr int kRowMargin = 2;
constexpr int kBesideNavigatorCaption = 8;

constexpr char kLongestCaption[] = "Navigation Controls [ Select Station And Button To Configure ]";

}  // namespace

StationNavigator::StationNavigator(int buttonCount, QComboBox& optoChannels, QWidget* parent)
    : QGroupBox(parent),
      prompt_(new QLabel(this)),
      buttons_(new QComboBox(this)),
      optoChannels_(optoChannels) {
  setObjectName(QStringLiteral("frNavControls"));
  prompt_->setObjectName(QStringLiteral("lblSelectButton"));
  AddButtons(buttonCount);
  optoChannels_.setParent(this);
  for (QComboBox* const selector : {buttons_, &optoChannels_}) selector->installEventFilter(this);
  for (int index = 0; index < kCommands; ++index) AddCommand(index);

  // In reading order.
  QWidget* last = commands_[0];
  for (QWidget* const next :
       std::initializer_list<QWidget*>{commands_[1], commands_[2], buttons_, &optoChannels_,
                                       commands_[3], commands_[4], commands_[5]}) {
    setTabOrder(last, next);
    last = next;
  }
  for (const auto& [key, movement] :
       {std::pair(Qt::Key_PageUp, Movement::Previous), {Qt::Key_PageDown, Movement::Next}}) {
    auto* const shortcut = new QShortcut(key, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this,
            [this, movement = movement] { Q_EMIT MoveRequested(movement); });
  }
  Show(Selector::None, QString());
}

void StationNavigator::AddButtons(int count) {
  buttons_->setObjectName(QStringLiteral("cmbButton"));
  buttons_->setToolTip(QStringLiteral("Click To Select A Station Button To Be Programmed"));
  buttons_->setAccessibleName(QStringLiteral("Select Button"));
  buttons_->setAccessibleDescription(buttons_->toolTip());
  for (int button = 1; button <= count; ++button) {
    buttons_->addItem(QStringLiteral("Button %1").arg(button));
  }
  // Selecting the item that is selected already counts, too: only the second signal tells of it.
  connect(buttons_, &QComboBox::currentIndexChanged, this, [this](int index) {
    isTold_ = true;
    Q_EMIT ButtonSelected(index + 1);
  });
  connect(buttons_, &QComboBox::activated, this, [this](int index) {
    if (!std::exchange(isTold_, false)) Q_EMIT ButtonSelected(index + 1);
  });
}

void StationNavigator::SelectButton(int button) {
  const QSignalBlocker quietly(buttons_);
  buttons_->setCurrentIndex(button - 1);
  isTold_ = false;
}

void StationNavigator::AddCommand(int index) {
  const Command& command = kCommandTable[index];
  auto* const button = new QToolButton(this);
  button->setObjectName(QString::fromLatin1(command.name));
  button->setToolTip(QString::fromLatin1(command.tip));
  button->setAccessibleName(button->toolTip());
  button->setIcon(Icon(QString::fromLatin1(command.icon)));
  button->setIconSize(QSize(kIconSize, kIconSize));
  button->setFocusPolicy(Qt::StrongFocus);
  connect(button, &QToolButton::clicked, this,
          [this, movement = command.movement] { Q_EMIT MoveRequested(movement); });
  commands_[static_cast<std::size_t>(index)] = button;
}

void StationNavigator::Show(Selector selector, const QString& caption) {
  selector_ = selector;
  setTitle(caption);
  prompt_->setText(selector == Selector::OptoChannel ? QStringLiteral("Select Opto Channel")
                                                     : QStringLiteral("Select Button"));
  prompt_->setVisible(selector != Selector::None);
  buttons_->setVisible(selector == Selector::Button);
  optoChannels_.setVisible(selector == Selector::OptoChannel);
  LayOut();
}

void StationNavigator::LayOut() {
  const int row = contentsRect().top();
  setFixedSize(std::max(kWidth, fontMetrics().horizontalAdvance(QLatin1String(kLongestCaption)) +
                                    kBesideNavigatorCaption),
               row + kRowHeight + 2 * kRowMargin);
  const int commandTop = row + (kRowHeight - kCommandSize) / 2;
  for (int index = 0; index < kCommands; ++index) {
    const Command& command = kCommandTable[index];
    int left = selector_ == Selector::None ? command.leftWithoutSelector : command.left;
    if (selector_ == Selector::OptoChannel && left > kSelectorRight) left += kOptoShift;
    commands_[static_cast<std::size_t>(index)]->setGeometry(left, commandTop, kCommandSize,
                                                            kCommandSize);
  }
  const int promptWidth = prompt_->sizeHint().width();
  prompt_->setGeometry(kSelectorLeft, row, promptWidth, kRowHeight);
  const int left = kSelectorLeft + promptWidth + kPromptGap;
  buttons_->setGeometry(left, row, kSelectorRight - left, kRowHeight);
  optoChannels_.setGeometry(left, row, kSelectorRight + kOptoShift - left, kRowHeight);
}

void StationNavigator::resizeEvent(QResizeEvent* event) {
  QGroupBox::resizeEvent(event);
  LayOut();
}

void StationNavigator::changeEvent(QEvent* event) {
  QGroupBox::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) LayOut();
}

// A selector would change what is programmed when the wheel passes over it.
bool StationNavigator::eventFilter(QObject* watched, QEvent* event) {
  return event->type() == QEvent::Wheel || QGroupBox::eventFilter(watched, event);
}

}  // namespace views
