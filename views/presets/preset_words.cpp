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

}  // namespace

QString OutputWords(int output, const switcher::ChannelFacts& facts) {
  return Tr("Out %1  %2")
      .arg(output, 2, 10, QLatin1Char('0'))
      .arg(QString::fromStdString(facts.outputLabel(output)));
}

QString SourceWords(const switcher::Sources& sources, const switcher::ChannelFacts& facts) {
  QStringList labels;
  for (std::size_t input = 1; input < sources.size(); ++input) {
    if (!sources.test(input)) continue;
    labels.append(QString::fromStdString(facts.inputLabel(static_cast<int>(input))));
  }
  return labels.isEmpty() ? Tr("nothing") : labels.join(QStringLiteral(", "));
}

QString ObstacleWords(const switcher::PresetDifference& difference) {
  const QString label = QString::fromStdString(difference.concerned.label);
  switch (difference.obstacle) {
    case PresetObstacle::None:
      break;
    case PresetObstacle::NoChannel:
      return Tr("Channel %1 (%2) is not there").arg(difference.concerned.channel).arg(label);
    case PresetObstacle::OtherLabel:
      return Tr("Channel %1 was %2").arg(difference.concerned.channel).arg(label);
    case PresetObstacle::StoredPriority:
      return Tr("Stored during a call");
    case PresetObstacle::Priority:
      return Tr("Call or priority listen");
    case PresetObstacle::Locked:
      return Tr("Output locked");
    case PresetObstacle::Inhibited:
      return Tr("%1 is inhibited").arg(label);
  }
  return {};
}

QString ObstacleLabel(PresetObstacle obstacle) {
  switch (obstacle) {
    case PresetObstacle::None:
      break;
    case PresetObstacle::NoChannel:
      return Tr("Not there");
    case PresetObstacle::OtherLabel:
      return Tr("Other label");
    case PresetObstacle::StoredPriority:
    case PresetObstacle::Priority:
      return Tr("Priority");
    case PresetObstacle::Locked:
      return Tr("Locked");
    case PresetObstacle::Inhibited:
      return Tr("Inhibited");
  }
  return Tr("Sources");
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
  }
  return {};
}

QString OutcomeWords(RecallOutcome outcome) {
  switch (outcome) {
    case RecallOutcome::Done:
      break;
    case RecallOutcome::NotBegun:
      return Tr("Not begun");
    case RecallOutcome::Changed:
      return Tr("Changed by somebody else");
    case RecallOutcome::Priority:
      return Tr("Call or priority listen");
    case RecallOutcome::Locked:
      return Tr("Output locked");
    case RecallOutcome::Inhibited:
      return Tr("A source is inhibited");
    case RecallOutcome::NoAnswer:
      return Tr("The switcher did not do it");
    case RecallOutcome::NotSent:
      return Tr("Could not be sent");
  }
  return {};
}

QString OutcomeLabel(RecallOutcome outcome) {
  switch (outcome) {
    case RecallOutcome::Done:
      break;
    case RecallOutcome::NotBegun:
      return Tr("Not begun");
    case RecallOutcome::Changed:
      return Tr("Changed");
    case RecallOutcome::Priority:
      return Tr("Priority");
    case RecallOutcome::Locked:
      return Tr("Locked");
    case RecallOutcome::Inhibited:
      return Tr("Inhibited");
    case RecallOutcome::NoAnswer:
      return Tr("Not done");
    case RecallOutcome::NotSent:
      return Tr("Not sent");
  }
  return {};
}

QString RecallSummary(const std::vector<switcher::RecallRow>& rows, bool isCancelled) {
  const auto done = std::ranges::count(rows, RecallOutcome::Done, &switcher::RecallRow::outcome);
  const QString summary = Tr("%1 of %2 outputs recalled").arg(done).arg(rows.size());
  return isCancelled ? Tr("%1, then cancelled").arg(summary) : summary;
}

}  // namespace views
