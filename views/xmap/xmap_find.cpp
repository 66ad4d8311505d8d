// SPDX-License-Identifier: MIT

#include "views/xmap/xmap_find.h"

#include <QRegularExpression>

namespace views {

XmapFind::XmapFind(const rules::XmapGrid& grid, QWidget* parent)
    : FindField(tr("No crosspoint"), parent), grid_(grid) {}

void XmapFind::OpenFind(const QString& text) {
  goTo_ = false;
  Open(text, tr("Find channel"));
}

void XmapFind::OpenGoTo() {
  goTo_ = true;
  Open(QString(), tr("Output and input, for example 5 12"));
}

bool XmapFind::Matches(const std::string& label, int channel) const {
  const QString wanted = Text();
  return QString::fromStdString(label).contains(wanted, Qt::CaseInsensitive) ||
         QString::fromStdString(grid_.Number(channel)) == wanted ||
         QString::number(channel) == wanted;
}

int XmapFind::Highlight() {
  matches_.clear();
  rules::ChannelSet outputs;
  rules::ChannelSet inputs;
  if (!goTo_ && !Text().isEmpty()) {
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
  Q_EMIT MatchesChanged(outputs, inputs);
  return static_cast<int>(matches_.size());
}

void XmapFind::ClearHighlights() {
  matches_.clear();
  Q_EMIT MatchesChanged({}, {});
}

void XmapFind::ShowFirst() { Q_EMIT FirstMatch(matches_.front().output, matches_.front().input); }

void XmapFind::GoToMatch(int match) {
  const Match& chosen = matches_[static_cast<std::size_t>(match)];
  Q_EMIT Chosen(chosen.output, chosen.input);
}

QString XmapFind::CountText() const {
  if (!goTo_) return FindField::CountText();
  return Text().isEmpty() || ParseNumbers() ? QString() : tr("No crosspoint");
}

std::optional<XmapFind::Match> XmapFind::ParseNumbers() const {
  static const QRegularExpression kNumbers(QStringLiteral("^\\s*(\\d{1,3})\\D+(\\d{1,3})\\s*$"));
  const QRegularExpressionMatch match = kNumbers.match(Text());
  if (!match.hasMatch()) return std::nullopt;
  const Match crosspoint{match.captured(1).toInt(), match.captured(2).toInt()};
  const bool exists = crosspoint.output >= 1 && crosspoint.output <= grid_.ChannelCount() &&
                      crosspoint.input >= 1 && crosspoint.input <= grid_.ChannelCount();
  return exists ? std::optional(crosspoint) : std::nullopt;
}

void XmapFind::Enter(bool back) {
  if (!goTo_) {
    FindField::Enter(back);
  } else if (const std::optional<Match> crosspoint = ParseNumbers()) {
    Q_EMIT Chosen(crosspoint->output, crosspoint->input);
    Close();
  }
}

}  // namespace views
