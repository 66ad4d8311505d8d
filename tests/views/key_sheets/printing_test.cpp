// SPDX-License-Identifier: MIT

#include "views/key_sheets/printing.h"

#include <gtest/gtest.h>

#include <QPrintDialog>
#include <QWidget>
#include <memory>

#include "tests/views/gui_support.h"
#include "views/export/paged_document.h"

namespace views {
namespace {

// The dialog of the system, which comes up without a printer, too.
class PrintersHereTest : public testing::Test {
 protected:
  PrintersHereTest() {
    window_->show();
    PrintersHere().ask(*window_, QStringLiteral("Key Sheets"), LandscapeOn(QPageSize::A4),
                       [this](std::shared_ptr<QPrinter> printer) { printer_ = printer; });
  }

  QPrintDialog& Dialog() { return test::Find<QPrintDialog>(*window_, "aidPrintDialog"); }

  std::unique_ptr<QWidget> window_ = std::make_unique<QWidget>();
  std::shared_ptr<QPrinter> printer_;
};

TEST_F(PrintersHereTest, TheChosenOneHasThePagesAndOutlivesTheDialog) {
  EXPECT_TRUE(Dialog().isVisible());
  EXPECT_TRUE(Dialog().isModal());
  Q_EMIT Dialog().accepted(Dialog().printer());
  delete &Dialog();
  ASSERT_NE(printer_, nullptr);
  EXPECT_EQ(printer_->docName(), QStringLiteral("Key Sheets"));
  EXPECT_EQ(printer_->pageLayout().orientation(), QPageLayout::Landscape);
  EXPECT_EQ(printer_->pageLayout().pageSize().id(), QPageSize::A4);
  EXPECT_EQ(printer_->resolution(), 720);
}

TEST_F(PrintersHereTest, NothingIsPrintedForADialogThatIsCancelled) {
  Dialog().reject();
  EXPECT_EQ(printer_, nullptr);
}

}  // namespace
}  // namespace views
