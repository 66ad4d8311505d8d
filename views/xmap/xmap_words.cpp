// SPDX-License-Identifier: MIT

#include "views/xmap/xmap_words.h"

#include <QCoreApplication>
#include <QStringList>
#include <vector>

#include "views/rules/hearing.h"

namespace views {
namespace {

using rules::TakeBack;
using rules::XmapGrid;

// So many channels are named at most.
constexpr std::size_t kMostChannels = 8;

struct XmapWords {
  Q_DECLARE_TR_FUNCTIONS(XmapWords)
};

QString OutputName(const XmapGrid& grid, int output) {
  const QString label = QString::fromStdString(grid.OutputLabel(output)).trimmed();
  return label.isEmpty() ? OutputNumber(grid, output) : label;
}

QString InputName(const XmapGrid& grid, int input) {
  const QString label = QString::fromStdString(grid.InputLabel(input)).trimmed();
  return label.isEmpty() ? InputNumber(grid, input) : label;
}

using ChannelName = QString (*)(const XmapGrid& grid, int channel);

QString ChannelList(const XmapGrid& grid, const std::vector<int>& channels, ChannelName name,
                    const QString& none) {
  if (channels.empty()) return none;
  QStringList names;
  for (const int channel : channels) {
    if (static_cast<std::size_t>(names.size()) == kMostChannels) break;
    names.append(name(grid, channel));
  }
  const auto rest = channels.size() - static_cast<std::size_t>(names.size());
  if (rest > 0) names.append(XmapWords::tr("%1 more").arg(rest));
  return names.join(QStringLiteral(", "));
}

}  // namespace

QString OutputNumber(const XmapGrid& grid, int output) {
  return XmapWords::tr("Out %1").arg(QString::fromStdString(grid.Number(output)));
}

QString InputNumber(const XmapGrid& grid, int input) {
  return XmapWords::tr("In %1").arg(QString::fromStdString(grid.Number(input)));
}

// The names go in all at once: a label may hold what looks like a place for one.
QString HearsWords(const XmapGrid& grid, int output) {
  const rules::Hearing hearing = rules::HeardBy(grid, output);
  const QString none = XmapWords::tr("none");
  return XmapWords::tr("%1 hears %2; by priority: %3")
      .arg(OutputName(grid, output), ChannelList(grid, hearing.ordinary, InputName, none),
           ChannelList(grid, hearing.byPriority, InputName, none));
}

QString HeardWords(const XmapGrid& grid, int input) {
  const rules::Hearing hearing = rules::HearersOf(grid, input);
  const QString none = XmapWords::tr("none");
  return XmapWords::tr("%1 is heard by %2; by priority: %3")
      .arg(InputName(grid, input), ChannelList(grid, hearing.ordinary, OutputName, none),
           ChannelList(grid, hearing.byPriority, OutputName, none));
}

QString TakeBackQuestion(const XmapGrid& grid, const TakeBack& back) {
  return XmapWords::tr("%1: back to %2?")
      .arg(OutputNumber(grid, back.output),
           ChannelList(grid, back.before, InputNumber, XmapWords::tr("no input")));
}

QString TakeBackRest(const XmapGrid& grid, const TakeBack& back) {
  return XmapWords::tr("Take undone in part: %1 is to hear %2")
      .arg(OutputNumber(grid, back.output),
           ChannelList(grid, back.before, InputNumber, XmapWords::tr("no input")));
}

QString TakeBackRefusal(const XmapGrid& grid, const TakeBack& back) {
  if (back.kind == TakeBack::Kind::NoTake) return XmapWords::tr("There is no take to undo");
  const QString output = OutputNumber(grid, back.output);
  switch (back.kind) {
    case TakeBack::Kind::BeforeUnknown:
      return XmapWords::tr("Take not undone: what %1 heard before is not known").arg(output);
    case TakeBack::Kind::Unreported:
      return XmapWords::tr("Take not undone: %1 was not reported since").arg(output);
    case TakeBack::Kind::Changed:
      return XmapWords::tr("Take not undone: %1 has changed since").arg(output);
    case TakeBack::Kind::ByPriority:
      return XmapWords::tr("Take not undone: %1 has or had a call or priority listen").arg(output);
    case TakeBack::Kind::Inhibited:
      return XmapWords::tr("Take not undone: what %1 heard is inhibited").arg(output);
    case TakeBack::Kind::NoTake:
    case TakeBack::Kind::Possible:
      break;
  }
  return {};
}

QString InhibitQuestion(const rules::InhibitPlan& plan, bool inhibit) {
  if (!inhibit) {
    return plan.changes == 1 ? XmapWords::tr("Remove 1 inhibit?")
                             : XmapWords::tr("Remove %1 inhibits?").arg(plan.changes);
  }
  QString question = plan.changes == 1 ? XmapWords::tr("Inhibit 1 crosspoint?")
                                       : XmapWords::tr("Inhibit %1 crosspoints?").arg(plan.changes);
  if (plan.leftOut == 1) {
    question += u' ' + XmapWords::tr("1 holds a crosspoint and is left out.");
  } else if (plan.leftOut > 1) {
    question += u' ' + XmapWords::tr("%1 hold a crosspoint and are left out.").arg(plan.leftOut);
  }
  return question;
}

QString InhibitedWords(const rules::InhibitPlan& plan, bool inhibit) {
  if (!inhibit) return XmapWords::tr("Inhibits removed: %1").arg(plan.changes);
  const QString words = XmapWords::tr("Inhibited crosspoints: %1").arg(plan.changes);
  return plan.leftOut == 0 ? words : XmapWords::tr("%1; left out: %2").arg(words).arg(plan.leftOut);
}

}  // namespace views
