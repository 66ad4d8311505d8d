// SPDX-License-Identifier: MIT

#include "app/journal/changes_window.h"

#include <gmock/gmock.h>

#include <QDateTime>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include <filesystem>
#include <functional>

#include "app/journal/recent_changes.h"
#include "tests/app/journal/journal_fixture.h"
#include "tests/app/views_fixture.h"
#include "tests/support/full_disk.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using stations::Origin;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

class ChangesWindowTest : public JournalFixture {
 protected:
  ChangesWindow& Open() {
    window_ = std::make_unique<ChangesWindow>(Path());
    window_->setAttribute(Qt::WA_DeleteOnClose, false);
    window_->ShowAll({});
    window_->show();
    return *window_;
  }

  // Without the time.
  std::vector<std::string> Rows() const {
    const QAbstractItemModel& shown = *test::Find<QTableView>(*window_, "lstChanges").model();
    std::vector<std::string> rows;
    for (int row = 0; row < shown.rowCount(); ++row) {
      std::string& words = rows.emplace_back();
      for (int column = 1; column < shown.columnCount(); ++column) {
        words += (column > 1 ? "|" : "") + shown.index(row, column).data().toString().toStdString();
      }
    }
    return rows;
  }

  void Look(const char* text) {
    test::Find<QLineEdit>(*window_, "txtFilterChg").setText(QString::fromUtf8(text));
  }

  std::string Said() const {
    return test::Find<QLabel>(*window_, "lblSaidChg").text().toStdString();
  }

  std::unique_ptr<ChangesWindow> window_;
};

TEST_F(ChangesWindowTest, HasEverythingTheNewestFirst) {
  RunAndCrash({LabelOf(5, "MIC", "LINE"),
               {Origin::Operator, 12, {{"B3 Type", 0, 1}, {"Relays", "0", "1"}}}});
  RunAndCrash({{Origin::Switcher, 3, {{"Inhibits", "000", "011"}}}});
  Open();
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Recent Changes"));
  const std::vector<std::string> rows = Rows();
  ASSERT_THAT(rows, SizeIs(4));
  EXPECT_EQ(rows[0], "Output 3|Inhibits|none|2, 3|switcher");
  EXPECT_EQ(rows[1], "Output 12|Relays|none|1|operator");
  EXPECT_THAT(rows[2], HasSubstr("Station 12|Button 3|"));
  EXPECT_EQ(rows[3], "Station 5|Label|MIC|LINE|operator");
}

// An hour comes twice in autumn, and a clock that was wrong is put right: the numbers of the lines
// say what came first, the times are what the clock said.
TEST_F(ChangesWindowTest, AClockThatGoesBackChangesNoOrder) {
  const char* const kTimes[] = {"2026-10-25T02:50:00+02:00", "2026-10-25T02:10:00+01:00",
                                "2026-10-25T03:05:00+01:00", "2025-01-01T00:00:07+01:00"};
  std::string journal = stations::WriteLine({.number = 1,
                                             .kind = stations::JournalLine::Kind::Run,
                                             .run = 1,
                                             .content = "{\"database\":\"9f\"}"});
  int station = 0;
  std::vector<std::string> times;
  for (const char* const time : kTimes) {
    ++station;
    const std::string act = stations::WriteAct(
        {.title = "Label", .time = time, .changes = {LabelOf(station, "a", "b")}});
    journal += stations::WriteLine({.number = 1 + station,
                                    .kind = stations::JournalLine::Kind::Act,
                                    .run = 1,
                                    .content = act});
    const QDateTime at = QDateTime::fromString(QString::fromLatin1(time), Qt::ISODate);
    times.insert(times.begin(),
                 at.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toStdString());
  }
  test::WriteFile(Path(), journal);
  Open();
  EXPECT_THAT(Rows(), ElementsAre("Station 4|Label|a|b|operator", "Station 3|Label|a|b|operator",
                                  "Station 2|Label|a|b|operator", "Station 1|Label|a|b|operator"));
  const QAbstractItemModel& shown = *test::Find<QTableView>(*window_, "lstChanges").model();
  for (int row = 0; row < 4; ++row) {
    EXPECT_EQ(shown.index(row, 0).data().toString().toStdString(),
              times[static_cast<std::size_t>(row)]);
  }
  // What comes now is the newest, whatever the clock says.
  window_->Add(
      {.title = "Label", .time = "2024-06-01T12:00:00+02:00", .changes = {LabelOf(9, "a", "b")}});
  EXPECT_EQ(Rows()[0], "Station 9|Label|a|b|operator");
}

