// SPDX-License-Identifier: MIT

#ifndef APP_NETWORK_CONNECTION_FLOOD_H_
#define APP_NETWORK_CONNECTION_FLOOD_H_

#include <QObject>
#include <QString>
#include <QTimer>
#include <chrono>
#include <map>
#include <string>

#include "app/shell/hint_strip.h"

namespace app {

// Tells the operator when connections flood in from the network, and who makes them: each is dealt
// with, but somebody should look for the computer that is out of its mind.
class ConnectionFlood : public QObject {
  Q_OBJECT

 public:
  // More connections than these within a minute are a flood: ten a second.  All panels and
  // controllers of a house come back at once when the console starts, and are fewer.
  static constexpr int kMost = 600;

  // `hints` must outlive the object.
  explicit ConnectionFlood(HintStrip& hints,
                           std::chrono::milliseconds minute = std::chrono::minutes(1));

  // A connection has come from that address, whether it was let in or not.
  void Note(const std::string& address);

 Q_SIGNALS:
  // It begins, or is over.
  void Happened(const QString& text);

 private:
  void EndMinute();
  std::string Busiest() const;

  HintStrip& hints_;
  QTimer minute_;
  int count_ = 0;                     // within this minute
  std::map<std::string, int> byWho_;  // the same by address, of the first few
  bool isFlooded_ = false;            // until a whole minute was calm
};

}  // namespace app

#endif  // APP_NETWORK_CONNECTION_FLOOD_H_
