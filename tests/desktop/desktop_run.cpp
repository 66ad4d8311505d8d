// SPDX-License-Identifier: MIT
//
// desktop_run steps FOLDER [LOOK|all [TASK]]: the everyday tasks, once by mouse and once by
// keyboard alone, on a real X server with a window manager; counts the steps, looks at what came of
// each task in the console, the switcher and the saved database, and saves a picture of each in
// FOLDER/LOOK; with TASK, the name of a picture, only that and those it builds on.  Ends with 0
// when all were done in no more steps than are promised for each of the two ways.
//
// desktop_run windows FOLDER [LOOK|all]: opens every window, looks whether it is whole, has the
// keyboard and gives it back, and saves a picture of each.  Ends with 0 when all was well.
//
// LOOK is a desktop: its size, "twice" (the pixels) or "dark"; without one, all of them.

#include <QCoreApplication>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tests/desktop/scene.h"
#include "tests/desktop/tasks.h"
#include "tests/desktop/windows.h"

namespace {

using desktop::Scene;
using desktop::Task;

constexpr int kNotDone = -1;

std::vector<Task> AllTasks() {
  std::vector<Task> all;
  for (const auto tasks : {desktop::StationTasks(), desktop::MapTasks(), desktop::ConsoleTasks()}) {
    all.insert(all.end(), tasks.begin(), tasks.end());
  }
  return all;
}

// All of them, or the one whose picture is called so with those it builds on.
std::vector<Task> TasksCalled(const std::string& name) {
  std::vector<Task> tasks = AllTasks();
  if (name.empty()) return tasks;
  const auto called =
      std::ranges::find_if(tasks, [&](const Task& each) { return each.file == name; });
  if (called == tasks.end()) return {};
  const Task wanted = *called;
  std::erase_if(tasks, [&](const Task& each) {
    return each.file != name && std::ranges::none_of(wanted.after, [&](const char* before) {
             return before != nullptr && std::string_view(before) == each.file;
           });
  });
  return tasks;
}

// With all windows side by side in a window as large as the screen.  What is amiss.
std::string Arrange(Scene& scene) {
  desktop::Hand& hand = scene.Operator();
  hand.DoubleClickTitle("frmMain");
  hand.Until("it is as wide as the screen",
             [&] { return hand.Frame("frmMain").width() >= scene.Screen().Pixels().width(); });
  scene.Console().Trigger("ID_TileVertical");
  return hand.Failure();
}

// What a task took.
struct Taken {
  int steps = kNotDone;
  int notches = 0;  // of the wheel
};

Taken StepsOf(Scene& scene, const Task& task, void (*way)(desktop::Hand&),
              const std::filesystem::path& picture) {
  scene.ChangeOperator();
  desktop::Hand& hand = scene.Operator();
  for (const char* const window : {"frmWhereUsed", "frmPresets", "frmCompare", "frmKeySheets"}) {
    if (scene.Console().IsShown(window)) scene.Console().CloseWindow(window);
  }
  hand.See("frmMain");
  scene.Console().Trigger(task.view);
  if (task.prepare != nullptr) task.prepare(scene);
  hand.Begin();
  way(hand);
  const Taken taken{hand.Steps(), hand.Notches()};
  task.look(scene);
  scene.Screen().Picture(picture);
  if (hand.Failure().empty()) return taken;
  std::printf("%s: %s\n", task.name, hand.Failure().c_str());
  return {};
}

// What all tasks took, done in one of the two ways.
std::vector<Taken> DoAll(const std::vector<Task>& tasks, bool byMouse, const desktop::Look& look,
                         const std::filesystem::path& folder) {
  std::vector<Taken> steps(tasks.size());
  Scene scene(look);
  std::string amiss = scene.Begin();
  if (amiss.empty()) amiss = Arrange(scene);
  if (!amiss.empty()) {
    std::printf("%s\n", amiss.c_str());
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
    steps[i] = {};
  }
  return steps;
}

std::string Words(const Taken& taken) {
  if (taken.steps == kNotDone) return "not done";
  const std::string steps = std::to_string(taken.steps);
  return taken.notches == 0 ? steps : steps + " (" + std::to_string(taken.notches) + " notches)";
}

bool IsWell(const Taken& taken, int most) { return taken.steps != kNotDone && taken.steps <= most; }

bool RunSteps(const desktop::Look& look, const std::vector<Task>& tasks,
              const std::filesystem::path& folder) {
  const std::vector<Taken> mouse = DoAll(tasks, true, look, folder);
  const std::vector<Taken> keyboard = DoAll(tasks, false, look, folder);
  bool isWell = true;
  std::printf("%s\n%-36s %8s %8s %s\n", look.name, "Task", "Aim", "Keyboard", "Mouse");
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    const Task& task = tasks[i];
    std::printf("%-36s %8s %8s %s\n", task.name,
                task.aim == 0 ? "" : std::to_string(task.aim).c_str(), Words(keyboard[i]).c_str(),
                Words(mouse[i]).c_str());
    isWell &= IsWell(mouse[i], task.mostByMouse) && IsWell(keyboard[i], task.mostByKeyboard);
  }
  return isWell;
}

bool RunWindows(const desktop::Look& look, const std::filesystem::path& folder) {
  const std::vector<std::string> faults = desktop::LookAtWindows(look, folder);
  std::printf("%s: %zu faults\n", look.name, faults.size());
  for (const std::string& fault : faults) std::printf("  %s\n", fault.c_str());
  return faults.empty();
}

// The one of that name, or all.
std::vector<desktop::Look> LooksCalled(const std::string& name) {
  std::vector<desktop::Look> looks = desktop::AllLooks();
  if (name != "all") {
    std::erase_if(looks, [&](const desktop::Look& each) { return each.name != name; });
  }
  return looks;
}

int Usage() {
  std::fprintf(stderr,
               "Usage: desktop_run steps FOLDER [LOOK|all [TASK]]\n"
               "       desktop_run windows FOLDER [LOOK|all]\nLOOK is one of:");
  for (const desktop::Look& look : desktop::AllLooks()) std::fprintf(stderr, " %s", look.name);
  std::fprintf(stderr, "\nTASK is one of:");
  for (const Task& task : AllTasks()) std::fprintf(stderr, " %s", task.file);
  std::fprintf(stderr, "\n");
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  const QString what = arguments.value(1);
  const bool isSteps = what == QLatin1String("steps");
  if ((!isSteps && what != QLatin1String("windows")) || arguments.size() < 3 ||
      arguments.size() > (isSteps ? 5 : 4)) {
    return Usage();
  }
  const auto looks = LooksCalled(arguments.value(3, QStringLiteral("all")).toStdString());
  const std::vector<Task> tasks = TasksCalled(arguments.value(4).toStdString());
  if (looks.empty() || tasks.empty()) return Usage();
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const std::filesystem::path folder = arguments[2].toStdString();
  bool isWell = true;
  for (const desktop::Look& look : looks) {
    const std::filesystem::path pictures = folder / look.name;
    std::filesystem::create_directories(pictures);
    isWell &= isSteps ? RunSteps(look, tasks, pictures) : RunWindows(look, pictures);
  }
  return isWell ? 0 : 1;
}
