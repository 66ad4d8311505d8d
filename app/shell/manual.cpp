// SPDX-License-Identifier: MIT

#include "app/shell/manual.h"

#include <QApplication>
#include <QProcess>

#include "views/window_place/on_screen.h"

namespace app {

void Manual::Show() {
  if (QProcess::startDetached(QStringLiteral("WINHLP32.EXE"), {QStringLiteral("Teskctl.hlp")})) {
    return;
  }
  if (window_ == nullptr) window_ = new HelpWindow;
  const QString place = ManualPlace(QApplication::activeModalWidget());
  if (!place.isEmpty()) window_->ShowPlace(place);
  views::BringUp(*window_);
}

}  // namespace app
