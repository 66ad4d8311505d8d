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
  Open(QString(), tr("Output and input, for example 5 12 or 1-6 9-14"));
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

std::optional<rules::CellBlock> XmapFind::ParseNumbers() const {
  static const QRegularExpression kNumbers(
      QStringLiteral("^\\s*(\\d{1,3})(?:\\s*-\\s*(\\d{1,3}))?"
                     "\\D+(\\d{1,3})(?:\\s*-\\s*(\\d{1,3}))?\\s*$"));
  const QRegularExpressionMatch match = kNumbers.match(Text());
  if (!match.hasMatch()) return std::nullopt;
  const auto last = [&match](int behind) {
    return match.hasCaptured(behind + 1) ? match.captured(behind + 1).toInt()
                                         : match.captured(behind).toInt();
  };
  const rules::CellBlock block{.firstOutput = match.captured(1).toInt(),
                               .lastOutput = last(1),
                               .firstInput = match.captured(3).toInt(),
                               .lastInput = last(3)};
  const int channels = grid_.ChannelCount();
  const bool exists = block.firstOutput >= 1 && block.firstOutput <= block.lastOutput &&
                      block.lastOutput <= channels && block.firstInput >= 1 &&
                      block.firstInput <= block.lastInput && block.lastInput <= channels;
  return exists ? std::optional(block) : std::nullopt;
}

void XmapFind::Enter(bool back) {
  if (!goTo_) {
    FindField::Enter(back);
  } else if (const std::optional<rules::CellBlock> block = ParseNumbers()) {
    Q_EMIT Chosen(block->firstOutput, block->firstInput);
    if (block->Cells() > 1) Q_EMIT BlockChosen(*block);
    Close();
  }
}

}  // namespace views
