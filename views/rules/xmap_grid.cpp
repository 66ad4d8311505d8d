// SPDX-License-Identifier: MIT

#include "views/rules/xmap_grid.h"

#include <algorithm>

#include "model/flag_string.h"
#include "model/padded.h"

namespace rules {
namespace {

using switcher::TakeAction;

// The longest text of a column label, separators included.
constexpr int kColumnTextLength = 23;

struct Tool {
  XmapAction action;
  TakeAction make;
  std::optional<TakeAction> undo;  // none: a crosspoint that is made stays made
  Mark mark;
};

constexpr Tool kTools[] = {
    {XmapAction::Call, TakeAction::MakeCall, TakeAction::BreakCall, Mark::Priority},
    {XmapAction::Listen, TakeAction::MakeSum, TakeAction::BreakSum, Mark::Crosspoint},
    {XmapAction::PriorityListen, TakeAction::MakePriorityListen, TakeAction::BreakPriorityListen,
     Mark::Priority},
    {XmapAction::Take, TakeAction::Take, std::nullopt, Mark::Crosspoint},
    {XmapAction::Sum, TakeAction::MakeSum, TakeAction::BreakSum, Mark::Crosspoint},
};

// The bytes of the UTF-8 character that begins with `lead`; a byte that begins none counts as
// one character.
std::size_t CharacterLength(char lead) {
  const auto byte = static_cast<unsigned char>(lead);
  if (byte >= 0xF0) return 4;
  if (byte >= 0xE0) return 3;
  if (byte >= 0xC0) return 2;
  return 1;
}

// The mark of a made crosspoint in a row with this status value; a value that is neither 0 nor 1
// leaves what is shown.
Mark MadeMark(int mode, Mark shown) {
  if (mode == 0) return Mark::Crosspoint;
  if (mode == 1) return Mark::Priority;
  return shown;
}

}  // namespace

void XmapGrid::Clear() {
  const int count = model_.ChannelCount;
  marks_ = model::OneBasedMatrix<Mark>(count);
  outputLabels_ = model::OneBasedArray<std::string>(count);
  inputLabels_ = model::OneBasedArray<std::string>(count);
  numberedOutputs_ = 0;
  numberedInputs_ = 0;
}

bool XmapGrid::IsCrosspoint(int row, int column) const {
  const int last = ChannelCount() + kFixedCells - 1;
  return row >= kFixedCells && column >= kFixedCells && row <= last && column <= last;
}

Mark XmapGrid::MarkAt(int row, int column) const {
  if (row == 0 && column == 0) return Mark::Crosspoint;
  return IsCrosspoint(row, column) ? marks_.At(row - 1, column - 1) : Mark::None;
}

// In demo mode a call is known by its mark alone.
Standing XmapGrid::StandingOf(int output, int input) const {
  if (!HasMapOfThisSize() || model_.CrosspointMap.At(output, input) != 1) return Standing::NotMade;
  const bool isByPriority =
      model_.ChannelStatus[output] == 1 || marks_.At(output, input) == Mark::Priority;
  return isByPriority ? Standing::ByPriority : Standing::Ordinary;
}

bool XmapGrid::SetMark(int output, int input, Mark mark) {
  Mark& shown = marks_.At(output, input);
  if (shown == mark) return false;
  shown = mark;
  return true;
}

std::string XmapGrid::CellText(int row, int column) const {
  const int output = row - 1;
  const int input = column - 1;
  if (output >= 1 && output <= numberedOutputs_) {
    if (column == 0) return outputLabels_[output];
    if (column == 1) return Number(output);
  }
  if (input >= 1 && input <= numberedInputs_) {
    if (row == 0) return ColumnText(inputLabels_[input]);
    if (row == 1) return Number(input);
  }
  return {};
}

std::string XmapGrid::Number(int channel) const {
  return model::Padded(channel, ChannelCount() >= kManyChannels ? 3 : 2);
}

std::string XmapGrid::Label(const std::optional<std::string>& label, int channel) const {
  return label ? *label : "Sta. " + Number(channel);
}

std::string XmapGrid::ColumnText(const std::string& label) const {
  std::string text;
  int length = 0;
  const auto append = [&](std::string_view character) {
    if (length == kColumnTextLength) return;
    text += character;
    ++length;
  };
  for (std::size_t at = 0; at < label.size() && length < kColumnTextLength;) {
    const std::string_view character =
        std::string_view(label).substr(at, CharacterLength(label[at]));
    if (ChannelCount() >= kManyChannels) append(" ");
    append(character);
    append("\r");
    at += character.size();
  }
  return text;
}

MapUpdate XmapGrid::UpdateXmap(int output, int mode) {
  MapUpdate update;
  // A map of another size was allocated after this grid was made, and says nothing about it.
  if (!HasMapOfThisSize()) return update;
  if (output == model::kAll) {
    for (int r = 1; r <= ChannelCount(); ++r) {
      const auto at = static_cast<std::size_t>(r);
      update.changed[at] = UpdateRow(r, model_.ChannelStatus[r], &update.conflicts);
    }
  } else if (output >= 1 && output <= ChannelCount()) {
    update.changed[static_cast<std::size_t>(output)] = UpdateRow(output, mode, &update.conflicts);
  }
  return update;
}

bool XmapGrid::UpdateRow(int output, int mode, int* conflicts) {
  const std::span<const std::uint8_t> made = model_.CrosspointMap.Row(output);
  bool changed = false;
  for (int input = 1; input <= ChannelCount(); ++input) {
    const Mark shown = marks_.At(output, input);
    Mark mark = shown;
    if (made[static_cast<std::size_t>(input - 1)] == 1) {
      if (shown == Mark::Inhibit) {
        mark = Mark::Crosspoint;
        ++*conflicts;
      } else {
        mark = MadeMark(mode, shown);
      }
    } else if (shown != Mark::Inhibit) {
      mark = Mark::None;
    }
    changed |= SetMark(output, input, mark);
  }
  return changed;
}

ChannelSet XmapGrid::UpdateXmapInhibits(std::span<const std::optional<std::string>> inhibits) {
  ChannelSet changed;
  const int rows = std::min(ChannelCount(), static_cast<int>(inhibits.size()));
  for (int output = 1; output <= rows; ++output) {
    const std::optional<std::string>& text = inhibits[static_cast<std::size_t>(output - 1)];
    const std::string flags = text ? model::PlainFlags(*text) : std::string();
    for (int input = 1; input <= ChannelCount(); ++input) {
      const Mark shown = marks_.At(output, input);
      Mark mark = shown == Mark::Crosspoint ? Mark::Crosspoint : Mark::None;
      if (model::FlagIsSet(flags, input)) mark = Mark::Inhibit;
      if (SetMark(output, input, mark)) changed.set(static_cast<std::size_t>(output));
    }
  }
  return changed;
}

bool XmapGrid::InhibitsStored(int output, std::string_view before, std::string_view after) {
  if (output < 1 || output > ChannelCount()) return false;
  const std::string old = model::PlainFlags(before);
  const std::string present = model::PlainFlags(after);
  bool changed = false;
  for (int input = 1; input <= ChannelCount(); ++input) {
    const bool isInhibited = model::FlagIsSet(present, input);
    if (model::FlagIsSet(old, input) == isInhibited) continue;
    const Mark shown = marks_.At(output, input);
    if (isInhibited && shown == Mark::None) {
      changed |= SetMark(output, input, Mark::Inhibit);
    } else if (!isInhibited && shown == Mark::Inhibit) {
      const bool isMade = HasMapOfThisSize() && model_.CrosspointMap.At(output, input) == 1;
      changed |=
          SetMark(output, input,
                  isMade ? MadeMark(model_.ChannelStatus[output], Mark::Crosspoint) : Mark::None);
    }
  }
  return changed;
}

ChannelSet XmapGrid::RedrawCrosspoints() {
  ChannelSet changed;
  if (!HasMapOfThisSize()) return changed;
  for (int output = 1; output <= ChannelCount(); ++output) {
    const std::span<const std::uint8_t> made = model_.CrosspointMap.Row(output);
    const int mode = model_.ChannelStatus[output];
    for (int input = 1; input <= ChannelCount(); ++input) {
      const Mark shown = marks_.At(output, input);
      if (shown == Mark::Inhibit) continue;
      const bool isMade = made[static_cast<std::size_t>(input - 1)] == 1;
      if (SetMark(output, input, isMade ? MadeMark(mode, shown) : Mark::None)) {
        changed.set(static_cast<std::size_t>(output));
      }
    }
  }
  return changed;
}

void XmapGrid::UpdateOutputLabels(std::span<const std::optional<std::string>> labels) {
  const int count = std::min(ChannelCount(), static_cast<int>(labels.size()));
  for (int channel = 1; channel <= count; ++channel) {
    outputLabels_[channel] = Label(labels[static_cast<std::size_t>(channel - 1)], channel);
  }
  numberedOutputs_ = std::max(numberedOutputs_, count);
}

void XmapGrid::UpdateInputLabels(std::span<const std::optional<std::string>> labels) {
  const int count = std::min(ChannelCount(), static_cast<int>(labels.size()));
  for (int channel = 1; channel <= count; ++channel) {
    inputLabels_[channel] = Label(labels[static_cast<std::size_t>(channel - 1)], channel);
  }
  numberedInputs_ = std::max(numberedInputs_, count);
}

ActionDecision XmapGrid::DecideAction(int action, int row, int column) const {
  ActionDecision decision;
  if (!IsCrosspoint(row, column) || !HasMapOfThisSize()) {
    decision.kind = ActionDecision::Kind::NoCell;
    return decision;
  }
  decision.output = row - 1;
  decision.input = column - 1;
  if (MarkAt(row, column) == Mark::Inhibit) {
    decision.kind = ActionDecision::Kind::Inhibited;
    return decision;
  }
  const auto* const tool = std::find_if(
      std::begin(kTools), std::end(kTools),
      [action](const Tool& candidate) { return static_cast<int>(candidate.action) == action; });
  if (tool == std::end(kTools)) return decision;
  const int state = model_.CrosspointMap.At(decision.output, decision.input);
  if (state == 0) {
    decision.kind = ActionDecision::Kind::Send;
    decision.code = tool->make;
    decision.mark = tool->mark;
    decision.made = true;
  } else if (state == 1 && tool->undo) {
    decision.kind = ActionDecision::Kind::Send;
    decision.code = *tool->undo;
  } else if (state == 1) {
    decision.kind = ActionDecision::Kind::AlreadyMade;
  }
  return decision;
}

void XmapGrid::DrawAction(const ActionDecision& action) {
  if (action.kind != ActionDecision::Kind::Send) return;
  SetMark(action.output, action.input, action.mark);
  model_.CrosspointMap.At(action.output, action.input) = action.made ? 1 : 0;
}

InhibitDecision XmapGrid::DecideInhibit(std::string_view text, int row, int column) const {
  const int input = column - 1;
  const Mark shown = MarkAt(row, column);
  InhibitDecision decision;
  if (model::FlagIsSet(model::PlainFlags(text), input)) {
    decision.flags = model::WithFlag(text, input, false, input);
    decision.mark = shown == Mark::Inhibit ? Mark::None : shown;
  } else if (shown == Mark::Crosspoint || shown == Mark::Priority || shown == Mark::Reserved) {
    decision.kind = InhibitDecision::Kind::CrosspointPresent;
  } else {
    decision.flags = model::WithFlag(text, input, true, input);
    decision.mark = Mark::Inhibit;
  }
  return decision;
}

}  // namespace rules
