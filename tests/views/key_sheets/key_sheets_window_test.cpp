// SPDX-License-Identifier: MIT

#include "views/key_sheets/key_sheets_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"
#include "tests/views/gui_support.h"
#include "tests/views/key_sheets/recording_printer.h"
#include "tests/views/view_console.h"

namespace views {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

// The window at station 12 of 64, with a printer that keeps what it gets.
class KeySheetsWindowTest : public testing::Test {
 protected:
  KeySheetsWindowTest() {
    console_.SetField(12, "Label", "CAM & 1");
    console_.SetField(30, "Label", "PANEL A");
    console_.SetField(31, "Label", "PANEL B");
    console_.GoToStation(12);
    Open();
  }

  void Open() {
    window_ = std::make_unique<KeySheetsWindow>(
        console_.Services(),
        KeySheetsWindow::Outlets{
            .printing = {.isThere = [this] { return hasPrinter_; },
                         .ask =
                             [this](QWidget& /*window*/, const QString& document,
                                    const QPageLayout& pages, const auto& print) {
                               document_ = document;
                               pages_ = pages;
                               print(Printer());
                             }},
            .save = [this](const QString& path, const QByteArray& bytes) {
              if (!canSave_) return false;
              path_ = path;
              pdf_ = bytes;
              return true;
            }});
    notes_ = std::make_unique<QSignalSpy>(window_.get(), &KeySheetsWindow::NoteRequested);
    window_->open();
  }

  std::shared_ptr<QPrinter> Printer() {
    if (file_.isEmpty()) return std::make_shared<test::RecordingPrinter>(printed_, failsAt_);
    auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFileName(file_);
    printer->setPageLayout(pages_);
    return printer;
  }

