// SPDX-License-Identifier: MIT

#include "tools/tesksetup/set_up_dialog.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>
#include <vector>

#include "tests/support/temporary_folder.h"

namespace tesksetup {
namespace {

class SetUpDialogTest : public testing::Test {
 protected:
  SetUpDialogTest() { dialog_.show(); }

  template <typename Widget>
  Widget* Find(const char* name) {
    auto* const widget = dialog_.findChild<Widget*>(QLatin1String(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }

  // Replaces what stands in a line.
  void Type(const char* name, const QString& text) {
    auto* const line = Find<QLineEdit>(name);
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, text);
  }

  std::string Text(const char* name) { return Find<QLineEdit>(name)->text().toStdString(); }

  // The text of a note; empty when it does not show.
  std::string Note(const char* name) {
    const auto* const note = Find<QLabel>(name);
    return note->isVisible() ? note->text().toStdString() : std::string();
  }

  bool CanSetUp() { return Find<QPushButton>("cmdSetUp")->isEnabled(); }
  void SetUp() { Find<QPushButton>("cmdSetUp")->click(); }
  QMessageBox* Box() { return dialog_.findChild<QMessageBox*>(); }

  test::TemporaryFolder root_;
  QString parentFolder_ = QString::fromStdString(root_.Path());
  std::vector<ConsolePlan> plans_;
  std::vector<QString> started_;
  model::Status result_;
  bool starts_ = true;
  SetUpDialog dialog_{{.setUp =
                           [this](const ConsolePlan& plan) {
                             plans_.push_back(plan);
                             return result_;
                           },
                       .start =
                           [this](const QString& folder) {
                             started_.push_back(folder);
                             return starts_;
                           }},
                      {QStringLiteral("/dev/serial/by-id/usb-one"), QStringLiteral("/dev/null")},
                      parentFolder_};
};

TEST_F(SetUpDialogTest, TheFolderFollowsTheNameUntilItIsChosen) {
  Type("txtName", QStringLiteral("Studio A/B"));
  EXPECT_EQ(Text("txtFolder"), root_ / "Studio A-B");
  Type("txtFolder", QStringLiteral("/srv/console"));
  Type("txtName", QStringLiteral("Studio C"));
  EXPECT_EQ(Text("txtFolder"), "/srv/console");
}

TEST_F(SetUpDialogTest, TakesANameAFolderAndAPort) {
  EXPECT_FALSE(CanSetUp());
  Type("txtName", QStringLiteral("A"));
  EXPECT_TRUE(CanSetUp());
  Type("txtFolder", QStringLiteral("relative"));
  EXPECT_FALSE(CanSetUp());
  Type("txtFolder", QStringLiteral("/srv/console"));
  EXPECT_TRUE(CanSetUp());
  Find<QCheckBox>("ckPanels")->click();
  Type("txtPort", QStringLiteral("0"));
  EXPECT_FALSE(CanSetUp());
  Type("txtPort", QStringLiteral("1251"));
  EXPECT_TRUE(CanSetUp());
}

TEST_F(SetUpDialogTest, SetsUpWhatWasAskedForAndStartsIt) {
  Type("txtName", QStringLiteral(" Studio A "));
  Find<QComboBox>("cmbDevice")->setCurrentIndex(0);
  EXPECT_FALSE(Find<QLineEdit>("txtPort")->isEnabled());
  Find<QCheckBox>("ckPanels")->click();
  EXPECT_TRUE(Find<QLineEdit>("txtPort")->isEnabled());
  Type("txtPort", QStringLiteral("1251"));
  SetUp();
  ASSERT_EQ(plans_.size(), 1u);
  EXPECT_EQ(plans_[0].name, QStringLiteral("Studio A"));
  EXPECT_EQ(plans_[0].folder.toStdString(), root_ / "Studio A");
  EXPECT_EQ(plans_[0].device, QStringLiteral("/dev/serial/by-id/usb-one"));
  EXPECT_TRUE(plans_[0].servesPanels);
  EXPECT_EQ(plans_[0].ipPort, 1251);

  ASSERT_NE(Box(), nullptr);
  EXPECT_EQ(Box()->text().toStdString(),
            "The applications menu has it as \"Orvo Intercom Control - Studio A\".\n"
            "Its files are in " +
                (root_ / "Studio A").string() + ".");
  Box()->findChild<QPushButton*>(QStringLiteral("cmdStart"))->click();
  ASSERT_EQ(started_.size(), 1u);
  EXPECT_EQ(started_[0].toStdString(), root_ / "Studio A");
  EXPECT_FALSE(dialog_.isVisible());
}

TEST_F(SetUpDialogTest, DoneNeedNotStart) {
  Type("txtName", QStringLiteral("A"));
  SetUp();
  ASSERT_NE(Box(), nullptr);
  Box()->button(QMessageBox::Close)->click();
  EXPECT_TRUE(started_.empty());
  EXPECT_FALSE(dialog_.isVisible());
}

TEST_F(SetUpDialogTest, AFailureIsShownAndTheFormStays) {
  result_ = {13, "Cannot make the folder /srv/console"};
  Type("txtName", QStringLiteral("A"));
  SetUp();
  ASSERT_NE(Box(), nullptr);
  EXPECT_EQ(Box()->icon(), QMessageBox::Critical);
  EXPECT_EQ(Box()->text(), QStringLiteral("Cannot make the folder /srv/console"));
  Box()->button(QMessageBox::Ok)->click();
  EXPECT_TRUE(dialog_.isVisible());
}

TEST_F(SetUpDialogTest, AConsoleThatDoesNotStartIsSaidToBe) {
  starts_ = false;
  Type("txtName", QStringLiteral("A"));
  SetUp();
  ASSERT_NE(Box(), nullptr);
  Box()->findChild<QPushButton*>(QStringLiteral("cmdStart"))->click();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  ASSERT_NE(Box(), nullptr);
  EXPECT_EQ(Box()->text().toStdString(), (root_ / "A/teskctl").string() + " cannot be started.");
}

TEST_F(SetUpDialogTest, AFolderWithAConsoleBringsItsOwnSettings) {
  std::filesystem::create_directories(root_ / "old");
  test::WriteFile(root_ / "old/Orvotesk.ini",
                  "[CONFIGURATION]\nIP Port=1300\nSoftpanel Support=Yes\n"
                  "[SERIAL DEVICES]\nCOM1=/dev/null\n");
  EXPECT_EQ(Note("lblFolderNote"), "");
  Type("txtFolder", QString::fromStdString(root_ / "old"));
  EXPECT_EQ(Note("lblFolderNote"),
            "There is a console in this folder. Its database stays, and so do its settings but "
            "for those below.");
  EXPECT_EQ(Find<QComboBox>("cmbDevice")->currentText(), QStringLiteral("/dev/null"));
  EXPECT_TRUE(Find<QCheckBox>("ckPanels")->isChecked());
  EXPECT_EQ(Text("txtPort"), "1300");
  Type("txtFolder", QStringLiteral("/srv/none"));
  EXPECT_EQ(Note("lblFolderNote"), "");
}

TEST_F(SetUpDialogTest, TheNoteSaysWhatIsWrongWithTheDevice) {
  auto* const device = Find<QComboBox>("cmbDevice");
  device->setCurrentIndex(0);
  EXPECT_EQ(Note("lblDeviceNote"),
            "There is no such device now. The console waits for it, and goes on when it is there.");
  device->setCurrentIndex(1);
  EXPECT_EQ(Note("lblDeviceNote"), "");
}

TEST_F(SetUpDialogTest, WithoutADeviceItIsTheMachinesOwnPort) {
  const auto* const line = Find<QComboBox>("cmbDevice")->lineEdit();
  EXPECT_EQ(line->placeholderText(), QStringLiteral("/dev/ttyS0, the machine's own port"));
  std::filesystem::create_directories(root_ / "old");
  test::WriteFile(root_ / "old/Orvotesk.ini",
                  "[CONFIGURATION]\nCOM Port=3\n[SERIAL DEVICES]\nCOM1=/dev/null\n");
  Type("txtFolder", QString::fromStdString(root_ / "old"));
  EXPECT_EQ(line->text(), QString());
  EXPECT_EQ(line->placeholderText(), QStringLiteral("/dev/ttyS2, the machine's own port"));
}

TEST_F(SetUpDialogTest, TheWheelChoosesNoDevice) {
  auto* const device = Find<QComboBox>("cmbDevice");
  device->setCurrentIndex(0);
  QWheelEvent wheel(QPointF(5, 5), device->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120),
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(device, &wheel);
  EXPECT_EQ(device->currentIndex(), 0);
}

}  // namespace
}  // namespace tesksetup
