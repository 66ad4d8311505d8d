// SPDX-License-Identifier: MIT

#ifndef VIEWS_RULES_LAST_TAKE_H_
#define VIEWS_RULES_LAST_TAKE_H_

#include <cstdint>
#include <vector>

#include "model/system_model.h"
#include "switcher/wire/messages/take.h"
#include "views/rules/xmap_grid.h"

namespace rules {

// What taking the last take back comes to.
struct TakeBack {
  enum class Kind : std::uint8_t {
    NoTake,         // refused: nothing was taken, or it was never made, or it was taken back
    BeforeUnknown,  // refused: the map was not known when the take was sent
    Unreported,     // refused: the switcher has not reported yet what was sent last
    Changed,  // refused: the output hears, or heard meanwhile, something else than after the take
    ByPriority,  // refused: the output hears, or heard before the take, by priority
    Inhibited,   // refused: what it heard before is inhibited now
    Possible,    // the steps, in this order, bring back what the output heard before
  };
  struct Step {
    int input = 0;  // from 1
    switcher::TakeAction action = switcher::TakeAction::BreakSum;

    bool operator==(const Step&) const = default;
  };

  Kind kind = Kind::NoTake;
  int output = 0;           // from 1; 0 with NoTake
  std::vector<int> before;  // what it heard before the take; rising
  std::vector<Step> steps;
};

// The take that the operator made last, as long as it can be taken back.
//
// A take is known from the moment when it is sent, and is made when the switcher reports that the
// output hears its input and no other.  From then on the row must stay as it was reported, but for
// the steps that bring back what was heard before; when all are made, the take is forgotten.
class LastTake {
 public:
  // `model` must outlive the object.
  explicit LastTake(const model::SystemModel& model) : model_(model) {}

  // A take of a crosspoint, both from 1, goes to the line.  It comes in place of the one before.
  // `isMapKnown`: the model has the row as the switcher holds it.
  void Sent(int output, int input, bool isMapKnown);

  // A step that Decide() named goes to the line.
  void StepSent(const TakeBack::Step& step);

  // The model has the row of this output, or of all with model::kAll, as the switcher reported it.
  void Reported(int output);

  // The switcher did not report within its time what was sent last.  A take that was not made is
  // forgotten: what is made later may be somebody else's.  A step can be sent again.
  void Lapse();

  // What taking it back comes to now.  `grid` shows the model's map.
  TakeBack Decide(const XmapGrid& grid) const;

 private:
  enum class Stage : std::uint8_t { Sent, Made, StepSent };

  bool HasRow() const { return output_ != 0 && output_ <= model_.CrosspointMap.Size(); }
  std::vector<int> Row() const;
  // The row as it is without the take.
  void ReadBefore();

  const model::SystemModel& model_;
  int output_ = 0;  // 0 for none
  int input_ = 0;
  Stage stage_ = Stage::Sent;
  bool isBeforeKnown_ = false;
  bool wasByPriority_ = false;
  bool isChanged_ = false;  // it was reported otherwise since
  std::vector<int> before_;
  std::vector<int> after_;     // as reported
  std::vector<int> expected_;  // after the step that was sent
};

}  // namespace rules

#endif  // VIEWS_RULES_LAST_TAKE_H_
