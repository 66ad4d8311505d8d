// SPDX-License-Identifier: MIT

#include "views/presets/preset_words.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>

namespace views {
namespace {

using switcher::PresetObstacle;
using switcher::RecallObstacle;
using switcher::RecallOutcome;

QString Tr(const char* text) { return QCoreApplication::translate("PresetWords", text); }

QString Number(int channel) { return QStringLiteral("%1").arg(channel, 2, 10, QLatin1Char('0')); }

// The channel that an obstacle is about.
QString ConcernedWords(const switcher::PresetDifference& difference) {
  return (difference.concernsInput ? Tr("In %1") : Tr("Out %1"))
      .arg(Number(difference.concerned.channel));
}

QString Listed(const QStringList& labels) {
  return labels.isEmpty() ? Tr("nothing") : labels.join(QStringLiteral(", "));
}

// What has ended a recall.
QString EndWords(RecallObstacle obstacle) {
  switch (obstacle) {
    case RecallObstacle::ConsoleLocked:
      return Tr("The console was locked");
    case RecallObstacle::DemoMode:
      return Tr("The demo mode was switched on");
    case RecallObstacle::NotConnected:
    case RecallObstacle::MapNotKnown:
      return Tr("The link was lost");
    case RecallObstacle::MapIncomplete:
      return Tr("The map was asked for again");
  }
  return {};
}

// What is said of a row, in words and in a narrow column.
struct Said {
  QString words;
  QString label;

  static Said Briefly(const QString& text) { return {text, text}; }
};

Said SaidOf(RecallOutcome outcome, std::optional<RecallObstacle> obstacle) {
  switch (outcome) {
    case RecallOutcome::Done:
      break;
    case RecallOutcome::NotBegun:
      return Said::Briefly(Tr("Not begun"));
    case RecallOutcome::Changed:
      return {Tr("Changed by somebody else"), Tr("Changed")};
    case RecallOutcome::Priority:
      return {Tr("Call or priority listen"), Tr("Priority")};
    case RecallOutcome::Locked:
      return {Tr("Output locked"), Tr("Locked")};
    case RecallOutcome::Inhibited:
      return {Tr("A source is inhibited"), Tr("Inhibited")};
    case RecallOutcome::NotKnown:
      return {Tr("The inhibits cannot be read"), Tr("Not known")};
    case RecallOutcome::Undone:
      return {Tr("Recalled, then changed by somebody else"), Tr("Changed")};
    case RecallOutcome::NoAnswer:
      return {Tr("The switcher did not do it"), Tr("Not done")};
    case RecallOutcome::NotSent:
      return {Tr("Could not be sent"), Tr("Not sent")};
    case RecallOutcome::NotNow:
      return {obstacle ? EndWords(*obstacle) : QString(), Tr("Not now")};
    case RecallOutcome::Cancelled:
      return Said::Briefly(Tr("Cancelled"));
  }
  return {};
}

Said SaidOf(const switcher::PresetDifference& difference) {
  const QString label = QString::fromStdString(difference.concerned.label);
  switch (difference.obstacle) {
    case PresetObstacle::None:
      break;
    case PresetObstacle::NoChannel:
      return {Tr("%1 (%2) is not there").arg(ConcernedWords(difference), label), Tr("Not there")};
    case PresetObstacle::OtherLabel:
      return {Tr("%1 was %2").arg(ConcernedWords(difference), label), Tr("Other label")};
    case PresetObstacle::StoredPriority:
      return {Tr("Stored during a call"), Tr("Priority")};
    case PresetObstacle::Priority:
      return {Tr("Call or priority listen"), Tr("Priority")};
    case PresetObstacle::Locked:
      return {Tr("Output locked"), Tr("Locked")};
    case PresetObstacle::Inhibited:
      return {Tr("%1 is inhibited").arg(label), Tr("Inhibited")};
    case PresetObstacle::NotKnown:
      return {Tr("The inhibits cannot be read"), Tr("Not known")};
  }
  return {.words = {}, .label = Tr("Sources")};
}

}  // namespace

QString OutputWords(const switcher::NamedChannel& output) {
  return Tr("Out %1  %2").arg(Number(output.channel), QString::fromStdString(output.label));
}

QString SourceWords(const switcher::Sources& sources, const switcher::ChannelFacts& facts) {
  QStringList labels;
  for (std::size_t input = 1; input < sources.size(); ++input) {
    if (!sources.test(input)) continue;
    labels.append(QString::fromStdString(facts.inputLabel(static_cast<int>(input))));
  }
  return Listed(labels);
}

QString SourceWords(const std::vector<switcher::NamedChannel>& inputs) {
  QStringList labels;
  for (const switcher::NamedChannel& input : inputs) {
    labels.append(QString::fromStdString(input.label));
  }
  return Listed(labels);
}

QString ObstacleWords(const switcher::PresetDifference& difference) {
  return SaidOf(difference).words;
}

QString ObstacleLabel(const switcher::PresetDifference& difference) {
  return SaidOf(difference).label;
}

QString RecallObstacleWords(RecallObstacle obstacle) {
  switch (obstacle) {
    case RecallObstacle::ConsoleLocked:
      return Tr("Not while the console is locked.");
    case RecallObstacle::DemoMode:
      return Tr("Not in demo mode: the map may show what no switcher does.");
    case RecallObstacle::NotConnected:
      return Tr("Not while the switcher does not answer.");
    case RecallObstacle::MapIncomplete:
      return Tr("Not before the switcher has reported the whole map.");
    case RecallObstacle::MapNotKnown:
      return Tr("Not with a map from before the link was lost: Refresh Map asks for it.");
  }
  return {};
}

QString OutcomeWords(const switcher::RecallRow& row, std::optional<RecallObstacle> obstacle) {
  const QString words = SaidOf(row.outcome, obstacle).words;
  return row.isPartial ? Tr("%1: half recalled").arg(words) : words;
}

QString OutcomeLabel(RecallOutcome outcome) { return SaidOf(outcome, std::nullopt).label; }

QString RecallSummary(const std::vector<switcher::RecallRow>& rows, bool isCancelled) {
  const auto done = std::ranges::count(rows, RecallOutcome::Done, &switcher::RecallRow::outcome);
  const QString summary = Tr("%1 of %2 outputs recalled").arg(done).arg(rows.size());
  const bool isCut = std::ranges::any_of(rows, [](const switcher::RecallRow& row) {
    return row.outcome == RecallOutcome::NotBegun || row.outcome == RecallOutcome::Cancelled;
  });
  return isCancelled && isCut ? Tr("%1, then cancelled").arg(summary) : summary;
}

}  // namespace views
