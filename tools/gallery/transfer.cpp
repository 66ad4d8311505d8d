// SPDX-License-Identifier: MIT

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "db/database_files.h"
#include "db/keep_position.h"
#include "stations/record.h"
#include "switcher/wire/messages/button_data.h"
#include "switcher/wire/messages/flag_row.h"
#include "tools/gallery/drawings.h"
#include "tools/gallery/no_switcher.h"
#include "tools/gallery/pictures.h"
#include "views/transfer/download_window.h"
#include "views/transfer/retrieval_window.h"
#include "views/transfer/send_changes_window.h"

namespace gallery {
namespace {

// Shows nothing of the link.
class NoLinkDisplay : public switcher::LinkDisplay {
 public:
  void ShowLinkText(std::string_view /*text*/) override {}
  void StartDecodeTimer() override {}
  void ShowBlockedCode(std::optional<std::uint8_t> /*code*/) override {}
};

// A default system without hardware.
class Transfers {
 public:
  Transfers() {
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

  void DrawDownload(std::int16_t mode, const QString& name) {
    model_.DownloadMode = mode;
    views::DownloadWindow window(
        {.model = model_, .tables = senders_, .poll = noSwitcher_, .unsent = unsent_});
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

  void DrawSendChanges() {
    unsentMessages_.Begin({});
    model_.LinkStatus = {1, 1, 0};
    Edit(3, "Inhibits", "1");
    Edit(7, "Relays", "1");
    Edit(12, "B3 Type", 1);
    {
      views::SendChangesWindow window(SendingServices(), unsent_.All());
      window.open();
      Save(window, QStringLiteral("send-changes"));
      model_.LinkStatus = {};
      QTest::qWait(600);
      Save(window, QStringLiteral("send-changes-not-connected"));
      Press(window, "cmdCancelSendChg");
    }
    views::RetrievalWindow retrieval({.model = model_,
                                      .decoder = decoder_,
                                      .port = port_,
                                      .link = link_,
                                      .poll = noSwitcher_,
                                      .reporter = noSwitcher_});
    retrieval.SetWarning(QStringLiteral("Unsent: %1 will be lost").arg(unsent_.Names()));
    retrieval.open();
    Save(retrieval, QStringLiteral("retrieval-unsent"));
    retrieval.CancelNow();
    views::SendChangesWindow nothing(SendingServices(), {});
    nothing.open();
    Save(nothing, QStringLiteral("send-changes-nothing"));
    model_.LinkStatus = {1, 1, 0};
    views::SendChangesWindow lost(SendingServices(), unsent_.All());
    lost.open();
    Press(lost, "cmdOkSendChg");
    const auto* const status = lost.findChild<QLabel*>(QStringLiteral("lblSendChg"));
    Save(lost, QStringLiteral("send-changes-sending"));
    if (!QTest::qWaitFor([status] { return status->text().startsWith(QLatin1String("Not")); })) {
      qFatal("it says nothing");
    }
    Save(lost, QStringLiteral("send-changes-not-confirmed"));
    model_.LinkStatus = {};
  }

  void DrawRetrieval() {
    views::RetrievalWindow window({.model = model_,
                                   .decoder = decoder_,
                                   .port = port_,
                                   .link = link_,
                                   .poll = noSwitcher_,
                                   .reporter = noSwitcher_});
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

    port_.isMissing = true;
    port_.Close();
    second->start();
    const auto* const line = window.findChild<QLabel*>(QStringLiteral("aidRetrievalLine"));
    if (!QTest::qWaitFor([line] { return line->isVisible(); })) qFatal("no word of the line");
    Save(window, QStringLiteral("retrieval-lost"));
    port_.isMissing = false;
    if (!QTest::qWaitFor([this] { return port_.IsOpen(); })) qFatal("the line stays lost");
    Save(window, QStringLiteral("retrieval-back"));
    window.reject();
    Save(window, QStringLiteral("retrieval-cancelled"));

    BeginAndAsk(window);
    DeliverTables(3, 12);
    Save(window, QStringLiteral("retrieval-waiting"));
    DeliverTables(13, 64);
    DeliverEnd();
    Save(window, QStringLiteral("retrieval-refused"));
    BeginAndAsk(window);
    DeliverTables(13, 64);
    DeliverEnd();
    Save(window, QStringLiteral("retrieval-whole"));
    window.CancelNow();
  }

 private:
  views::SendingWindow::Services SendingServices() {
    return {.model = model_, .tables = senders_, .poll = noSwitcher_, .unsent = unsent_};
  }

  void Edit(int station, std::string_view field, const jet::Value& value) {
    const db::KeepPosition keep(*files_.Stations());
    stations::Record record(*files_.Stations());
    if (!files_.Stations()->Seek(station).ok()) qFatal("no station");
    record.Set(field, value);
    if (!record.Commit({changes_, stations::Origin::Operator}).ok()) qFatal("not stored");
  }

  std::filesystem::path PathOf(const char* name) const {
    return folder_.filePath(QLatin1String(name)).toStdString();
  }

  void BeginAndAsk(QWidget& window) {
    port_.wasWritten = false;
    Press(window, "cmdOkSysInf");
    if (!QTest::qWaitFor([this] { return port_.wasWritten; })) qFatal("not asked");
  }

  // Inhibits and relays of outputs; the relays of output 12 are damaged on the line.
  void DeliverTables(int first, int last) {
    const std::string flags(64, '0');
    for (int output = first; output <= last; ++output) {
      decoder_.Decode(switcher::EncodeInhibitRow(output, flags, 64));
      switcher::Bytes relays = switcher::EncodeRelayRow(output, flags, 64);
      if (output == 12) relays[relays.size() - 2] ^= 1;
      decoder_.Decode(relays);
    }
  }

  void DeliverEnd() {
    switcher::ButtonData data{.station = 64, .buttons = {}};
    data.buttons.resize(32);
    for (auto& button : data.buttons) button.targets.resize(64);
    decoder_.Decode(switcher::EncodeButtonData(data));
  }

  static void Press(QWidget& window, const char* name) {
    QTest::mouseClick(window.findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
  }

  model::SystemModel model_;
  QTemporaryDir folder_;
  db::DatabaseFiles files_{PathOf("Tesk.mdb"), PathOf("WorkingDb.md$")};
  DeadLine port_;
  NoSwitcher noSwitcher_;
  NoLinkDisplay noDisplay_;
  stations::Changes changes_;
  switcher::Decoder decoder_{{.model = model_,
                              .database = [this] { return files_.Database(); },
                              .reporter = noSwitcher_,
                              .changes = changes_,
                              .observers = {}}};
  switcher::Link link_{
      {.model = model_, .port = port_, .decoder = decoder_, .display = noDisplay_}};
  switcher::TableSenders senders_{
      {.model = model_, .files = files_, .port = port_, .reporter = noSwitcher_}};
  switcher::UnsentMessages unsentMessages_{{.model = model_,
                                            .database = [this] { return files_.Database(); },
                                            .changes = changes_,
                                            .today = [] { return kToday; }}};
  views::UnsentTables unsent_{unsentMessages_};
};

}  // namespace

void DrawTransfer() {
  Transfers transfers;
  transfers.DrawDownload(0, QStringLiteral("download"));
  transfers.DrawDownload(-1, QStringLiteral("download-buttons"));
  transfers.DrawSendChanges();
  transfers.DrawRetrieval();
}

}  // namespace gallery
