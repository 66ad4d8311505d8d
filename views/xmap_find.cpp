// SPDX-License-Identifier: MIT

#include "views/xmap_find.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>

namespace views {
namespace {

// What the field needs beside its text: its frame and the button that clears it.
constexpr int kFieldMargin = 36;

}  // namespace

XmapFind::XmapFind(const rules::XmapGrid& grid, QWidget* parent)
    : QFrame(parent), grid_(grid), field_(new QLineEdit(this)), count_(new QLabel(this)) {
  setObjectName(QStringLiteral("aidFind"));
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  field_->setObjectName(QStringLiteral("aidFindText"));
  field_->setClearButtonEnabled(true);
  field_->installEventFilter(this);
  count_->setObjectName(QStringLiteral("aidFindCount"));
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(4, 4, 6, 4);
  layout->setSpacing(6);
  layout->addWidget(field_);
  layout->addWidget(count_);
  count_->setMinimumWidth(fontMetrics().horizontalAdvance(tr("No crosspoint")));
  connect(field_, &QLineEdit::textChanged, this, [this] { Search(); });
  hide();
}

void XmapFind::OpenFind(const QString& text) {
  goTo_ = false;
  Open(text, tr("Find channel"));
}

void XmapFind::OpenGoTo() {
  goTo_ = true;
  Open(QString(), tr("Output and input, for example 5 12"));
}

void XmapFind::Open(const QString& text, const QString& prompt) {
  field_->setPlaceholderText(prompt);
  field_->setMinimumWidth(fontMetrics().horizontalAdvance(prompt) + kFieldMargin);
  field_->setAccessibleName(prompt);
  setAccessibleName(prompt);
  if (field_->text() == text) {
    Search();
  } else {
    field_->setText(text);  // searches
  }
  adjustSize();
  show();
  raise();
  // A reason for which the field does not select its text: more letters may follow.
  field_->setFocus(Qt::OtherFocusReason);
}

void XmapFind::Close() {
  if (isHidden()) return;
  hide();
  matches_.clear();
  Q_EMIT MatchesChanged({}, {});
  Q_EMIT Closed();
}

void XmapFind::LabelsChanged() {
  if (!isHidden()) LightMatches();
}

bool XmapFind::Matches(const std::string& label, int channel) const {
  const QString wanted = field_->text();
  return QString::fromStdString(label).contains(wanted, Qt::CaseInsensitive) ||
         QString::fromStdString(grid_.Number(channel)) == wanted ||
         QString::number(channel) == wanted;
}

void XmapFind::Search() {
  LightMatches();
  if (!matches_.empty()) Q_EMIT FirstMatch(matches_.front().output, matches_.front().input);
}

void XmapFind::LightMatches() {
  matches_.clear();
  at_ = -1;
  rules::ChannelSet outputs;
  rules::ChannelSet inputs;
  if (!goTo_ && !field_->text().isEmpty()) {
    for (int channel = 1; channel <= grid_.ChannelCount(); ++channel) {
      if (!Matches(grid_.OutputLabel(channel), channel)) continue;
      matches_.push_back({channel, 0});
      outputs.set(static_cast<std::size_t>(channel));
    }
    for (int channel = 1; channel <= grid_.ChannelCount(); ++channel) {
      if (!Matches(grid_.InputLabel(channel), channel)) continue;
      matches_.push_back({0, channel});
      inputs.set(static_cast<std::size_t>(channel));
    }
  }
  ShowCount();
  Q_EMIT MatchesChanged(outputs, inputs);
}

void XmapFind::ShowCount() {
  if (field_->text().isEmpty()) {
    count_->clear();
  } else if (goTo_) {
    count_->setText(ParseNumbers() ? QString() : tr("No crosspoint"));
  } else if (matches_.empty()) {
    count_->setText(tr("No match"));
  } else if (at_ < 0) {
    count_->setText(tr("%1 found").arg(matches_.size()));
  } else {
    count_->setText(tr("%1 of %2").arg(at_ + 1).arg(matches_.size()));
  }
}

void XmapFind::Step(int by) {
  if (matches_.empty()) return;
  const int count = static_cast<int>(matches_.size());
  at_ = at_ < 0 ? (by > 0 ? 0 : count - 1) : (at_ + by + count) % count;
  ShowCount();
  const Match& match = matches_[static_cast<std::size_t>(at_)];
  Q_EMIT Chosen(match.output, match.input);
}

std::optional<XmapFind::Match> XmapFind::ParseNumbers() const {
  static const QRegularExpression kNumbers(QStringLiteral("^\\s*(\\d{1,3})\\D+(\\d{1,3})\\s*$"));
  const QRegularExpressionMatch match = kNumbers.match(field_->text());
  if (!match.hasMatch()) return std::nullopt;
  const Match crosspoint{match.captured(1).toInt(), match.captured(2).toInt()};
  const bool exists = crosspoint.output >= 1 && crosspoint.output <= grid_.ChannelCount() &&
                      crosspoint.input >= 1 && crosspoint.input <= grid_.ChannelCount();
  return exists ? std::optional(crosspoint) : std::nullopt;
}

void XmapFind::GoTo() {
  if (const std::optional<Match> crosspoint = ParseNumbers()) {
    Q_EMIT Chosen(crosspoint->output, crosspoint->input);
    Close();
  }
}

bool XmapFind::eventFilter(QObject* watched, QEvent* event) {
  if (watched != field_ || event->type() != QEvent::KeyPress) {
    return QFrame::eventFilter(watched, event);
  }
  const auto* const key = static_cast<QKeyEvent*>(event);
  const bool back = (key->modifiers() & Qt::ShiftModifier) != 0;
  switch (key->key()) {
    case Qt::Key_Escape:
      Close();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F3:
      if (goTo_) {
        GoTo();
      } else {
        Step(back ? -1 : 1);
      }
      return true;
    case Qt::Key_Down:
    case Qt::Key_Up:
      if (!goTo_) Step(key->key() == Qt::Key_Up ? -1 : 1);
      return true;
    default:
      return QFrame::eventFilter(watched, event);
  }
}

}  // namespace views
