// SPDX-License-Identifier: MIT

#ifndef VIEWS_UNSENT_TABLES_H_
#define VIEWS_UNSENT_TABLES_H_

#include <QObject>
#include <QString>
#include <optional>
#include <vector>

#include "switcher/table.h"
#include "switcher/unsent/unsent_messages.h"

namespace views {

// What is unsent, for whoever shows it; and the news of the tables, for whoever logs them.
class UnsentTables : public QObject, private switcher::UnsentMessages::Listener {
  Q_OBJECT

 public:
  // Who handed a table to the line: a tool of a view, or a window that sends many.
  enum class Sender { Tool, Download };

  using Parts = std::vector<switcher::TablePart>;

  // Becomes the listener of `messages`, which must outlive the object.
  explicit UnsentTables(switcher::UnsentMessages& messages);
  ~UnsentTables() override;

  // What `part` names was handed to the line, in so many messages.
  void NoteSent(const switcher::TablePart& part, int messages, Sender sender);

  // The same could not be sent, which has been reported.
  void NoteFailed(const switcher::TablePart& part) { Q_EMIT Failed(part); }

  // Whether a message of the table is unsent.
  bool Has(switcher::Table table) const;

  // What is unsent, message by message in the order of a download.
  Parts All() const;

  // The day since which the message is unsent; nothing when it is not.
  std::optional<switcher::Day> Since(const switcher::TablePart& part) const;

  // How long the message is as it would be sent now; nothing where there is none.
  switcher::MessageSize SizeOf(const switcher::TablePart& part) const {
    return messages_.SizeOf(part);
  }

  // All() in words: "inhibits of output 3, buttons of station 12"; empty for nothing.
  QString Names() const;

  // The same behind the first day: "Unsent since 21 Nov: inhibits of output 3"; empty for nothing.
  QString Words() const;

  // Says that the switcher was never seen to hold this database, or a part of it; empty when it
  // was.
  QString NeverSeenWords() const;

  // Whether something was sent that the switcher can still confirm.
  bool IsWaiting() const { return messages_.IsWaiting(); }

 Q_SIGNALS:
  // The operator edited something, or navigation stored something by itself.
  void Edited(const switcher::TablePart& part);
  void Sent(const switcher::TablePart& part, int messages, UnsentTables::Sender sender);
  void Failed(const switcher::TablePart& part);
  // Something was sent, and the switcher did not confirm it: it stays unsent.
  void NotConfirmed(const UnsentTables::Parts& parts);
  // All() may have changed, what of it can still be confirmed, or what is known of the switcher.
  void Changed();
  // Only what is known of the switcher has changed.  It is told of every message of a long table,
  // and is not for what draws.
  void HeldChanged();

 private:
  void UnsentChanged() override { Q_EMIT Changed(); }
  void OnlyHeldChanged() override { Q_EMIT HeldChanged(); }
  void PartEdited(const switcher::TablePart& part) override { Q_EMIT Edited(part); }
  void PartsNotConfirmed(const Parts& parts) override { Q_EMIT NotConfirmed(parts); }

  switcher::UnsentMessages& messages_;
};

}  // namespace views

#endif  // VIEWS_UNSENT_TABLES_H_
