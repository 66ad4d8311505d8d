// SPDX-License-Identifier: MIT

#ifndef TESTS_DESKTOP_SCENE_H_
#define TESTS_DESKTOP_SCENE_H_

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/desktop/desktop.h"
#include "tests/desktop/hand.h"
#include "tests/end_to_end/console_process.h"
#include "tests/support/simulator_process.h"

namespace desktop {

// How a desktop looks.
struct Look {
  const char* name = "1920x1080";
  QSize screen = {1920, 1080};  // pixels
  int scale = 1;                // pixels of the screen for one of the console
  bool isDark = false;          // the desktop's colours
};

// As operators have it: small, usual, large, at twice the pixels, and dark.
const std::vector<Look>& AllLooks();

// The console with a switcher of 64 channels, on a desktop.  Twenty panels, 21 to 40, bear "CAM" in
// their labels; the first button of station 1 is free.
class Scene {
 public:
  explicit Scene(const Look& look);

  // Waits until the console is up, its map complete, and its main window has the keyboard; says
  // what is amiss, and nothing when all is well.
  std::string Begin();
  // Somebody else operates it, who has made no step and failed at nothing.
  void ChangeOperator();
  // The console ends as it should, and has saved everything; whether it did.
  bool End();

  std::filesystem::path Database() const { return folder_ / "Tesk.mdb"; }
  // A field of a station as the saved database has it.
  std::string Stored(int station, const char* field) const;
  // What the switcher answers to a command of the simulator.
  std::string Switcher(const std::string& command) { return simulator_.Command(command); }

  Desktop& Screen() { return desktop_; }
  test::ConsoleProcess& Console() { return *console_; }
  Hand& Operator() { return *hand_; }
  const test::ConsoleFolder& Folder() const { return folder_; }

 private:
  std::filesystem::path ForeignLeaks() const { return folder_ / "foreign-leaks"; }

  const Look look_;
  Desktop desktop_;
  test::ConsoleFolder folder_;
  std::string line_ = folder_ / "line";
  test::SimulatorProcess simulator_;
  std::unique_ptr<test::ConsoleProcess> console_;
  std::unique_ptr<Hand> hand_;
};

}  // namespace desktop

#endif  // TESTS_DESKTOP_SCENE_H_
