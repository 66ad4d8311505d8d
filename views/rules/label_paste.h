// SPDX-License-Identifier: MIT

#ifndef VIEWS_RULES_LABEL_PASTE_H_
#define VIEWS_RULES_LABEL_PASTE_H_

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "stations/label_texts.h"
#include "stations/labels.h"
#include "views/rules/text_block.h"

namespace rules {

// Why a block is not pasted, and which of its cells is to blame.
struct PasteRefusal {
  enum class Reason : std::uint8_t {
    None,
    Empty,           // there is nothing to paste
    TooManyRows,     // more rows than there are from the first one down
    TooManyColumns,  // ... columns to the right
    StationNumber,   // another number than the row's; it cannot be changed
    NotAChoice,      // neither No nor Yes, for the hidden flag
    Unreadable,      // the field is not there or cannot be read
    Text,            // the text has a problem
  };

  Reason reason = Reason::None;
  std::size_t row = 0;  // of the grid; with TooManyRows: how many rows there are
  stations::LabelColumn column = stations::LabelColumn::Station;
  stations::TextCheck text{};

  bool ok() const { return reason == Reason::None; }
};

// What pasting a block changes.
struct PastePlan {
  PasteRefusal refusal;  // the first in reading order; nothing is to be stored then
  std::vector<stations::LabelEdit> changes;  // of the records that get another value somewhere
};

// Plans a paste of `block` with its first cell at (firstRow, firstColumn) of the grid, whose rows
// are `rows`.  A cell that shows its text already stays as it is, null included; the cells that
// a shorter row of the block does not have are not touched.
PastePlan PlanPaste(const TextBlock& block, std::span<const stations::LabelRecord> rows,
                    std::size_t firstRow, stations::LabelColumn firstColumn);

}  // namespace rules

#endif  // VIEWS_RULES_LABEL_PASTE_H_
