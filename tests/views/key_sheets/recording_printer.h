// SPDX-License-Identifier: MIT

#ifndef TESTS_VIEWS_KEY_SHEETS_RECORDING_PRINTER_H_
#define TESTS_VIEWS_KEY_SHEETS_RECORDING_PRINTER_H_

#include <QPrinter>

#include <memory>
#include <string>
#include <vector>

namespace test {

// What a printer got, and how high its paper is.
struct Printed {
  int height = 539;                             // of the printable part, in points: A4 in landscape
  std::vector<std::vector<std::string>> pages;  // the texts of each, in the order they were drawn
  double lowest = 0;                            // where the lowest text of all stands
  bool isEnded = false;
  bool isAborted = false;
};

// A printer that keeps the texts of its pages.  It fails when it is to begin
// page `failsAt`, from 1; 0 for a printer that works.
class RecordingPrinter : public QPrinter {
 public:
  explicit RecordingPrinter(Printed& printed, int failsAt = 0);
  ~RecordingPrinter() override;

 private:
  class Engine;
  std::unique_ptr<Engine> engine_;
};

}  // namespace test

#endif  // TESTS_VIEWS_KEY_SHEETS_RECORDING_PRINTER_H_
