// SPDX-License-Identifier: MIT

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "db/database_files.h"
#include "db/keep_position.h"
#include "stations/record.h"
#include "switcher/load_tables.h"
#include "switcher/wire/messages/button_data.h"
#include "switcher/wire/messages/flag_row.h"
#include "tools/gallery/drawings.h"
#include "tools/gallery/no_switcher.h"
#include "tools/gallery/pictures.h"
#include "views/compare/compare_window.h"
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

  void DrawComparison() {
    views::CompareWindow window({.comparison = {.model = model_,
                                                .database = [this] { return files_.Database(); },
                                                .port = port_,
                                                .link = link_,
                                                .poll = noSwitcher_,
                                                .reporter = noSwitcher_},
                                 .changes = changes_,
                                 .storeEdits = [] { return true; }});
    port_.wasWritten = false;
    window.Begin();
    if (!QTest::qWaitFor([this] { return port_.wasWritten; })) qFatal("not asked");
    for (int output = 1; output <= 12; ++output) Arrive(InhibitsOf(output));
    Save(window, QStringLiteral("comparison-waiting"));
    for (int output = 13; output <= 64; ++output) Arrive(InhibitsOf(output));
    for (int station = 1; station <= 64; ++station) Arrive(ButtonsOf(station));
    window.reject();
    Save(window, QStringLiteral("comparison-cancelled"));
    auto& list = *window.findChild<QTreeView*>(QStringLiteral("lstDifferences"))->model();
    for (const int row : {1, 2}) list.setData(list.index(row, 0), Qt::Checked, Qt::CheckStateRole);
    Save(window, QStringLiteral("comparison-ticked"));
    Press(window, "cmdStoreCmp");
    Save(window, QStringLiteral("comparison-stored"));
  }

  void DrawSendChanges() {
    unsentMessages_.Begin({});
    model_.LinkStatus = {1, 1, 0};
    Edit(3, "Inhibits", "1");
    Edit(7, "Relays", "1");
    Edit(12, "B3 Type", 1);
    {
      model_.DownloadInterval = 50;
      views::SendChangesWindow window(SendingServices(), unsent_.All());
      window.open();
      Save(window, QStringLiteral("send-changes"));
      model_.LinkStatus = {};
      QTest::qWait(600);
      Save(window, QStringLiteral("send-changes-not-connected"));
      Press(window, "cmdCancelSendChg");
      model_.DownloadInterval = 1;
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

  void Arrive(const switcher::Bytes& message) {
    port_.incoming = message;
    link_.DataReceived();
    while (link_.DecodeTick()) {
    }
  }

  // The inhibits of an output: of all the one of its own input; outputs 5 and 9 have one more.
  static switcher::Bytes InhibitsOf(int output) {
    std::string flags(64, '0');
    flags[static_cast<std::size_t>(output) - 1] = '1';
    if (output == 5 || output == 9) flags[20] = '1';
    return switcher::EncodeInhibitRow(output, flags, 64);
  }

  // A station's buttons as they are in a new database; station 12 has one more.
  switcher::Bytes ButtonsOf(int station) {
    std::optional<switcher::Bytes> message;
    (void)switcher::LoadButtons(*files_.Database(), model_, station, &message);
    if (station != 12) return *message;
    switcher::ButtonData data;
    (void)switcher::ParseButtonData(*message, 64, 32, 8, &data);
    data.buttons[2] = {.type = 1, .first = 5, .targets = std::vector<std::uint8_t>(64, 0)};
    data.buttons[2].targets[4] = 1;
    return switcher::EncodeButtonData(data);
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
  transfers.DrawComparison();
}

}  // namespace gallery
