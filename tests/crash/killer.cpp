// SPDX-License-Identifier: MIT

#include "tests/crash/killer.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace crash {

Killer::Killer(pid_t process, std::chrono::microseconds after)
    : handle_(static_cast<int>(syscall(SYS_pidfd_open, process, 0))) {
  if (handle_ < 0) throw std::runtime_error("no handle of a process to be had");
  thread_ = std::thread([this, deadline = std::chrono::steady_clock::now() + after] {
    std::unique_lock lock(mutex_);
    if (changed_.wait_until(lock, deadline, [this] { return spared_; })) return;
    syscall(SYS_pidfd_send_signal, handle_, SIGKILL, nullptr, 0);
  });
}

Killer::~Killer() {
  {
    const std::lock_guard lock(mutex_);
    spared_ = true;
  }
  changed_.notify_all();
  thread_.join();
  close(handle_);
}

}  // namespace crash
