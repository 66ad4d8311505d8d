// SPDX-License-Identifier: MIT

#include "app/log/event_log.h"

#include <QRegularExpression>

#include "app/log/event_words.h"

namespace app {

void EventLog::Add(Kind kind, const QString& text, const QDateTime& time) {
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

void EventLog::AddRepeated(Kind kind, const QString& text, const QDateTime& time) {
  RepeatedLines& lines = repeated_[kind];
  const int times = lines.Count(text, time);
  if (const int leftOut = lines.TakeLeftOut(); leftOut > 0) {
    Add(kind, tr("Not written, because so many lines came: %1").arg(leftOut), time);
  }
  if (times > 0) Add(kind, TimesWords(text, times), time);
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
