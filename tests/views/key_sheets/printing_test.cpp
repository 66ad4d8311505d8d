// SPDX-License-Identifier: MIT

#include "views/key_sheets/printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <filesystem>

#include "tests/support/temporary_folder.h"
#include "tools/stage/fake_printers.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int kPatience = 60'000;

class PrintingTest : public testing::Test {
 protected:
  PrintingTest() {
    QObject::connect(&printing_, &Printing::PrintersRead,
                     [this](const rules::PrinterList& found, const QString& why) {
                       found_ = found;
                       whyNot_ = why.toStdString();
                     });
  }

  void ReadPrinters() {
    QSignalSpy read(&printing_, &Printing::PrintersRead);
    printing_.ReadPrinters();
    ASSERT_TRUE(QTest::qWaitFor([&] { return read.count() == 1; }, kPatience));
  }
  void Print(const QByteArray& pdf, QPageSize::PageSizeId paper = QPageSize::A4) {
    printing_.Print({.printer = QStringLiteral("Studio"),
                     .title = QStringLiteral("Key Sheets"),
                     .paper = paper,
                     .pdf = pdf});
  }
  bool WaitForEnd() {
    return QTest::qWaitFor([this] { return given_.count() + failed_.count() > 0; }, kPatience);
  }
  std::string Why() const { return failed_.value(0).value(0).toString().toStdString(); }

  stage::FakePrinters printers_;
  Printing printing_;
  QSignalSpy given_{&printing_, &Printing::Given};
  QSignalSpy failed_{&printing_, &Printing::Failed};
  rules::PrinterList found_;
  std::string whyNot_ = "not asked";
};

TEST_F(PrintingTest, FindsThePrinters) {
  ReadPrinters();
  EXPECT_THAT(found_.names, ElementsAre("Office", "Studio"));
  EXPECT_EQ(found_.usual, "Studio");
  EXPECT_EQ(whyNot_, "");
}

TEST_F(PrintingTest, ReadsWhatIsSaidInEnglish) {
  printers_.LetLpstat("echo \"$LC_ALL\"");
  ReadPrinters();
  EXPECT_THAT(found_.names, ElementsAre("C.UTF-8"));
}

TEST_F(PrintingTest, SaysWhyThereAreNone) {
  printers_.LetLpstat("echo 'lpstat: Scheduler is not running.' >&2; exit 1");
  ReadPrinters();
  EXPECT_THAT(found_.names, IsEmpty());
  EXPECT_EQ(whyNot_, "lpstat: Scheduler is not running.");
}

TEST_F(PrintingTest, SaysThatItIsNotInstalled) {
  printers_.Uninstall();
  ReadPrinters();
  EXPECT_EQ(whyNot_, "lpstat is not installed");
  Print("%PDF");
  EXPECT_TRUE(printing_.IsPrinting());
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(Why(), "lp is not installed");
  EXPECT_FALSE(printing_.IsPrinting());
}

// The window is closed before it is known that the program is not there.
TEST_F(PrintingTest, NothingStaysOfWhatCannotBeStarted) {
  printers_.Uninstall();
  {
    Printing closed;
    closed.ReadPrinters();
  }
  EXPECT_TRUE(QTest::qWaitFor(
      [] { return QCoreApplication::instance()->findChildren<QProcess*>().isEmpty(); }, kPatience));
}

TEST_F(PrintingTest, GivesThePrinterTheWholeDocument) {
  const QByteArray pdf(5'000'000, 'x');
  Print(pdf, QPageSize::Letter);
  EXPECT_TRUE(printing_.IsPrinting());
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(given_, SizeIs(1));
  EXPECT_FALSE(printing_.IsPrinting());
  EXPECT_EQ(test::ReadFile(printers_.Arguments()),
            "-d\nStudio\n-t\nKey Sheets\n-o\nmedia=Letter\n-o\nprint-scaling=none\n-o\n"
            "sides=one-sided\n");
  EXPECT_TRUE(test::ReadFile(printers_.Document()) == pdf.toStdString());
}

TEST_F(PrintingTest, SaysWhatThePrintingSystemSaid) {
  printers_.LetLp("echo 'lp: The printer or class does not exist.' >&2; exit 1");
  Print(QByteArray(5'000'000, 'x'));  // which nobody reads
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(Why(), "lp: The printer or class does not exist.");
  EXPECT_THAT(given_, IsEmpty());
}

TEST_F(PrintingTest, SaysThatAProgramFailedThatSaidNothing) {
  printers_.LetLp("kill -9 $$");
  Print("%PDF");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_EQ(Why(), "lp has failed");
}

TEST_F(PrintingTest, OneThatNeverAnswersHoldsNothingUpAndIsGivenUp) {
  const std::string wait = "exec sleep 1000";
  printers_.LetLpstat(wait);
  printers_.LetLp(wait);
  printing_.ReadPrinters();
  Print(QByteArray(5'000'000, 'x'));
  int turns = 0;
  QTimer other;
  QObject::connect(&other, &QTimer::timeout, [&turns] { ++turns; });
  other.start(0);
  ASSERT_TRUE(QTest::qWaitFor([&turns] { return turns > 20; }, kPatience));
  printing_.Cancel();
  EXPECT_FALSE(printing_.IsPrinting());
  printers_.LetLp("cat > /dev/null");
  Print("%PDF");
  ASSERT_TRUE(WaitForEnd());
  EXPECT_THAT(given_, SizeIs(1));
  EXPECT_THAT(failed_, IsEmpty()) << "of the one that was cancelled";
  EXPECT_EQ(whyNot_, "not asked") << "nothing was said yet";
}

}  // namespace
}  // namespace views
