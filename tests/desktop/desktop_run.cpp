// SPDX-License-Identifier: MIT
//
// desktop_run steps FOLDER [TASK]: the everyday tasks, once by mouse and once by keyboard alone, on
// a real X server with a window manager; counts the steps, looks at what came of each task in the
// console, the switcher and the saved database, and saves a picture of each in FOLDER; with TASK,
// the name of a picture, only that.  Ends with 0 when all were done, in no more steps than is aimed
// at by the better of the two.
//
// desktop_run windows FOLDER: opens every window on desktops of several sizes, and on one of twice
// the pixels, looks whether it is whole, has the keyboard and gives it back, and saves a picture of
// each.  Ends with 0 when all was well.

#include <QCoreApplication>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/desktop/scene.h"
#include "tests/desktop/tasks.h"
#include "tests/desktop/windows.h"

namespace {

using desktop::Scene;
using desktop::Task;

constexpr int kNotDone = -1;

// All of them, or the one whose picture is called so.
std::vector<Task> TasksCalled(const std::string& name) {
  std::vector<Task> chosen;
  for (const auto tasks : {desktop::StationTasks(), desktop::MapTasks(), desktop::ConsoleTasks()}) {
    for (const Task& task : tasks) {
      if (name.empty() || name == task.file) chosen.push_back(task);
    }
  }
  return chosen;
}

// With all windows side by side in a window as large as the screen.
bool Arrange(Scene& scene) {
  scene.Operator().Key("alt+space");
  scene.Operator().Key("x");
  scene.Console().Trigger("ID_TileVertical");
  return scene.Operator().Failure().empty();
}

// The steps of a task, or kNotDone.
int StepsOf(Scene& scene, const Task& task, void (*way)(desktop::Hand&),
            const std::filesystem::path& picture) {
  scene.ChangeOperator();
  desktop::Hand& hand = scene.Operator();
  for (const char* const window : {"frmWhereUsed", "frmPresets", "frmCompare"}) {
    if (scene.Console().IsShown(window)) scene.Console().CloseWindow(window);
  }
  hand.See("frmMain");
  scene.Console().Trigger(task.view);
  if (task.prepare != nullptr) task.prepare(scene);
  hand.Begin();
  way(hand);
  const int steps = hand.Steps();
  task.look(scene);
  scene.Screen().Picture(picture);
  if (hand.Failure().empty()) return steps;
  std::printf("%s: %s\n", task.name, hand.Failure().c_str());
  return kNotDone;
}

// The steps of all tasks, done in one of the two ways.
std::vector<int> DoAll(const std::vector<Task>& tasks, bool byMouse,
                       const std::filesystem::path& folder) {
  std::vector<int> steps(tasks.size(), kNotDone);
  Scene scene({});
  if (!scene.Begin() || !Arrange(scene)) {
    std::printf("The console does not come up\n");
    return steps;
  }
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    const Task& task = tasks[i];
    const std::string picture = std::string(task.file) + (byMouse ? "-mouse" : "-keys") + ".png";
    steps[i] = StepsOf(scene, task, byMouse ? task.byMouse : task.byKeyboard, folder / picture);
  }
  const bool hasEnded = scene.End();
  if (!hasEnded) std::printf("The console does not end\n");
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    if (tasks[i].isStored == nullptr || (hasEnded && tasks[i].isStored(scene))) continue;
    std::printf("%s: is not in the saved database\n", tasks[i].name);
    steps[i] = kNotDone;
  }
  return steps;
}

std::string Words(int steps) { return steps == kNotDone ? "not done" : std::to_string(steps); }

// Whether the task was done in both ways, and one of them is as short as is aimed at.
bool IsWell(const Task& task, int mouse, int keyboard) {
  if (mouse == kNotDone || keyboard == kNotDone) return false;
  return task.aim == 0 || std::min(mouse, keyboard) <= task.aim;
}

int RunSteps(const std::filesystem::path& folder, const std::string& name) {
  const std::vector<Task> tasks = TasksCalled(name);
  const std::vector<int> mouse = DoAll(tasks, true, folder);
  const std::vector<int> keyboard = DoAll(tasks, false, folder);
  bool isWell = true;
  std::printf("%-36s %8s %8s %8s\n", "Task", "Aim", "Mouse", "Keyboard");
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    const Task& task = tasks[i];
    std::printf("%-36s %8s %8s %8s\n", task.name,
                task.aim == 0 ? "" : std::to_string(task.aim).c_str(), Words(mouse[i]).c_str(),
                Words(keyboard[i]).c_str());
    isWell &= IsWell(task, mouse[i], keyboard[i]);
  }
  return isWell ? 0 : 1;
}

struct NamedLook {
  const char* name = "";
  desktop::Look look = {};
};

// As operators have it: small, usual, large, and at twice the pixels.
const std::vector<NamedLook>& AllLooks() {
  static const std::vector<NamedLook> looks{
      {"1280x800", {.screen = {1280, 800}}},
      {"1920x1080", {.screen = {1920, 1080}}},
      {"2560x1440", {.screen = {2560, 1440}}},
      {"twice", {.screen = {2560, 1600}, .environment = {"QT_SCALE_FACTOR=2"}}},
  };
  return looks;
}

int RunWindows(const std::filesystem::path& folder) {
  bool isWell = true;
  for (const NamedLook& named : AllLooks()) {
    const std::filesystem::path pictures = folder / named.name;
    std::filesystem::create_directories(pictures);
    const std::vector<std::string> faults = desktop::LookAtWindows(named.look, pictures);
    std::printf("%s: %zu faults\n", named.name, faults.size());
    for (const std::string& fault : faults) std::printf("  %s\n", fault.c_str());
    isWell &= faults.empty();
  }
  return isWell ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  const QString what = arguments.value(1);
  const bool isSteps = what == QLatin1String("steps");
  if ((!isSteps && what != QLatin1String("windows")) || arguments.size() < 3 ||
      arguments.size() > (isSteps ? 4 : 3)) {
    std::fprintf(stderr,
                 "Usage: desktop_run steps FOLDER [TASK]\n       desktop_run windows FOLDER\n");
    return 2;
  }
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const std::filesystem::path folder = arguments[2].toStdString();
  std::filesystem::create_directories(folder);
  if (!isSteps) return RunWindows(folder);
  return RunSteps(folder, arguments.value(3).toStdString());
}
