// SPDX-License-Identifier: MIT

#include "views/unsent_tables.h"

#include <gtest/gtest.h>

#include <QDate>

#include "db/schema.h"
#include "stations/record.h"
#include "tests/views/view_console.h"
#include "views/words.h"

namespace views {
namespace {

using std::chrono::November;
using switcher::Table;
using switcher::TablePart;

switcher::Day NovemberDay(int year, unsigned day) {
  return {std::chrono::year(year), November, std::chrono::day(day)};
}

class UnsentTablesTest : public testing::Test {
 protected:
  UnsentTablesTest() { console_.unsentMessages.Begin({}); }

  void Edit(int station, std::string_view field, const jet::Value& value) {
    console_.GoToStation(station);
    stations::Record record(*console_.Stations());
    record.Set(field, value);
    ASSERT_TRUE(record.Commit({console_.changes, stations::Origin::Operator}).ok());
  }

  test::ViewConsole console_{8};
  UnsentTables& unsent_ = console_.unsent;
};

TEST_F(UnsentTablesTest, AreNamedInTheOrderOfADownloadWithTheFirstDay) {
  EXPECT_EQ(unsent_.Words(), QString());
  for (const int station : {1, 2, 3, 5}) Edit(station, "B3 Type", 255);
  Edit(7, "Relays", "1");
  Edit(3, "Inhibits", "10000000");
  Edit(2, "InLabel", "CAM");
  Edit(2, "Label", "CAM");
  Edit(2, "OptoType", 2);
  EXPECT_EQ(unsent_.Names(),
            QStringLiteral("optos, station labels, input labels, inhibits of output 3, "
                           "relays of output 7, buttons of stations 1 to 3, 5"));
  EXPECT_EQ(unsent_.Words(),
            QStringLiteral("Unsent since %1: ").arg(DayWords(test::kToday)) + unsent_.Names());
  EXPECT_TRUE(unsent_.Has(Table::Inhibits));
  Edit(3, "Inhibits", "00000000");
  EXPECT_FALSE(unsent_.Has(Table::Inhibits));
}

TEST_F(UnsentTablesTest, TheFirstDayIsThatOfAnyOfThem) {
  switcher::HeldMessages known = console_.unsentMessages.Held();
  known[{Table::Inhibits, 3}] = {switcher::HeldMessage::State::Open, 1, NovemberDay(2025, 30)};
  known[{Table::Buttons, 3}] = {switcher::HeldMessage::State::Open, 1, NovemberDay(2025, 9)};
  console_.unsentMessages.Begin(known);
  EXPECT_EQ(unsent_.Words(), QStringLiteral("Unsent since 9 Nov 2025: inhibits of output 3, "
                                            "buttons of station 3"));
}

TEST(DayWords, NameTheYearOnlyWhenItIsAnother) {
  const int year = QDate::currentDate().year();
  EXPECT_EQ(DayWords(NovemberDay(year, 1)), QStringLiteral("1 Nov"));
  EXPECT_EQ(DayWords(NovemberDay(year - 1, 21)), QStringLiteral("21 Nov %1").arg(year - 1));
}

TEST_F(UnsentTablesTest, TellsWhatIsNotedOnceItCounts) {
  QStringList told;
  const auto tell = [&](const char* what) {
    return [&told, this, what](const TablePart& part) {
      told.append(QStringLiteral("%1 %2; unsent: %3")
                      .arg(QLatin1String(what), TableWords(part), unsent_.Names()));
    };
  };
  QObject::connect(&unsent_, &UnsentTables::Edited, tell("edited"));
  QObject::connect(&unsent_, &UnsentTables::Sent, tell("sent"));
  QObject::connect(&unsent_, &UnsentTables::Failed, tell("failed"));
  Edit(3, "B3 Type", 255);
  unsent_.NoteFailed({Table::Buttons, 3});
  unsent_.NoteSent({Table::Buttons, 3}, 1, UnsentTables::Sender::Download);
  const QString after = QStringLiteral("; unsent: buttons of station 3");
  EXPECT_EQ(told, QStringList({QStringLiteral("edited buttons 3") + after,
                               QStringLiteral("failed buttons 3") + after,
                               QStringLiteral("sent buttons 3") + after}));
}

}  // namespace
}  // namespace views
