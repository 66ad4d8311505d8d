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

// An operation whose targets are the channels of this one.
int WithChannelsAsTargets(int type) {
  switch (OperationOf(type).targets) {
    case TargetKind::Stations:
      return kListen;
    case TargetKind::Sources:
      return kTalk;
    case TargetKind::Channels:
      break;
  }
  return type;
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

Reading<std::vector<std::string>> OptoChannelCaptions(int type, const TargetLabels& labels) {
  auto captions = labels.Captions(WithChannelsAsTargets(type), kOptoChannels);
  if (OperationOf(type).targets != TargetKind::Channels) return captions;
  int channel = 0;
  for (std::string& caption : captions.value) {
    caption = "Channel " + model::Padded(++channel, 2);
  }
  return captions;
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
  record.Set(db::kOptoFirstField, isInactive ? kFirstOfNone : first);
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
