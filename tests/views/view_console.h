// SPDX-License-Identifier: MIT

#ifndef TESTS_VIEWS_VIEW_CONSOLE_H_
#define TESTS_VIEWS_VIEW_CONSOLE_H_

#include "stations/change.h"
#include "switcher/live_commands.h"
#include "switcher/unsent/unsent_messages.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/one_day.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_tables.h"
#include "tools/stage/stage.h"
#include "views/services.h"

namespace test {

// A view's surroundings that keep what the view sends and reports.
class ViewConsole : public stage::Stage {
 public:
  explicit ViewConsole(int channels);
  ~ViewConsole() override { window.reset(); }  // the view, before what it works with

  views::Services Services();

  // Clicks the tool with this identifier on the view's band.
  void ClickTool(const char* id);

  FakeSerialPort port;
  RecordingReporter reporter;
  model::Locks locks;
  switcher::KnownMap knownMap{model};
  switcher::LiveCommands commands{{.model = model, .port = port, .reporter = reporter}, &locks};
  RecordingTables tables;
  stations::Changes changes{locks};
  switcher::UnsentMessages unsentMessages{{.model = model,
                                           .database = [this] { return database.get(); },
                                           .changes = changes,
                                           .today = [] { return kToday; }}};
  views::UnsentTables unsent{unsentMessages};
};

}  // namespace test

#endif  // TESTS_VIEWS_VIEW_CONSOLE_H_
