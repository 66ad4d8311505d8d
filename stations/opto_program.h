// SPDX-License-Identifier: MIT
//
// What an opto input does, as the current record of the stations has it: opto k is programmed in
// the record at position k.

#ifndef STATIONS_OPTO_PROGRAM_H_
#define STATIONS_OPTO_PROGRAM_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "db/jet/record_set.h"
#include "model/status.h"
#include "stations/change.h"
#include "stations/operations.h"
#include "stations/reading.h"
#include "stations/target_labels.h"

namespace stations {

// Targets and channels that an opto can have, however many stations there are.
inline constexpr int kOptoTargets = 64;
inline constexpr int kOptoChannels = 64;

struct OptoProgram {
  int stationNum = 0;        // of the record, which is the number of the opto
  int type = kNoType;        // the code of its operation; it may be one outside the table
  int channel = 0;           // from 1; it may be one that is not there
  std::string targets = {};  // a flag string of "0" and "1" alone
};

// Reads the current record.  A null number reads as 0, which is also how it is sent; null
// targets are none.  On a failure *opto holds what could be read, and its defaults.
model::Status ReadOpto(jet::RecordSet& stations, OptoProgram* opto);

// The caption over the targets when the view opens.  It is another one than after a click on an
// operation, Operation::optoTargets, for a code outside the table.
std::string_view OptoCaptionAtOpening(int type);

// The captions of the channels that an opto can be associated with, kOptoChannels of them.  They
// are the other side of its targets: output labels for an opto that listens to sources, input
// labels for one that calls stations, and "Channel 01" and so on for the others.
Reading<std::vector<std::string>> OptoChannelCaptions(int type, const TargetLabels& labels);

// What an edit has done to the record.
enum class OptoEdit : std::uint8_t {
  None,  // all of it was stored already
  Stored,
  MadeInactive,  // stored, and with its last target the opto has lost its operation
};

// Each of these edits the current record, and writes only what differs.  On a failure the
// record is as before and *edit is None.

// Selects or drops a target (1 to kOptoTargets).  The lowest target is stored with it; without
// any target the opto becomes inactive, and its lowest is 1.
model::Status StoreOptoTarget(jet::RecordSet& stations, int target, bool selected,
                              const Author& author, OptoEdit* edit);

// Stores the code of an operation.
model::Status StoreOptoType(jet::RecordSet& stations, int type, const Author& author,
                            OptoEdit* edit);

// Stores a channel (1 to kOptoChannels).
model::Status StoreOptoChannel(jet::RecordSet& stations, int channel, const Author& author,
                               OptoEdit* edit);

}  // namespace stations

#endif  // STATIONS_OPTO_PROGRAM_H_
