// SPDX-License-Identifier: MIT

#include <QByteArray>
#include <filesystem>
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
  hand.SeeReady("cmdOkImport");
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

constexpr char kSheets[] = "key-sheets.pdf";
constexpr int kFirstCamera = 21;
constexpr int kLastCamera = 40;

void SheetsByMouse(Hand& hand) {
  hand.Click({.object = "ID_File"});
  hand.Click({.object = "aidKeySheets"});
  hand.See("frmKeySheets");
  hand.Click({.object = "optSheetsChosen"});
  const Target first{.object = "lstSheetStations", .row = kFirstCamera - 1, .check = true};
  const Target last{.object = "lstSheetStations", .row = kLastCamera - 1, .check = true};
  hand.Turn({.object = "lstSheetStations"}, first);
  hand.Click(first);
  hand.Turn({.object = "lstSheetStations"}, last);
  hand.ShiftClick(last);
  hand.Click({.object = "cmdPdfSheets"});
  hand.See("aidSheetsDialog");
  hand.Click({.object = "sidebar", .window = "aidSheetsDialog", .row = 1});
  hand.Click({.object = "buttonBox", .window = "aidSheetsDialog", .accept = true});
}

void SheetsByKeyboard(Hand& hand) {
  hand.Key("ctrl+p");
  hand.See("frmKeySheets");
  hand.Key("alt+c");
  hand.Key("ctrl+f");
  hand.SeeFocus("txtFindSheets");
  hand.Type("CAM");
  hand.Key("alt+l");
  hand.SeeReady("cmdPdfSheets");
  hand.Key("alt+p");
  hand.See("aidSheetsDialog");
  hand.Type(std::string("~/") + kSheets);
  hand.Key("Return");
}

void LookForSheets(Scene& scene) {
  const std::filesystem::path file = scene.Folder().Home() / kSheets;
  scene.Operator().Until("the sheets are written", [&] {
    return scene.Console().Property("aidSheetsState", "text").toString() ==
           QString::fromStdString("Written: " + file.string());
  });
  scene.Operator().Until("there is a page for each", [&] {
    const auto pages = QByteArray::fromStdString(test::ReadFile(file)).count("/Type /Page\n");
    return pages == kLastCamera - kFirstCamera + 1;
  });
  scene.Operator().See("frmKeySheets");
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
     .after = {"talk-group", "inhibits"},
     .mostByMouse = 3,
     .mostByKeyboard = 3,
     .byMouse = SendByMouse,
     .byKeyboard = SendByKeyboard,
     .look = LookForNothingUnsent},
    {.name = "Compared with the switcher",
     .file = "compare",
     .view = kMap,
     .mostByMouse = 2,
     .mostByKeyboard = 2,
     .prepare = ChangeTheSwitcher,
     .byMouse = CompareByMouse,
     .byKeyboard = CompareByKeyboard,
     .look = LookForTheDifference},
    {.name = "Labels imported from a file",
     .file = "import",
     .view = kMap,
     .mostByMouse = 5,
     .mostByKeyboard = 5,
     .prepare = WriteLabels,
     .byMouse = ImportByMouse,
     .byKeyboard = ImportByKeyboard,
     .look = LookForImport,
     .isStored = AreLabelsStored},
    {.name = "Key sheets of 20 panels in a file",
     .file = "key-sheets",
     .view = kMap,
     .mostByMouse = 10,
     .mostByKeyboard = 8,
     .byMouse = SheetsByMouse,
     .byKeyboard = SheetsByKeyboard,
     .look = LookForSheets},
    {.name = "The console locked",
     .file = "lock",
     .view = kMap,
     .mostByMouse = 2,
     .mostByKeyboard = 2,
     .byMouse = LockByMouse,
     .byKeyboard = LockByKeyboard,
     .look = LookForLock},
    {.name = "The console unlocked",
     .file = "unlock",
     .view = kMap,
     .after = {"lock"},
     .mostByMouse = 3,
     .mostByKeyboard = 3,
     .byMouse = UnlockByMouse,
     .byKeyboard = UnlockByKeyboard,
     .look = LookForNoLock},
};

}  // namespace

std::span<const Task> ConsoleTasks() { return kTasks; }

}  // namespace desktop
