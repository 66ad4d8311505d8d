// SPDX-License-Identifier: MIT

#ifndef APP_LOG_LOG_KEEPER_H_
#define APP_LOG_LOG_KEEPER_H_

#include <QObject>
#include <QPointer>
#include <cstdint>
#include <optional>

#include "app/log/channel_labels.h"
#include "app/log/event_log.h"
#include "app/log/event_log_window.h"
#include "app/log/event_words.h"
#include "app/shell/command_table.h"
#include "app/shell/main_window.h"
#include "app/shell/message_boxes.h"
#include "app/shell/open_views.h"
#include "app/transfer/transfers.h"
#include "views/unsent_tables.h"

namespace app {

// Writes what the operator does and what the parts of the program announce into the event log, and
// shows it.
class LogKeeper : public QObject {
  Q_OBJECT

 public:
  struct Services {
    EventLog& log;
    ChannelLabels& labels;
    MainWindow& window;
    OpenViews& views;
    views::UnsentTables& unsent;
    Transfers& transfers;
    MessageBoxes& boxes;
    CommandTable& commands;
  };

  // All must outlive the object.
  explicit LogKeeper(const Services& services);

  // Closes the window of the log.
  ~LogKeeper() override;

  // Notes what belongs to none of the parts.
  void Note(const QString& text) { Add(EventLog::Kind::Note, text); }

  // What happens on the network.  NoteNetworkAgain() is for what may come many times a second from
  // `address`, which is empty where any stranger can be the cause.
  void NoteNetwork(const QString& text) { Add(EventLog::Kind::Panel, text); }
  void NoteNetworkAgain(const QString& text, const QString& address = {}) {
    services_.log.AddRepeated(EventLog::Kind::Panel, text, address);
  }

  // A command for a crosspoint (from 1) with this action byte was sent for the operator.
  void NoteTake(int output, int input, int action);

  // The operator has discarded a byte that blocked all receiving.
  void ByteDiscarded(std::uint8_t byte);

  // Opens the window of the log, or brings it up.
  void Show();

 private:
  void Add(EventLog::Kind kind, const QString& text) { services_.log.Add(kind, text); }
  void FollowView(views::MainView* view);
  void FollowTables();
  void FollowTransfers();
  void NoteBlockedCode(std::optional<std::uint8_t> code);

  const Services services_;
  const CrosspointWords crosspoints_;
  QPointer<EventLogWindow> window_;
};

}  // namespace app

#endif  // APP_LOG_LOG_KEEPER_H_
