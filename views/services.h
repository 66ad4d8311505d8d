// SPDX-License-Identifier: MIT

#ifndef VIEWS_SERVICES_H_
#define VIEWS_SERVICES_H_

#include <functional>
#include <initializer_list>
#include <string_view>

#include "config/window_settings.h"
#include "db/jet/record_set.h"
#include "model/error_reporter.h"
#include "model/locks.h"
#include "model/status.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "switcher/known_map.h"
#include "switcher/live_commands.h"
#include "switcher/poll_switch.h"
#include "views/table_sender.h"
#include "views/unsent_tables.h"

namespace views {

// What the views work with.  All must outlive them.
struct Services {
  model::SystemModel& model;
  std::function<jet::RecordSet*()> stations;  // the shared record set; null while not open
  stations::Changes& changes;
  model::Locks& locks;
  const switcher::KnownMap& knownMap;
  switcher::LiveCommands& commands;
  TableSender& tables;
  UnsentTables& unsent;
  switcher::PollSwitch& poll;
  config::WindowSettings& settings;
  model::ErrorReporter& reporter;

  // Who edits in the views.
  stations::Author Operator() const { return {changes, stations::Origin::Operator}; }
  // The views themselves, when the operator goes elsewhere in them.
  stations::Author Navigation() const { return {changes, stations::Origin::Navigation}; }
};

// Runs `work` on the stations and goes back to the record they stood on.  A failure without
// `work` having run when the database is not open.
model::Status WithStations(const Services& services,
                           const std::function<model::Status(jet::RecordSet&)>& work);

// Sends what `parts` name for a tool, one after the other with the poll off, and notes what was
// sent once the poll is on again.  One that fails, which is reported, does not keep back the next.
void SendTables(const Services& services, std::initializer_list<switcher::TablePart> parts);

// Sends what `part` names for a tool, with the poll as it is, and notes at once that it was sent.
void SendTable(const Services& services, const switcher::TablePart& part);

// Whether nothing may be sent or stored because the console is locked.  The operator is told so.
bool RefusedByLock(const Services& services);

// Reports what failed in a view: `line` names it, the usual error line follows.  What failed
// because the console is locked is a refusal.
void ShowFailure(const Services& services, std::string_view line, const model::Status& status);

// Tells the operator that what he asked for is not allowed.
void ShowRefusal(const Services& services, std::string_view text);

}  // namespace views

#endif  // VIEWS_SERVICES_H_
