// SPDX-License-Identifier: MIT
//
// What reaches the open programming view: tables from the switcher and labels from the grid.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemModel>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableView>

#include <string>
#include <vector>

#include "app/shell/open_views.h"
#include "db/keep_position.h"
#include "tests/app/eight_channels.h"
#include "tests/views/gui_support.h"
#include "tests/views/view_console.h"

namespace app {
namespace {

using testing::IsEmpty;

class OpenProgrammingTest : public testing::Test {
 protected:
  void SetUp() override {
    // The selected button listens, and so does the opto; both records have what is stored by a
    // change of the station, but not by a refresh: a button without targets.
    console_.GoToStation(5);
    console_.SetField(5, "B1 Type", 1);
    console_.SetField(5, "B1 First", 2);
    console_.SetField(5, "B1 Prog", std::string(64, '0'));
    console_.SetField(5, "OptoType", 1);
    console_.SetField(5, "OptoChannel", 7);
    views_.ShowButtons();
  }

  template <typename T>
  T& Find(const char* name) {
    return test::Find<T>(*views_.Buttons(), name);
  }

  // Every field of every record that the view can store.
  std::vector<std::string> Stored() {
    std::vector<std::string> all;
    const db::KeepPosition keep(*console_.stations);
    for (int station = 1; station <= 64; ++station) {
      for (int button = 1; button <= 32; ++button) {
        const std::string field = "B" + std::to_string(button);
        all.push_back(std::to_string(console_.Number(station, field + " Type")));
        all.push_back(std::to_string(console_.Number(station, field + " First")));
        all.push_back(console_.Text(station, field + " Prog"));
      }
      for (const char* const field : {"OptoType", "OptoFirst", "OptoChannel"}) {
        all.push_back(std::to_string(console_.Number(station, field)));
      }
      all.push_back(console_.Text(station, "Relays"));
      all.push_back(console_.Text(station, "OptoStations"));
    }
    return all;
  }

  test::ViewConsole console_{kChannels};
  OpenViews views_{*console_.area, console_.Services()};
};

TEST_F(OpenProgrammingTest, TablesFromTheSwitcherAreShownAndStoreNothing) {
  std::string flags(64, '0');
  flags[2] = '1';
  console_.SetField(5, "Relays", flags);
  console_.SetField(5, "B2 Type", 255);
  console_.SetField(5, "OptoType", 3);
  console_.SetField(5, "OptoStations", flags);
  console_.SetField(5, "OptoChannel", 9);
  console_.SetField(3, "Label", "Truck");
  const std::vector<std::string> before = Stored();
  const QSignalSpy edited(&console_.unsent, &views::UnsentTables::Changed);

  views_.RelaysChanged(5);
  EXPECT_TRUE(Find<QCheckBox>("ckRelaySel_2").isChecked());
  views_.ButtonsChanged(5);
  EXPECT_EQ(Find<QLabel>("lblBtype_1").text(), QStringLiteral("GROUP"));
  EXPECT_TRUE(Find<QRadioButton>("optButType_1").isChecked());
  views_.OptosChanged();
  EXPECT_TRUE(Find<QRadioButton>("optOptoType_3").isChecked());
  EXPECT_TRUE(Find<QCheckBox>("ckOptoStationSel_2").isChecked());
  EXPECT_EQ(Find<QComboBox>("cmbOptoChan").currentText(), QStringLiteral("Channel 09"));
  EXPECT_EQ(Find<QGroupBox>("frOptoStations").title(),
            QStringLiteral("External Channel To Be Called When OPTO Is Activated"));
  views_.LabelsChanged(20);
  EXPECT_EQ(Find<QPushButton>("cmdButton_2").text(), QStringLiteral("Truck"));
  views_.LabelsChanged(10);

  EXPECT_EQ(Stored(), before);
  EXPECT_EQ(console_.CurrentStation(), 5);
  EXPECT_EQ(edited.size(), 0);
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

TEST_F(OpenProgrammingTest, TablesOfOtherStationsChangeNothing) {
  views_.RelaysChanged(6);
  views_.ButtonsChanged(6);
  EXPECT_EQ(console_.CurrentStation(), 5);
  EXPECT_EQ(Find<QComboBox>("cmbOptoChan").currentText(), QStringLiteral("Sta. 007"));
}

TEST_F(OpenProgrammingTest, LabelsEditedInTheGridAreFollowedEverywhere) {
  console_.SetField(5, "OptoStations", std::string("1") + std::string(63, '0'));
  views_.ShowAlphas();
  views_.ShowXmap();
  const std::vector<std::string> before = Stored();
  auto& labels = *test::Find<QTableView>(*views_.Alphas(), "jgAlphas").model();
  ASSERT_TRUE(labels.setData(labels.index(6, 1), QStringLiteral("Studio 7")));
  ASSERT_TRUE(labels.setData(labels.index(6, 2), QStringLiteral("Mic 7")));
  EXPECT_EQ(Find<QComboBox>("cmbOptoChan").currentText(), QStringLiteral("Sta. 007"))
      << "nothing is stored yet";
  EXPECT_TRUE(views_.StoreEdits());

  EXPECT_EQ(console_.Text(7, "Label"), "Studio 7");
  EXPECT_EQ(Find<QPushButton>("cmdButton_6").text(), QStringLiteral("Studio 7"));
  EXPECT_EQ(Find<QCheckBox>("ckStationSel_6").text(), QStringLiteral("Mic 7"));
  EXPECT_EQ(Find<QCheckBox>("ckOptoStationSel_6").text(), QStringLiteral("Mic 7"));
  EXPECT_EQ(Find<QComboBox>("cmbOptoChan").currentText(), QStringLiteral("Studio 7"));
  auto* const map = views_.Xmap()->findChild<QTableView*>(QStringLiteral("msfgXmap"));
  QString text;
  ASSERT_TRUE(QMetaObject::invokeMethod(map, "cellText", Q_RETURN_ARG(QString, text), Q_ARG(int, 8),
                                        Q_ARG(int, 0)));
  EXPECT_EQ(text, QStringLiteral("Studio 7"));

  EXPECT_EQ(Stored(), before) << "the programming is what it was";
  EXPECT_EQ(console_.CurrentStation(), 5);
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

TEST_F(OpenProgrammingTest, WithoutOtherViewsAnEditedLabelIsOnlyStored) {
  views_.CloseAll();
  views_.ShowAlphas();
  auto& labels = *test::Find<QTableView>(*views_.Alphas(), "jgAlphas").model();
  ASSERT_TRUE(labels.setData(labels.index(6, 1), QStringLiteral("Studio 7")));
  views_.CloseAll();
  EXPECT_EQ(console_.Text(7, "Label"), "Studio 7") << "closing stores it";
  EXPECT_EQ(views_.Buttons(), nullptr);
  EXPECT_EQ(views_.Xmap(), nullptr);
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

TEST_F(OpenProgrammingTest, WithoutTheViewTablesAreNobodysBusiness) {
  views_.CloseAll();
  views_.RelaysChanged(5);
  views_.ButtonsChanged(5);
  views_.OptosChanged();
  views_.LabelsChanged(20);
  EXPECT_EQ(views_.Buttons(), nullptr) << "it is not opened by them";
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

}  // namespace
}  // namespace app
