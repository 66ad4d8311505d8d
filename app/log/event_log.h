// SPDX-License-Identifier: MIT

#ifndef APP_LOG_EVENT_LOG_H_
#define APP_LOG_EVENT_LOG_H_

#include <QAbstractTableModel>
#include <QDateTime>
#include <QString>
#include <QTimer>
#include <cstdint>
#include <deque>
#include <map>
#include <utility>

#include "app/log/repeated_lines.h"

namespace app {

// What has happened in this run, in memory: link changes, commands, rows of the map, panels,
// tables, reports.  The oldest lines make way for new ones.
class EventLog : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum class Kind : std::uint8_t { Link, Command, Map, Panel, Table, Report, Note };
  enum Column { kTime, kKind, kText, kColumnCount };

  static constexpr int kLimit = 5000;

  // So many origins have lines of their own in a minute; the others share what there is for all.
  static constexpr int kMostOrigins = 8;

  explicit EventLog(QObject* parent = nullptr);

  // Adds a line.  Line breaks in `text` become spaces.
  void Add(Kind kind, const QString& text, const QDateTime& time = QDateTime::currentDateTime());

  // The same for what may come many times a second.  `origin` is who makes it come, such as the
  // address of a panel: however much one does, what the others do is written.  What has none, or
  // comes from anybody who likes, has an empty one.
  void AddRepeated(Kind kind, const QString& text, const QString& origin = {},
                   const QDateTime& time = QDateTime::currentDateTime());

  // The run ends: says how much stands in no line.
  void End();

  // A line as it is copied and saved: date and time, kind and text, separated by tabs.
  QString Line(int row) const;

  // The kind in words.
  static QString KindName(Kind kind);

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  using Source = std::pair<Kind, QString>;  // the kind and the origin, which may be empty

  struct Entry {
    QDateTime time;
    Kind kind;
    QString text;
  };

  void Append(Kind kind, const QString& text, const QDateTime& time);
  Source SourceOf(Kind kind, const QString& origin, const QDateTime& time);
  void SayLeftOut(const QDateTime& time);
  void SayLeftOut(const Source& source, int times, const QDateTime& time);

  std::deque<Entry> entries_;
  std::map<Source, RepeatedLines> repeated_;
  QTimer minute_{this};  // runs while something stands in no line
};

}  // namespace app

#endif  // APP_LOG_EVENT_LOG_H_
