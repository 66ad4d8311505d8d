// SPDX-License-Identifier: MIT
//
// What is edited in the grid of station labels, read from the file by mdbtools: software that
// knows nothing of this one.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>

#include "db/schema.h"
#include "tests/support/run_program.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/labels/labels_console.h"

namespace {

using test::LabelsConsole;
using namespace test;  // NOLINT(google-build-using-namespace): the columns

// The record of a station as mdbtools read it.
QJsonObject Exported(const std::filesystem::path& path, int station) {
  const test::ProgramResult result = test::RunProgram("mdb-json", {path.string(), "Stations"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  for (const QByteArray& line : QByteArray::fromStdString(result.output).split('\n')) {
    const QJsonObject record = QJsonDocument::fromJson(line).object();
    if (record.value(QStringLiteral("StationNum")).toInt() == station) return record;
  }
  ADD_FAILURE() << "no station " << station;
  return {};
}

QString TextOf(const QJsonObject& record, const char* field) {
  return record.value(QString::fromLatin1(field)).toString();
}

TEST(AlphasFile, EditsAreReadByOthers) {
  const test::TemporaryFolder folder;
  const std::filesystem::path path = folder / "stations.mdb";
  ASSERT_TRUE(db::CreateDatabase(path).ok());
  LabelsConsole console;
  console.stations.reset();
  ASSERT_TRUE(jet::Database::Open(path, jet::Access::ReadWrite, &console.database).ok());
  ASSERT_TRUE(console.database->OpenTable("Stations", &console.stations).ok());
  ASSERT_TRUE(console.stations->SetIndex("StationNum").ok());
  console.Open();
  console.Click(4, kLabel);
  console.Type("MÜLLER");
  console.Press(Qt::Key_Tab);
  console.Type("CAM 5");
  console.Press(Qt::Key_Tab);
  console.Type("y");
  console.Press(Qt::Key_Tab);
  console.Type("HRJ five");
  console.Press(Qt::Key_Tab);
  console.Type("QDV five");
  console.Press(Qt::Key_Tab);
  console.Type("Louÿs' desk");
  console.Press(Qt::Key_Return);
  console.Click(9, kLabel);
  console.Paste(QStringLiteral("PASTE 1\tIN 1\nPASTE 2\tIN 2\n"));
  ASSERT_TRUE(console.reporter.reports.empty());
  console.Close();
  console.stations.reset();
  console.database.reset();

  const QJsonObject five = Exported(path, 5);
  EXPECT_EQ(TextOf(five, "Label"), QStringLiteral("MÜLLER"));
  EXPECT_EQ(TextOf(five, "InLabel"), QStringLiteral("CAM 5"));
  EXPECT_EQ(five.value(QStringLiteral("Hidden")).toInt(), 1);
  EXPECT_EQ(TextOf(five, "SysInput"), QStringLiteral("HRJ five"));
  EXPECT_EQ(TextOf(five, "SysOutput"), QStringLiteral("QDV five"));
  EXPECT_EQ(TextOf(five, "Notes"), QStringLiteral("Louÿs' desk"));
  EXPECT_EQ(TextOf(five, "Relays"), QString(64, u'0'));
  EXPECT_EQ(TextOf(Exported(path, 10), "Label"), QStringLiteral("PASTE 1"));
  EXPECT_EQ(TextOf(Exported(path, 11), "InLabel"), QStringLiteral("IN 2"));
  EXPECT_EQ(TextOf(Exported(path, 6), "Label"), QStringLiteral("Sta. 006")) << "a neighbour";
}

}  // namespace
