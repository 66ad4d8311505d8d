// SPDX-License-Identifier: MIT

#ifndef APP_LOG_EVENT_LOG_H_
#define APP_LOG_EVENT_LOG_H_

#include <QAbstractTableModel>
#include <QDateTime>
#include <QString>
#include <cstdint>
#include <deque>
#include <map>

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

  using QAbstractTableModel::QAbstractTableModel;

  // Adds a line.  Line breaks in `text` become spaces.
  void Add(Kind kind, const QString& text, const QDateTime& time = QDateTime::currentDateTime());

  // The same for what may come many times a second.
  void AddRepeated(Kind kind, const QString& text,
                   const QDateTime& time = QDateTime::currentDateTime());

  // A line as it is copied and saved: date and time, kind and text, separated by tabs.
  QString Line(int row) const;

  // The kind in words.
  static QString KindName(Kind kind);

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct Entry {
    QDateTime time;
    Kind kind;
    QString text;
  };

  std::deque<Entry> entries_;
  std::map<Kind, RepeatedLines> repeated_;
};

}  // namespace app

#endif  // APP_LOG_EVENT_LOG_H_
