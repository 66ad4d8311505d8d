// SPDX-License-Identifier: MIT

#include "app/panel_errors.h"

namespace app {

PanelErrors::PanelErrors(MessageBoxes& boxes, HintStrip& hints, std::function<Time()> now)
    : boxes_(boxes), hints_(hints), now_(std::move(now)) {
  connect(&boxes, &MessageBoxes::Closed, this, [this](const QString& title, const QString& text) {
    OnClosed({title, text});
  });
}

void PanelErrors::Show(Icon icon, std::string_view title, std::string_view text) {
  const Report report{QString::fromUtf8(title), QString::fromUtf8(text)};
  if (!WasJustClosed(report)) {
    counted_ = 0;
    hints_.Withdraw(Hint::PanelReport);
    boxes_.Show(icon, title, text);
    return;
  }
  ++counted_;
  const QString line = QString(report.second).replace(u'\r', QLatin1String(", "));
  hints_.Give(Hint::PanelReport,
              counted_ == 1
                  ? tr("Again since you closed it: %1").arg(line)
                  : tr("Again since you closed it, %1 times: %2").arg(counted_).arg(line));
}

bool PanelErrors::WasJustClosed(const Report& report) const {
  const auto closed = closed_.find(report);
  return closed != closed_.end() && now_() - closed->second < kQuiet;
}

void PanelErrors::OnClosed(const Report& report) {
  const Time now = now_();
  std::erase_if(closed_, [now](const auto& one) { return now - one.second >= kQuiet; });
  closed_[report] = now;
}

}  // namespace app
