// SPDX-License-Identifier: MIT
//
// What the programming view edits, read back from the file by mdbtools: software that knows
// nothing of this one.  Without mdbtools the test fails; test.sh installs them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <map>

#include "db/schema.h"
#include "tests/support/run_program.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/programming/buttons_console.h"

namespace views {
namespace {

using test::ButtonsConsole;
using test::Flags;

// The stations of a database file by their numbers.
std::map<int, QJsonObject> Stations(const std::string& path) {
  const test::ProgramResult result = test::RunProgram("mdb-json", {path, "Stations"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  std::map<int, QJsonObject> stations;
  for (const QByteArray& line : QByteArray::fromStdString(result.output).split('\n')) {
    const QJsonObject station = QJsonDocument::fromJson(line).object();
    if (!station.isEmpty()) stations[station[QStringLiteral("StationNum")].toInt()] = station;
  }
  return stations;
}

TEST(ButtonsFile, HoldsWhatWasEditedAndNothingElse) {
  const test::TemporaryFolder folder;
  const std::string path = (folder / "Tesk.mdb").string();
  ASSERT_TRUE(db::CreateDatabase(path).ok());
  const std::map<int, QJsonObject> before = Stations(path);
  ASSERT_EQ(before.size(), 128U);
  {
    ButtonsConsole console;
    console.stations.reset();
    ASSERT_TRUE(jet::Database::Open(path, jet::Access::ReadWrite, &console.database).ok());
    ASSERT_TRUE(console.database->OpenTable(db::kStationsTable, &console.stations).ok());
    ASSERT_TRUE(console.stations->SetIndex(db::kStationNumIndex).ok());
    ASSERT_TRUE(console.stations->MoveFirst().ok());
    console.Open();
    console.Press("cmdFwd10");
    console.Press("cmdButton_4");
    console.ClickBox("ckStationSel", 63);
    console.ClickBox("ckStationSel", 4);
    console.ChooseOption(255);
    console.PickButton(6);
    console.ClickBox("ckStationSel", 5);
    console.GoToTab(6);
    console.ClickBox("ckRelaySel", 0);
    console.ClickBox("ckRelaySel", 63);
    console.Press("cmdLast");
    console.Close();
    console.stations.reset();
    console.database.reset();
  }
  std::map<int, QJsonObject> expected = before;
  const auto text = [](const std::string& value) { return QString::fromStdString(value); };
  QJsonObject& edited = expected[11];
  edited[QStringLiteral("B5 Prog")] = text(Flags({64}));
  edited[QStringLiteral("B5 First")] = 64;
  edited[QStringLiteral("B5 Type")] = 255;
  edited[QStringLiteral("B6 Prog")] = text(Flags({}));
  edited[QStringLiteral("B6 First")] = 1;
  edited[QStringLiteral("B6 Type")] = 254;
  edited[QStringLiteral("Relays")] = text(Flags({1, 64}));
  const std::map<int, QJsonObject> after = Stations(path);
  ASSERT_EQ(after.size(), expected.size());
  for (const auto& [number, station] : expected) {
    EXPECT_EQ(QJsonDocument(after.at(number)).toJson().toStdString(),
              QJsonDocument(station).toJson().toStdString())
        << number;
  }
}

}  // namespace
}  // namespace views
