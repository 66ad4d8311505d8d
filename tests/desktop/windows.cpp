// SPDX-License-Identifier: MIT

#include "tests/desktop/windows.h"

#include <QJsonArray>
#include <QRect>

namespace desktop {
namespace {

// A window of its own, and the command that opens it.
struct Window {
  const char* name = "";
  const char* command = "";
  const char* owner = "frmMain";  // who has the command
};

constexpr Window kWindows[] = {
    {"frmInptLevel", "ID_ViewSourcelevelControl"},
    {"frmQdvTally", "ID_ViewQDVStatus"},
    {"frmDownProg", "ID_SendData"},
    {"frmSysInfo", "ID_RetreiveData"},
    {"frmSendChanges", "aidSendChanges"},
    {"frmCompare", "aidCompare"},
    {"frmPresets", "aidPresets"},
    {"frmSettings", "aidSettings"},
    {"frmBackup", "aidRestoreBackup"},
    {"frmChanges", "aidRecentChanges"},
    {"frmEventLog", "aidEventLog"},
    {"frmKeySheets", "aidKeySheets"},
    {"frmTeskAbout", "ID_About"},
    {"frmCopyTo", "aidCopyToStations", "frmButtons"},
    {"frmWhereUsed", "aidWhereUsed", "frmButtons"},
};

QRect Frame(test::ConsoleProcess& console, const char* window) {
  const QJsonArray rect = console
                              .Ask({{QStringLiteral("do"), QStringLiteral("frame")},
                                    {QStringLiteral("object"), QLatin1String(window)}})
                              .value(QLatin1String("value"))
                              .toArray();
  return {rect[0].toInt(), rect[1].toInt(), rect[2].toInt(), rect[3].toInt()};
}

std::string Words(const QRect& rect) {
  return std::to_string(rect.width()) + " x " + std::to_string(rect.height()) + " at " +
         std::to_string(rect.x()) + ", " + std::to_string(rect.y());
}

}  // namespace

std::vector<std::string> LookAtWindows(const Look& look, const std::filesystem::path& folder) {
  std::vector<std::string> faults;
  Scene scene(look);
  if (!scene.Begin()) return {"The console does not come up"};
  const QRect screen(QPoint(), look.screen);
  const auto check = [&](const char* window) {
    const QRect frame = Frame(scene.Console(), window);
    if (screen.contains(frame)) return;
    faults.push_back(std::string(window) + " is not whole on the screen: " + Words(frame));
  };
  check("frmMain");
  scene.Screen().Picture(folder / "frmMain.png");
  bool byEscape = true;
  for (const Window& window : kWindows) {
    scene.ChangeOperator();
    Hand& hand = scene.Operator();
    if (std::string(window.owner) == "frmButtons") {
      scene.Console().Trigger("ID_ButtonProgramming");
    }
    scene.Console().Trigger(window.command, window.owner);
    hand.See(window.name);
    check(window.name);
    scene.Screen().Picture(folder / (std::string(window.name) + ".png"));
    hand.Key(byEscape ? "Escape" : "alt+F4");
    hand.See("frmMain");
    if (!hand.Failure().empty()) {
      faults.push_back(std::string(window.name) + (byEscape ? ", Escape: " : ", closed: ") +
                       hand.Failure());
      scene.Console().CloseWindow(window.name);
    }
    byEscape = !byEscape;
  }
  if (!scene.End()) faults.push_back("The console does not end");
  return faults;
}

}  // namespace desktop
