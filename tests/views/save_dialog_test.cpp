// SPDX-License-Identifier: MIT

#include "views/widgets/save_dialog.h"

#include <gtest/gtest.h>

#include <QFileDialog>
#include <QWidget>
#include <memory>

#include "tests/views/gui_support.h"

namespace views {
namespace {

class SaveDialogTest : public testing::Test {
 protected:
  SaveDialogTest() {
    AskWhereToSave(window_, *context_,
                   {.name = QStringLiteral("dialog"),
                    .title = QStringLiteral("Save"),
                    .filters = QStringLiteral("CSV files (*.csv)"),
                    .fileName = QStringLiteral("labels.csv")},
                   [this](const QString& path) { saved_ = path; });
  }

  void Choose(const QString& path) {
    Q_EMIT test::Find<QFileDialog>(window_, "dialog").fileSelected(path);
  }

  QWidget window_;
  std::unique_ptr<QObject> context_ = std::make_unique<QObject>();
  QString saved_;
};

TEST_F(SaveDialogTest, WhatIsChosenIsSaved) {
  Choose(QStringLiteral("/somewhere/labels.csv"));
  EXPECT_EQ(saved_, QStringLiteral("/somewhere/labels.csv"));
}

TEST_F(SaveDialogTest, NothingIsSavedForACallerThatIsGone) {
  context_.reset();
  Choose(QStringLiteral("/somewhere/labels.csv"));
  EXPECT_EQ(saved_, QString());
}

}  // namespace
}  // namespace views
