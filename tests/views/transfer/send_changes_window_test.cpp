// SPDX-License-Identifier: MIT

#include "views/transfer/send_changes_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLayout>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>

#include "db/keep_position.h"
#include "stations/record.h"
#include "tests/support/download_system.h"
#include "tests/support/one_day.h"
#include "tests/views/gui_support.h"
#include "views/words.h"

namespace views {
namespace {

using switcher::Table;
using switcher::TablePart;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr char kInhibits3[] = "F5 02 00 01 00 00 00 03 FF";

// The window on a system of 16 channels and two stations, of which the inhibits of output 3, the
// relays of output 1 and the buttons of station 2 were edited.
class SendChangesWindowTest : public test::DownloadSystem, public switcher::PollSwitch {
 protected:
  SendChangesWindowTest() { model_.DownloadInterval = 1; }
  ~SendChangesWindowTest() override { delete window_; }

  void SetUp() override {
    test::DownloadSystem::SetUp();
    messages_.Begin({});
    model_.LinkStatus = {1, 1, 0};
  }

  void SetPolling(bool on) override { polling_.push_back(on); }

  void Edit(int station, std::string_view field, const jet::Value& value) {
    const db::KeepPosition keep(*files_.Stations());
    ASSERT_TRUE(files_.Stations()->Seek(station).ok());
    stations::Record record(*files_.Stations());
    record.Set(field, value);
    ASSERT_TRUE(record.Commit({changes_, stations::Origin::Operator}).ok());
  }

  void EditAll() {
    Edit(3, "Inhibits", "1");
    Edit(1, "Relays", "1");
    Edit(2, "B1 Type", 2);
  }

  void Open() { Open(unsent_.All()); }

  void Open(const UnsentTables::Parts& parts) {
    window_ = new SendChangesWindow(
        {.model = model_, .tables = accounted_, .poll = *this, .unsent = unsent_}, parts);
    window_->setAttribute(Qt::WA_DeleteOnClose);
    window_->open();
    QCoreApplication::processEvents();
  }

  template <typename Type>
  Type* Child(const char* name) {
    return &test::Find<Type>(*window_, name);
  }

  QString Text(const char* name) { return Child<QLabel>(name)->text(); }

  void Click(const char* name) { QTest::mouseClick(Child<QPushButton>(name), Qt::LeftButton); }

  void Untick(int row) {
    Child<QTreeWidget>("lstUnsent")->topLevelItem(row)->setCheckState(0, Qt::Unchecked);
  }

  std::vector<std::string> Rows() {
    std::vector<std::string> rows;
    const QTreeWidget& list = *Child<QTreeWidget>("lstUnsent");
    for (int row = 0; row < list.topLevelItemCount(); ++row) {
      QStringList cells;
      for (int column = 0; column < 4; ++column) cells += list.topLevelItem(row)->text(column);
      rows.push_back(cells.join(u'|').toStdString());
    }
    return rows;
  }

  bool WaitUntilSent() {
    return QTest::qWaitFor(
        [this] {
          return Text("lblSendChg") == QStringLiteral("Waiting for the switcher's answer");
        },
        10000);
  }

  bool WaitForText(const char* beginning) {
    return QTest::qWaitFor([&] { return Text("lblSendChg").startsWith(QLatin1String(beginning)); },
                           10000);
  }

  bool WaitForTheEnd() {
    return QTest::qWaitFor([this] { return window_ == nullptr; }, 10000);
  }

