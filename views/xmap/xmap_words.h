// SPDX-License-Identifier: MIT
//
// What the crosspoint map shows and asks, in words.

#ifndef VIEWS_XMAP_XMAP_WORDS_H_
#define VIEWS_XMAP_XMAP_WORDS_H_

#include <QString>

#include "views/rules/inhibit_block.h"
#include "views/rules/last_take.h"
#include "views/rules/xmap_grid.h"

namespace views {

// A channel by its number: "Out 02", "In 04".
QString OutputNumber(const rules::XmapGrid& grid, int output);
QString InputNumber(const rules::XmapGrid& grid, int input);

// What an output hears: "SOUND 1 hears DIRECTOR, SOUND 2; by priority: none".  Of many channels the
// first are named and the others counted.
QString HearsWords(const rules::XmapGrid& grid, int output);

// Where an input is heard: "DIRECTOR is heard by SOUND 1; by priority: none".
QString HeardWords(const rules::XmapGrid& grid, int input);

// What taking a take back comes to: "Out 06: back to In 08?"  REQUIRES: it is possible
QString TakeBackQuestion(const rules::XmapGrid& grid, const rules::TakeBack& back);

// What is still to be done when taking it back came to a stop: "Take undone in part: Out 06 is to
// hear In 01, In 08".
QString TakeBackRest(const rules::XmapGrid& grid, const rules::TakeBack& back);

// Why it is refused: "Take not undone: Out 06 has changed since".  REQUIRES: it is
QString TakeBackRefusal(const rules::XmapGrid& grid, const rules::TakeBack& back);

// What inhibiting a block comes to, or taking its inhibits away: "Inhibit 36 crosspoints? 2 hold a
// crosspoint and are left out."
QString InhibitQuestion(const rules::InhibitPlan& plan, bool inhibit);

// The same when it was stored: "Inhibited crosspoints: 36; left out: 2", "Inhibits removed: 36".
QString InhibitedWords(const rules::InhibitPlan& plan, bool inhibit);

}  // namespace views

#endif  // VIEWS_XMAP_XMAP_WORDS_H_
