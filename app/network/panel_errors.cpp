// SPDX-License-Identifier: MIT

#include "app/network/panel_errors.h"

namespace app {

PanelErrors::PanelErrors(MessageBoxes& boxes, HintStrip& hints, std::function<Time()> now)
    : boxes_(boxes), hints_(hints), now_(std::move(now)) {
  connect(&boxes, &MessageBoxes::Closed, this, [this](const QString& title, const QString& text) {
    OnClosed({title, text});
  });
}

void PanelErrors::Show(Icon icon, std::string_view title, std::string_view text) {
  const Report report{QString::fromUtf8(title), QString::fromUtf8(text)};
  Closed* const closed = JustClosed(report);
  if (closed == nullptr) {
    hints_.Withdraw(Hint::PanelReport);
    boxes_.Show(icon, title, text);
    return;
  }
  const int times = ++closed->counted;
  const QString line = report.second.split(u'\r', Qt::SkipEmptyParts).join(QLatin1String(", "));
  hints_.Give(Hint::PanelReport,
              times == 1 ? tr("Again since you closed it: %1").arg(line)
                         : tr("Again since you closed it, %1 times: %2").arg(times).arg(line));
}

// Null when it was not.
PanelErrors::Closed* PanelErrors::JustClosed(const Report& report) {
  const auto closed = closed_.find(report);
  const bool quiet = closed != closed_.end() && now_() - closed->second.at < kQuiet;
  return quiet ? &closed->second : nullptr;
}

void PanelErrors::OnClosed(const Report& report) {
  const Time now = now_();
  std::erase_if(closed_, [now](const auto& one) { return now - one.second.at >= kQuiet; });
  closed_[report] = {.at = now};
}

}  // namespace app
