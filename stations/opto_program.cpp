// SPDX-License-Identifier: MIT

#include "stations/opto_program.h"

#include <utility>

#include "db/station_fields.h"
#include "model/flag_string.h"
#include "model/padded.h"
#include "stations/record.h"

namespace stations {
namespace {

model::Status Commit(Record& record, const Author& author, OptoEdit whenStored, OptoEdit* edit) {
  bool stored = false;
  model::Status status = record.Commit(author, &stored);
  *edit = stored ? whenStored : OptoEdit::None;
  return status;
}

model::Status StoreNumber(jet::RecordSet& stations, const char* field, int number,
                          const Author& author, OptoEdit* edit) {
  Record record(stations);
  record.Set(field, number);
  return Commit(record, author, OptoEdit::Stored, edit);
}

// An operation whose targets' captions are those of this operation's channels.
int WithChannelsAsTargets(TargetKind targets) {
  return targets == TargetKind::Stations ? kListen : kTalk;
}

}  // namespace

model::Status ReadOpto(jet::RecordSet& stations, OptoProgram* opto) {
  Record record(stations);
  opto->stationNum = record.Number(db::kStationNumField);
  opto->type = record.Number(db::kOptoTypeField, kNoType);
  opto->channel = record.Number(db::kOptoChannelField);
  opto->targets = record.Flags(db::kOptoStationsField);
  return record.Outcome();
}

std::string_view OptoCaptionAtOpening(int type) {
  return OperationOf(IsOperation(type) ? type : kTalk).optoTargets;
}

model::Status ReadOptoTargetCaptions(jet::RecordSet& stations, int type,
                                     std::vector<std::string>* captions) {
  return ReadTargetCaptions(stations, type, kOptoTargets, captions);
}

model::Status ReadOptoChannelCaptions(jet::RecordSet& stations, int type,
                                      std::vector<std::string>* captions) {
  const TargetKind targets = OperationOf(type).targets;
  if (targets != TargetKind::Channels) {
    return ReadTargetCaptions(stations, WithChannelsAsTargets(targets), kOptoChannels, captions);
  }
  captions->clear();
  for (int channel = 1; channel <= kOptoChannels; ++channel) {
    captions->push_back("Channel " + model::Padded(channel, 2));
  }
  return {};
}

model::Status StoreOptoTarget(jet::RecordSet& stations, int target, bool selected,
                              const Author& author, OptoEdit* edit) {
  Record record(stations);
  std::string targets =
      model::WithFlag(record.Text(db::kOptoStationsField), target, selected, kOptoTargets);
  const int first = model::FirstFlag(targets, kOptoTargets);
  const bool isInactive = first == 0;
  const bool wasInactive = record.Number(db::kOptoTypeField) == kInactive;
  record.Set(db::kOptoStationsField, std::move(targets));
  record.Set(db::kOptoFirstField, isInactive ? 1 : first);
  if (isInactive) record.Set(db::kOptoTypeField, kInactive);
  return Commit(record, author,
                isInactive && !wasInactive ? OptoEdit::MadeInactive : OptoEdit::Stored, edit);
}

model::Status StoreOptoType(jet::RecordSet& stations, int type, const Author& author,
                            OptoEdit* edit) {
  return StoreNumber(stations, db::kOptoTypeField, type, author, edit);
}

model::Status StoreOptoChannel(jet::RecordSet& stations, int channel, const Author& author,
                               OptoEdit* edit) {
  return StoreNumber(stations, db::kOptoChannelField, channel, author, edit);
}

}  // namespace stations
