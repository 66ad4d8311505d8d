// SPDX-License-Identifier: MIT

#include "views/levels/strip_text.h"

#include <QFontMetrics>
#include <algorithm>

#include "views/rules/levels.h"
#include "views/widgets/scaled_font.h"

namespace views {
namespace {

constexpr double kStripFont = 0.88;          // of the font
constexpr double kSmallestStripFont = 0.75;  // of that
constexpr int kNarrowestLetters = 70;        // per cent of their width
constexpr int kNarrowestStrip = 36;
constexpr char kUsualLabel[] = "Inpt 000";  // no strip is made for less

}  // namespace

StripText FitStrips(const QFont& font, const QStringList& labels, int largestWidth) {
  StripText text{.font = Scaled(font, kStripFont), .width = 0};
  const QFontMetrics metrics(text.font);
  QString widest = QLatin1String(kUsualLabel);
  const auto consider = [&](const QString& other) {
    if (metrics.horizontalAdvance(other) > metrics.horizontalAdvance(widest)) widest = other;
  };
  consider(QString::fromStdString(rules::LevelText(rules::kLargestSliderValue)));
  for (const QString& label : labels) consider(label);
  text.width = std::max(kNarrowestStrip,
                        std::min(largestWidth, metrics.horizontalAdvance(widest) + kStripSpace));
  const int room = text.width - kStripSpace / 2;
  if (metrics.horizontalAdvance(widest) <= room) return text;
  text.font.setStretch(std::max(kNarrowestLetters, 100 * room / metrics.horizontalAdvance(widest)));
  text.font = Fitting(text.font, widest, room, kSmallestStripFont);
  return text;
}

}  // namespace views
