// SPDX-License-Identifier: MIT
//
// What the crosspoint map shows and what its tools do, without a window.
//
// Cells are named in the grid's own coordinates: rows and columns 0 and 1 are header cells, so
// the crosspoint of output o and input i (both from 1) is row o + 1, column i + 1.

#ifndef VIEWS_RULES_XMAP_GRID_H_
#define VIEWS_RULES_XMAP_GRID_H_

#include <bitset>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/one_based.h"
#include "model/system_model.h"
#include "switcher/wire/messages/take.h"

namespace rules {

// Header rows above the matrix, and header columns left of it.
inline constexpr int kFixedCells = 2;

// From so many channels on, numbers have three digits and columns are wider.
inline constexpr int kManyChannels = 100;

// What a cell shows.  The tools decide by it, not by the database.
enum class Mark : std::uint8_t {
  None = 0,
  Crosspoint = 1,  // ordinary: take, sum, listen
  Inhibit = 2,
  Priority = 3,  // call, priority listen
  Reserved = 4,  // never placed here; like a crosspoint, it keeps an inhibit away
};

// How a crosspoint stands, whatever its cell shows: an inhibit may hide it.
enum class Standing : std::uint8_t { NotMade, Ordinary, ByPriority };

// A set of output or input channels; bit n stands for channel n, bit 0 is unused.
using ChannelSet = std::bitset<model::kMaxChannelCount + 1>;

// What an update of the map did.
struct MapUpdate {
  ChannelSet changed;  // outputs with a cell that looks different now
  int conflicts = 0;   // crosspoints reported for a cell that showed an inhibit
};

// The tools that act on a crosspoint, by their action code.
enum class XmapAction : int { Call = 0, Listen = 1, PriorityListen = 2, Take = 4, Sum = 5 };

// What a tool is to do with a crosspoint.
struct ActionDecision {
  enum class Kind : std::uint8_t {
    Nothing,      // an unknown action, or a crosspoint in an unknown state
    NoCell,       // a header cell, or none at all
    Inhibited,    // refused: the cell shows an inhibit
    AlreadyMade,  // a take of a crosspoint that is made: takes are never undone
    Send,         // send `code`; in demo mode draw `mark` and store `made` as well
  };

  Kind kind = Kind::Nothing;
  int output = 0;  // from 1
  int input = 0;   // from 1
  switcher::TakeAction code = switcher::TakeAction::BreakSum;
  Mark mark = Mark::None;
  bool made = false;
};

// What toggling an inhibit is to do.
struct InhibitDecision {
  enum class Kind : std::uint8_t {
    CrosspointPresent,  // refused: the cell shows a crosspoint
    Store,              // store `flags`, then draw `mark`
  };

  Kind kind = Kind::Store;
  std::string flags;  // the new text of "Inhibits"
  Mark mark = Mark::None;
};

class XmapGrid {
 public:
  // `model` must outlive the grid.
  explicit XmapGrid(model::SystemModel& model) : model_(model) {}

  // An empty grid for the model's present ChannelCount: no marks, no texts.
  void Clear();

  // The size of the matrix at the last Clear(); the grid has two rows and columns more.
  int ChannelCount() const { return marks_.Size(); }

  // The mark of a cell.  (0, 0) shows Crosspoint; other header cells, and cells that are not
  // there, show None.
  Mark MarkAt(int row, int column) const;

  // The marks of one output; element 0 is input 1.  REQUIRES: 1 <= output <= ChannelCount()
  std::span<const Mark> Marks(int output) const { return marks_.Row(output); }

  // How a crosspoint stands in the model.  REQUIRES: both within 1..ChannelCount()
  Standing StandingOf(int output, int input) const;

  // Puts a mark on a crosspoint.  Returns whether it looks different now.
  // REQUIRES: output and input within 1..ChannelCount()
  bool SetMark(int output, int input, Mark mark);

  // The text of a cell: labels and numbers in the header, nothing in the body.  Column labels
  // are written downwards: each letter is followed by a carriage return and, above 99 channels,
  // preceded by a space; the text ends after 23 characters.  UTF-8.
  std::string CellText(int row, int column) const;

