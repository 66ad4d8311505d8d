// SPDX-License-Identifier: MIT

#include "app/log/event_log.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QClipboard>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "app/log/event_log_window.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using Kind = EventLog::Kind;

QDateTime At(int second) { return {QDate(2026, 11, 21), QTime(12, 3, second)}; }

class EventLogTest : public testing::Test {
 protected:
  EventLogTest() {
    log_.Add(Kind::Link, QStringLiteral("Connected - COM 1"), At(1));
    log_.Add(Kind::Command, QStringLiteral("ID_SendData"), At(2));
    log_.Add(Kind::Report, QStringLiteral("Comm Error: line 1\r\rline 2"), At(3));
  }

  QString Shown(int row, int column) {
    const QAbstractItemModel& model = *List().model();
    return model.index(row, column).data().toString();
  }
  QTableView& List() { return test::Find<QTableView>(*window_, "aidLogLines"); }
  void Filter(const char* text) {
    test::Find<QLineEdit>(*window_, "aidLogFilter").setText(QLatin1String(text));
  }
  void Click(const char* name) {
    QTest::mouseClick(&test::Find<QPushButton>(*window_, name), Qt::LeftButton);
  }
  void Open() {
    window_ = new EventLogWindow(log_);
    window_->show();
    window_->activateWindow();  // only the active window has its shortcuts
    EXPECT_TRUE(QTest::qWaitForWindowActive(window_));
  }
  ~EventLogTest() override { delete window_; }

  EventLog log_;
  QPointer<EventLogWindow> window_;
};

TEST_F(EventLogTest, ShowsTimeKindAndText) {
  Open();
  EXPECT_EQ(List().model()->rowCount(), 3);
  EXPECT_EQ(Shown(0, 0), QStringLiteral("12:03:01"));
  EXPECT_EQ(Shown(0, 1), QStringLiteral("Link"));
  EXPECT_EQ(Shown(0, 2), QStringLiteral("Connected - COM 1"));
  EXPECT_EQ(Shown(2, 2), QStringLiteral("Comm Error: line 1 line 2"));
}

TEST_F(EventLogTest, KeepsFiveThousandLines) {
  for (int i = 0; i < 5000; ++i) log_.Add(Kind::Map, QString::number(i), At(4));
  EXPECT_EQ(log_.rowCount(), 5000);
  EXPECT_EQ(log_.Line(0), QStringLiteral("2026-11-21 12:03:04.000\tMap\t0"));
  EXPECT_EQ(log_.Line(4999), QStringLiteral("2026-11-21 12:03:04.000\tMap\t4999"));
}

// A stranger on the network who finds ever new words drives nothing else out of the log.
TEST_F(EventLogTest, NoiseIsCountedInsteadOfWritten) {
  for (int i = 0; i < 5000; ++i) log_.AddRepeated(Kind::Panel, QString::number(i), {}, At(4));
  EXPECT_EQ(log_.rowCount(), 303);
  EXPECT_EQ(log_.Line(0), QStringLiteral("2026-11-21 12:03:01.000\tLink\tConnected - COM 1"));
  log_.AddRepeated(Kind::Panel, QStringLiteral("gone"), {}, At(4).addSecs(60));
  EXPECT_EQ(log_.Line(303), QStringLiteral("2026-11-21 12:04:04.000\tPanel\tNot written, because "
                                           "so many lines came: 4700"));
  EXPECT_EQ(log_.Line(304), QStringLiteral("2026-11-21 12:04:04.000\tPanel\tgone"));
}

TEST_F(EventLogTest, WhoDoesMuchCostsNobodyElseALine) {
  const QString busy = QStringLiteral("192.0.2.66");
  for (int i = 0; i < 400; ++i) {
    log_.AddRepeated(Kind::Panel, QString::number(i), busy, At(4));
    log_.AddRepeated(Kind::Panel, QStringLiteral("stranger %1").arg(i), {}, At(4));
  }
  EXPECT_EQ(log_.rowCount(), 603);
  log_.AddRepeated(Kind::Panel, QStringLiteral("refused"), QStringLiteral("192.0.2.7"), At(5));
  ASSERT_EQ(log_.rowCount(), 604);
  EXPECT_EQ(log_.Line(603), QStringLiteral("2026-11-21 12:03:05.000\tPanel\trefused"));
  // Any other line brings up what was left out.
  log_.Add(Kind::Note, QStringLiteral("Saved"), At(4).addSecs(60));
  EXPECT_EQ(log_.Line(604), QStringLiteral("2026-11-21 12:04:04.000\tPanel\tNot written, because "
                                           "so many lines came: 100"));
  EXPECT_EQ(log_.Line(605), QStringLiteral("2026-11-21 12:04:04.000\tPanel\tNot written, because "
                                           "so many lines came from 192.0.2.66: 100"));
  EXPECT_EQ(log_.Line(606), QStringLiteral("2026-11-21 12:04:04.000\tNote\tSaved"));
}

// Or somebody with many addresses would fill the log.
TEST_F(EventLogTest, OriginsHaveLinesOfTheirOwnWithinBounds) {
  int written = 0;
  QObject::connect(&log_, &QAbstractItemModel::rowsInserted, [&] { ++written; });
  for (int origin = 0; origin < 100; ++origin) {
    for (int i = 0; i < 400; ++i) {
      log_.AddRepeated(Kind::Panel, QStringLiteral("%1 of %2").arg(i).arg(origin),
                       QString::number(origin), At(4));
    }
  }
  EXPECT_EQ(written, 9 * 300);
  // The next minute they are others.
  log_.AddRepeated(Kind::Panel, QStringLiteral("gain"), QStringLiteral("99"), At(4).addSecs(180));
  EXPECT_EQ(log_.Line(log_.rowCount() - 1), QStringLiteral("2026-11-21 12:06:04.000\tPanel\tgain"));
}

