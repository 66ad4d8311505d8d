// SPDX-License-Identifier: MIT

#ifndef TESKSIM_RETRIEVAL_H_
#define TESKSIM_RETRIEVAL_H_

#include <cstddef>
#include <vector>

#include "tools/tesksim/message_handlers.h"
#include "tools/tesksim/spoil.h"
#include "tools/tesksim/switcher_state.h"
#include "tools/tesksim/transmitter.h"

namespace tesksim {

// The answer to 0xE7: all tables, message by message, each as the table stands when its turn
// comes, in the order of the table of messages.  The output labels, the input labels; for each
// output its inhibits, then its relays; the optos; the buttons of each station, the last station
// last.
class Retrieval {
 public:
  // `state` and `handlers`, which make its messages, must outlive the retrieval.  `log` is told of
  // dropped messages; it may be empty.
  Retrieval(const SwitcherState& state, MessageHandlers& handlers, Log log);

  // Begins with the first message, also when it is under way already: who asks again wants all.
  void Begin();

  void Stop() { messages_.clear(); }

  bool HasNext() const { return next_ < messages_.size(); }

  // REQUIRES: HasNext()
  Outgoing Next();

  // From now on this message goes out wrong, in this and in every retrieval; a message has one
  // harm, the last one given.
  void Spoil(const SpoiledMessage& spoiled);

  // All messages go out as they should again.
  void Mend() { spoiled_.clear(); }

  const std::vector<SpoiledMessage>& Spoiled() const { return spoiled_; }

 private:
  const SpoiledMessage* FindSpoiled(const TableMessage& message) const;
  void GoTo(std::size_t index);

  const SwitcherState& state_;
  MessageHandlers& handlers_;
  Log log_;
  std::vector<SpoiledMessage> spoiled_;
  std::vector<TableMessage> messages_;  // of the answer that is under way
  std::size_t next_ = 0;
};

}  // namespace tesksim

#endif  // TESKSIM_RETRIEVAL_H_
