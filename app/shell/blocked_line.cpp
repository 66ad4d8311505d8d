// SPDX-License-Identifier: MIT

#include "app/shell/blocked_line.h"

#include "views/words.h"

namespace app {

BlockedLine::BlockedLine(const Services& services)
    : QObject(&services.window),
      services_(services),
      discard_(new QAction(tr("&Discard Byte"), &services.window)) {
  discard_->setObjectName(QStringLiteral("aidDiscardByte"));
  discard_->setToolTip(tr("Throw away this one byte, so that what stands behind it is read"));
  Show(std::nullopt);
}

void BlockedLine::Show(std::optional<std::uint8_t> code) {
  services_.status.SetBlockedCode(code);
  discard_->setVisible(code.has_value());
  discard_->setEnabled(code.has_value());
  if (!code.has_value()) {
    services_.hints.Withdraw(Hint::Blocked);
    return;
  }
  const QString byte = views::ByteWords(*code);
  discard_->setText(tr("&Discard Byte %1").arg(byte));
  services_.hints.Give(
      Hint::Blocked,
      tr("The switcher sent the unknown code %1: nothing behind it is read until it is "
         "discarded or the line is opened anew.")
          .arg(byte),
      {discard_});
}

}  // namespace app
