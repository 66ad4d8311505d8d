// SPDX-License-Identifier: MIT

#include "views/import_file/import_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTreeView>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/recording_changes.h"
#include "tests/views/gui_support.h"
#include "tests/views/view_console.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ImportWindowTest : public testing::Test {
 protected:
  void Show(const std::string& bytes) {
    window_ =
        std::make_unique<ImportWindow>(console_.Services(), QStringLiteral("labels.csv"), bytes);
    QObject::connect(window_.get(), &ImportWindow::Imported, window_.get(),
                     [this](const QString& note) { notes_.push_back(note.toStdString()); });
    window_->show();
  }

  template <typename Part = QWidget>
  Part& Find(const char* name) const {
    return test::Find<Part>(*window_, name);
  }
  std::string Summary() const { return Find<QLabel>("aidImportSummary").text().toStdString(); }
  std::vector<std::string> Rows() const {
    const QAbstractItemModel& model = *Find<QTreeView>("lstImport").model();
    std::vector<std::string> rows;
    for (int row = 0; row < model.rowCount(); ++row) {
      QStringList cells;
      for (int column = 1; column < model.columnCount(); ++column) {
        cells.append(model.index(row, column).data().toString());
      }
      rows.push_back(cells.join(u'|').toStdString());
    }
    return rows;
  }
  std::vector<std::string> Faults() const {
    const auto& list = Find<QListWidget>("aidImportFaults");
    std::vector<std::string> faults;
    for (int row = 0; row < list.count(); ++row) {
      faults.push_back(list.item(row)->text().toStdString());
    }
    return faults;
  }
  void Press(const char* name) { QTest::mouseClick(&Find(name), Qt::LeftButton); }

  test::ViewConsole console_{16};
  test::RecordingChanges heard_{console_.changes};
  std::unique_ptr<ImportWindow> window_;
  std::vector<std::string> notes_;
};