  template <typename Part = QWidget>
  Part& Find(const char* name) const {
    return test::Find<Part>(*window_, name);
  }
  void Press(const char* name) { QTest::mouseClick(&Find(name), Qt::LeftButton); }
  void Tick(int station) {
    Find<QTreeWidget>("lstSheetStations")
        .findItems(QString::number(station), Qt::MatchExactly)
        .front()
        ->setCheckState(0, Qt::Checked);
  }
  std::string Text(const char* label) const { return Find<QLabel>(label).text().toStdString(); }
  bool IsRunning() const { return Find<QProgressBar>("aidSheetsBar").isVisible(); }
  bool WaitForEnd() {
    return QTest::qWaitFor([this] { return !IsRunning(); }, 60'000);
  }
  void SaveTo(const char* path) {
    Press("cmdPdfSheets");
    Q_EMIT Find<QFileDialog>("aidSheetsDialog").fileSelected(QLatin1String(path));
  }
  int PdfPages() const { return static_cast<int>(pdf_.count("/Type /Page\n")); }
  // What stands at the heads of the printed pages.
  std::vector<std::string> Heads() const {
    std::vector<std::string> heads;
    for (const auto& page : printed_.pages) heads.push_back(page.empty() ? "" : page.front());
    return heads;
  }

  test::ViewConsole console_{64};
  test::Printed printed_;
  bool hasPrinter_ = true;
  int failsAt_ = 0;
  QString file_;  // what is printed goes there
  bool canSave_ = true;
  QString document_;
  QPageLayout pages_;
  QString path_;
  QByteArray pdf_;
  std::unique_ptr<KeySheetsWindow> window_;
  std::unique_ptr<QSignalSpy> notes_;
};

TEST_F(KeySheetsWindowTest, ProposesTheStationThatIsWorkedAt) {
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Key Sheets"));
  EXPECT_TRUE(Find<QRadioButton>("optSheetsThis").isChecked());
  EXPECT_EQ(Find<QRadioButton>("optSheetsThis").text(),
            QStringLiteral("This &station: 12 CAM && 1"));
  EXPECT_EQ(Find<QRadioButton>("optSheetsAll").text(), QStringLiteral("&All 64 stations"));
  EXPECT_EQ(Text("aidSheetsCount"), "1 station, 1 page");
  EXPECT_FALSE(Find("lstSheetStations").isEnabled());
  EXPECT_EQ(console_.CurrentStation(), 12);
}

TEST_F(KeySheetsWindowTest, ARecordWithoutAPanelHasNoSheet) {
  console_.GoToStation(100);
  Open();
  EXPECT_FALSE(Find("optSheetsThis").isEnabled());
  EXPECT_EQ(Find<QRadioButton>("optSheetsThis").text(), QStringLiteral("This &station: none"));
  EXPECT_TRUE(Find<QRadioButton>("optSheetsAll").isChecked());
  EXPECT_EQ(Text("aidSheetsCount"), "64 stations, 64 pages");
}

TEST_F(KeySheetsWindowTest, WithoutADatabaseThereIsNothing) {
  console_.databaseIsOpen = false;
  Open();
  EXPECT_EQ(Text("aidSheetsCount"), "There are no stations");
  EXPECT_FALSE(Find("cmdPdfSheets").isEnabled());
  EXPECT_FALSE(Find("cmdPrintSheets").isEnabled());
}

TEST_F(KeySheetsWindowTest, CountsWhatIsChosen) {
  Press("optSheetsChosen");
  EXPECT_TRUE(Find("lstSheetStations").isEnabled());
  EXPECT_EQ(Text("aidSheetsCount"), "Tick the stations whose sheets you want");
  EXPECT_FALSE(Find("cmdPdfSheets").isEnabled());
  EXPECT_FALSE(Find("cmdPrintSheets").isEnabled());
  Find<QLineEdit>("txtFindSheets").setText(QStringLiteral("panel"));
  Press("aidTickAll");
  EXPECT_EQ(Text("aidSheetsCount"), "2 stations, 2 pages");
  EXPECT_TRUE(Find("cmdPdfSheets").isEnabled());
  Press("optSheetsAll");
  EXPECT_EQ(Text("aidSheetsCount"), "64 stations, 64 pages");
}

TEST_F(KeySheetsWindowTest, ChosenOnesArePrinted) {
  console_.SetField(30, "InLabel", "");
  console_.SetField(31, "InLabel", "");
  Press("optSheetsChosen");
  Tick(31);
  Tick(30);
  Press("cmdPrintSheets");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(Heads(), ElementsAre("30  PANEL A", "31  PANEL B"));
  EXPECT_TRUE(printed_.isEnded);
  EXPECT_EQ(document_, QStringLiteral("Key Sheets"));
  EXPECT_EQ(pages_.orientation(), QPageLayout::Landscape);
  EXPECT_EQ(Text("aidSheetsState"), "Printed: 2 key sheets (Office)");
  ASSERT_THAT(*notes_, SizeIs(1));
  EXPECT_EQ((*notes_)[0][0].toString(), QStringLiteral("Printed: 2 key sheets (Office)"));
  EXPECT_EQ(console_.CurrentStation(), 12);
  EXPECT_TRUE(window_->isVisible());
}

TEST_F(KeySheetsWindowTest, ThisOneIsWrittenToAFile) {
  Press("cmdPdfSheets");
  auto& dialog = Find<QFileDialog>("aidSheetsDialog");
  EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Key Sheets As PDF"));
  EXPECT_THAT(dialog.selectedFiles().value(0).toStdString(), testing::EndsWith("key-sheet-12.pdf"));
  Q_EMIT dialog.fileSelected(QStringLiteral("/somewhere/keys.pdf"));
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(path_, QStringLiteral("/somewhere/keys.pdf"));
  EXPECT_TRUE(pdf_.startsWith("%PDF-"));
  EXPECT_TRUE(pdf_.trimmed().endsWith("%%EOF")) << "the whole document";
  EXPECT_EQ(PdfPages(), 1);
  EXPECT_EQ(Text("aidSheetsState"), "Written: /somewhere/keys.pdf");
  ASSERT_THAT(*notes_, SizeIs(1));
  EXPECT_EQ(window_->focusWidget(), &Find("cmdPdfSheets"));
}

TEST_F(KeySheetsWindowTest, PaperIsChosen) {
  auto& paper = Find<QComboBox>("cmbSheetPaper");
  const auto hasSize = [this](const char* width, const char* height) {
    return pdf_.contains(QByteArray("/MediaBox [0 0 ") + width + ' ' + height + ']');
  };
  paper.setCurrentText(QStringLiteral("A4"));
  SaveTo("/a4.pdf");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_TRUE(hasSize("842.000000", "595.000000")) << pdf_.left(400).constData();
  paper.setCurrentIndex(1);
  SaveTo("/letter.pdf");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_TRUE(hasSize("792.000000", "612.000000"));
}

TEST_F(KeySheetsWindowTest, AllAreDrawnWhileTheConsoleGoesOnWorking) {
  QTimer other;
  int turns = 0;
  QObject::connect(&other, &QTimer::timeout, [&turns] { ++turns; });
  other.start(0);
  Press("optSheetsAll");
  SaveTo("/all.pdf");
  EXPECT_TRUE(IsRunning());
  EXPECT_EQ(Text("aidSheetsState"), "Drawing: 0 of 64 pages");
  EXPECT_FALSE(Find("cmdPdfSheets").isEnabled());
  EXPECT_FALSE(Find("cmdPrintSheets").isEnabled());
  EXPECT_FALSE(Find("aidSheetsOf").isEnabled());
  EXPECT_EQ(Find<QPushButton>("cmdCloseSheets").text(), QStringLiteral("Cancel"));
  ASSERT_TRUE(WaitForEnd());
  EXPECT_GE(turns, 63);
  EXPECT_EQ(PdfPages(), 64);
  EXPECT_TRUE(Find("cmdPdfSheets").isEnabled());
  EXPECT_TRUE(Find("aidSheetsOf").isEnabled());
  EXPECT_EQ(Find<QPushButton>("cmdCloseSheets").text(), QStringLiteral("Close"));
}

TEST_F(KeySheetsWindowTest, EscapeCancelsAndNothingIsWritten) {
  Press("optSheetsAll");
  SaveTo("/all.pdf");
  ASSERT_TRUE(
      QTest::qWaitFor([this] { return Find<QProgressBar>("aidSheetsBar").value() >= 2; }, 60'000));
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  EXPECT_FALSE(IsRunning());
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(Text("aidSheetsState"), "Cancelled: nothing was written");
  QTest::qWait(0);
  EXPECT_TRUE(pdf_.isEmpty());
  EXPECT_THAT(*notes_, IsEmpty());
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(KeySheetsWindowTest, ACancelledPrinterGetsNoMore) {
  Press("optSheetsAll");
  Press("cmdPrintSheets");
  ASSERT_TRUE(
      QTest::qWaitFor([this] { return Find<QProgressBar>("aidSheetsBar").value() >= 3; }, 60'000));
  const auto drawn = printed_.pages.size();
  Press("cmdCloseSheets");
  EXPECT_TRUE(printed_.isAborted);
  const std::string said = "Cancelled: " + std::to_string(drawn) + " of 64 pages may be printed";
  EXPECT_EQ(Text("aidSheetsState"), said);
  ASSERT_THAT(*notes_, SizeIs(1));
  EXPECT_EQ((*notes_)[0][0].toString().toStdString(), said);
  QTest::qWait(0);
  EXPECT_THAT(printed_.pages, SizeIs(drawn));
}

TEST_F(KeySheetsWindowTest, APrinterThatFailsMidwayIsReported) {
  failsAt_ = 3;
  Press("optSheetsAll");
  Press("cmdPrintSheets");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(printed_.pages, SizeIs(2));
  EXPECT_THAT(console_.reporter.reports,
              ElementsAre("exclamation|Control Error|Printing 64 key sheets has failed: not "
                          "everything is on paper. Print again, or save a PDF."));
  EXPECT_THAT(*notes_, IsEmpty());
  EXPECT_TRUE(Find<QRadioButton>("optSheetsAll").isChecked()) << "as it was, to be tried again";
  SaveTo("/all.pdf");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(PdfPages(), 64);
}

TEST_F(KeySheetsWindowTest, APrinterThatFailsWithTheLastPageIsReported) {
  failsAt_ = 1;  // of one
  Press("cmdPrintSheets");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(console_.reporter.reports,
              ElementsAre("exclamation|Control Error|Printing 1 key sheet has failed: not "
                          "everything is on paper. Print again, or save a PDF."));
}

TEST_F(KeySheetsWindowTest, WithoutAPrinterItSaysSo) {
  hasPrinter_ = false;
  Press("cmdPrintSheets");
  EXPECT_EQ(Text("aidSheetsState"),
            "This computer has no printer. Save a PDF, and print it where there is one.");
  EXPECT_EQ(window_->focusWidget(), &Find("cmdPdfSheets"));
  SaveTo("/one.pdf");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(PdfPages(), 1);
}

TEST_F(KeySheetsWindowTest, ThePrinterOfTheSystemGetsThePagesOfTheFile) {
  const test::TemporaryFolder folder;
  file_ = QString::fromStdString((folder / "printed.pdf").string());
  Press("optSheetsChosen");
  Tick(1);
  Tick(2);
  Tick(3);
  Press("cmdPrintSheets");
  ASSERT_TRUE(WaitForEnd());
  QFile file(file_);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll().count("/Type /Page\n"), 3);
  EXPECT_THAT(Text("aidSheetsState"), StartsWith("Printed: 3 key sheets"));
}

TEST_F(KeySheetsWindowTest, AStationThatCannotBeReadEndsIt) {
  Press("optSheetsAll");
  SaveTo("/all.pdf");
  console_.databaseIsOpen = false;
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(
      console_.reporter.reports,
      ElementsAre(StartsWith("critical|Control Error|Error Reading What Is To Be Exported")));
  EXPECT_TRUE(pdf_.isEmpty());
}

TEST_F(KeySheetsWindowTest, AFileThatCannotBeWrittenIsNotNoted) {
  canSave_ = false;
  SaveTo("/nowhere/keys.pdf");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(*notes_, IsEmpty());
  EXPECT_EQ(Text("aidSheetsState"), "");
}

TEST_F(KeySheetsWindowTest, AllIntoAFileCloses) {
  Find<QComboBox>("cmbSheetPaper").setCurrentIndex(1);
  window_->WriteAll(QStringLiteral("/all.pdf"));
  EXPECT_TRUE(window_->isVisible());
  ASSERT_TRUE(QTest::qWaitFor([this] { return !window_->isVisible(); }, 60'000));
  EXPECT_EQ(path_, QStringLiteral("/all.pdf"));
  EXPECT_EQ(PdfPages(), 64);
  EXPECT_TRUE(pdf_.contains("/MediaBox [0 0 842.000000 595.000000]")) << "A4";
  EXPECT_THAT(*notes_, SizeIs(1));
}

// Enter in the list, and in the field above it, writes nothing.
TEST_F(KeySheetsWindowTest, EnterInTheFieldGoesToTheList) {
  Press("optSheetsChosen");
  Find("txtFindSheets").setFocus();
  QTest::keyClick(&Find("txtFindSheets"), Qt::Key_Return);
  EXPECT_EQ(window_->focusWidget(), &Find("lstSheetStations"));
  EXPECT_EQ(window_->findChild<QFileDialog*>(), nullptr);
}

}  // namespace
}  // namespace views
