// SPDX-License-Identifier: MIT

#ifndef TESTS_APP_VIEWS_FIXTURE_H_
#define TESTS_APP_VIEWS_FIXTURE_H_

#include <gtest/gtest.h>

#include <QSettings>

#include "app/log/inhibited_cells.h"
#include "app/log/switcher_reports.h"
#include "app/shell/main_window.h"
#include "app/shell/open_views.h"
#include "app/switcher_observers.h"
#include "app/transfer/transfers.h"
#include "switcher/decoder.h"
#include "switcher/known_map.h"
#include "switcher/live_commands.h"
#include "switcher/table_senders.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/one_day.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_tables.h"
#include "tests/support/small_database.h"

namespace app {

// What the views work with, without hardware and without stations, with settings that are empty.
class ViewsFixture : public testing::Test {
 protected:
  ViewsFixture() {
    QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Orvo"),
              QStringLiteral("Orvo Intercom Control"))
        .clear();
  }

  views::Services Services() { return Services(reporter_); }
  views::Services Services(model::ErrorReporter& reporter) {
    return {.model = model_,
            .stations = [this] { return database_.Files().Stations(); },
            .changes = changes_,
            .locks = locks_,
            .knownMap = knownMap_,
            .commands = live_,
            .tables = tables_,
            .unsent = unsent_,
            .poll = tables_,
            .settings = settings_,
            .reporter = reporter};
  }

  model::SystemModel model_;
  test::SmallDatabase database_;
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  test::RecordingTables tables_;
  model::Locks locks_;
  stations::Changes changes_{locks_};
  switcher::KnownMap knownMap_{model_};
  switcher::UnsentMessages unsentMessages_{
      {.model = model_,
       .database = [this] { return database_.Files().Database(); },
       .changes = changes_,
       .today = [] { return test::kToday; }}};
  views::UnsentTables unsent_{unsentMessages_};
  config::WindowSettings settings_{QString()};
  switcher::LiveCommands live_{{.model = model_, .port = port_, .reporter = reporter_}, &locks_};
};

// The main window with its views and transfers, and what decodes for them.
class TransfersFixture : public ViewsFixture {
 protected:
  CommandTable commands_;
  MainWindow window_{commands_};
  OpenViews views_{window_.Area(), Services()};
  EventLog log_;
  ChannelLabels labels_{{.model = model_,
                         .database = [this] { return database_.Files().Database(); },
                         .changes = changes_}};
  InhibitedCells inhibits_{{.model = model_,
                            .database = [this] { return database_.Files().Database(); },
                            .changes = changes_}};
  SwitcherReports reports_{{.model = model_, .labels = labels_, .log = log_}};
  switcher::SwitcherEvents nobody_;
  switcher::Decoder decoder_{{.model = model_,
                              .database = [this] { return database_.Files().Database(); },
                              .reporter = reporter_,
                              .changes = changes_,
                              .observers = InOrder({.knownMap = knownMap_,
                                                    .unsent = unsentMessages_,
                                                    .log = reports_,
                                                    .aids = nobody_,
                                                    .views = views_,
                                                    .presets = nobody_,
                                                    .panels = nobody_,
                                                    .openGateway = nobody_})}};
  switcher::Link link_{{.model = model_, .port = port_, .decoder = decoder_, .display = window_}};
  switcher::TableSenders senders_{{.model = model_,
                                   .files = database_.Files(),
                                   .port = port_,
                                   .reporter = reporter_,
                                   .account = &unsentMessages_}};
  Transfers transfers_{
      {.window = window_,
       .views = views_,
       .data = Services(),
       .download = {.model = model_, .tables = senders_, .poll = tables_, .unsent = unsent_},
       .retrieval = {.model = model_,
                     .decoder = decoder_,
                     .port = port_,
                     .link = link_,
                     .poll = tables_,
                     .reporter = reporter_},
       .compare = {.comparison = {.model = model_,
                                  .database = [this] { return database_.Files().Database(); },
                                  .port = port_,
                                  .link = link_,
                                  .poll = tables_,
                                  .reporter = reporter_},
                   .changes = changes_,
                   .storeEdits = [this] { return views_.StoreEdits(); }}}};
};

}  // namespace app

#endif  // TESTS_APP_VIEWS_FIXTURE_H_
