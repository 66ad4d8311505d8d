// SPDX-License-Identifier: MIT
//
// Key sheets of chosen stations, on the real console.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QByteArray>
#include <algorithm>
#include <string>
#include <vector>

#include "tests/end_to_end/console_process.h"
#include "tests/end_to_end/system_database.h"
#include "tests/support/simulator_process.h"
#include "tools/stage/fake_printers.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::EndsWith;

class KeySheetsTest : public testing::Test {
 protected:
  void SetUp() override { folder_.WriteSettings(line_); }

  // The pages of a PDF file that is whole.
  static int PagesOf(const fs::path& file) {
    return static_cast<int>(QByteArray::fromStdString(ReadFile(file)).count("/Type /Page\n"));
  }

  // Their names.
  static std::vector<std::string> FilesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
      names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  std::string line_ = folder_ / "line";
  SimulatorProcess simulator_{{"--log", "--link", line_}};
};

TEST_F(KeySheetsTest, OfTheStationsThatAreFoundAndTickedWithALabelThatIsBeingTyped) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  console.Type("jgAlphas", "B");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("edtLabel"); }));
  console.Type("edtLabel", "ooth 7");

  console.Trigger("aidKeySheets");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("frmKeySheets"); }));
  EXPECT_EQ(console.Property("optSheetsThis", "text"),
            QJsonValue(QStringLiteral("This &station: 1 Booth 7")));
  console.Click("optSheetsChosen");
  console.Set("txtFindSheets", "text", QStringLiteral("Sta. 01"));
  console.Click("aidTickAll");
  EXPECT_EQ(console.Property("aidSheetsCount", "text"),
            QJsonValue(QStringLiteral("10 key sheets")));

  console.Click("cmdPdfSheets");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("aidSheetsDialog"); }));
  const fs::path file = folder_.Home() / "keys of studio 1.pdf";
  console.Set("fileNameEdit", "text", QString::fromStdString(file.string()));
  console.Keys("fileNameEdit", "Return");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return fs::exists(file); }));
  EXPECT_EQ(PagesOf(file), 10);
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] {
    return console.Property("aidSheetsState", "text") ==
           QJsonValue(QString::fromStdString("Written: " + file.string()));
  }));

  console.CloseWindow("frmKeySheets");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console.IsShown("frmKeySheets"); }));
  console.Trigger("aidEventLog");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("aidLogLines"); }));
  EXPECT_THAT(console.Rows("aidLogLines"), Contains(EndsWith("|Written: " + file.string())));
  EXPECT_EQ(console.Terminate(), 0);
}

TEST_F(KeySheetsTest, AreGivenToThePrinter) {
  const stage::FakePrinters printers;
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  console.Trigger("aidKeySheets");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] {
    return console.Property("cmbSheetPrinter", "currentText") ==
           QJsonValue(QStringLiteral("Studio"));
  }));
  console.Click("cmdPrintSheets");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] {
    return console.Property("aidSheetsState", "text") ==
           QJsonValue(QStringLiteral("Given to the printer: 1 key sheet (Studio)"));
  }));
  EXPECT_EQ(PagesOf(printers.Document()), 1);
  EXPECT_EQ(console.Terminate(), 0);
}

TEST_F(KeySheetsTest, OfAllStationsByTheExport) {
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  console.Trigger("aidExportKeySheetsPdf");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("aidExportDialog"); }));
  const fs::path file = folder_.Home() / "all.pdf";
  console.Set("fileNameEdit", "text", QString::fromStdString(file.string()));
  console.Keys("fileNameEdit", "Return");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return fs::exists(file); }));
  EXPECT_EQ(PagesOf(file), 64);
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return !console.IsShown("frmKeySheets"); }));
  EXPECT_EQ(console.Terminate(), 0);
}

// The system may end the console at any time: what was begun is left, and no half of it stays.  A
// large system, so that there is the time to see that it draws.
TEST_F(KeySheetsTest, TheConsoleMayEndWhileTheyAreDrawn) {
  CreateSystem(folder_ / "Tesk.mdb", 256, 1);
  ConsoleProcess console(folder_);
  ASSERT_TRUE(console.IsUp());
  console.Trigger("aidExportKeySheetsPdf");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console.IsShown("aidExportDialog"); }));
  const fs::path sheets = folder_.Home() / "sheets";
  fs::create_directory(sheets);
  WriteFile(sheets / "old.pdf", "what was there");
  const std::vector<std::string> before = FilesIn(sheets);
  const fs::path file = sheets / "all.pdf";
  console.Set("fileNameEdit", "text", QString::fromStdString(file.string()));
  console.Keys("fileNameEdit", "Return");
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] {
    return console.Property("aidSheetsState", "text").toString().startsWith(u"Drawing: ");
  }));
  EXPECT_EQ(console.Terminate(), 0);
  EXPECT_EQ(FilesIn(sheets), before);
}

}  // namespace
}  // namespace test
