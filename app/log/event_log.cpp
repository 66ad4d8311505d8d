// SPDX-License-Identifier: MIT

#include "app/log/event_log.h"

#include <QRegularExpression>
#include <algorithm>
#include <chrono>

#include "app/log/event_words.h"

namespace app {

EventLog::EventLog(QObject* parent) : QAbstractTableModel(parent) {
  // Behind the end of the minute; where the clock was changed meanwhile, it is asked again.
  minute_.setInterval(std::chrono::seconds(RepeatedLines::kQuietSeconds + 1));
  minute_.setSingleShot(true);
  connect(&minute_, &QTimer::timeout, this, [this] { SayLeftOut(QDateTime::currentDateTime()); });
}

void EventLog::Add(Kind kind, const QString& text, const QDateTime& time) {
  SayLeftOut(time);
  Append(kind, text, time);
}

void EventLog::Append(Kind kind, const QString& text, const QDateTime& time) {
  static const QRegularExpression lineBreaks(QStringLiteral("[\\r\\n]+"));
  if (entries_.size() == kLimit) {
    beginRemoveRows({}, 0, 0);
    entries_.pop_front();
    endRemoveRows();
  }
  const int row = static_cast<int>(entries_.size());
  beginInsertRows({}, row, row);
  entries_.push_back(
      {.time = time, .kind = kind, .text = QString(text).replace(lineBreaks, QStringLiteral(" "))});
  endInsertRows();
}

void EventLog::AddRepeated(Kind kind, const QString& text, const QString& origin,
                           const QDateTime& time) {
  const int times = repeated_[SourceOf(kind, origin, time)].Count(text, time);
  SayLeftOut(time);
  if (times > 0) Append(kind, TimesWords(text, times), time);
}

// Whose lines are counted together.
EventLog::Source EventLog::SourceOf(Kind kind, const QString& origin, const QDateTime& time) {
  const Source own{kind, origin};
  if (origin.isEmpty() || repeated_.contains(own)) return own;
  std::erase_if(repeated_, [&](const auto& source) { return source.second.IsForgotten(time); });
  const auto origins = std::ranges::count_if(repeated_, [&](const auto& source) {
    return source.first.first == kind && !source.first.second.isEmpty();
  });
  return origins < kMostOrigins ? own : Source{kind, {}};
}

void EventLog::SayLeftOut(const QDateTime& time) {
  if (repeated_.empty()) return;
  bool isMore = false;
  for (auto& [source, lines] : repeated_) {
    if (!lines.HasLeftOut()) continue;
    SayLeftOut(source, lines.TakeLeftOut(time), time);
    isMore = isMore || lines.HasLeftOut();
  }
  if (isMore && !minute_.isActive()) minute_.start();
}

void EventLog::SayLeftOut(const Source& source, int times, const QDateTime& time) {
  if (times == 0) return;
  const auto& [kind, origin] = source;
  const QString text = origin.isEmpty()
                           ? tr("Not written, because so many lines came: %1").arg(times)
                           : tr("Not written, because so many lines came from %1: %2")
                                 .arg(origin, QString::number(times));
  Append(kind, text, time);
}

void EventLog::End() {
  const QDateTime now = QDateTime::currentDateTime();
  for (auto& [source, lines] : repeated_) SayLeftOut(source, lines.TakeAllLeftOut(), now);
}

QString EventLog::Line(int row) const {
  const Entry& entry = entries_[static_cast<std::size_t>(row)];
  return QStringLiteral("%1\t%2\t%3")
      .arg(entry.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")), KindName(entry.kind),
           entry.text);
}

QString EventLog::KindName(Kind kind) {
  switch (kind) {
    case Kind::Link:
      return tr("Link");
    case Kind::Command:
      return tr("Command");
    case Kind::Map:
      return tr("Map");
    case Kind::Panel:
      return tr("Panel");
    case Kind::Table:
      return tr("Table");
    case Kind::Report:
      return tr("Report");
    case Kind::Note:
      return tr("Note");
  }
  return {};
}

int EventLog::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

int EventLog::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumnCount;
}

QVariant EventLog::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
  const Entry& entry = entries_[static_cast<std::size_t>(index.row())];
  switch (index.column()) {
    case kTime:
      return entry.time.toString(role == Qt::ToolTipRole ? QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")
                                                         : QStringLiteral("HH:mm:ss"));
    case kKind:
      return KindName(entry.kind);
    default:
      return entry.text;
  }
}

QVariant EventLog::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case kTime:
      return tr("Time");
    case kKind:
      return tr("Kind");
    default:
      return tr("What happened");
  }
}

}  // namespace app
