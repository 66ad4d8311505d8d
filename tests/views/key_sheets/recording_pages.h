// SPDX-License-Identifier: MIT

#ifndef TESTS_VIEWS_KEY_SHEETS_RECORDING_PAGES_H_
#define TESTS_VIEWS_KEY_SHEETS_RECORDING_PAGES_H_

#include <QBuffer>
#include <QPdfWriter>

#include <memory>
#include <string>
#include <vector>

namespace test {

// What was drawn, and how high the pages are.
struct Drawn {
  int height = 539;                             // of the printable part, in points: A4 in landscape
  std::vector<std::vector<std::string>> pages;  // the texts of each, in the order they were drawn
  double lowest = 0;                            // where the lowest text of all stands
  bool isEnded = false;
};

// A document that keeps the texts of its pages, and no more of them.  It fails when it is to begin
// page `failsAt`, from 1; 0 for one that works.
class RecordingPages : public QPdfWriter {
 public:
  explicit RecordingPages(Drawn& drawn, int failsAt = 0);
  ~RecordingPages() override;

  bool newPage() override;

 protected:
  QPaintEngine* paintEngine() const override;
  int metric(PaintDeviceMetric what) const override;

 private:
  class Engine;

  Drawn& drawn_;
  const int failsAt_;
  std::unique_ptr<Engine> engine_;
};

}  // namespace test

#endif  // TESTS_VIEWS_KEY_SHEETS_RECORDING_PAGES_H_
