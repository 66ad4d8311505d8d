// SPDX-License-Identifier: MIT

#ifndef FILES_BACKGROUND_LINES_H_
#define FILES_BACKGROUND_LINES_H_

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
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
  // the object, while it can take no line and does not end.
  using Listener = std::function<void(const Outcome& outcome)>;

  // What stands in the place of so many lines that are missing.
  using Gap = std::function<std::string(std::size_t lines)>;

  // So many lines wait for a disk that is slow.
  static constexpr std::size_t kWaiting = 2000;

  // So long the end waits for a disk that does not answer.
  static constexpr std::chrono::milliseconds kPatience = std::chrono::seconds(5);

  // Whatever the listener refers to must outlive the object.  `write` and `gap` may be called once
  // more when it has gone, by a thread that was given up: they refer to nothing but what they hold.
  BackgroundLines(Write write, Gap gap, Listener listener,
                  std::chrono::milliseconds patience = kPatience);
  // Writes what still waits.  What is not written after the patience is given up: nobody hears of
  // it, though the disk may have it later.
  ~BackgroundLines();
  BackgroundLines(const BackgroundLines&) = delete;
  BackgroundLines& operator=(const BackgroundLines&) = delete;

  // False, and the line is lost, while too many wait already.  Before the next line that can be
  // written stands how many were lost, be it so or because they could not be written.
  bool Add(std::string line);

 private:
  struct Work;

  static void Run(const std::shared_ptr<Work>& work);

  const std::chrono::milliseconds patience_;
  const std::shared_ptr<Work> work_;
  std::thread thread_;
};

}  // namespace files

#endif  // FILES_BACKGROUND_LINES_H_
