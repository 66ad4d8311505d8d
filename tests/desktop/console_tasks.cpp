// SPDX-License-Identifier: MIT

#include <string>

#include "tests/desktop/tasks.h"
#include "tests/support/temporary_folder.h"

namespace desktop {
namespace {

constexpr char kMap[] = "ID_XpointMap";

void SendByMouse(Hand& hand) {
  hand.Click({.object = "ID_File"});
  hand.Click({.object = "aidSendChanges"});
  hand.See("frmSendChanges");
  hand.Click({.object = "cmdOkSendChg"});
}

void SendByKeyboard(Hand& hand) {
  hand.Key("ctrl+shift+h");
  hand.See("frmSendChanges");
  hand.SeeFocus("lstUnsent");
  hand.Key("Tab");
  hand.SeeFocus("cmdOkSendChg");
  hand.Key("Return");
}

void LookForNothingUnsent(Scene& scene) {
  scene.Operator().Until("the switcher has the inhibits", [&] {
    return scene.Switcher("inhibits 6").find("9 10 11 12 13 14") != std::string::npos;
  });
  scene.Operator().Until("the switcher has the group of panel 40", [&] {
    return scene.Switcher("button 40 1").find("9 10 11 12 13 14") != std::string::npos;
  });
  scene.Operator().Until("nothing is unsent", [&] {
    return !scene.Console().IsShown("aidUnsent") && !scene.Console().IsShown("aidUnsentSign");
  });
}

// Somebody else has changed a label there.
void ChangeTheSwitcher(Scene& scene) { scene.Switcher("label out 3 STUDIO"); }

void CompareByMouse(Hand& hand) {
  hand.Click({.object = "ID_File"});
  hand.Click({.object = "aidCompare"});
}

void CompareByKeyboard(Hand& hand) {
  hand.Key("alt+f");
  hand.Key("m");
}

void LookForTheDifference(Scene& scene) {
  scene.Operator().See("frmCompare");
  scene.Operator().Until("the label is the only difference", [&] {
    const auto rows = scene.Console().Rows("lstDifferences");
    return rows.size() == 1 && rows.front().find("STUDIO") != std::string::npos;
  });
}

constexpr char kLabelFile[] = "labels.csv";

void WriteLabels(Scene& scene) {
  test::WriteFile(scene.Folder().Home() / kLabelFile,
                  "Station,Station Label\r\n5,GALLERY\r\n6,SOUND\r\n");
}

void ImportByMouse(Hand& hand) {
  hand.Click({.object = "ID_File"});
  hand.Click({.object = "aidImportProgramming"});
  hand.See("aidImportDialog");
  hand.Click({.object = "sidebar", .row = 1});
  hand.DoubleClick({.object = "treeView", .window = "aidImportDialog", .row = 0});
  hand.See("frmImport");
  hand.Click({.object = "cmdOkImport"});
}

void ImportByKeyboard(Hand& hand) {
  hand.Key("alt+f");
  hand.Key("i");
  hand.See("aidImportDialog");
  hand.Type(std::string("~/") + kLabelFile);
  hand.Key("Return");
  hand.See("frmImport");
  hand.Key("alt+i");
}

void LookForImport(Scene& scene) {
  scene.Operator().Until("the import is closed",
                         [&] { return !scene.Console().IsShown("frmImport"); });
  scene.Operator().See("frmMain");
}

bool AreLabelsStored(const Scene& scene) {
  return scene.Stored(5, "Label") == "GALLERY" && scene.Stored(6, "Label") == "SOUND";
}

void LockByMouse(Hand& hand) {
  hand.Click({.object = "ID_File"});
  hand.Click({.object = "aidLockConsole"});
}

void LockByKeyboard(Hand& hand) {
  hand.Key("alt+f");
  hand.Key("k");
}

void LookForLock(Scene& scene) {
  scene.Operator().Until("the console is locked",
                         [&] { return scene.Console().IsShown("aidLocked"); });
}

void UnlockByMouse(Hand& hand) {
  LockByMouse(hand);
  hand.See("aidUnlockQuestion");
  hand.Click({.object = "aidUnlock"});
}

void UnlockByKeyboard(Hand& hand) {
  LockByKeyboard(hand);
  hand.See("aidUnlockQuestion");
  hand.Key("alt+u");
}

void LookForNoLock(Scene& scene) {
  scene.Operator().Until("the console is unlocked",
                         [&] { return !scene.Console().IsShown("aidLocked"); });
  scene.Operator().See("frmMain");
}

constexpr Task kTasks[] = {
    {.name = "What is unsent sent to the switcher",
     .file = "send-changes",
     .view = kMap,
     .byMouse = SendByMouse,
     .byKeyboard = SendByKeyboard,
     .look = LookForNothingUnsent},
    {.name = "Compared with the switcher",
     .file = "compare",
     .view = kMap,
     .prepare = ChangeTheSwitcher,
     .byMouse = CompareByMouse,
     .byKeyboard = CompareByKeyboard,
     .look = LookForTheDifference},
    {.name = "Labels imported from a file",
     .file = "import",
     .view = kMap,
     .prepare = WriteLabels,
     .byMouse = ImportByMouse,
     .byKeyboard = ImportByKeyboard,
     .look = LookForImport,
     .isStored = AreLabelsStored},
    {.name = "The console locked",
     .file = "lock",
     .view = kMap,
     .byMouse = LockByMouse,
     .byKeyboard = LockByKeyboard,
     .look = LookForLock},
    {.name = "The console unlocked",
     .file = "unlock",
     .view = kMap,
     .byMouse = UnlockByMouse,
     .byKeyboard = UnlockByKeyboard,
     .look = LookForNoLock},
};

}  // namespace

std::span<const Task> ConsoleTasks() { return kTasks; }

}  // namespace desktop
