// SPDX-License-Identifier: MIT

#include "tests/desktop/scene.h"

#include "db/schema.h"
#include "tests/end_to_end/system_database.h"

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

}  // namespace

Scene::Scene(const Look& look)
    : look_(look), desktop_(look.screen), simulator_(SwitcherOf(Database(), line_)) {
  folder_.WriteSettings(line_);
}

bool Scene::Begin() {
  if (!desktop_.IsUp()) return false;
  console_ = std::make_unique<test::ConsoleProcess>(folder_, desktop_.Prefix(look_.environment));
  if (!console_->IsUp() || !simulator_.WaitForLine("rx poll keep-alive")) return false;
  ChangeOperator();
  hand_->See("frmMain");
  return hand_->Failure().empty();
}

void Scene::ChangeOperator() { hand_ = std::make_unique<Hand>(desktop_, *console_); }

bool Scene::End() { return console_->Terminate() == 0; }

std::string Scene::Stored(int station, const char* field) const {
  return test::ReadField(Database(), station, field);
}

}  // namespace desktop
