// SPDX-License-Identifier: MIT

#include "tests/end_to_end/operator_edits.h"

#include <array>
#include <optional>
#include <string>

#include "tests/end_to_end/label_edits.h"
#include "tests/end_to_end/pending_tables.h"
#include "tests/end_to_end/programming_edits.h"

namespace test {

namespace {

constexpr int kChannels = 64;

// As the map numbers its marks.
constexpr int kNoMark = 0;
constexpr int kInhibitMark = 2;

int OneOf(std::mt19937& random, int count) {
  return 1 + static_cast<int>(random() % static_cast<unsigned>(count));
}

// Forbids a crosspoint of the map, or allows it again: one that is not made.
bool ToggleInhibit(ConsoleProcess& console, std::mt19937& random, StoredTables& tables) {
  for (int tries = 0; tries < 100 && console.Lives(); ++tries) {
    const int output = OneOf(random, kChannels);
    const int input = OneOf(random, kChannels);
    char& flag =
        tables.at(std::to_string(output) + " Inhibits").at(static_cast<std::size_t>(input) - 1);
    const int before = flag == '1' ? kInhibitMark : kNoMark;
    const int after = flag == '1' ? kNoMark : kInhibitMark;
    if (console.Mark(output, input) != before) continue;
    console.Use("ID_ToggleInhibit", output, input);
    if (!console.LivesUntil([&] { return console.Mark(output, input) == after; })) return false;
    flag = flag == '1' ? '0' : '1';
    return true;
  }
  return false;
}

// Forbids the crosspoints of a block of the map, or allows them again, after a question.
bool InhibitBlock(ConsoleProcess& console, std::mt19937& random, StoredTables& tables) {
  constexpr int kOutputs = 3;
  constexpr int kInputs = 2;
  const int output = OneOf(random, kChannels - kOutputs + 1);
  const int input = OneOf(random, kChannels - kInputs + 1);
  PendingTables pending(tables);
  std::optional<bool> inhibit;
  for (int row = output; row < output + kOutputs; ++row) {
    std::string flags = pending.Get(row, "Inhibits");
    for (int column = input; column < input + kInputs; ++column) {
      char& flag = flags.at(static_cast<std::size_t>(column) - 1);
      if (!inhibit) inhibit = flag != '1';
      const int mark = console.Mark(row, column);
      // A crosspoint that is made stays as it is.
      if (mark == kNoMark || mark == kInhibitMark) flag = *inhibit ? '1' : '0';
    }
    pending.Set(row, "Inhibits", flags);
  }
  console.Choose(output, input);
  for (int more = 1; more < kInputs; ++more) console.Keys("msfgXmap", "Shift+Right");
  for (int more = 1; more < kOutputs; ++more) console.Keys("msfgXmap", "Shift+Down");
  console.Trigger("ID_ToggleInhibit", "frmXmap");
  if (!console.LivesUntil([&] { return console.IsShown("aidInhibitQuestion"); })) return false;
  console.Click(*inhibit ? "aidInhibitAll" : "aidRemoveAll");
  const int after = *inhibit ? kInhibitMark : kNoMark;
  if (!console.LivesUntil([&] { return console.Mark(output, input) == after; })) return false;
  pending.Commit();
  return true;
}

constexpr std::array kEdits{
    OperatorEdit{"toggle an inhibit", ToggleInhibit},
    OperatorEdit{"inhibit a block", InhibitBlock, true},
    OperatorEdit{"toggle a target of a button", ToggleTarget},
    OperatorEdit{"take all targets of a button", ClearTargets},
    OperatorEdit{"choose the operation of a button", ChooseOperation},
    OperatorEdit{"copy a button to stations", CopyButton, true},
    OperatorEdit{"toggle a relay", ToggleRelay},
    OperatorEdit{"toggle a target of an opto", ToggleOptoTarget},
    OperatorEdit{"choose the operation of an opto", ChooseOptoOperation},
    OperatorEdit{"type a station label", TypeStationLabel},
    OperatorEdit{"type an input label", TypeInputLabel},
    OperatorEdit{"hide a station", ToggleHidden},
    OperatorEdit{"import labels", ImportLabels, true},
};

}  // namespace

std::span<const OperatorEdit> Edits() { return kEdits; }

}  // namespace test