TEST_F(ChangesWindowTest, FiltersByStationOrWord) {
  RunAndCrash({LabelOf(5, "MIC", "LINE 15"), LabelOf(15, "MIC", "VT"), LabelOf(7, "CAM", "vt 2")});
  Open();
  Look("15");
  EXPECT_THAT(Rows(), ElementsAre("Station 15|Label|MIC|VT|operator"));
  Look("VT");
  EXPECT_THAT(Rows(),
              ElementsAre("Station 7|Label|CAM|vt 2|operator", "Station 15|Label|MIC|VT|operator"));
  Look("vt label cam");
  EXPECT_THAT(Rows(), ElementsAre("Station 7|Label|CAM|vt 2|operator")) << "all of the words";
  EXPECT_EQ(Said(), "");
  Look("VT MIC cam");
  EXPECT_THAT(Rows(), SizeIs(0));
  EXPECT_EQ(Said(), "No row has all these words");
  Look("nowhere");
  EXPECT_THAT(Rows(), SizeIs(0));
  EXPECT_FALSE(test::Find<QPushButton>(*window_, "cmdExportChg").isEnabled());
  Look("");
  EXPECT_THAT(Rows(), SizeIs(3));
}

TEST_F(ChangesWindowTest, SaysThatThereIsNothing) {
  Open();
  EXPECT_EQ(Said(), "No changes yet");
  Look("label");
  EXPECT_EQ(Said(), "No changes yet");
  window_->Add({.title = "Label", .changes = {LabelOf(9, "a", "b")}});
  EXPECT_EQ(Said(), "");
}

TEST_F(ChangesWindowTest, IsAsLargeAsItsFontWants) {
  Open();
  const QSize usual = window_->size();
  const QFont font = QApplication::font();
  QFont large = font;
  large.setPointSizeF(font.pointSizeF() * 1.5);
  QApplication::setFont(large);
  Open();
  QApplication::setFont(font);
  const QSize room = window_->screen()->availableSize();
  EXPECT_TRUE(window_->width() > usual.width() || usual.width() > 0.9 * room.width());
  EXPECT_GT(window_->height(), usual.height());
  EXPECT_LE(window_->width(), room.width());
  EXPECT_LE(window_->height(), room.height());
}

TEST_F(ChangesWindowTest, ShowsOneRunAlone) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  RunAndCrash({LabelOf(7, "CAM", "VT")});
  Open().ShowRun(1, QStringLiteral("Not Saved On 21 Nov 18:05"));
  EXPECT_THAT(Rows(), ElementsAre("Station 5|Label|MIC|LINE|operator"));
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Not Saved On 21 Nov 18:05"));
  window_->Add({.title = "Label", .changes = {LabelOf(9, "a", "b")}});
  EXPECT_THAT(Rows(), SizeIs(1)) << "what is done now is not of that run";
}

TEST_F(ChangesWindowTest, GoesToWhatIsSelected) {
  RunAndCrash({LabelOf(5, "MIC", "LINE"), {Origin::Operator, 3, {{"Inhibits", "000", "011"}}}});
  Open();
  std::vector<ViewPlace> places;
  QObject::connect(window_.get(), &ChangesWindow::GoToRequested,
                   [&](const ViewPlace& place) { places.push_back(place); });
  auto& goTo = test::Find<QPushButton>(*window_, "cmdGoToChg");
  EXPECT_FALSE(goTo.isEnabled()) << "nothing is selected";
  auto& list = test::Find<QTableView>(*window_, "lstChanges");
  list.selectRow(0);
  QTest::mouseClick(&goTo, Qt::LeftButton);
  Look("5");
  list.selectRow(0);
  QTest::keyClick(&list, Qt::Key_Return);
  EXPECT_THAT(places, ElementsAre(ViewPlace{ViewPlace::Kind::Crosspoint, 3, 2},
                                  ViewPlace{ViewPlace::Kind::Label, 5, 1}));
}

TEST_F(ChangesWindowTest, ExportsWhatIsShown) {
  RunAndCrash({LabelOf(5, "MIC", "LINE"), LabelOf(7, "CAM", "V\"T")});
  Open();
  Look("7");
  const std::filesystem::path path = folder_ / "changes.csv";
  EXPECT_TRUE(window_->ExportTo(QString::fromStdString(path.string())));
  const std::string text = test::ReadFile(path);
  EXPECT_TRUE(text.starts_with("\xEF\xBB\xBFTime,Station or output,What,Before,After,From\r\n"))
      << text;
  EXPECT_TRUE(text.ends_with(",Station 7,Label,CAM,\"V\"\"T\",operator\r\n")) << text;
  EXPECT_FALSE(window_->ExportTo(QString::fromStdString((folder_ / "no" / "a.csv").string())));
  EXPECT_THAT(test::Find<QLabel>(*window_, "lblSaidChg").text().toStdString(),
              HasSubstr("could not be written"));
}

TEST_F(ChangesWindowTest, AJournalThatIsNoneIsSaid) {
  std::filesystem::create_directory(Path());
  Open();
  EXPECT_THAT(test::Find<QLabel>(*window_, "lblSaidChg").text().toStdString(),
              HasSubstr("Tesk.journal"));
}

