// SPDX-License-Identifier: MIT

#include "stations/where_used.h"

#include <algorithm>
#include <string>

#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/button_program.h"
#include "stations/navigation.h"
#include "stations/operations.h"
#include "stations/opto_program.h"
#include "stations/record.h"

namespace stations {
namespace {

// Looks through the records one after the other.
class Search {
 public:
  Search(int station, const model::SystemModel& model, std::vector<Use>* uses)
      : station_(station), model_(model), uses_(uses) {}

  void AddButtons(jet::RecordSet& record, int at) {
    for (int button = 1; button <= model_.ButtonCount; ++button) {
      const ButtonProgram program = ReadButton(record, button);
      Note(program.Outcome());
      const int type = program.type.value;
      if (PointsHere(type, program.targets.value, model_.ChkBoxCount)) {
        uses_->push_back({.kind = Use::Kind::Button, .station = at, .part = button, .type = type});
      }
    }
  }

  void AddOpto(jet::RecordSet& record, int at) {
    OptoProgram opto;
    Note(ReadOpto(record, &opto));
    if (PointsHere(opto.type, opto.targets, kOptoTargets)) {
      uses_->push_back({.kind = Use::Kind::Opto, .station = at, .part = at, .type = opto.type});
    }
    if (opto.channel == station_ && opto.type != kInactive && IsOperation(opto.type)) {
      uses_->push_back(
          {.kind = Use::Kind::OptoChannel, .station = at, .part = at, .type = opto.type});
    }
  }

  void AddInhibits(jet::RecordSet& record, int output) {
    Record inhibits(record);
    const std::string flags = inhibits.Flags(db::kInhibitsField);
    Note(inhibits.Outcome());
    for (int input = 1; input <= model_.ChannelCount; ++input) {
      if (output != station_ && input != station_) continue;
      if (!model::FlagIsSet(flags, input)) continue;
      uses_->push_back({.kind = Use::Kind::Inhibit, .station = output, .part = input});
    }
  }

  void Note(const model::Status& status) {
    if (outcome_.ok()) outcome_ = status;
  }
  const model::Status& Outcome() const { return outcome_; }

 private:
  bool PointsHere(int type, const std::string& targets, int count) const {
    return model::FlagIsSet(targets, TargetOfStation(type, station_, count));
  }

  const int station_;
  const model::SystemModel& model_;
  std::vector<Use>* const uses_;
  model::Status outcome_;
};

}  // namespace

model::Status FindUses(jet::RecordSet& stations, int station, const model::SystemModel& model,
                       std::vector<Use>* uses) {
  uses->clear();
  Search search(station, model, uses);
  const int last = std::max<int>(model.StationCount, model.ChannelCount);
  for (int number = 1; number <= last; ++number) {
    if (model::Status found = FindStation(stations, number); !found.ok()) return found;
    if (stations.NoMatch()) continue;
    if (number <= model.StationCount) {
      search.AddButtons(stations, number);
      search.AddOpto(stations, number);
    }
    if (number <= model.ChannelCount) search.AddInhibits(stations, number);
  }
  std::ranges::stable_sort(*uses, {}, [](const Use& use) {
    return use.kind == Use::Kind::OptoChannel ? Use::Kind::Opto : use.kind;
  });
  return search.Outcome();
}

}  // namespace stations
