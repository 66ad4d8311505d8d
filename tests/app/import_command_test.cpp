// SPDX-License-Identifier: MIT

#include "app/paper/import_command.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QDialog>
#include <QLineEdit>
#include <QSignalSpy>

#include "app/paper/export_menu.h"
#include "app/shell/open_views.h"
#include "app/shell/stored_elsewhere.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/gui_support.h"
#include "tests/views/view_console.h"

namespace app {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class ImportCommandTest : public testing::Test {
 protected:
  QString Path(const char* name) const {
    return QString::fromStdU16String((folder_ / name).u16string());
  }

  test::ViewConsole console_{16};
  test::TemporaryFolder folder_;
  bool isStored_ = true;
  ImportCommand import_{{.window = *console_.window,
                         .data = console_.Services(),
                         .storeEdits = [this] { return isStored_; }}};
  QSignalSpy notes_{&import_, &ImportCommand::NoteRequested};
};

TEST_F(ImportCommandTest, WhatWasExportedAndChangedComesBack) {
  QMenu menu;
  ExportMenu exported(
      {.menu = menu, .window = *console_.window, .data = console_.Services(), .storeEdits = [] {
         return true;
       }});
  ASSERT_TRUE(exported.Write(Export::LabelsCsv, Path("labels.csv")));
  console_.SetField(3, "Label", "CAM 3");
  import_.Open(Path("labels.csv"));
  auto& window = test::Find<QDialog>(*console_.window, "frmImport");
  EXPECT_TRUE(window.isVisible());
  test::Find<QAbstractButton>(window, "cmdOkImport").click();
  EXPECT_EQ(console_.Text(3, "Label"), "Sta. 003");
  ASSERT_THAT(notes_, SizeIs(1));
  EXPECT_EQ(notes_[0][0].toString(),
            QStringLiteral("From a file: Label of station 3 (labels.csv)"));
}

// Else what is edited next would be stored for another station than the one that is shown.
TEST_F(ImportCommandTest, TheStationThatIsProgrammedStaysShown) {
  OpenViews views(*console_.area, console_.Services());
  const StoredElsewhere storedElsewhere(console_.changes, views);
  console_.GoToStation(9);
  views.ShowButtons();
  const auto& port = test::Find<QLineEdit>(*views.Buttons(), "txtPortNmbr");
  ASSERT_EQ(port.text(), QStringLiteral("9"));
  test::WriteFile(folder_ / "labels.csv", "Station,Station Label\r\n5,GALLERY\r\n6,SOUND\r\n");
  import_.Open(Path("labels.csv"));
  test::Find<QAbstractButton>(*console_.window, "cmdOkImport").click();
  ASSERT_EQ(console_.Text(6, "Label"), "SOUND");
  EXPECT_EQ(port.text(), QStringLiteral("9"));
  EXPECT_EQ(console_.CurrentStation(), 9);
}

TEST_F(ImportCommandTest, AFileThatCannotBeReadIsReported) {
  import_.Open(Path("nowhere.csv"));
  ASSERT_THAT(console_.reporter.reports, SizeIs(1));
  EXPECT_THAT(test::ShownDialogs(*console_.window, "frmImport"), IsEmpty());
}

TEST_F(ImportCommandTest, AsksForAFileWhenNothingIsInTheWay) {
  console_.locks.LockConsole(true);
  import_.Ask();
  EXPECT_THAT(console_.reporter.reports, SizeIs(1));
  EXPECT_THAT(test::ShownDialogs(*console_.window, "aidImportDialog"), IsEmpty());
  console_.locks.LockConsole(false);
  isStored_ = false;
  import_.Ask();
  EXPECT_THAT(test::ShownDialogs(*console_.window, "aidImportDialog"), IsEmpty());
  isStored_ = true;
  import_.Ask();
  ASSERT_THAT(test::ShownDialogs(*console_.window, "aidImportDialog"), SizeIs(1));
  test::ShownDialogs(*console_.window, "aidImportDialog").front()->close();
}

}  // namespace
}  // namespace app
