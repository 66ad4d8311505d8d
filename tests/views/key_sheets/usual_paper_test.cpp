// SPDX-License-Identifier: MIT

#include "views/key_sheets/usual_paper.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace views {
namespace {

QPageSize::PageSizeId PaperOf(const char* locale) {
  return UsualPaper(QLocale(QLatin1String(locale)));
}

TEST(UsualPaper, IsThatOfTheCountry) {
  EXPECT_EQ(PaperOf("en_US.UTF-8"), QPageSize::Letter);
  EXPECT_EQ(PaperOf("fr_CA"), QPageSize::Letter);
  EXPECT_EQ(PaperOf("es_MX.UTF-8"), QPageSize::Letter);
  EXPECT_EQ(PaperOf("en_GB.UTF-8"), QPageSize::A4);
  EXPECT_EQ(PaperOf("de_DE.UTF-8"), QPageSize::A4);
  EXPECT_EQ(PaperOf("C"), QPageSize::A4);
}

// The three variables as they were, when the test is over.
class PaperLocaleTest : public testing::Test {
 protected:
  PaperLocaleTest() {
    for (auto& [name, value] : variables_) value = qgetenv(name);
    for (const auto& [name, value] : variables_) qunsetenv(name);
  }
  ~PaperLocaleTest() override {
    for (const auto& [name, value] : variables_) {
      if (value.isNull()) {
        qunsetenv(name);
      } else {
        qputenv(name, value);
      }
    }
  }

  std::array<std::pair<const char*, QByteArray>, 3> variables_{
      {{"LC_ALL", {}}, {"LC_PAPER", {}}, {"LANG", {}}}};
};

TEST_F(PaperLocaleTest, PaperMayBeOfAnotherCountryThanTexts) {
  qputenv("LANG", "en_US.UTF-8");
  EXPECT_EQ(UsualPaper(PaperLocale()), QPageSize::Letter);
  qputenv("LC_PAPER", "de_DE.UTF-8");
  EXPECT_EQ(UsualPaper(PaperLocale()), QPageSize::A4);
  qputenv("LC_ALL", "en_US.UTF-8");
  EXPECT_EQ(UsualPaper(PaperLocale()), QPageSize::Letter);
}

}  // namespace
}  // namespace views