  stations::Changes changes_;
  switcher::UnsentMessages messages_{{.model = model_,
                                      .database = [this] { return files_.Database(); },
                                      .changes = changes_,
                                      .today = [] { return test::kToday; }}};
  UnsentTables unsent_{messages_};
  switcher::TableSenders accounted_{{.model = model_,
                                     .files = files_,
                                     .port = port_,
                                     .reporter = reporter_,
                                     .account = &messages_}};
  std::vector<bool> polling_;
  QPointer<SendChangesWindow> window_;
};

TEST_F(SendChangesWindowTest, ListsWhatIsUnsentWithItsTime) {
  EditAll();
  Open();
  EXPECT_EQ(window_->objectName(), QStringLiteral("frmSendChanges"));
  EXPECT_TRUE(window_->isModal());
  const std::string day = DayWords(test::kToday).toStdString();
  EXPECT_THAT(Rows(), ElementsAre("Inhibits of output 3|" + day + "|9|2 ms",
                                  "Relays of output 1|" + day + "|21|4 ms",
                                  "Buttons of station 2|" + day + "|645|0.11 s"));
  EXPECT_EQ(Text("aidSendChgSum"), QStringLiteral("3 messages, 675 bytes, 0.12 s"));
  EXPECT_TRUE(Child<QPushButton>("cmdOkSendChg")->isEnabled());
  EXPECT_TRUE(Child<QPushButton>("cmdCancelSendChg")->isDefault());
  EXPECT_FALSE(Child<QLabel>("aidSendChgLink")->isVisible());
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(SendChangesWindowTest, TheTimeIsWithThePauses) {
  model_.DownloadInterval = 50;
  EditAll();
  Open();
  EXPECT_THAT(Rows().back(), testing::EndsWith("|645|0.16 s"));
  EXPECT_EQ(Text("aidSendChgSum"), QStringLiteral("3 messages, 675 bytes, 0.37 s"))
      << "four pauses before the first buttons, and one behind";
  Untick(0);
  Untick(1);
  EXPECT_EQ(Text("aidSendChgSum"), QStringLiteral("1 message, 645 bytes, 0.16 s"));
  Untick(2);
  EXPECT_EQ(Text("aidSendChgSum"), QStringLiteral("Nothing is ticked"));
}

// Each label that is shown has the height of its text, and nothing is painted over another.
void ExpectEverythingInSight(QWidget& window) {
  window.layout()->activate();
  QWidgetList shown;
  for (const char* const name : {"aidSendChgText", "lstUnsent", "aidSendChgSum", "aidSendChgLink",
                                 "lblSendChg", "pbSendChg", "cmdCancelSendChg"}) {
    QWidget& widget = test::Find<QWidget>(window, name);
    if (!widget.isVisible()) continue;
    const QRect place(widget.mapTo(&window, QPoint()), widget.size());
    EXPECT_TRUE(window.rect().contains(place)) << name;
    const int needed = widget.hasHeightForWidth() ? widget.heightForWidth(widget.width())
                                                  : widget.minimumSizeHint().height();
    EXPECT_GE(widget.height(), needed) << name;
    for (QWidget* const other : shown) {
      EXPECT_FALSE(place.intersects(QRect(other->mapTo(&window, QPoint()), other->size())))
          << name << " over " << other->objectName().toStdString();
    }
    shown.append(&widget);
  }
}

TEST_F(SendChangesWindowTest, NothingStandsOverAnythingAtAnyTime) {
  EditAll();
  for (const int station : {4, 6, 8, 10, 12, 14, 16}) Edit(station, "Inhibits", "1");
  Open();
  ExpectEverythingInSight(*window_);
  const QSize asked = window_->size();
  Click("cmdOkSendChg");
  QCoreApplication::processEvents();
  ExpectEverythingInSight(*window_);
  EXPECT_FALSE(Child<QLabel>("aidSendChgSum")->isVisible());
  EXPECT_EQ(window_->size(), asked);
  ASSERT_TRUE(WaitUntilSent());
  ExpectEverythingInSight(*window_);
  messages_.LineLost();
  QCoreApplication::processEvents();
  EXPECT_GT(Child<QLabel>("lblSendChg")->height(), 2 * window_->fontMetrics().height());
  ExpectEverythingInSight(*window_);
  EXPECT_GT(window_->maximumHeight(), window_->height()) << "it can be made larger";
}

TEST_F(SendChangesWindowTest, NothingMovesForTheLineAboutTheLink) {
  EditAll();
  Open();
  const QSize asked = window_->size();
  const QRect sum = Child<QLabel>("aidSendChgSum")->geometry();
  ASSERT_FALSE(Child<QLabel>("aidSendChgLink")->isVisible());
  model_.LinkStatus = {};
  window_->LinkChanged();
  EXPECT_TRUE(Child<QLabel>("aidSendChgLink")->isVisible());
  QCoreApplication::processEvents();
  ExpectEverythingInSight(*window_);
  EXPECT_EQ(Child<QLabel>("aidSendChgSum")->geometry(), sum);
  EXPECT_EQ(window_->size(), asked);
}

TEST_F(SendChangesWindowTest, OfADatabaseThatTheSwitcherNeverSawItDoesNotSayThatAllIsThere) {
  Open();
  EXPECT_EQ(Text("aidSendChgText"),
            QStringLiteral("The switcher was never seen to hold this database. Send all of it, or "
                           "retrieve what the switcher holds."));
}

TEST_F(SendChangesWindowTest, TheDayIsWhole) {
  EditAll();
  Open();
  auto& list = *Child<QTreeWidget>("lstUnsent");
  EXPECT_GT(list.columnWidth(1), list.fontMetrics().horizontalAdvance(DayWords(test::kToday)));
}

// The delay is the download's; for one small table it would be a tenth of the time.
TEST_F(SendChangesWindowTest, BeginsAtOnce) {
  EditAll();
  Open();
  Click("cmdOkSendChg");
  EXPECT_FALSE(Child<QTimer>("tmrDelayStart")->isActive());
  EXPECT_EQ(Child<QTimer>("tmrNextMessage")->remainingTime(), 0);
  EXPECT_THAT(polling_, ElementsAre(false));
}

TEST_F(SendChangesWindowTest, SendsWhatIsTickedAndNothingElse) {
  EditAll();
  Open();
  Untick(1);
  Untick(2);
  EXPECT_EQ(Text("aidSendChgSum"), QStringLiteral("1 message, 9 bytes, 2 ms"));
  Click("cmdOkSendChg");
  ASSERT_TRUE(WaitUntilSent());
  EXPECT_EQ(port_.TakeWritten(), kInhibits3);
  EXPECT_THAT(polling_, ElementsAre(false, true));
  messages_.Polled();
  messages_.Answered(1);
  ASSERT_TRUE(WaitForTheEnd());
  EXPECT_THAT(unsent_.All(),
              ElementsAre(TablePart{Table::Relays, 1}, TablePart{Table::Buttons, 2}));
}

TEST_F(SendChangesWindowTest, ClosesWhenAllIsConfirmed) {
  EditAll();
  Open();
  const QSignalSpy confirmed(window_, &SendChangesWindow::Confirmed);
  const QSignalSpy ended(window_, &SendChangesWindow::Ended);
  Click("cmdOkSendChg");
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Sending Changes (675 Bytes)"));
  ASSERT_TRUE(WaitUntilSent());
  EXPECT_EQ(ended.size(), 1);
  EXPECT_EQ(confirmed.size(), 0);
  messages_.Polled();
  messages_.Answered(1);
  ASSERT_TRUE(WaitForTheEnd());
  ASSERT_EQ(confirmed.size(), 1);
  EXPECT_EQ(confirmed[0][0].toInt(), 3);
  EXPECT_THAT(unsent_.All(), IsEmpty());
}

TEST_F(SendChangesWindowTest, StaysToSayWhatWasNotConfirmed) {
  EditAll();
  Open();
  Click("cmdOkSendChg");
  ASSERT_TRUE(WaitUntilSent());
  messages_.LineLost();
  EXPECT_EQ(Text("lblSendChg"),
            QStringLiteral("Not confirmed by the switcher, and unsent as before: inhibits of "
                           "output 3, relays of output 1, buttons of station 2"));
  EXPECT_EQ(Child<QPushButton>("cmdCancelSendChg")->text(), QStringLiteral("Close"));
  Click("cmdCancelSendChg");
  ASSERT_TRUE(WaitForTheEnd());
}

TEST_F(SendChangesWindowTest, WithoutASwitcherItSaysSo) {
  EditAll();
  model_.LinkStatus = {};
  Open();
  EXPECT_FALSE(Child<QPushButton>("cmdOkSendChg")->isEnabled());
  EXPECT_TRUE(Child<QLabel>("aidSendChgLink")->isVisible());
  EXPECT_EQ(Text("aidSendChgLink"), QStringLiteral("Not connected: nothing would arrive."));
  model_.LinkStatus = {1, 1, 0};
  window_->LinkChanged();
  EXPECT_TRUE(Child<QPushButton>("cmdOkSendChg")->isEnabled());
  EXPECT_FALSE(Child<QLabel>("aidSendChgLink")->isVisible());
}

TEST_F(SendChangesWindowTest, SaysWhenNothingIsUnsent) {
  for (const auto& [part, print] : switcher::LoadPrints(*files_.Database(), model_)) {
    messages_.NoteHeld(part, print.digest);
  }
  Open();
  EXPECT_EQ(Text("aidSendChgText"),
            QStringLiteral("Nothing is unsent: what is edited here is in the switcher."));
  EXPECT_FALSE(Child<QTreeWidget>("lstUnsent")->isVisible());
  EXPECT_FALSE(Child<QPushButton>("cmdOkSendChg")->isVisible());
  EXPECT_EQ(Child<QPushButton>("cmdCancelSendChg")->text(), QStringLiteral("Close"));
  QTest::keyClick(window_, Qt::Key_Escape);
  ASSERT_TRUE(WaitForTheEnd());
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_THAT(polling_, IsEmpty());
}

TEST_F(SendChangesWindowTest, WhatWasCancelledStaysUnsent) {
  EditAll();
  Open();
  const QSignalSpy ended(window_, &SendChangesWindow::Ended);
  Click("cmdOkSendChg");
  Click("cmdCancelSendChg");
  ASSERT_EQ(ended.size(), 0);
  ASSERT_TRUE(QTest::qWaitFor([&] { return ended.size() == 1; }, 10000));
  EXPECT_EQ(unsent_.Names(), QStringLiteral("inhibits of output 3, relays of output 1, "
                                            "buttons of station 2"));
  EXPECT_EQ(polling_.back(), true);
}

TEST_F(SendChangesWindowTest, SaysWhatWasCancelledApart) {
  model_.DownloadInterval = 500;  // before the buttons
  EditAll();
  Open();
  const QSignalSpy confirmed(window_, &SendChangesWindow::Confirmed);
  Click("cmdOkSendChg");
  ASSERT_TRUE(QTest::qWaitFor([this] { return messages_.IsWaiting(); }, 10000));
  Click("cmdCancelSendChg");
  ASSERT_TRUE(WaitUntilSent());
  messages_.Polled();
  messages_.Answered(1);
  EXPECT_EQ(confirmed.size(), 0);
  EXPECT_THAT(Text("lblSendChg").toStdString(), StartsWith("Cancelled, and not sent: "));
  EXPECT_THAT(Text("lblSendChg").toStdString(), EndsWith("buttons of station 2"));
  EXPECT_THAT(Text("lblSendChg").toStdString(), Not(HasSubstr("Not confirmed")));
}

TEST_F(SendChangesWindowTest, SaysWhatCouldNotBeSentApart) {
  EditAll();
  Open();
  const QSignalSpy confirmed(window_, &SendChangesWindow::Confirmed);
  port_.writesUntilFailure = 4;
  Click("cmdOkSendChg");
  ASSERT_TRUE(WaitForText("Could not be sent: "));
  EXPECT_EQ(Text("lblSendChg"),
            QStringLiteral("Could not be sent: inhibits of output 3, relays of output 1, buttons "
                           "of station 2"));
  EXPECT_EQ(confirmed.size(), 0);
}

// Sent once more as it was found, it is not in the list of what is unsent.
TEST_F(SendChangesWindowTest, WhatALostLineMayHaveSwallowedIsNeverConfirmed) {
  Open({{Table::Inhibits, 3}});
  const QSignalSpy confirmed(window_, &SendChangesWindow::Confirmed);
  Click("cmdOkSendChg");
  ASSERT_TRUE(WaitUntilSent());
  messages_.LineLost();
  EXPECT_EQ(confirmed.size(), 0);
  EXPECT_EQ(Text("lblSendChg"),
            QStringLiteral("Not confirmed by the switcher, and unsent as before: inhibits of "
                           "output 3"));
}

TEST_F(SendChangesWindowTest, ClosesAtOnceWhenTheProgramEnds) {
  EditAll();
  Open();
  Click("cmdOkSendChg");
  window_->CancelNow();
  EXPECT_FALSE(window_->isVisible());
  EXPECT_EQ(polling_.back(), true);
}

}  // namespace
}  // namespace views