  // The label of a channel as it stands in the header before it is turned; "" before it is
  // set.  REQUIRES: 1 <= channel <= ChannelCount()
  const std::string& OutputLabel(int output) const { return outputLabels_[output]; }
  const std::string& InputLabel(int input) const { return inputLabels_[input]; }

  // A channel number as the grid writes it: two digits, above 99 channels three.
  std::string Number(int channel) const;

  // Whether the body cells of a grid row have the tool-tip colour (rows 2, 3, 6, 7, ...) or
  // the other one (4, 5, 8, 9, ...).  REQUIRES: row >= 2
  static bool HasTipColour(int row) { return (row - kFixedCells) / 2 % 2 == 0; }

  // Draws the crosspoints of one output, or of all with model::kAll, from CrosspointMap.  A
  // made crosspoint gets Crosspoint for mode 0 and Priority for mode 1 and is left alone for
  // any other; with kAll the output's ChannelStatus is the mode.  On an inhibited cell it
  // always replaces the inhibit by Crosspoint and counts as a conflict.  Where no crosspoint is
  // made, all marks but inhibits go.  An output that does not exist changes nothing.
  MapUpdate UpdateXmap(int output, int mode);

  // Draws the inhibits: element r of `inhibits`, the text as the database has it, belongs to
  // output r + 1, and null is a text without inhibits; outputs without an element stay as they
  // are.  A set flag puts Inhibit, whatever was there; elsewhere all marks but Crosspoint go,
  // Priority too.  Returns the outputs that look different.
  ChannelSet UpdateXmapInhibits(std::span<const std::optional<std::string>> inhibits);

  // The inhibits of one output were stored as `after` instead of `before`, the texts as the
  // database has them: draws the cells whose flag is another now.  An inhibit hides no crosspoint
  // that shows; one that goes leaves the crosspoint that is made.  Returns whether the output looks
  // different. An output that does not exist changes nothing.
  bool InhibitsStored(int output, std::string_view before, std::string_view after);

  // Draws the crosspoints of all outputs in the cells that show no inhibit.  A made crosspoint gets
  // Crosspoint when the output's ChannelStatus is 0 and Priority when it is 1; any other value
  // leaves its mark alone.  Where no crosspoint is made, the mark goes.  Returns the outputs that
  // look different.
  ChannelSet RedrawCrosspoints();

  // Takes over the labels of the outputs or of the inputs and writes the numbers: element r
  // belongs to channel r + 1; a label that is null is "Sta. " and the number.  Channels without
  // an element stay as they are.
  void UpdateOutputLabels(std::span<const std::optional<std::string>> labels);
  void UpdateInputLabels(std::span<const std::optional<std::string>> labels);

  // What a tool is to do with a cell.  An action that is none of XmapAction does nothing.
  ActionDecision DecideAction(int action, int row, int column) const;

  // Takes a sent action for done, as in demo mode: its mark, and its entry in CrosspointMap.
  void DrawAction(const ActionDecision& action);

  // What toggling the inhibit of a cell is to do, given the "Inhibits" text of its output as the
  // database has it.  A text that ends before the cell's input is filled up with "0".
  // REQUIRES: IsCrosspoint(row, column)
  InhibitDecision DecideInhibit(std::string_view text, int row, int column) const;

  // Whether the cell is one of the matrix, not of the header.
  bool IsCrosspoint(int row, int column) const;

 private:
  bool UpdateRow(int output, int mode, int* conflicts);
  bool HasMapOfThisSize() const { return model_.CrosspointMap.Size() == ChannelCount(); }
  std::string Label(const std::optional<std::string>& label, int channel) const;
  std::string ColumnText(const std::string& label) const;

  model::SystemModel& model_;
  model::OneBasedMatrix<Mark> marks_;
  model::OneBasedArray<std::string> outputLabels_;
  model::OneBasedArray<std::string> inputLabels_;
  int numberedOutputs_ = 0;  // so many row numbers have been written
  int numberedInputs_ = 0;
};

}  // namespace rules

#endif  // VIEWS_RULES_XMAP_GRID_H_