TEST_F(EventLogTest, WhatIsLeftOutIsSaidWhenNothingElseComes) {
  const QDateTime start = QDateTime::currentDateTime().addSecs(-100);
  for (int i = 0; i < 310; ++i) log_.AddRepeated(Kind::Panel, QString::number(i), {}, start);
  ASSERT_EQ(log_.rowCount(), 303);
  auto* const minute = log_.findChild<QTimer*>();
  ASSERT_NE(minute, nullptr);
  ASSERT_TRUE(minute->isActive());
  minute->start(0);
  ASSERT_TRUE(QTest::qWaitFor([&] { return log_.rowCount() == 304; }, 10'000));
  EXPECT_TRUE(log_.Line(303).endsWith(
      QStringLiteral("\tPanel\tNot written, because so many lines came: 10")));
  EXPECT_FALSE(minute->isActive());
}

TEST_F(EventLogTest, WhatIsLeftOutIsSaidWhenTheRunEnds) {
  for (int i = 0; i < 310; ++i) log_.AddRepeated(Kind::Panel, QString::number(i), {}, At(4));
  log_.End();
  ASSERT_EQ(log_.rowCount(), 304);
  EXPECT_TRUE(log_.Line(303).endsWith(
      QStringLiteral("\tPanel\tNot written, because so many lines came: 10")));
}

TEST_F(EventLogTest, FilterShowsTheLinesWithAWord) {
  Open();
  Filter("id_send");
  ASSERT_EQ(List().model()->rowCount(), 1);
  EXPECT_EQ(Shown(0, 2), QStringLiteral("ID_SendData"));
  log_.Add(Kind::Command, QStringLiteral("ID_SendInhibits"), At(5));
  log_.Add(Kind::Map, QStringLiteral("Output 1 reported"), At(6));
  EXPECT_EQ(List().model()->rowCount(), 2);
}

TEST_F(EventLogTest, CopiesWhatIsSelectedElseAllThatIsShown) {
  Open();
  Click("aidLogCopy");
  EXPECT_EQ(QGuiApplication::clipboard()->text(),
            QStringLiteral("2026-11-21 12:03:01.000\tLink\tConnected - COM 1\n"
                           "2026-11-21 12:03:02.000\tCommand\tID_SendData\n"
                           "2026-11-21 12:03:03.000\tReport\tComm Error: line 1 line 2\n"));
  List().selectRow(1);
  QTest::keySequence(&List(), QKeySequence::Copy);
  EXPECT_EQ(QGuiApplication::clipboard()->text(),
            QStringLiteral("2026-11-21 12:03:02.000\tCommand\tID_SendData\n"));
}

TEST_F(EventLogTest, SavesWhatIsShown) {
  Open();
  Filter("link");
  const QTemporaryDir folder;
  ASSERT_TRUE(window_->SaveTo(folder.filePath(QStringLiteral("events.txt"))));
  QFile file(folder.filePath(QStringLiteral("events.txt")));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), QByteArray("2026-11-21 12:03:01.000\tLink\tConnected - COM 1\n"));
}

TEST_F(EventLogTest, SaysWhyItCouldNotBeSaved) {
  Open();
  EXPECT_FALSE(window_->SaveTo(QStringLiteral("/nowhere/events.txt")));
  EXPECT_TRUE(
      test::Find<QLabel>(*window_, "aidLogSaid").text().startsWith(QStringLiteral("Not saved: ")));
}

TEST_F(EventLogTest, IsSavedOverNothingButAFile) {
  Open();
  const QTemporaryDir folder;
  const QString pipe = folder.filePath(QStringLiteral("events.txt"));
  ASSERT_EQ(mkfifo(pipe.toLocal8Bit().constData(), 0666), 0);
  EXPECT_FALSE(window_->SaveTo(pipe));
  EXPECT_EQ(test::Find<QLabel>(*window_, "aidLogSaid").text(),
            QStringLiteral("Not saved: Cannot replace events.txt: It is no ordinary file"));
  EXPECT_FALSE(QFileInfo(pipe).isFile());
}

TEST_F(EventLogTest, FollowsTheNewestLineUnlessScrolledUp) {
  for (int i = 0; i < 200; ++i) log_.Add(Kind::Map, QString::number(i), At(4));
  Open();
  QScrollBar& bar = *List().verticalScrollBar();
  ASSERT_GT(bar.maximum(), 0);
  EXPECT_EQ(bar.value(), bar.maximum());
  log_.Add(Kind::Map, QStringLiteral("newest"), At(5));
  EXPECT_EQ(bar.value(), bar.maximum());
  bar.setValue(3);
  log_.Add(Kind::Map, QStringLiteral("newer still"), At(5));
  EXPECT_EQ(bar.value(), 3);
}

TEST_F(EventLogTest, EscapeCloses) {
  Open();
  QTest::keyClick(window_->focusWidget(), Qt::Key_Escape);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(window_, nullptr);
}

}  // namespace
}  // namespace app
