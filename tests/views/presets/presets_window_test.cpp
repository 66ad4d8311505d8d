// SPDX-License-Identifier: MIT

#include "views/presets/presets_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QDateTime>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QTest>
#include <QTreeWidget>
#include <memory>
#include <string>
#include <vector>

#include "tests/views/gui_support.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PresetsWindowTest : public testing::Test {
 protected:
  void SetUp() override {
    model_.ChannelCount = 8;
    model_.AllocateMap();
    window_ = std::make_unique<PresetsWindow>(model_);
    QObject::connect(window_.get(), &PresetsWindow::StoreRequested,
                     [this](const QString& name, const std::vector<int>& outputs) {
                       std::string line = "store " + name.toStdString() + ":";
                       for (const int output : outputs) line += " " + std::to_string(output);
                       asked_.push_back(line);
                     });
    QObject::connect(window_.get(), &PresetsWindow::RecallRequested, [this](const QString& name) {
      asked_.push_back("recall " + name.toStdString());
    });
    QObject::connect(window_.get(), &PresetsWindow::DeleteRequested, [this](const QString& name) {
      asked_.push_back("delete " + name.toStdString());
    });
    window_->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  }

  template <typename Part = QWidget>
  Part& Find(const char* name) const {
    return test::Find<Part>(*window_, name);
  }
  std::string Note() { return Find<QLabel>("aidPresetNote").text().toStdString(); }
  void Type(const char* name, const QString& text) {
    auto& field = Find<QLineEdit>(name);
    field.setFocus();
    field.selectAll();
    QTest::keyClicks(&field, text);
  }

  model::SystemModel model_;
  std::unique_ptr<PresetsWindow> window_;
  std::vector<std::string> asked_;
};

TEST_F(PresetsWindowTest, WithoutPresetsOnlyStoringIsOffered) {
  window_->SetPresets({});
  EXPECT_EQ(Note(), "No presets yet. Store keeps what the outputs of the map hear under a name.");
  EXPECT_FALSE(Find<QPushButton>("cmdRecallPreset").isEnabled());
  EXPECT_FALSE(Find<QPushButton>("cmdDeletePreset").isEnabled());
  EXPECT_TRUE(Find<QPushButton>("cmdStorePreset").isEnabled());
}

TEST_F(PresetsWindowTest, TheNameOfWhatARecallKeepsIsSeenWhole) {
  const QString name = QStringLiteral("Before recall of Morning show, 2026-11-21 05.58.12");
  window_->SetPresets({{name, QDateTime(QDate(2026, 11, 21), QTime(5, 58, 12))}});
  QCoreApplication::sendPostedEvents();
  const auto& list = Find<QTreeWidget>("lstPresets");
  EXPECT_GT(list.columnWidth(0), list.fontMetrics().horizontalAdvance(name));
}

TEST_F(PresetsWindowTest, ComesUpNoLargerThanTheScreen) {
  QFont large = QApplication::font();
  const auto restore = qScopeGuard([usual = large] { QApplication::setFont(usual); });
  large.setPointSizeF(2 * large.pointSizeF());
  QApplication::setFont(large);
  const PresetsWindow window(model_);
  EXPECT_LE(window.width(), window.screen()->availableSize().width());
}

TEST_F(PresetsWindowTest, TheChosenOneIsRecalledOrDeleted) {
  window_->SetPresets({{QStringLiteral("Evening"), {}}, {QStringLiteral("Morning"), {}}});
  EXPECT_THAT(asked_, IsEmpty());
  QTest::keyClick(&Find("lstPresets"), Qt::Key_Down);
  Find<QPushButton>("cmdRecallPreset").click();
  Find<QPushButton>("cmdDeletePreset").click();
  EXPECT_THAT(asked_, ElementsAre("recall Morning", "delete Morning"));
  EXPECT_EQ(Find<QLineEdit>("txtPresetName").text(), QStringLiteral("Morning"));
  window_->SetPresets({{QStringLiteral("Evening"), {}}, {QStringLiteral("Morning"), {}}});
  EXPECT_EQ(Find<QTreeWidget>("lstPresets").currentItem()->text(0), QStringLiteral("Morning"));
}

TEST_F(PresetsWindowTest, AllOutputsOrChosenOnesAreStored) {
  window_->SetPresets({});
  Type("txtPresetName", QStringLiteral("Sunday"));
  Find<QPushButton>("cmdStorePreset").click();
  Type("aidPresetOutputs", QStringLiteral("2-4, 8"));
  QTest::keyClick(&Find("aidPresetOutputs"), Qt::Key_Return);
  EXPECT_THAT(asked_, ElementsAre("store Sunday: 1 2 3 4 5 6 7 8", "store Sunday: 2 3 4 8"));
  EXPECT_TRUE(window_->isVisible());
}

TEST_F(PresetsWindowTest, WhatIsTypedIsReplacedOnlyByAClick) {
  window_->SetPresets({{QStringLiteral("Evening"), {}}, {QStringLiteral("Morning"), {}}});
  Type("txtPresetName", QStringLiteral("Sunday"));
  QTest::keyClick(&Find("lstPresets"), Qt::Key_Down);
  EXPECT_EQ(Find<QLineEdit>("txtPresetName").text(), QStringLiteral("Sunday"));
  auto& list = Find<QTreeWidget>("lstPresets");
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                    list.visualItemRect(list.topLevelItem(0)).center());
  EXPECT_EQ(Find<QLineEdit>("txtPresetName").text(), QStringLiteral("Evening"));
}

TEST_F(PresetsWindowTest, SaysWhatIsNoNameAndNoOutput) {
  window_->SetPresets({});
  Find<QPushButton>("cmdStorePreset").click();
  EXPECT_EQ(Note(), "A name has 1 to 80 characters, and none of / \\ : * ? \" < > |");
  Type("txtPresetName", QStringLiteral("a/b"));
  Find<QPushButton>("cmdStorePreset").click();
  EXPECT_EQ(Note(), "A name has 1 to 80 characters, and none of / \\ : * ? \" < > |");
  Type("txtPresetName", QStringLiteral("ab"));
  Type("aidPresetOutputs", QStringLiteral("9"));
  Find<QPushButton>("cmdStorePreset").click();
  EXPECT_EQ(Note(), "The outputs are 1 to 8: nothing for all of them, or for example 1-8, 12");
  EXPECT_THAT(asked_, IsEmpty());
}

}  // namespace
}  // namespace views
