// SPDX-License-Identifier: MIT
//
// What the decoders announce.

#ifndef SWITCHER_SWITCHER_EVENTS_H_
#define SWITCHER_SWITCHER_EVENTS_H_

#include <string_view>

#include "switcher/table.h"
#include "switcher/wire/decode_status.h"

namespace switcher {

// Who is told overrides what concerns it: open views, panels, the log.
class SwitcherEvents {
 public:
  virtual ~SwitcherEvents() = default;

  // Row `output` (from 1) of CrosspointMap holds an accepted report.  `mode` is the status
  // value of the row: 0 ordinary, 1 priority.
  virtual void CrosspointRowChanged(int /*output*/, int /*mode*/) {}

  // Row `output` (from 1) of CrosspointMap holds a report that was not accepted: what the switcher
  // has there is not known.
  virtual void CrosspointRowSpoiled(int /*output*/) {}

  // InputGains holds an accepted report.
  virtual void GainsChanged() {}

  // QdvTally holds an accepted report.
  virtual void TallyChanged() {}

  // The labels of `selector` (kInputLabels, or anything else for the output labels and who is
  // hidden) hold an accepted table; all of them, or those before the first station that has no
  // record.
  virtual void LabelsChanged(int /*selector*/) {}

  // The database holds an accepted table of output `output` or station `station` (from 1).
  virtual void InhibitsChanged(int /*output*/) {}
  virtual void RelaysChanged(int /*output*/) {}
  virtual void ButtonsChanged(int /*station*/) {}

  // The database holds an accepted table of the optos.
  virtual void OptosChanged() {}

  // The database holds all of an accepted table; told behind the operation above that is about it.
  virtual void TableAccepted(const TablePart& /*part*/) {}

  // What came of this table was not accepted, or not all of it was stored; told behind the
  // operations that are about it.
  virtual void TableRefused(const TablePart& /*part*/) {}

  // A message was not accepted, or could not be stored; `status` is never Ok.  `description` names
  // it as MessageHistory does.
  virtual void MessageRefused(std::string_view /*description*/, DecodeStatus /*status*/) {}
};

// Takes note of every message received while a retrieval runs.
class MessageHistory {
 public:
  virtual ~MessageHistory() = default;

  // `description` names the message ("Output 5 Crosspoint Map"), `byteCount` is its length from
  // code to end byte.
  virtual void UpdateStatus(std::string_view description, int byteCount, DecodeStatus status) = 0;
};

}  // namespace switcher

#endif  // SWITCHER_SWITCHER_EVENTS_H_
