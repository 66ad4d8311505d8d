// SPDX-License-Identifier: MIT

#include "tests/desktop/windows.h"

#include <QRect>
#include <string_view>

#include "tests/support/temporary_folder.h"

namespace desktop {
namespace {

// A window of its own, and how it is opened.
struct Window {
  const char* name = "";
  const char* command = "";
  const char* owner = "frmMain";   // who has the command
  void (*open)(Scene&) = nullptr;  // instead of a command
  const char* under = "frmMain";   // who has the keyboard again when it is closed
  const char* cancelled = "";      // a line that says that closing has ended its work first
};

void OpenImport(Scene& scene) {
  test::WriteFile(scene.Folder().Home() / "labels.csv",
                  "Station,Station Label\r\n5,GALLERY\r\n6,SOUND\r\n");
  scene.Console().Trigger("aidImportProgramming");
  scene.Operator().See("aidImportDialog");
  scene.Operator().Type("~/labels.csv");
  scene.Operator().Key("Return");
}

void OpenRecall(Scene& scene) {
  scene.Console().Trigger("aidPresets");
  scene.Operator().See("frmPresets");
  scene.Console().Set("txtPresetName", "text", QStringLiteral("Evening"));
  scene.Console().Click("cmdStorePreset");
  // Something else is heard since.
  scene.Switcher("make 10 20");
  scene.Switcher("send-row 10");
  scene.Operator().Until("output 10 hears 20",
                         [&] { return scene.Console().Mark(10, 20) == test::kCrosspoint; });
  scene.Operator().DoubleClick({.object = "lstPresets", .row = 0});
}

void AskToInhibit(Scene& scene) {
  scene.Console().Trigger("ID_XpointMap");
  scene.Console().Choose(1, 9);
  scene.Console().Keys("msfgXmap", "Shift+Right");
  scene.Console().Trigger("ID_ToggleInhibit", "frmXmap");
}

void AskToUndoTheTake(Scene& scene) {
  scene.Console().Trigger("ID_XpointMap");
  scene.Console().Use("ID_Take", 12, 7);
  scene.Operator().Until("output 12 hears 7",
                         [&] { return scene.Console().Mark(12, 7) == test::kCrosspoint; });
  scene.Console().Trigger("aidUndoTake", "frmXmap");
}

void AskToUnlock(Scene& scene) {
  scene.Console().Trigger("aidLockConsole");
  scene.Console().Trigger("aidLockConsole");
}

// The last one leaves the console locked.
constexpr Window kWindows[] = {
    {"frmInptLevel", "ID_ViewSourcelevelControl"},
    {"frmQdvTally", "ID_ViewQDVStatus"},
    {"frmDownProg", "ID_SendData"},
    {"frmSysInfo", "ID_RetreiveData"},
    {"frmSendChanges", "aidSendChanges"},
    {.name = "frmCompare", .command = "aidCompare", .cancelled = "aidCompareSummary"},
    {"frmPresets", "aidPresets"},
    {.name = "frmRecall", .open = OpenRecall, .under = "frmPresets"},
    {"frmSettings", "aidSettings"},
    {"frmBackup", "aidRestoreBackup"},
    {"frmChanges", "aidRecentChanges"},
    {"frmEventLog", "aidEventLog"},
    {"frmKeySheets", "aidKeySheets"},
    {.name = "frmImport", .open = OpenImport},
    {"frmHelp", "ID_Contents"},
    {"frmTeskAbout", "ID_About"},
    {"frmCopyTo", "aidCopyToStations", "frmButtons"},
    {"frmWhereUsed", "aidWhereUsed", "frmButtons"},
    {.name = "aidInhibitQuestion", .open = AskToInhibit},
    {.name = "aidUndoTakeQuestion", .open = AskToUndoTheTake},
    {.name = "aidUnlockQuestion", .open = AskToUnlock},
};

void Open(Scene& scene, const Window& window) {
  if (window.open != nullptr) return window.open(scene);
  if (std::string_view(window.owner) == "frmButtons") {
    scene.Console().Trigger("ID_ButtonProgramming");
  }
  scene.Console().Trigger(window.command, window.owner);
}

// As the operator does, with Escape or what the window manager has for it.  What works ends that
// first, and shows what has come of it.
void Close(Scene& scene, const Window& window, const char* key) {
  Hand& hand = scene.Operator();
  hand.Key(key);
  if (*window.cancelled != '\0') {
    hand.Until("it says that it was cancelled", [&] {
      return scene.Console().Property(window.cancelled, "text").toString().startsWith(u"Cancelled");
    });
    hand.Key(key);
  }
  hand.See(window.under);
}

std::string Words(const QRect& rect) {
  return std::to_string(rect.width()) + " x " + std::to_string(rect.height()) + " at " +
         std::to_string(rect.x()) + ", " + std::to_string(rect.y());
}

}  // namespace

std::vector<std::string> LookAtWindows(const Look& look, const std::filesystem::path& folder) {
  std::vector<std::string> faults;
  Scene scene(look);
  if (const std::string amiss = scene.Begin(); !amiss.empty()) return {amiss};
  // The console rounds what the window manager puts around a window to pixels of its own.
  const int slack = look.scale == 1 ? 0 : look.scale;
  const QRect screen = QRect(QPoint(), look.screen).adjusted(-slack, -slack, slack, slack);
  const auto check = [&](const char* window) {
    const QRect frame = scene.Operator().Frame(window);
    if (screen.contains(frame)) return;
    faults.push_back(std::string(window) + " is not whole on the screen: " + Words(frame));
  };
  check("frmMain");
  scene.Screen().Picture(folder / "frmMain.png");
  bool byEscape = true;
  for (const Window& window : kWindows) {
    scene.ChangeOperator();
    Hand& hand = scene.Operator();
    Open(scene, window);
    hand.See(window.name);
    check(window.name);
    scene.Screen().Picture(folder / (std::string(window.name) + ".png"));
    Close(scene, window, byEscape ? "Escape" : "alt+F4");
    if (!hand.Failure().empty()) {
      faults.push_back(std::string(window.name) + (byEscape ? ", Escape: " : ", closed: ") +
                       hand.Failure());
      scene.Console().CloseWindow(window.name);
    }
    if (std::string_view(window.under) != "frmMain") scene.Console().CloseWindow(window.under);
    byEscape = !byEscape;
  }
  if (!scene.End()) faults.push_back("The console does not end");
  return faults;
}

}  // namespace desktop
