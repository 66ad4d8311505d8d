// SPDX-License-Identifier: MIT

#include "app/paper/import_command.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QDialog>
#include <QSignalSpy>

#include "app/paper/export_menu.h"
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