// Its newest rows are there at once, the others come in the pauses.
TEST_F(ChangesWindowTest, ALongJournalIsReadInPieces) {
  std::vector<stations::Change> changes;
  for (int i = 1; i <= 5000; ++i) changes.push_back(LabelOf(i, "a", "b"));
  RunAndCrash(changes);
  Open();
  EXPECT_EQ(Rows().front(), "Station 5000|Label|a|b|operator");
  EXPECT_LT(Rows().size(), 5000u);
  EXPECT_EQ(Said(), "Reading…");
  EXPECT_FALSE(test::Find<QPushButton>(*window_, "cmdExportChg").isEnabled())
      << "the file would have a part of it";
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return test::Find<QTableView>(*window_, "lstChanges").model()->rowCount() == 5000; },
      60'000));
  EXPECT_EQ(Rows().back(), "Station 1|Label|a|b|operator");
  EXPECT_EQ(Said(), "");
  EXPECT_TRUE(test::Find<QPushButton>(*window_, "cmdExportChg").isEnabled());
}

class RecentChangesTest : public TransfersFixture {
 protected:
  using Prepare = std::function<void(const std::filesystem::path& journal)>;

  explicit RecentChangesTest(const Prepare& prepare = [](const auto&) {}) {
    prepare(folder_ / "Tesk.journal");
    model_.ApplyFixedValues();
    database_.AddStation(1, {{"Label", "out"}, {"InLabel", "in"}, {"Hidden", 0}});
    window_.show();
    test::WriteFile(folder_ / "Tesk.mdb", "database");
    keeper_.Begin();
    keeper_.Finish();
  }

  QWidget* Window() const {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
      if (window->objectName() == QLatin1String("frmChanges") && window->isVisible()) return window;
    }
    return nullptr;
  }

  test::TemporaryFolder folder_;
  JournalKeeper keeper_{changes_, folder_ / "Tesk.journal", folder_ / "Tesk.mdb"};
  RecentChanges recent_{
      {.journal = folder_ / "Tesk.journal", .keeper = keeper_, .views = views_, .window = window_}};
};

TEST_F(RecentChangesTest, FollowsWhatIsEditedAndLeadsThere) {
  recent_.Show();
  ASSERT_NE(Window(), nullptr);
  auto& list = test::Find<QTableView>(*Window(), "lstChanges");
  EXPECT_EQ(list.model()->rowCount(), 0);
  changes_.Announce({Origin::Operator, 1, {{"Label", "out", "CAM 4"}}});
  ASSERT_EQ(list.model()->rowCount(), 1);
  EXPECT_EQ(list.model()->index(0, ChangesModel::kAfter).data().toString(),
            QStringLiteral("CAM 4"));
  list.selectRow(0);
  test::Find<QPushButton>(*Window(), "cmdGoToChg").click();
  EXPECT_TRUE(views_.IsOpen(QStringLiteral("frmAlphas")));
  recent_.Show();
  EXPECT_EQ(list.model()->rowCount(), 1) << "from the file, once";
}

TEST_F(RecentChangesTest, HasWhatAFullDiskDidNotTake) {
  changes_.Announce({Origin::Operator, 1, {{"Label", "out", "CAM 4"}}});
  const test::FullDisk full(test::ReadFile(folder_ / "Tesk.journal").size() + 10);
  changes_.Announce({Origin::Operator, 1, {{"Label", "CAM 4", "CAM 5"}}});
  recent_.Show();
  const QAbstractItemModel& list = *test::Find<QTableView>(*Window(), "lstChanges").model();
  ASSERT_EQ(list.rowCount(), 2);
  EXPECT_EQ(list.index(0, ChangesModel::kAfter).data().toString(), QStringLiteral("CAM 5"));
  EXPECT_EQ(list.index(1, ChangesModel::kAfter).data().toString(), QStringLiteral("CAM 4"));
  recent_.Show();
  EXPECT_EQ(list.rowCount(), 2) << "once";
}

// Such as the retrieval's, which has closed the views.
TEST_F(RecentChangesTest, LeadsNowhereWhileADialogIsOpen) {
  changes_.Announce({Origin::Operator, 1, {{"Label", "out", "CAM 4"}}});
  recent_.Show();
  QDialog dialog(&window_);
  dialog.open();
  test::Find<QTableView>(*Window(), "lstChanges").selectRow(0);
  test::Find<QPushButton>(*Window(), "cmdGoToChg").click();
  EXPECT_FALSE(views_.IsOpen(QStringLiteral("frmAlphas")));
  EXPECT_EQ(test::Find<QLabel>(*Window(), "lblSaidChg").text(),
            QStringLiteral("Close the open dialog first"));
}

// The journal is a folder: it is left alone.
class UnusableJournalTest : public RecentChangesTest {
 protected:
  UnusableJournalTest()
      : RecentChangesTest([](const std::filesystem::path& journal) {
          std::filesystem::create_directory(journal);
        }) {}
};

TEST_F(UnusableJournalTest, WhatThisRunChangedIsShown) {
  changes_.Announce({Origin::Operator, 1, {{"Label", "out", "CAM 4"}}});
  recent_.Show();
  const QAbstractItemModel& list = *test::Find<QTableView>(*Window(), "lstChanges").model();
  ASSERT_EQ(list.rowCount(), 1);
  EXPECT_EQ(list.index(0, ChangesModel::kAfter).data().toString(), QStringLiteral("CAM 4"));
  EXPECT_THAT(test::Find<QLabel>(*Window(), "lblSaidChg").text().toStdString(),
              HasSubstr("Tesk.journal"));
}

}  // namespace
}  // namespace app
