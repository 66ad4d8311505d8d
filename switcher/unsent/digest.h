// SPDX-License-Identifier: MIT
//
// What a table message is told by: a digest of all its bytes.  Its code and its number are among
// them, so that no two messages share one.

#ifndef SWITCHER_UNSENT_DIGEST_H_
#define SWITCHER_UNSENT_DIGEST_H_

#include <cstdint>
#include <map>
#include <optional>
#include <span>

#include "db/jet/database.h"
#include "model/status.h"
#include "model/system_model.h"
#include "switcher/message_size.h"
#include "switcher/table.h"

namespace switcher {

using Digest = std::uint64_t;

inline constexpr Digest kDigestOfNothing = 0xCBF29CE484222325;

// The digest of these bytes behind those of which `before` is the digest.
Digest DigestOf(std::span<const std::uint8_t> bytes, Digest before = kDigestOfNothing);

// What is kept of a message, of labels of their pair.
struct MessagePrint {
  Digest digest = kDigestOfNothing;
  MessageSize size;
};

// The print of the message of a part as it would be sent now; nothing when there is none, as
// LoadMessages() says.
// REQUIRES: `part` is one message: MessageOf(part) == part.
model::Status LoadPrint(jet::Database& database, const model::SystemModel& model,
                        const TablePart& part, std::optional<MessagePrint>* print);

// The same of all messages that there are and that can be read.
std::map<TablePart, MessagePrint> LoadPrints(jet::Database& database,
                                             const model::SystemModel& model);

}  // namespace switcher

#endif  // SWITCHER_UNSENT_DIGEST_H_
