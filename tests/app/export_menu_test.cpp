// SPDX-License-Identifier: MIT

#include "app/paper/export_menu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QAction>
#include <QDialog>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <filesystem>

#include "tests/views/gui_support.h"
#include "tests/views/mnemonics.h"
#include "tests/views/view_console.h"

namespace app {
namespace {

class ExportMenuTest : public testing::Test {
 protected:
  QByteArray Written(Export what, const char* name) {
    const QString path = folder_.filePath(QLatin1String(name));
    EXPECT_TRUE(export_.Write(what, path));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  test::ViewConsole console_{8};
  QMenu menu_;
  bool isStored_ = true;
  int stored_ = 0;
  ExportMenu export_{{.menu = menu_,
                      .window = *console_.window,
                      .data = console_.Services(),
                      .storeEdits = [this] {
                        ++stored_;
                        return isStored_;
                      }}};
  QTemporaryDir folder_;
};

TEST_F(ExportMenuTest, EveryItemHasAMnemonicOfItsOwn) {
  EXPECT_EQ(menu_.actions().size(), 5);
  test::ExpectMnemonics(menu_);
}

TEST_F(ExportMenuTest, TheDialogBearsTheCaptionOfItsItem) {
  menu_.actions().first()->trigger();
  auto* const dialog = &test::Find<QDialog>(*console_.window, "aidExportDialog");
  EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Crosspoint Map As CSV"));
  dialog->close();
}

TEST_F(ExportMenuTest, LabelsStandInTheirFile) {
  console_.SetField(1, "Label", "Studio A");
  console_.GoToStation(5);
  const QByteArray csv = Written(Export::LabelsCsv, "labels.csv");
  EXPECT_TRUE(
      csv.startsWith("\xEF\xBB\xBFStation,Station Label,Input Label,Hidden,System Input,"
                     "System Output,Station Notes\r\n"
                     "1,Studio A,Inpt 001,No,HRJ(1) - Ch 1,QDV(1) - Ch A,"
                     "Notes for Station 001\r\n"))
      << csv.left(300).constData();
  EXPECT_EQ(csv.count('\n'), 129);
  EXPECT_EQ(console_.CurrentStation(), 5);
}

TEST_F(ExportMenuTest, TheMapIsThatOfTheSwitcher) {
  console_.model.CrosspointMap.At(2, 3) = 1;
  console_.model.CrosspointMap.At(4, 1) = 1;
  console_.model.ChannelStatus[4] = 1;
  console_.SetField(1, "Inhibits", "01000000");
  const QByteArray csv = Written(Export::MapCsv, "map.csv");
  EXPECT_TRUE(csv.contains("\r\n01,Sta. 001,,inhibit,,,,,,\r\n")) << csv.constData();
  EXPECT_TRUE(csv.contains("\r\n02,Sta. 002,,,crosspoint,,,,,\r\n")) << csv.constData();
  EXPECT_TRUE(csv.contains("\r\n04,Sta. 004,priority,,,,,,,\r\n")) << csv.constData();
}

TEST_F(ExportMenuTest, ChannelsWithoutARecordHaveTheirNumbers) {
  test::ViewConsole large(200);
  ExportMenu exports(
      {.menu = menu_, .window = *large.window, .data = large.Services(), .storeEdits = [] {
         return true;
       }});
  ASSERT_TRUE(large.stations->Seek(131).ok());
  while (large.stations->HasRecord()) {
    ASSERT_TRUE(large.stations->Delete().ok());
    ASSERT_TRUE(large.stations->MoveNext().ok());
  }
  const QString path = folder_.filePath(QStringLiteral("map.csv"));
  ASSERT_TRUE(exports.Write(Export::MapCsv, path));
  EXPECT_TRUE(large.reporter.reports.empty());
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray csv = file.readAll();
  EXPECT_EQ(csv.count('\n'), 1 + 200);
  EXPECT_TRUE(csv.contains("\r\n131,Sta. 131,"));
  EXPECT_TRUE(csv.contains("\r\n200,Sta. 200,"));
  EXPECT_TRUE(csv.contains(",200 Sta. 200\r\n"));
}

TEST_F(ExportMenuTest, WhatIsTypedIsStoredFirst) {
  const auto dialogs = [this] {
    return console_.window->findChildren<QWidget*>(QStringLiteral("aidExportDialog")).size();
  };
  for (QAction* const action : menu_.actions()) {
    isStored_ = false;
    stored_ = 0;
    action->trigger();
    EXPECT_EQ(stored_, 1) << action->objectName().toStdString();
    EXPECT_EQ(dialogs(), 0) << "it could not be stored";
    isStored_ = true;
    action->trigger();
    EXPECT_EQ(stored_, 2);
    ASSERT_EQ(dialogs(), 1);
    delete console_.window->findChild<QWidget*>(QStringLiteral("aidExportDialog"));
  }
}

TEST_F(ExportMenuTest, EveryKeyHasItsLine) {
  const QByteArray csv = Written(Export::ProgrammingCsv, "programming.csv");
  EXPECT_EQ(csv.count('\n'), 1 + 64 * 32);
  EXPECT_TRUE(csv.contains("\r\n64,Sta. 064,32,TALK,Sta. 032,Sta. 032\r\n"));
}

TEST_F(ExportMenuTest, DocumentsHaveTheirPages) {
  const auto pages = [](const QByteArray& pdf) { return pdf.count("/Type /Page\n"); };
  for (const auto& [what, count] :
       {std::pair(Export::LabelsPdf, 4), std::pair(Export::MapPdf, 1)}) {
    const QByteArray pdf = Written(what, "document.pdf");
    EXPECT_TRUE(pdf.startsWith("%PDF-"));
    EXPECT_EQ(pages(pdf), count) << static_cast<int>(what);
  }
}

TEST_F(ExportMenuTest, AFileThatCannotBeWrittenIsReported) {
  EXPECT_FALSE(export_.Write(Export::LabelsCsv, QStringLiteral("/nowhere/labels.csv")));
  ASSERT_EQ(console_.reporter.reports.size(), 1U);
  EXPECT_THAT(
      console_.reporter.reports[0],
      testing::StartsWith("exclamation|Control Error|/nowhere/labels.csv could not be written: "));
}

TEST_F(ExportMenuTest, NothingButAFileIsReplaced) {
  const QString path = folder_.filePath(QStringLiteral("map.csv"));
  ASSERT_EQ(mkfifo(path.toLocal8Bit().constData(), 0666), 0);
  EXPECT_FALSE(export_.Write(Export::MapCsv, path));
  ASSERT_EQ(console_.reporter.reports.size(), 1U);
  EXPECT_THAT(console_.reporter.reports[0],
              testing::EndsWith("could not be written: Cannot replace map.csv: It is no ordinary "
                                "file"));
  EXPECT_TRUE(std::filesystem::is_fifo(path.toStdString()));
}

TEST_F(ExportMenuTest, WithoutADatabaseNothingIsWritten) {
  console_.databaseIsOpen = false;
  const QString path = folder_.filePath(QStringLiteral("labels.csv"));
  EXPECT_FALSE(export_.Write(Export::LabelsCsv, path));
  EXPECT_FALSE(QFile::exists(path));
  EXPECT_EQ(console_.reporter.reports.size(), 1U);
}

TEST_F(ExportMenuTest, SaysWhatWasWritten) {
  QSignalSpy notes(&export_, &ExportMenu::NoteRequested);
  Written(Export::LabelsCsv, "labels.csv");
  ASSERT_EQ(notes.count(), 1);
  EXPECT_EQ(notes[0][0].toString(),
            QStringLiteral("Written: ") + folder_.filePath(QStringLiteral("labels.csv")));
}

}  // namespace
}  // namespace app
