// SPDX-License-Identifier: MIT

#include "tests/desktop/scene.h"

#include "db/schema.h"
#include "tests/end_to_end/system_database.h"
#include "tests/support/temporary_folder.h"

namespace desktop {
namespace {

constexpr int kFirstCamera = 21;
constexpr int kLastCamera = 40;

// The options of a simulator that holds what a new database holds.
std::vector<std::string> SwitcherOf(const std::filesystem::path& database,
                                    const std::string& line) {
  if (db::CreateDatabase(database).ok()) {
    for (int panel = kFirstCamera; panel <= kLastCamera; ++panel) {
      test::SetField(database, panel, "Label", "CAM " + std::to_string(panel));
    }
    test::SetField(database, 1, "B1 Type", 254);
    test::SetField(database, 1, "B1 Prog", std::string(64, '0'));
  }
  return {"--database", database.string(), "--log", "--link", line};
}

// The colours of a desktop at night, where the toolkit looks for them.
constexpr char kDarkColours[] = R"([Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=252,252,252
ForegroundInactive=161,169,177
[Colors:View]
BackgroundNormal=27,30,32
BackgroundAlternate=35,38,41
ForegroundNormal=252,252,252
ForegroundLink=29,153,243
ForegroundVisited=155,89,182
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=252,252,252
[Colors:Tooltip]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
)";

// What a console with sanitizers is not to blame for: the library through which the toolkit talks
// to the desktop never gives back its last connection.
constexpr char kForeignLeaks[] = "leak:libdbus-1\n";

// So that it looks there.
std::vector<std::string> EnvironmentOf(const Look& look,
                                       const std::filesystem::path& foreignLeaks) {
  std::vector<std::string> environment{
      "QT_SCALE_FACTOR=" + std::to_string(look.scale),
      "LSAN_OPTIONS=print_suppressions=0:suppressions=" + foreignLeaks.string()};
  if (look.isDark) {
    environment.insert(environment.end(), {"QT_QPA_PLATFORMTHEME=kde", "XDG_CURRENT_DESKTOP=KDE",
                                           "KDE_SESSION_VERSION=5"});
  }
  return environment;
}

}  // namespace

const std::vector<Look>& AllLooks() {
  static const std::vector<Look> looks{
      {.name = "1280x800", .screen = {1280, 800}},
      {.name = "1920x1080", .screen = {1920, 1080}},
      {.name = "2560x1440", .screen = {2560, 1440}},
      {.name = "twice", .screen = {2560, 1600}, .scale = 2},
      {.name = "dark", .screen = {1920, 1080}, .isDark = true},
  };
  return looks;
}

Scene::Scene(const Look& look)
    : look_(look), desktop_(look.screen), simulator_(SwitcherOf(Database(), line_)) {
  folder_.WriteSettings(line_);
  test::WriteFile(ForeignLeaks(), kForeignLeaks);
  if (look.isDark) test::WriteFile(folder_.Home() / "kdeglobals", kDarkColours);
}

std::string Scene::Begin() {
  if (!desktop_.IsUp()) return "The desktop does not come up";
  console_ = std::make_unique<test::ConsoleProcess>(
      folder_, desktop_.Prefix(EnvironmentOf(look_, ForeignLeaks())));
  if (!console_->IsUp()) return "The console does not come up";
  if (!simulator_.WaitForLine("rx poll keep-alive")) return "The console does not poll";
  ChangeOperator();
  hand_->See("frmMain");
  return hand_->Failure();
}

void Scene::ChangeOperator() { hand_ = std::make_unique<Hand>(desktop_, *console_); }

bool Scene::End() { return console_->Terminate() == 0; }

std::string Scene::Stored(int station, const char* field) const {
  return test::ReadField(Database(), station, field);
}

}  // namespace desktop
