// SPDX-License-Identifier: MIT

#include "app/shell/unsent_aids.h"

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
  const int neverSeen = services_.messages.NeverSeen();
  if (isConnected && neverSeen > 0) {
    services_.hints.Give(
        Hint::NeverSeen,
        neverSeen == services_.messages.Count()
            ? tr("The switcher was never seen to hold this database. Send all of it, or "
                 "retrieve what the switcher holds.")
            : tr("The switcher was never seen to hold all of this database: not known are %1 of "
                 "%2 messages. Send all of it, or retrieve what the switcher holds.")
                  .arg(neverSeen)
                  .arg(services_.messages.Count()));
  } else {
    services_.hints.Withdraw(Hint::NeverSeen);
  }
}

}  // namespace app
