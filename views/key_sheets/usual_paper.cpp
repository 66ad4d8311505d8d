// SPDX-License-Identifier: MIT

#include "views/key_sheets/usual_paper.h"

#include <algorithm>
#include <array>

namespace views {
namespace {

constexpr std::array kLetterTerritories = {
    QLocale::Belize,       QLocale::Canada,     QLocale::Chile,       QLocale::Colombia,
    QLocale::CostaRica,    QLocale::ElSalvador, QLocale::Guatemala,   QLocale::Mexico,
    QLocale::Nicaragua,    QLocale::Panama,     QLocale::Philippines, QLocale::PuertoRico,
    QLocale::UnitedStates, QLocale::Venezuela,
};

}  // namespace

QPageSize::PageSizeId UsualPaper(const QLocale& locale) {
  return std::ranges::find(kLetterTerritories, locale.territory()) == kLetterTerritories.end()
             ? QPageSize::A4
             : QPageSize::Letter;
}

QLocale PaperLocale() {
  for (const char* const name : {"LC_ALL", "LC_PAPER", "LANG"}) {
    const QString value = qEnvironmentVariable(name);
    if (!value.isEmpty()) return QLocale(value);
  }
  return QLocale::system();
}

}  // namespace views
