// SPDX-License-Identifier: MIT

#ifndef TESTS_DESKTOP_TASKS_H_
#define TESTS_DESKTOP_TASKS_H_

#include <span>

#include "tests/desktop/scene.h"

namespace desktop {

// What an operator does every day.  The window that it is done in is in front; that is no step.
struct Task {
  const char* name = "";
  const char* file = "";  // of its picture
  const char* view = "";  // the command of the window
  // The tasks that it builds on, by their files: what it finds was done in them.
  const char* after[2] = {};
  int aim = 0;  // steps, for the shorter of the two ways; 0 for none
  // No more steps than these, which are promised, by mouse and by keyboard.
  int mostByMouse = 0;
  int mostByKeyboard = 0;
  // What it needs; no hand does it, and no step is counted.
  void (*prepare)(Scene&) = nullptr;
  void (*byMouse)(Hand&) = nullptr;
  void (*byKeyboard)(Hand&) = nullptr;
  // What is looked at to see that it is done.
  void (*look)(Scene&) = nullptr;
  // What the saved database must hold then, once the console has ended; null for what stores
  // nothing.
  bool (*isStored)(const Scene&) = nullptr;
};

// In the order in which they are done: what is sent was edited before.
std::span<const Task> StationTasks();
std::span<const Task> MapTasks();
std::span<const Task> ConsoleTasks();

}  // namespace desktop

#endif  // TESTS_DESKTOP_TASKS_H_
