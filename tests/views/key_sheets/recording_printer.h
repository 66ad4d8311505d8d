// SPDX-License-Identifier: MIT

#ifndef TESTS_VIEWS_KEY_SHEETS_RECORDING_PRINTER_H_
#define TESTS_VIEWS_KEY_SHEETS_RECORDING_PRINTER_H_

#include <QPrinter>

#include <memory>
#include <string>
#include <vector>

namespace test {

// What a printer got.
struct Printed {
  std::vector<std::vector<std::string>> pages;  // the texts of each, in the order they were drawn
  bool isEnded = false;
  bool isAborted = false;
};

// A printer with A4 in landscape that keeps the texts of its pages.  It fails when it is to begin
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
