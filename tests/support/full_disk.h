// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_FULL_DISK_H_
#define TESTS_SUPPORT_FULL_DISK_H_

#include <sys/resource.h>

#include <csignal>

namespace test {

// A disk that is full: while the object lives no file of this process grows beyond `bytes`.  A
// write that would takes what still fits, and the next one fails.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{.rlim_cur = bytes, .rlim_max = before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit before_{};
  void (*const handler_)(int);
};

}  // namespace test

#endif  // TESTS_SUPPORT_FULL_DISK_H_
