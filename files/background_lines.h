// SPDX-License-Identifier: MIT

#ifndef FILES_BACKGROUND_LINES_H_
#define FILES_BACKGROUND_LINES_H_

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "files/whole_file.h"

namespace files {

// Writes lines on a thread of its own, in their order: a disk that does not answer holds up nobody
// who adds one.
class BackgroundLines {
 public:
  // Writes one line.  Called on the thread of the object.
  using Write = std::function<Outcome(std::string_view line)>;
  // Hears of the first failure, of the first success after one, and so on.  Called on the thread of
  // the object.
  using Listener = std::function<void(const Outcome& outcome)>;

  // What stands in the place of so many lines that are missing.
  using Gap = std::function<std::string(std::size_t lines)>;

  // So many lines wait for a disk that is slow.
  static constexpr std::size_t kWaiting = 2000;

  // Whatever these refer to must outlive the object.
  BackgroundLines(Write write, Gap gap, Listener listener);
  // Writes what still waits.
  ~BackgroundLines();
  BackgroundLines(const BackgroundLines&) = delete;
  BackgroundLines& operator=(const BackgroundLines&) = delete;

  // False, and the line is lost, while too many wait already.  Before the next line that can be
  // written stands how many were lost, be it so or because they could not be written.
  bool Add(std::string line);

 private:
  struct Line {
    std::string text;
    std::size_t lost;  // before it
  };

  void Run();
  Outcome WriteBehindGap(const Line& line);

  const Write write_;
  const Gap gap_;
  const Listener listener_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Line> waiting_;
  std::size_t lost_ = 0;     // since the last that waits
  std::size_t missing_ = 0;  // in the file; of the thread
  bool isEnding_ = false;
  std::thread thread_;  // last: it uses the others
};

}  // namespace files

#endif  // FILES_BACKGROUND_LINES_H_
