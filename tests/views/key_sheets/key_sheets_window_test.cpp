// SPDX-License-Identifier: MIT

#include "views/key_sheets/key_sheets_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
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
#include "tests/views/view_console.h"
#include "tools/stage/fake_printers.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

// The window at station 12 of 64, with two printers.
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
    window_ = std::make_unique<KeySheetsWindow>(console_.Services(),
                                                [this](const QString& path, const QByteArray& pdf) {
                                                  if (!canSave_) return false;
                                                  path_ = path;
                                                  pdf_ = pdf;
                                                  return true;
                                                });
    notes_ = std::make_unique<QSignalSpy>(window_.get(), &KeySheetsWindow::NoteRequested);
    window_->open();
  }

  // Waits until the printers are known, or that there are none.
  bool WaitForPrinters(const char* first) {
    const auto& printers = Find<QComboBox>("cmbSheetPrinter");
    return QTest::qWaitFor(
        [&] {
          return (printers.count() == 0 ? printers.placeholderText() : printers.itemText(0)) ==
                 QLatin1String(first);
        },
        60'000);
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
  int PrintedPages() const {
    return static_cast<int>(
        QByteArray::fromStdString(test::ReadFile(printers_.Document())).count("/Type /Page\n"));
  }
  std::string LastNote() const {
    return notes_->isEmpty() ? "" : notes_->back().front().toString().toStdString();
  }

  stage::FakePrinters printers_;
  test::ViewConsole console_{64};
  bool canSave_ = true;
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
  EXPECT_EQ(Text("aidSheetsCount"), "1 key sheet");
  EXPECT_FALSE(Find("lstSheetStations").isEnabled());
  EXPECT_EQ(console_.CurrentStation(), 12);
}

TEST_F(KeySheetsWindowTest, ARecordWithoutAPanelHasNoSheet) {
  console_.GoToStation(100);
  Open();
  EXPECT_FALSE(Find("optSheetsThis").isEnabled());
  EXPECT_EQ(Find<QRadioButton>("optSheetsThis").text(), QStringLiteral("This &station: none"));
  EXPECT_TRUE(Find<QRadioButton>("optSheetsAll").isChecked());
  EXPECT_EQ(Text("aidSheetsCount"), "64 key sheets");
}

TEST_F(KeySheetsWindowTest, StationsThatCannotBeReadAreNotTakenForNone) {
  console_.databaseIsOpen = false;
  Open();
  EXPECT_THAT(Text("aidSheetsCount"), StartsWith("The stations cannot be read: "));
  EXPECT_FALSE(Find("cmdPdfSheets").isEnabled());
  EXPECT_FALSE(Find("cmdPrintSheets").isEnabled());
}

TEST_F(KeySheetsWindowTest, WithoutStationsThereIsNothing) {
  console_.model.StationCount = 0;
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
  EXPECT_EQ(Text("aidSheetsCount"), "2 key sheets");
  EXPECT_TRUE(Find("cmdPdfSheets").isEnabled());
  Press("optSheetsAll");
  EXPECT_EQ(Text("aidSheetsCount"), "64 key sheets");
}

TEST_F(KeySheetsWindowTest, ChosenOnesAreGivenToTheUsualPrinter) {
  ASSERT_TRUE(WaitForPrinters("Office"));
  EXPECT_EQ(Find<QComboBox>("cmbSheetPrinter").currentText(), QStringLiteral("Studio"));
  Find<QComboBox>("cmbSheetPaper").setCurrentText(QStringLiteral("Letter"));
  Press("optSheetsChosen");
  Tick(31);
  Tick(30);
  Press("cmdPrintSheets");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(test::ReadFile(printers_.Arguments()), StartsWith("-d\nStudio\n-t\nKey Sheets\n"));
  EXPECT_THAT(test::ReadFile(printers_.Arguments()), HasSubstr("\nmedia=Letter\n"));
  EXPECT_EQ(PrintedPages(), 2);
  EXPECT_EQ(Text("aidSheetsState"), "Given to the printer: 2 key sheets (Studio)");
  EXPECT_EQ(LastNote(), "Given to the printer: 2 key sheets (Studio)");
  EXPECT_EQ(console_.CurrentStation(), 12);
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(window_->focusWidget(), &Find("cmdPrintSheets"));
}

TEST_F(KeySheetsWindowTest, APrinterIsChosen) {
  ASSERT_TRUE(WaitForPrinters("Office"));
  Find<QComboBox>("cmbSheetPrinter").setCurrentText(QStringLiteral("Office"));
  Press("cmdPrintSheets");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(LastNote(), "Given to the printer: 1 key sheet (Office)");
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
  EXPECT_EQ(Text("aidSheetsState"), "Drawing: 0 of 64 stations");
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
  EXPECT_EQ(LastNote(), "Cancelled: nothing was written");
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(KeySheetsWindowTest, WhatIsCancelledWhileItIsDrawnIsNotPrinted) {
  ASSERT_TRUE(WaitForPrinters("Office"));
  Press("optSheetsAll");
  Press("cmdPrintSheets");
  ASSERT_TRUE(
      QTest::qWaitFor([this] { return Find<QProgressBar>("aidSheetsBar").value() >= 3; }, 60'000));
  Press("cmdCloseSheets");
  EXPECT_EQ(Text("aidSheetsState"), "Cancelled: nothing was printed");
  EXPECT_EQ(LastNote(), "Cancelled: nothing was printed");
  QTest::qWait(0);
  EXPECT_EQ(test::ReadFile(printers_.Document()), "(none)");
}

TEST_F(KeySheetsWindowTest, APrintingSystemThatDoesNotAnswerIsGivenUp) {
  printers_.LetLp("exec sleep 1000");
  ASSERT_TRUE(WaitForPrinters("Office"));
  Press("cmdPrintSheets");
  ASSERT_TRUE(QTest::qWaitFor(
      [this] { return Text("aidSheetsState") == "Giving them to the printer"; }, 60'000));
  EXPECT_FALSE(Find("cmdPdfSheets").isEnabled());
  EXPECT_FALSE(Find("cmdPrintSheets").isEnabled());
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  EXPECT_TRUE(window_->isVisible());
  EXPECT_FALSE(IsRunning());
  EXPECT_EQ(LastNote(), "Cancelled: what the printer has may be printed");
  EXPECT_TRUE(Find("cmdPrintSheets").isEnabled());
  EXPECT_TRUE(Find("cmbSheetPrinter").isEnabled());
}

TEST_F(KeySheetsWindowTest, WhatThePrinterDoesNotTakeIsReported) {
  printers_.LetLp("cat > /dev/null; echo 'lp: The printer is gone.' >&2; exit 1");
  ASSERT_TRUE(WaitForPrinters("Office"));
  Press("optSheetsAll");
  Press("cmdPrintSheets");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(console_.reporter.reports,
              ElementsAre("exclamation|Control Error|64 key sheets could not be given to the "
                          "printer Studio: lp: The printer is gone."));
  EXPECT_THAT(*notes_, IsEmpty());
  EXPECT_EQ(Text("aidSheetsState"), "");
  EXPECT_TRUE(Find<QRadioButton>("optSheetsAll").isChecked()) << "as it was, to be tried again";
  SaveTo("/all.pdf");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(PdfPages(), 64);
}

TEST_F(KeySheetsWindowTest, WithoutAPrinterItSaysSoAndLooksAgain) {
  printers_.LetLpstat("echo 'lpstat: No destinations added.' >&2");
  Open();
  EXPECT_EQ(Find<QComboBox>("cmbSheetPrinter").placeholderText(), QStringLiteral("Looking…"));
  ASSERT_TRUE(WaitForPrinters("None"));
  EXPECT_FALSE(Find("cmbSheetPrinter").isEnabled());
  printers_.LetLpstat("echo Office");
  Press("cmdPrintSheets");
  EXPECT_EQ(Text("aidSheetsState"),
            "There is no printer. Save a PDF, and print it where there is one.");
  EXPECT_EQ(window_->focusWidget(), &Find("cmdPdfSheets"));
  SaveTo("/one.pdf");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(PdfPages(), 1);
  ASSERT_TRUE(WaitForPrinters("Office"));
  EXPECT_EQ(Find<QComboBox>("cmbSheetPrinter").currentText(), QStringLiteral("Office"));
  Press("cmdPrintSheets");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(LastNote(), "Given to the printer: 1 key sheet (Office)");
}

TEST_F(KeySheetsWindowTest, APrintingSystemThatDoesNotSayItsPrintersHoldsNothingUp) {
  printers_.LetLpstat("exec sleep 1000");
  Open();
  Press("cmdPrintSheets");
  EXPECT_EQ(Text("aidSheetsState"),
            "The printers are still being looked for. Save a PDF, or try again.");
  SaveTo("/one.pdf");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(PdfPages(), 1);
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(KeySheetsWindowTest, PrintersThatAreFoundWhileItDrawsAreForLater) {
  printers_.LetLpstat("while [ ! -e \"$here/found\" ]; do sleep 0.01; done; echo Office");
  Open();
  Press("optSheetsAll");
  SaveTo("/all.pdf");
  test::WriteFile(printers_.Arguments().parent_path() / "found", "");
  ASSERT_TRUE(WaitForPrinters("Office"));
  EXPECT_EQ(Find("cmbSheetPrinter").isEnabled(), !IsRunning());
  ASSERT_TRUE(WaitForEnd());
  EXPECT_TRUE(Find("cmbSheetPrinter").isEnabled());
}

TEST_F(KeySheetsWindowTest, WithoutAPrintingSystemItSaysWhatIsMissing) {
  printers_.Uninstall();
  Open();
  ASSERT_TRUE(WaitForPrinters("None"));
  Press("cmdPrintSheets");
  EXPECT_EQ(Text("aidSheetsState"),
            "There is no printer (lpstat is not installed). Save a PDF, and print it where there "
            "is one.");
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

TEST_F(KeySheetsWindowTest, AllIntoAFileSaysWhatCannotBeRead) {
  console_.databaseIsOpen = false;
  Open();
  window_->WriteAll(QStringLiteral("/all.pdf"));
  ASSERT_TRUE(QTest::qWaitFor([this] { return !window_->isVisible(); }, 60'000));
  EXPECT_THAT(
      console_.reporter.reports,
      ElementsAre(StartsWith("critical|Control Error|Error Reading What Is To Be Exported")));
  EXPECT_EQ(path_, QString()) << "nothing reaches the file";
  EXPECT_THAT(*notes_, IsEmpty());
}

TEST_F(KeySheetsWindowTest, NoSheetAtAllIsNotWritten) {
  console_.model.StationCount = 0;
  Open();
  window_->WriteAll(QStringLiteral("/all.pdf"));
  ASSERT_TRUE(QTest::qWaitFor([this] { return !window_->isVisible(); }, 60'000));
  EXPECT_THAT(console_.reporter.reports,
              ElementsAre("exclamation|Control Error|None of these stations has a key sheet. "
                          "Nothing was written or printed."));
  EXPECT_EQ(path_, QString());
}

TEST_F(KeySheetsWindowTest, ACancelledExportIsNoted) {
  window_->WriteAll(QStringLiteral("/all.pdf"));
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  EXPECT_FALSE(window_->isVisible());
  EXPECT_EQ(LastNote(), "Cancelled: nothing was written");
  EXPECT_EQ(path_, QString());
}

TEST_F(KeySheetsWindowTest, TabGoesFromTheChoiceToTheListAndOnToThePaper) {
  ASSERT_TRUE(WaitForPrinters("Office"));
  Press("optSheetsChosen");
  Tick(3);
  Find("optSheetsAll").setFocus();
  for (const char* const next :
       {"txtFindSheets", "lstSheetStations", "aidTickAll", "aidTickNone", "cmbSheetPaper",
        "cmbSheetPrinter", "cmdPdfSheets", "cmdPrintSheets", "cmdCloseSheets"}) {
    QTest::keyClick(window_->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window_->focusWidget()->objectName(), QLatin1String(next)) << next;
  }
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
