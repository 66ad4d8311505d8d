// SPDX-License-Identifier: MIT

#ifndef VIEWS_TRANSFER_MESSAGE_LIST_H_
#define VIEWS_TRANSFER_MESSAGE_LIST_H_

#include <QIcon>
#include <QTreeWidget>

#include "switcher/wire/decode_status.h"

namespace views {

// lstMsgHistory: a row for each message received, with its description, its size and the word
// for what its checks said.  It follows the newest row unless the operator has scrolled up.
class MessageList : public QTreeWidget {
  Q_OBJECT

 public:
  explicit MessageList(QWidget* parent = nullptr);

  void AddMessage(const QString& description, int byteCount, switcher::DecodeStatus status);

  // Brings the first message that was not stored into sight and selects it; without one the list
  // stays as it is.
  void ShowFirstRefused();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  const QIcon passed_;
  const QIcon failed_;
};

}  // namespace views

#endif  // VIEWS_TRANSFER_MESSAGE_LIST_H_
