// SPDX-License-Identifier: MIT

#include "app/transfer/unsent_aids.h"

#include "views/widgets/icon.h"

namespace app {

UnsentAids::UnsentAids(const Services& services) : services_(services) {
  connect(&services_.unsent, &views::UnsentTables::Changed, this, &UnsentAids::Update);
  services_.sendChanges.setIcon(views::Icon(QStringLiteral("send-changes")));
}

void UnsentAids::Update() {
  const QString words = services_.unsent.Words();
  services_.status.SetUnsent(words);
  if (hasBadge_ == words.isEmpty()) {
    hasBadge_ = !words.isEmpty();
    services_.sendChanges.setIcon(views::Icon(
        QStringLiteral("send-changes"), hasBadge_ ? QStringLiteral("unsent-badge") : QString()));
  }
  const bool isConnected = services_.model.LinkStatus[0] == 1;
  const QString neverSeen = services_.unsent.NeverSeenWords();
  if (isConnected && !neverSeen.isEmpty()) {
    services_.hints.Give(Hint::NeverSeen, neverSeen);
  } else {
    services_.hints.Withdraw(Hint::NeverSeen);
  }
}

}  // namespace app
