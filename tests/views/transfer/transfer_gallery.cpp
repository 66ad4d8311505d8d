// SPDX-License-Identifier: MIT
//
// Draws the windows of the download and the retrieval in their states into PNG files, for
// looking at.
//
//   transfer_gallery FOLDER [light|dark|contrast [POINTS]]

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_switcher_events.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/gallery.h"
#include "views/transfer/download_window.h"
#include "views/transfer/retrieval_window.h"

namespace {

using test::Save;

// A default system without hardware.
class Gallery : public switcher::PollSwitch {
 public:
  Gallery() {
    model_.ChannelCount = 64;
    model_.StationCount = 64;
    model_.LabelCount = 128;
    model_.ButtonCount = 32;
    model_.RelayCount = 64;
    model_.OptoCount = 64;
    model_.DownloadInterval = 1;
    model_.AllocateMap();
    if (!port_.Open(1).ok() || !files_.Open().ok()) qFatal("no system");
  }

  void SetPolling(bool /*on*/) override {}

  void DrawDownload(std::int16_t mode, const QString& name) {
    model_.DownloadMode = mode;
    views::DownloadWindow window({.model = model_, .tables = senders_, .poll = *this});
    window.open();
    Save(window, name + QStringLiteral("-ask"));
    Press(window, "cmdDownGo");
    auto* const bar = window.findChild<QProgressBar*>(QStringLiteral("pbDownloadProg"));
    const bool half = QTest::qWaitFor([bar] { return bar->value() * 2 > bar->maximum(); }, 20000);
    if (!half) qFatal("the download stands still");
    Save(window, name + QStringLiteral("-half"));
    window.reject();
    Save(window, name + QStringLiteral("-cancelling"));
    window.CancelNow();
  }

  void DrawRetrieval() {
    views::RetrievalWindow window({.model = model_,
                                   .decoder = decoder_,
                                   .port = port_,
                                   .poll = *this,
                                   .reporter = reporter_,
                                   .closeViews = [] {}});
    window.open();
    Save(window, QStringLiteral("retrieval-ask"));
    Press(window, "cmdOkSysInf");
    auto* const second = window.findChild<QTimer*>(QStringLiteral("aidSecondTimer"));
    second->setInterval(1);
    const auto* const silence = window.findChild<QLabel*>(QStringLiteral("aidSilence"));
    if (!QTest::qWaitFor([silence] { return silence->text().contains(QStringLiteral("12")); })) {
      qFatal("silence is not spoken of");
    }
    second->stop();
    Save(window, QStringLiteral("retrieval-silence"));

    using switcher::DecodeStatus;
    auto& list = *window.findChild<views::MessageList*>(QStringLiteral("lstMsgHistory"));
    list.AddMessage(QStringLiteral("Alpha Labels"), 1028, DecodeStatus::Ok);
    list.AddMessage(QStringLiteral("Alpha Labels"), 1028, DecodeStatus::ChecksumFailed);
    list.AddMessage(QStringLiteral("Opto Programming Data"), 1400, DecodeStatus::WrongSize);
    list.AddMessage(QStringLiteral("Output 200 Inhibit Map"), 21, DecodeStatus::WrongChannel);
    list.AddMessage(QStringLiteral("Output 2 Relay Assignments"), 21, DecodeStatus::MissingEnd);
    list.AddMessage(QStringLiteral("Output 3 Crosspoint Map"), 23, static_cast<DecodeStatus>(5));
    window.setWindowTitle(QStringLiteral("Retrieving System Data ( 3521 Bytes)"));
    Save(window, QStringLiteral("retrieval-statuses"));
    for (int i = 1; i <= 40; ++i) {
      list.AddMessage(QStringLiteral("Station %1 Button Data").arg(i), 645, DecodeStatus::Ok);
    }
    list.setFocus();
    list.setCurrentItem(list.topLevelItem(list.topLevelItemCount() - 2));
    Save(window, QStringLiteral("retrieval-many"));
    window.reject();
    Save(window, QStringLiteral("retrieval-ended"));
    window.CancelNow();
  }

 private:
  static void Press(QWidget& window, const char* name) {
    QTest::mouseClick(window.findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
  }

  model::SystemModel model_;
  test::TemporaryFolder folder_;
  db::DatabaseFiles files_{folder_ / "Tesk.mdb", folder_ / "WorkingDb.md$"};
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  test::RecordingSwitcherEvents events_;
  switcher::Decoder decoder_{model_, files_, reporter_, events_};
  switcher::TableSenders senders_{model_, files_, port_, reporter_};
};

void Draw() {
  Gallery gallery;
  gallery.DrawDownload(0, QStringLiteral("download"));
  gallery.DrawDownload(-1, QStringLiteral("buttons"));
  gallery.DrawRetrieval();
}

}  // namespace

int main(int argc, char** argv) { test::RunGallery(argc, argv, Draw); }
