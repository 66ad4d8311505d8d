// SPDX-License-Identifier: MIT

#ifndef SWITCHER_UNSENT_UNSENT_MESSAGES_H_
#define SWITCHER_UNSENT_UNSENT_MESSAGES_H_

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <vector>

#include "db/jet/database.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "switcher/line_events.h"
#include "switcher/switcher_events.h"
#include "switcher/table.h"
#include "switcher/unsent/confirmation.h"
#include "switcher/unsent/digest.h"
#include "switcher/unsent/held_messages.h"

namespace switcher {

// Which messages the switcher lacks: a comparison of what would be sent now with what it was last
// known to hold, message by message.  A message that the switcher was never seen to hold is
// compared with what was found in the database, so that an edit of it is told all the same.
//
// Only the messages that a change is in are made anew.
class UnsentMessages : public stations::ChangeObserver, public SwitcherEvents, public LineEvents {
 public:
  // Who is told; see SetListener().
  class Listener {
   public:
    virtual ~Listener() = default;

    // Unsent(), IsWaiting() or Held() may have changed.
    virtual void UnsentChanged() = 0;

    // Held() has changed, and nothing else: told of each message that goes out and is not what the
    // switcher holds, of a long table hundreds of times.
    virtual void OnlyHeldChanged() = 0;

    // Somebody who works here stored an edit of this part, with its station also where a table has
    // one message for all.  It counts already.
    virtual void PartEdited(const TablePart& part) = 0;

    // These were sent, and whether the switcher has them is not known.
    virtual void PartsNotConfirmed(const std::vector<TablePart>& parts) = 0;
  };

  // All must outlive the object.
  struct Services {
    const model::SystemModel& model;
    std::function<jet::Database*()> database;  // null while it is not open
    stations::Changes& changes;
    std::function<Day()> today;
  };
  explicit UnsentMessages(Services services);

  // Null for nobody.  Must outlive the object or be taken away.
  void SetListener(Listener* listener) { listener_ = listener; }

  // Begins with the database as it is now and with what was known of the switcher.  Before that
  // everything counts as sent.
  void Begin(HeldMessages known);

  // How long the message of the part is as it would be sent now; nothing where there is none.
  MessageSize SizeOf(const TablePart& part) const;

  // What is unsent, in the order of a download, and since which day.
  const std::map<TablePart, Day>& Unsent() const { return unsent_; }

  // So many messages the switcher was never seen to hold that are as they were found; all of them
  // where it was never seen to hold any of this database.
  int NeverSeen() const;

  // So many messages there are.
  int Count() const { return static_cast<int>(present_.size()); }

  // Whether something was sent that the switcher can still confirm.
  bool IsWaiting() const { return confirmation_.IsWaiting(); }

  // What is known of the switcher, for the next run.
  const HeldMessages& Held() const { return held_; }

  // The switcher holds a message of this digest for the part, as a table that it sent has shown.
  void NoteHeld(const TablePart& part, Digest digest);

  // So many messages were made to be compared.
  int Made() const { return made_; }

  void Changed(std::span<const stations::Change> changes) override;

  void TableMessageSent(std::span<const std::uint8_t> message) override;
  void TableMessageCut(std::span<const std::uint8_t> message) override;
  void Polled() override;
  void Answered(int polls) override;
  void LineLost() override;

  void TableAccepted(const TablePart& part) override;
  void TableRefused(const TablePart& part) override;

 private:
  bool IsConnected() const { return services_.model.LinkStatus[0] == 1; }
  void Sent(const TablePart& part, Digest digest);
  void SentInPart(const TablePart& part, Digest digest);
  void Doubt(const TablePart& part, Digest digest);
  void MakeAnew(const TablePart& part);
  void LoadPresent();
  void Compare(const TablePart& part);
  void CompareAll();
  void Hold(const TablePart& part, Digest digest);
  void GiveUp(const std::vector<TablePart>& parts);
  void TellChange();
  void TellEdits(std::span<const stations::Change> changes);

  const Services services_;
  Listener* listener_ = nullptr;
  bool hasBegun_ = false;
  int made_ = 0;
  std::map<TablePart, MessagePrint> present_;  // as they would be sent now
  HeldMessages held_;
  std::map<TablePart, Day> unsent_;
  Confirmation confirmation_;
  bool inputLabelsReported_ = false;      // by this switcher, and not edited or refused since
  std::optional<TablePart> begunLabels_;  // whose order was sent, and no message since
  Digest orderDigest_ = 0;
};

}  // namespace switcher

#endif  // SWITCHER_UNSENT_UNSENT_MESSAGES_H_
