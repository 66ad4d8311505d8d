// SPDX-License-Identifier: MIT

#include <string>

#include "tests/desktop/tasks.h"

namespace desktop {
namespace {

using test::kCrosspoint;

constexpr char kMap[] = "ID_XpointMap";

// A crosspoint of the map, from 1.
constexpr Target Cell(int output, int input) {
  return {.object = "msfgXmap", .row = output - 1, .column = input - 1};
}

void SeeMark(Scene& scene, int output, int input, int mark) {
  scene.Operator().Until("output " + std::to_string(output) + ", input " + std::to_string(input) +
                             " shows mark " + std::to_string(mark),
                         [&] { return scene.Console().Mark(output, input) == mark; });
}

// The switcher does it by itself, and reports it.
void Change(Scene& scene, const std::string& command, int output) {
  scene.Switcher(command);
  scene.Switcher("send-row " + std::to_string(output));
}

void SelectFirstCell(Scene& scene) { scene.Console().Keys("msfgXmap", "Ctrl+Home"); }

void InhibitByMouse(Hand& hand) {
  hand.Drag(Cell(1, 9), Cell(6, 14));
  hand.Click({.object = "ID_ToggleInhibit", .window = "frmXmap"});
  hand.Click({.object = "aidInhibitAll"});
}

void InhibitByKeyboard(Hand& hand) {
  hand.Key("ctrl+g");
  hand.SeeFocus("aidFindText");
  hand.Type("1-6 9-14");
  hand.Key("Return");
  hand.SeeFocus("msfgXmap");
  hand.Key("alt+i");
  hand.See("aidInhibitQuestion");
  hand.Key("alt+i");
}

void LookForInhibits(Scene& scene) {
  constexpr int kInhibit = 2;
  SeeMark(scene, 1, 9, kInhibit);
  SeeMark(scene, 6, 14, kInhibit);
  SeeMark(scene, 7, 14, 0);
}

bool AreInhibitsStored(const Scene& scene) {
  for (int output = 1; output <= 6; ++output) {
    const std::string flags = scene.Stored(output, "Inhibits");
    if (flags.size() < 15 || flags.substr(8, 6) != "111111" || flags[14] != '0') return false;
  }
  return true;
}

// Yesterday's map is kept, and everything is another today.
void StoreYesterday(Scene& scene) {
  Change(scene, "make 10 20", 10);
  Change(scene, "make 11 21", 11);
  SeeMark(scene, 11, 21, kCrosspoint);
  test::ConsoleProcess& console = scene.Console();
  console.Trigger("aidPresets");
  scene.Operator().See("frmPresets");
  std::size_t kept = 0;
  for (const char* const name : {"Yesterday", "Evening"}) {
    console.Set("txtPresetName", "text", QLatin1String(name));
    console.Click("cmdStorePreset");
    ++kept;
    // Written behind the window, which then shows the name of what is kept.
    scene.Operator().Until(std::string(name) + " is kept",
                           [&] { return console.Rows("lstPresets").size() == kept; });
  }
  console.Click("aidClosePresets");
  Change(scene, "break 10 20", 10);
  Change(scene, "make 11 22", 11);
  SeeMark(scene, 10, 20, 0);
  SeeMark(scene, 11, 22, kCrosspoint);
}

void RecallByMouse(Hand& hand) {
  hand.Click({.object = "ID_File"});
  hand.Click({.object = "aidPresets"});
  hand.See("frmPresets");
  hand.DoubleClick({.object = "lstPresets", .row = 1});
  hand.See("frmRecall");
  hand.Click({.object = "cmdOkRecall"});
}

void RecallByKeyboard(Hand& hand) {
  hand.Key("ctrl+shift+p");
  hand.See("frmPresets");
  hand.Type("Yest");
  hand.Key("Return");
  hand.See("frmRecall");
  hand.SeeReady("cmdOkRecall");
  hand.Key("alt+r");
}

void LookForYesterday(Scene& scene) {
  SeeMark(scene, 10, 20, kCrosspoint);
  SeeMark(scene, 11, 21, kCrosspoint);
  SeeMark(scene, 11, 22, 0);
  scene.Operator().Until("the switcher has the crosspoint, and no other",
                         [&] { return scene.Switcher("row 10").ends_with(" sources 20"); });
}

void TakeByMistake(Scene& scene) {
  Change(scene, "make 12 5", 12);
  SeeMark(scene, 12, 5, kCrosspoint);
  scene.Console().Use("ID_Take", 12, 7);
  SeeMark(scene, 12, 7, kCrosspoint);
  SeeMark(scene, 12, 5, 0);
}

void UndoTakeByMouse(Hand& hand) {
  hand.RightClick(Cell(12, 7));
  hand.Click({.object = "aidUndoTake", .window = "frmXmap"});
  hand.Click({.object = "aidTakeBack"});
}

void UndoTakeByKeyboard(Hand& hand) {
  hand.Key("ctrl+u");
  hand.See("aidUndoTakeQuestion");
  hand.Key("alt+u");
}

void LookForUndoneTake(Scene& scene) {
  SeeMark(scene, 12, 5, kCrosspoint);
  SeeMark(scene, 12, 7, 0);
}

constexpr Task kTasks[] = {
    {.name = "A block of 6 by 6 inhibits",
     .file = "inhibits",
     .view = kMap,
     .aim = 3,
     .mostByMouse = 3,
     .mostByKeyboard = 5,
     .prepare = SelectFirstCell,
     .byMouse = InhibitByMouse,
     .byKeyboard = InhibitByKeyboard,
     .look = LookForInhibits,
     .isStored = AreInhibitsStored},
    {.name = "Recall of yesterday's map",
     .file = "recall",
     .view = kMap,
     .aim = 4,
     .mostByMouse = 4,
     .mostByKeyboard = 4,
     .prepare = StoreYesterday,
     .byMouse = RecallByMouse,
     .byKeyboard = RecallByKeyboard,
     .look = LookForYesterday},
    {.name = "The last take undone",
     .file = "undo-take",
     .view = kMap,
     .mostByMouse = 3,
     .mostByKeyboard = 2,
     .prepare = TakeByMistake,
     .byMouse = UndoTakeByMouse,
     .byKeyboard = UndoTakeByKeyboard,
     .look = LookForUndoneTake},
};

}  // namespace

std::span<const Task> MapTasks() { return kTasks; }

}  // namespace desktop
