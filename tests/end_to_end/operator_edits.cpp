// SPDX-License-Identifier: MIT

#include "tests/end_to_end/operator_edits.h"

#include <array>

#include "tests/end_to_end/label_edits.h"
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
    const bool ended = ConsoleProcess::WaitFor(
        [&] { return !console.Lives() || console.Mark(output, input) == after; });
    if (!ended || !console.Lives()) return false;
    flag = flag == '1' ? '0' : '1';
    return true;
  }
  return false;
}

constexpr std::array kEdits{
    OperatorEdit{"toggle an inhibit", ToggleInhibit},
    OperatorEdit{"toggle a target of a button", ToggleTarget},
    OperatorEdit{"take all targets of a button", ClearTargets},
    OperatorEdit{"choose the operation of a button", ChooseOperation},
    OperatorEdit{"toggle a relay", ToggleRelay},
    OperatorEdit{"toggle a target of an opto", ToggleOptoTarget},
    OperatorEdit{"choose the operation of an opto", ChooseOptoOperation},
    OperatorEdit{"type a station label", TypeStationLabel},
    OperatorEdit{"type an input label", TypeInputLabel},
    OperatorEdit{"hide a station", ToggleHidden},
};

}  // namespace

std::span<const OperatorEdit> Edits() { return kEdits; }

}  // namespace test
