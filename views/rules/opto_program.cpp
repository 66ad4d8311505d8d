// SPDX-License-Identifier: MIT

#include "views/rules/opto_program.h"

#include <cstdio>
#include <utility>

#include "switcher/station_records.h"
#include "switcher/stored_forms.h"
#include "views/rules/store_fields.h"
#include "views/rules/target_flags.h"

namespace rules {
namespace {

// Reads a number, unless *status tells of a failure already and this one fails, too.
void ReadNumber(const jet::RecordSet& stations, std::string_view field, int* number,
                model::Status* status) {
  jet::Value value;
  if (const jet::Status read = stations.Get(field, &value); read.ok()) {
    *number = value.Int();
  } else if (status->ok()) {
    *status = read;
  }
}

model::Status StoreNumber(jet::RecordSet& stations, const char* field, int number, OptoEdit* edit) {
  bool stored = false;
  model::Status status = StoreFields(stations, {{field, number}}, &stored);
  *edit = stored ? OptoEdit::Stored : OptoEdit::None;
  return status;
}

// An operation whose targets' captions are those of this operation's channels.
int WithChannelsAsTargets(TargetKind targets) {
  return targets == TargetKind::Stations ? kListen : kTalk;
}

}  // namespace

model::Status ReadOpto(const jet::RecordSet& stations, OptoProgram* opto) {
  *opto = {};
  model::Status status;
  ReadNumber(stations, switcher::kStationNumField, &opto->stationNum, &status);
  ReadNumber(stations, switcher::kOptoTypeField, &opto->type, &status);
  ReadNumber(stations, switcher::kOptoChannelField, &opto->channel, &status);
  jet::Value targets;
  if (const jet::Status read = stations.Get(switcher::kOptoStationsField, &targets); !read.ok()) {
    if (status.ok()) status = read;
  }
  opto->targets = switcher::PlainFlags(targets.Text());
  return status;
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
    char caption[16];
    std::snprintf(caption, sizeof caption, "Channel %02d", channel);
    captions->emplace_back(caption);
  }
  return {};
}

model::Status StoreOptoTarget(jet::RecordSet& stations, int target, bool selected, OptoEdit* edit) {
  *edit = OptoEdit::None;
  jet::Value type;
  jet::Value before;
  if (const jet::Status read = stations.Get(switcher::kOptoTypeField, &type); !read.ok())
    return read;
  if (const jet::Status read = stations.Get(switcher::kOptoStationsField, &before); !read.ok())
    return read;
  std::string targets = WithMember(before.Text(), target, selected, kOptoTargets);
  const int first = FirstTarget(targets, kOptoTargets);
  const bool isInactive = first == 0;
  const bool wasInactive = type.Int() == kInactive;
  bool stored = false;
  model::Status status =
      StoreFields(stations,
                  {{switcher::kOptoStationsField, std::move(targets)},
                   {switcher::kOptoFirstField, isInactive ? 1 : first},
                   {switcher::kOptoTypeField, isInactive ? jet::Value(kInactive) : type}},
                  &stored);
  if (stored) {
    *edit = isInactive && !wasInactive ? OptoEdit::MadeInactive : OptoEdit::Stored;
  }
  return status;
}

model::Status StoreOptoType(jet::RecordSet& stations, int type, OptoEdit* edit) {
  return StoreNumber(stations, switcher::kOptoTypeField, type, edit);
}

model::Status StoreOptoChannel(jet::RecordSet& stations, int channel, OptoEdit* edit) {
  return StoreNumber(stations, switcher::kOptoChannelField, channel, edit);
}

}  // namespace rules
