// SPDX-License-Identifier: MIT

#include "tests/desktop/tasks.h"

namespace desktop {
namespace {

constexpr char kButtons[] = "ID_ButtonProgramming";

// The panels that get the talk group at their first button, and its targets.
constexpr int kFirstPanel = 21;
constexpr int kLastPanel = 40;
constexpr char kTargets[] = "00000000111111000";  // 9 to 14

void GoByMouse(Hand& hand) {
  hand.Click({.object = "aidStation", .end = true});
  hand.Click({.object = "aidStationList", .row = 36});
}

void GoByKeyboard(Hand& hand) {
  hand.Type("37");
  hand.Key("Return");
}

void LookForStation37(Scene& scene) {
  scene.Operator().Until("the port is 37", [&] {
    return scene.Console().Property("txtPortNmbr", "text").toString() == QLatin1String("37");
  });
}

// Shown as it is when it is opened.
void GoToStation1(Scene& scene) {
  scene.Console().Click("cmdFirst");
  scene.Console().Set("SSActiveTabs1", "currentIndex", 0);
  scene.Console().Ask({{QStringLiteral("do"), QStringLiteral("invoke")},
                       {QStringLiteral("object"), QStringLiteral("qt_tabwidget_tabbar")},
                       {QStringLiteral("method"), QStringLiteral("setFocus")}});
}

void GroupByMouse(Hand& hand) {
  hand.Click({.object = "cmdButton_0"});
  hand.Click({.object = "optButType_255"});
  for (const char* const target : {"ckStationSel_8", "ckStationSel_9", "ckStationSel_10",
                                   "ckStationSel_11", "ckStationSel_12", "ckStationSel_13"}) {
    hand.Click({.object = target});
  }
  hand.Click({.object = "btnCopyToStations"});
  hand.See("frmCopyTo");
  // Station 1 is not in the list.
  const Target first{.object = "lstStations", .row = kFirstPanel - 2, .check = true};
  const Target last{.object = "lstStations", .row = kLastPanel - 2, .check = true};
  hand.Turn({.object = "lstStations"}, first);
  hand.Click(first);
  hand.Turn({.object = "lstStations"}, last);
  hand.ShiftClick(last);
  hand.Click({.object = "cmdOkCopy"});
}

void GroupByKeyboard(Hand& hand) {
  hand.Key("Tab");
  hand.Key("Return");
  hand.SeeFocus("ckStationSel_0");
  hand.Key("shift+Tab");
  hand.SeeFocus("optButType_254");
  hand.Key("Right");
  hand.Key("Tab");
  hand.Key("Down");
  hand.Key("space");
  for (int target = 10; target <= 14; ++target) hand.Key("shift+Right");
  hand.Key("ctrl+shift+c");
  hand.See("frmCopyTo");
  hand.Type("CAM");
  hand.Key("alt+l");
  hand.SeeReady("cmdOkCopy");
  hand.Key("alt+y");
}

void LookForCopy(Scene& scene) {
  scene.Operator().See("frmMain");
  scene.Operator().Until("the copy's window is closed",
                         [&] { return !scene.Console().IsShown("frmCopyTo"); });
}

bool IsGroupStored(const Scene& scene) {
  for (int panel = kFirstPanel; panel <= kLastPanel; ++panel) {
    if (scene.Stored(panel, "B1 Type") != "255") return false;
    if (!scene.Stored(panel, "B1 Prog").starts_with(kTargets)) return false;
  }
  // Those beside them are none of them.
  return scene.Stored(kFirstPanel - 1, "B1 Type") != "255" &&
         scene.Stored(kLastPanel + 1, "B1 Type") != "255";
}

void UseByMouse(Hand& hand) { hand.Click({.object = "btnWhereUsed"}); }

void UseByKeyboard(Hand& hand) { hand.Key("ctrl+shift+u"); }

// The group is at the first button of 21 stations.
void LookForUses(Scene& scene) {
  scene.Operator().See("frmWhereUsed");
  scene.Operator().Until("the places are listed",
                         [&] { return scene.Console().Rows("lstWhereUsed").size() > 21; });
}

void GoToStation9(Scene& scene) {
  scene.Console().Set("aidStationText", "text", QLatin1String("9"));
  scene.Console().Keys("aidStationText", "Return");
}

constexpr Task kTasks[] = {
    {.name = "Programming, from station 1 to 37",
     .file = "station-37",
     .view = kButtons,
     .aim = 2,
     .mostByMouse = 2,
     .mostByKeyboard = 2,
     .prepare = GoToStation1,
     .byMouse = GoByMouse,
     .byKeyboard = GoByKeyboard,
     .look = LookForStation37},
    {.name = "A talk group of 6 on 20 panels",
     .file = "talk-group",
     .view = kButtons,
     .aim = 14,
     .mostByMouse = 14,
     .mostByKeyboard = 16,
     .prepare = GoToStation1,
     .byMouse = GroupByMouse,
     .byKeyboard = GroupByKeyboard,
     .look = LookForCopy,
     .isStored = IsGroupStored},
    {.name = "Where is station 9 used?",
     .file = "where-used",
     .view = kButtons,
     .after = {"talk-group"},
     .mostByMouse = 1,
     .mostByKeyboard = 1,
     .prepare = GoToStation9,
     .byMouse = UseByMouse,
     .byKeyboard = UseByKeyboard,
     .look = LookForUses},
};

}  // namespace

std::span<const Task> StationTasks() { return kTasks; }

}  // namespace desktop