TEST_F(ImportWindowTest, ShowsWhatDiffersAndStoresWhatIsTickedAsOneAct) {
  Show("Station,Station Label,Hidden\r\n3,CAM 3,No\r\n4,MIC 4,Yes\r\n5,Sta. 005,No\r\n");
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Import: labels.csv"));
  EXPECT_THAT(Rows(), ElementsAre("Station 3|Label|Sta. 003|CAM 3",
                                  "Station 4|Label|Sta. 004|MIC 4", "Station 4|Hidden|No|Yes"));
  EXPECT_EQ(Summary(),
            "What is ticked becomes as it is in the file. Nothing is sent. Rows of the file: 3.");
  QTreeView& list = Find<QTreeView>("lstImport");
  list.model()->setData(list.model()->index(1, 0), Qt::Unchecked, Qt::CheckStateRole);
  EXPECT_THAT(heard_.seen, IsEmpty());
  Press("cmdOkImport");
  EXPECT_EQ(heard_.times, 1);
  EXPECT_THAT(heard_.Take(), ElementsAre("file 3: Label Sta. 003 > CAM 3", "file 4: Hidden 0 > 1"));
  EXPECT_THAT(notes_, ElementsAre("From a file: 2 changes (labels.csv)"));
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(ImportWindowTest, NothingOfAFileWithAFaultIsStored) {
  Show("Station,Station Label,Hidden\n3,CAM 3,No\n4,123456789,Perhaps\n5,X\n");
  EXPECT_EQ(Summary(),
            "Nothing of this file is imported. Mend what is listed, and choose the file again.");
  EXPECT_THAT(Faults(),
              ElementsAre("Line 3, column 2 (Station Label): The text is longer than 8 characters.",
                          "Line 3, column 3 (Hidden): “Perhaps” is neither No nor Yes.",
                          "Line 4: It has 2 cells instead of 3."));
  EXPECT_FALSE(Find("lstImport").isVisible());
  EXPECT_FALSE(Find("cmdOkImport").isEnabled());
  EXPECT_EQ(Find<QPushButton>("cmdCancelImport").text(), QStringLiteral("Close"));
  Press("cmdCancelImport");
  EXPECT_FALSE(window_->isVisible());
  EXPECT_THAT(heard_.seen, IsEmpty());
}

TEST_F(ImportWindowTest, OfVeryManyFaultsTheLastAreCounted) {
  std::string file = "Station,Hidden\n";
  for (int row = 0; row < 250; ++row) file += "999,No\n";
  Show(file);
  const std::vector<std::string> faults = Faults();
  ASSERT_EQ(faults.size(), 101u);
  EXPECT_EQ(faults.front(), "Line 2, column 1 (Station): There is no station “999”.");
  EXPECT_EQ(faults.back(), "… and 150 more");
}

TEST_F(ImportWindowTest, WhatIsStoredAlreadyIsSaid) {
  Show("Station,Station Label\n3,Sta. 003\n");
  EXPECT_EQ(Summary(), "This file holds what is stored already. Rows of the file: 1.");
  EXPECT_FALSE(Find("cmdOkImport").isEnabled());
}

TEST_F(ImportWindowTest, NothingIsStoredThatWasNotShown) {
  Show("Station,Button,Operation,Targets\n3,2,LISTEN,#5\n4,2,LISTEN,#5\n");
  EXPECT_THAT(Rows(), ElementsAre("Station 3|Button 2|TALK 2|LISTEN 5",
                                  "Station 4|Button 2|TALK 2|LISTEN 5"));
  console_.SetField(3, "B2 Type", 1);
  console_.SetField(3, "B2 Prog", std::string(63, '0') + "1");
  Press("cmdOkImport");
  EXPECT_THAT(heard_.seen, IsEmpty());
  EXPECT_THAT(Rows(), ElementsAre("Station 3|Button 2|LISTEN 64|LISTEN 5",
                                  "Station 4|Button 2|TALK 2|LISTEN 5"));
  EXPECT_EQ(Summary(),
            "The stations were changed meanwhile. Tick what is to become as it is in the file.");
  EXPECT_FALSE(Find("cmdOkImport").isEnabled()) << "nothing is ticked any more";
  Press("aidTickAll");
  Press("cmdOkImport");
  EXPECT_EQ(heard_.times, 1);
  EXPECT_THAT(heard_.Take(), testing::SizeIs(2));
}

TEST_F(ImportWindowTest, WhatIsOnlyToBeReadAndDiffersIsNamed) {
  Show(
      "Station,Station Label,Button,Operation,First Target,Targets\n"
      "3,CAM 3,2,TALK,Sta. 002,#2\n4,Sta. 004,2,TALK,Sta. 005,#5\n5,Sta. 005,2,TALK,X,#2\n");
  EXPECT_EQ(Summary(),
            "What is ticked becomes as it is in the file. Nothing is sent. Rows of the file: 3.\n"
            "Only to be read, and not imported: line 2 (Station Label): “CAM 3”, and 1 more.");
}

TEST_F(ImportWindowTest, AFileOfAnotherKindIsRefused) {
  Show(std::string(100'000, ','));
  EXPECT_THAT(Faults(),
              ElementsAre("Line 1: It has more than 64 cells: this is no file of labels or "
                          "programming."));
}

// What stands in a cell is no place for more.
TEST_F(ImportWindowTest, AFaultSaysWhatStandsThere) {
  Show("Station,Button,Operation,Targets\n3,%2 %1,TALK,\n");
  EXPECT_THAT(Faults(), ElementsAre("Line 2, column 2 (Button): There is no button “%2 %1”: a "
                                    "station has 32."));
}

TEST_F(ImportWindowTest, WhileTheConsoleIsLockedNothingIsStored) {
  Show("Station,Station Label\n3,CAM 3\n");
  console_.locks.LockConsole(true);
  Press("cmdOkImport");
  EXPECT_EQ(console_.Text(3, "Label"), "Sta. 003");
  EXPECT_THAT(console_.reporter.reports, testing::SizeIs(1));
  EXPECT_THAT(notes_, IsEmpty());
  EXPECT_TRUE(window_->isVisible());
}

TEST_F(ImportWindowTest, WithoutADatabaseItIsReported) {
  console_.databaseIsOpen = false;
  Show("Station,Station Label\n3,CAM 3\n");
  EXPECT_THAT(console_.reporter.reports, testing::SizeIs(1));
  EXPECT_FALSE(Find("cmdOkImport").isEnabled());
}

}  // namespace
}  // namespace views
