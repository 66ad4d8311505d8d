// SPDX-License-Identifier: MIT

#ifndef VIEWS_TRANSFER_SEND_CHANGES_WINDOW_H_
#define VIEWS_TRANSFER_SEND_CHANGES_WINDOW_H_

#include <QLabel>
#include <QTreeWidget>

#include "views/transfer/sending_window.h"

namespace views {

// frmSendChanges: lists messages with a tick each, sends those that are ticked, and waits for the
// switcher to confirm them.  It closes by itself when all of them are there, and stays to say so
// when one is not.
class SendChangesWindow : public SendingWindow {
  Q_OBJECT

 public:
  // `parts` are what is listed, each a message, in the order of a download.
  SendChangesWindow(const Services& services, const UnsentTables::Parts& parts,
                    QWidget* parent = nullptr);

  void CancelNow() override;
  void reject() override;
  void Close() override;

 Q_SIGNALS:
  // The switcher has confirmed all that was sent.
  void Confirmed(int messages, const UnsentTables::Parts& parts);

 protected:
  void ShowSending() override;

 private:
  enum class State { Asking, Sending, Waiting, Over };

  void FillList(const UnsentTables::Parts& parts);
  UnsentTables::Parts Ticked() const;
  switcher::MessageSize SizeOf(const UnsentTables::Parts& parts) const;
  int TimeOf(const UnsentTables::Parts& parts) const;
  QString SumWords(const UnsentTables::Parts& ticked) const;
  void UpdateQuestion();
  void Wait();
  void LookForAnswer();
  void NoteUnconfirmed(const UnsentTables::Parts& parts);
  void ShowEnd();

  const model::SystemModel& model_;
  State state_ = State::Asking;
  bool closing_ = false;
  UnsentTables::Parts parts_;        // of the rows
  UnsentTables::Parts sent_;         // those that were ticked
  UnsentTables::Parts unconfirmed_;  // of these
  QLabel* text_;
  QTreeWidget* list_;
  QLabel* sum_;
};

}  // namespace views

#endif  // VIEWS_TRANSFER_SEND_CHANGES_WINDOW_H_
